// Numbers by format strings, standard and custom. Each appends to `out`.
#pragma once

#include <string>
#include <string_view>

#include "rdl/format/decimal.h"
#include "rdl/format/format.h"

namespace rdl {

// A letter with an optional precision of up to two digits, as in N2. False: it is a custom format.
struct StandardFormat {
    char letter = 0;     // as written
    int precision = -1;  // -1: none given
};
bool ReadStandardFormat(std::string_view format, StandardFormat& standard);

// False when the letter is none that numbers have.
bool FormatStandardNumber(const Value& number, const StandardFormat& format, const Culture& culture,
                          std::string& out);
void FormatCustomNumber(const Value& number, std::string_view format, const Culture& culture,
                        std::string& out);
// The shortest form, 15 digits at most.
void AppendShortest(double number, const Culture& culture, std::string& out);
// Whether a group ends where `left` digits follow before the point.
bool IsGroupEnd(int left, const Culture& culture);
// NaN and the infinities, which no format changes. False when the number is finite.
bool AppendNotFinite(double number, const Culture& culture, std::string& out);

}  // namespace rdl
