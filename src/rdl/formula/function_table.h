// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the formula language.
#pragma once

#include <span>
#include <string_view>

#include "rdl/values/value.h"

namespace rdl::formula {

class Inputs;

// Arguments have kind Error only for a function that `picks`, and are Null only for one that `takesNull`.
using Function = Value (*)(std::span<const Value> arguments, Inputs& inputs);

struct FunctionInfo {
    std::string_view name;  // in lower case
    int least, most;        // bounds of the argument count
    Function function;      // null: calls the report language's function `shared`
    std::string_view shared;
    bool takesNull = false;
    bool picks = false;  // unused arguments may fail: iif({N} = 0, 0, 1 / {N})
};

// `name` is in lower case. Returns null if there is no such function.
const FunctionInfo* FindFunction(std::string_view name);
// The tables that FindFunction searches. No name is in two of them.
std::span<const std::span<const FunctionInfo>> FunctionTables();
// The functions for dates and times.
std::span<const FunctionInfo> DateFunctions();
// The error of an argument that has to be a number.
Value NoNumber(const Value& value, Inputs& inputs);
Value CallFunction(const FunctionInfo& info, std::span<const Value> arguments, Inputs& inputs);

// The operator like of formulas: * and % match any run, ? and _ one character, without regard to case.
// Another language than the Like of expressions, which has lists and # and knows neither % nor _.
bool MatchesFormulaLike(std::string_view text, std::string_view pattern);

}  // namespace rdl::formula
