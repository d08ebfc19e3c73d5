// SPDX-License-Identifier: GPL-3.0-or-later
// The operators of the language. An error operand is the result; operands that do not fit give an error
// value. Nothing is raised. A Decimal and an Integer give a Decimal, a Decimal and a Real give a Real.
#pragma once

#include <string_view>

#include "rdl/format/format.h"
#include "rdl/values/value.h"

namespace rdl::expr {

using Operator = Value (*)(const Value& left, const Value& right, const Culture& culture);

// The result is an Integer for two Integers, a Decimal for a Decimal with a Decimal or an Integer (an
// overflow of either is an error value), else a Real. Add and Subtract give a DateTime or a TimeSpan for
// these kinds, and an error value outside their range.

// Concatenates two texts, and a text that is not a number with anything.
Value Add(const Value& left, const Value& right, const Culture& culture);
Value Subtract(const Value& left, const Value& right, const Culture& culture);
Value Multiply(const Value& left, const Value& right, const Culture& culture);
// A Decimal if one operand is one and none is a Real, else a Real. x / 0 is an infinity or NaN, of a Decimal
// an error value.
Value Divide(const Value& left, const Value& right, const Culture& culture);
// Rounds both operands to integers; x \ 0 is an error value.
Value DivideWhole(const Value& left, const Value& right, const Culture& culture);
// x Mod 0 is NaN if one operand is a Real, else an error value.
Value Modulo(const Value& left, const Value& right, const Culture& culture);
// Always a Real; a result beyond its range is an infinity.
Value Power(const Value& left, const Value& right, const Culture& culture);
// Always a Text, or an error value if it becomes too long.
Value Concatenate(const Value& left, const Value& right, const Culture& culture);
// Round both operands to integers and shift by the lowest six bits of the right one; bits are lost without an
// error.
Value ShiftLeft(const Value& left, const Value& right, const Culture& culture);
Value ShiftRight(const Value& left, const Value& right, const Culture& culture);
// Logical for Booleans and nulls, with a Boolean as the result; else bitwise, with an Integer.
Value And(const Value& left, const Value& right, const Culture& culture);
Value Or(const Value& left, const Value& right, const Culture& culture);
Value Xor(const Value& left, const Value& right, const Culture& culture);
Value Not(const Value& value, const Culture& culture);
Value Negate(const Value& value, const Culture& culture);
// The remaining operators give a Boolean.
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
