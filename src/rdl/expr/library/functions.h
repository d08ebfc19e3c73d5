// SPDX-License-Identifier: GPL-3.0-or-later
// The functions of the language by name: global ones (left), class members (math.abs), and instance members
// (.padleft), whose first argument is the value itself.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/expr/environment.h"
#include "rdl/values/named.h"

namespace rdl::expr {

// The arguments of a call. Omitted arguments, also those after the last one given, are Null.
class Call {
 public:
    Call(const Value* values, int valueCount, Environment& where)
        : environment(where), m_values(values), m_count(valueCount) {}
    int count() const { return m_count; }
    const Value& operator[](int index) const { return index < m_count ? m_values[index] : m_nothing; }
    bool Has(int index) const { return index < m_count && !m_values[index].IsNull(); }
    const Culture& culture() const { return environment.CurrentCulture(); }
    std::string Text(int index) const;
    // Each converts an argument. On failure it returns false and sets `error`, which the function returns.
    bool Number(int index, double& number) const;
    bool Integer(int index, std::int64_t& number) const;
    bool Exact(int index, Decimal& number) const;
    bool Date(int index, std::int64_t& ticks) const;
    bool Truth(int index, bool& truth) const;

    Environment& environment;
    mutable Value error;

 private:
    const Value* m_values;
    int m_count;
    Value m_nothing;
};

using Function = Value (*)(const Call& call);

struct FunctionInfo {
    std::string_view name;  // in lower case; class member "math.abs", instance member ".length"
    int least, most;        // bounds of the argument count
    Function function;
    bool takesErrors = false;  // else an error argument is the result
    bool goesThrough = false;  // an instance member whose cost grows with its object
};

inline constexpr int Any = 4000;  // limited only by the length of the source

// Returns null if there is no such function.
const FunctionInfo* FindFunction(std::string_view name);
// Returns a constant such as vbCrLf or DateFormat.LongDate by its name in lower case; null if there is none.
const Value* FindConstant(std::string_view name);

// The tables that FindFunction searches. No name is in two of them.
std::span<const std::span<const FunctionInfo>> FunctionTables();

struct NamedConstant {
    std::string_view name;  // in lower case
    Value value;
};
// All that FindConstant finds, each name once.
const std::vector<NamedConstant>& Constants();

// Returns the first argument as digits of `bits` bits each, at most 4, with A to F in upper case; an error
// value if it is no whole number. A negative Integer shows its 32 bits, a negative Long its 64.
Value InBase(const Call& call, unsigned bits);

// The single tables, one for each subject. They live as long as the program.
std::span<const FunctionInfo> TextFunctions();
std::span<const FunctionInfo> SearchFunctions();
std::span<const FunctionInfo> FormatFunctions();
std::span<const FunctionInfo> DateFunctions();
std::span<const FunctionInfo> DateTypeFunctions();
std::span<const FunctionInfo> MathFunctions();
std::span<const FunctionInfo> ConvertFunctions();
std::span<const FunctionInfo> FinancialFunctions();
std::span<const FunctionInfo> TextMembers();
std::span<const FunctionInfo> DateMembers();
std::span<const FunctionInfo> ListFunctions();
std::span<const FunctionInfo> ArrayFunctions();
std::span<const FunctionInfo> InspectFunctions();
std::span<const FunctionInfo> TypeFunctions();
std::span<const FunctionInfo> PatternFunctions();
std::span<const FunctionInfo> EscapeFunctions();

}  // namespace rdl::expr
