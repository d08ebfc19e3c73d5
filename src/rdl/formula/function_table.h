// The functions of the formula language.
#pragma once

#include <span>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::formula {

class Inputs;

// An argument is an error only for a function that picks one of them, and Null only for one that takes Null.
using Function = Value (*)(std::span<const Value> arguments, Inputs& inputs);

struct FunctionInfo {
    std::string_view name;  // small letters
    int least, most;        // arguments
    Function function;      // null: the report language's function of the name `shared`
    std::string_view shared;
    bool takesNull = false;
    bool picks = false;  // what it does not pick may fail: iif({N} = 0, 0, 1 / {N})
};

const FunctionInfo* FindFunction(std::string_view name);
// The table of those for dates and times.
std::span<const FunctionInfo> DateFunctions();
Value CallFunction(const FunctionInfo& info, std::span<const Value> arguments, Inputs& inputs);

// The pattern of like: * and % for any run, ? and _ for one character; without regard to case.
bool MatchesLike(std::string_view text, std::string_view pattern);

}  // namespace rdl::formula
