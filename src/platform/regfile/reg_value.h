// Values of a settings file: a type, bytes, and their text behind the equals sign.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

struct RegValue {
    std::uint32_t type;  // 1 a text, 3 binary, 4 a 32-bit number, others as their number says
    std::string bytes;   // of a text UTF-8 with one zero character at its end; of a number four, lowest first
};

// "text", dword:0000000f, hex:01,02 or hex(7):..; nothing for what is none of them. Blanks, and the backslash
// and line break that continue a long one, may stand between the bytes.
std::optional<RegValue> ReadRegValue(std::string_view text);
std::string WriteRegValue(const RegValue& value);

// Between quotes, with \\ and \" for the two marks.
std::string QuoteReg(std::string_view text);
// Takes a quoted text off the front; nothing when there is none or it has no end.
std::optional<std::string> TakeQuotedReg(std::string_view& text);
