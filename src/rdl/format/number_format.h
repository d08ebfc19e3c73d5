// SPDX-License-Identifier: GPL-3.0-or-later
// Formats numbers by .NET format strings, standard and custom. Each function appends to `out`.
#pragma once

#include <string>
#include <string_view>

#include "rdl/format/digits.h"
#include "rdl/format/format.h"

namespace rdl {

// A letter with an optional precision of up to two digits, as in N2.
struct StandardFormat {
    char letter = 0;     // as written
    int precision = -1;  // -1: none given
};
// Returns false if `format` is a custom format.
bool ReadStandardFormat(std::string_view format, StandardFormat& standard);

// Returns false if no standard number format has this letter.
bool FormatStandardNumber(const Value& number, const StandardFormat& format, const Culture& culture,
                          std::string& out);
void FormatCustomNumber(const Value& number, std::string_view format, const Culture& culture,
                        std::string& out);
// Appends the shortest form, at most 15 significant digits.
void AppendShortest(double number, const Culture& culture, std::string& out);
// Appends all digits, also the zeros at the end of its scale.
void AppendDecimal(const Decimal& number, const Culture& culture, std::string& out);
// Whether a group separator goes where `left` digits remain before the decimal point.
bool IsGroupEnd(int left, const Culture& culture);
// Appends NaN or an infinity, which no format changes. Returns false if the number is finite.
bool AppendNotFinite(double number, const Culture& culture, std::string& out);

}  // namespace rdl
