// SPDX-License-Identifier: GPL-3.0-or-later
// The operators of the language. An error operand is the result; operands that do not fit give an error
// value. A Decimal and an Integer give a Decimal, a Decimal and a Real give a Real.
#pragma once

#include <string_view>

#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

using Operator = Value (*)(const Value& left, const Value& right, const Culture& culture);

// Adds numbers. Concatenates two texts, and a text that is not a number with anything.
Value Add(const Value& left, const Value& right, const Culture& culture);
Value Subtract(const Value& left, const Value& right, const Culture& culture);
Value Multiply(const Value& left, const Value& right, const Culture& culture);
Value Divide(const Value& left, const Value& right, const Culture& culture);  // a Decimal or a Real
Value DivideWhole(const Value& left, const Value& right, const Culture& culture);
Value Modulo(const Value& left, const Value& right, const Culture& culture);
Value Power(const Value& left, const Value& right, const Culture& culture);
Value Concatenate(const Value& left, const Value& right, const Culture& culture);
Value ShiftLeft(const Value& left, const Value& right, const Culture& culture);
Value ShiftRight(const Value& left, const Value& right, const Culture& culture);
// Logical for Booleans, else bitwise.
Value And(const Value& left, const Value& right, const Culture& culture);
Value Or(const Value& left, const Value& right, const Culture& culture);
Value Xor(const Value& left, const Value& right, const Culture& culture);
Value Not(const Value& value, const Culture& culture);
Value Negate(const Value& value, const Culture& culture);
Value Like(const Value& left, const Value& right, const Culture& culture);
Value Is(const Value& left, const Value& right, const Culture& culture);
Value IsNot(const Value& left, const Value& right, const Culture& culture);
Value Equal(const Value& left, const Value& right, const Culture& culture);
Value NotEqual(const Value& left, const Value& right, const Culture& culture);
Value Less(const Value& left, const Value& right, const Culture& culture);
Value LessEqual(const Value& left, const Value& right, const Culture& culture);
Value Greater(const Value& left, const Value& right, const Culture& culture);
Value GreaterEqual(const Value& left, const Value& right, const Culture& culture);

// Whether the text matches a pattern of the Like of expressions and filters: * ? # [list] [!list]. `valid` is
// false for a pattern without its closing bracket.
bool MatchesVisualBasicLike(std::string_view text, std::string_view pattern, bool& valid);

}  // namespace rdl::expr
