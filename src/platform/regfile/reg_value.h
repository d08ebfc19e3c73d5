// SPDX-License-Identifier: GPL-3.0-or-later
// Values of a settings file: type, bytes, and the text after the equals sign.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct RegValue {
    std::uint32_t type;  // 1 text, 3 binary, 4 a 32-bit number, others as their number says
    std::string bytes;   // text: UTF-8 with one zero character at its end; number: four bytes, lowest first
};

// Reads "text", dword:0000000f, hex:01,02 or hex(7):.. and returns nullopt for any other text. Blanks, and
// the backslash and line break that continue a long value, may stand between the bytes.
std::optional<RegValue> ReadRegValue(std::string_view text);
std::string WriteRegValue(const RegValue& value);

// Returns the text in double quotes, with \\ and \" for the two marks.
std::string QuoteReg(std::string_view text);
// Removes a quoted text from the front and returns it. Returns nullopt if there is none or if it has no end.
std::optional<std::string> TakeQuotedReg(std::string_view& text);
