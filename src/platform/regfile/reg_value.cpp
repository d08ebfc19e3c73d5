// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/reg_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdio>

#include "platform/base/ascii.h"
#include "platform/regfile/utf16.h"

namespace {

constexpr std::uint32_t TextType = 1;
constexpr std::uint32_t BinaryType = 3;
constexpr std::uint32_t NumberType = 4;

bool TakeStart(std::string_view& text, std::string_view start) {
    if (text.substr(0, start.size()) != start) {
        return false;
    }
    text.remove_prefix(start.size());
    return true;
}

template <typename Number>
bool ReadHex(std::string_view digits, Number& number) {
    const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
    return !digits.empty() && result.ec == std::errc() && result.ptr == digits.data() + digits.size();
}

std::string BytesOfNumber(std::uint32_t number) {
    std::string bytes;
    for (unsigned shift = 0; shift < 32; shift += 8) {
        bytes += static_cast<char>(number >> shift & 0xFFU);
    }
    return bytes;
}

std::optional<std::string> ReadHexBytes(std::string_view text) {
    std::string digits(text);
    std::erase_if(digits, [](char character) {
        return std::string_view(" \t\r\n\v\f\\").find(character) != std::string_view::npos;
    });
    std::string bytes;
    for (std::string_view rest = digits; !rest.empty();) {
        const std::string_view piece = rest.substr(0, rest.find(','));
        unsigned char byte = 0;
        if (piece.size() > 2 || !ReadHex(piece, byte)) {
            return std::nullopt;
        }
        bytes += static_cast<char>(byte);
        rest.remove_prefix(std::min(rest.size(), piece.size() + 1));
    }
    return bytes;
}

// Type 1 in hexadecimal is UTF-16 with a zero at its end.
std::string TextOfUtf16(std::string_view bytes) {
    const std::string text = Utf8OfUtf16(bytes);
    return text.substr(0, text.find('\0')) + '\0';
}

std::string HexText(std::string_view bytes) {
    std::string text;
    for (const char byte : bytes) {
        text += text.empty() ? "" : ",";
        AppendHexByte(static_cast<unsigned char>(byte), text, SmallHexDigits);
    }
    return text;
}

}  // namespace

std::optional<RegValue> ReadRegValue(std::string_view text) {
    if (!text.empty() && text.front() == '"') {
        auto quoted = TakeQuotedReg(text);
        if (!quoted || !text.empty()) {
            return std::nullopt;
        }
        return RegValue{TextType, *quoted + '\0'};
    }
    std::uint32_t type = BinaryType;
    if (TakeStart(text, "dword:")) {
        std::uint32_t number = 0;
        return ReadHex(text, number) ? std::optional(RegValue{NumberType, BytesOfNumber(number)})
                                     : std::nullopt;
    }
    if (TakeStart(text, "hex(")) {
        const std::size_t end = text.find("):");
        if (end == std::string_view::npos || !ReadHex(text.substr(0, end), type)) {
            return std::nullopt;
        }
        text.remove_prefix(end + 2);
    } else if (!TakeStart(text, "hex:")) {
        return std::nullopt;
    }
    const auto bytes = ReadHexBytes(text);
    if (!bytes) {
        return std::nullopt;
    }
    return RegValue{type, type == TextType ? TextOfUtf16(*bytes) : *bytes};
}

std::string WriteRegValue(const RegValue& value) {
    if (value.type == TextType) {
        const std::string text = value.bytes.substr(0, value.bytes.find('\0'));
        const bool isOneLine =
            std::none_of(text.begin(), text.end(), [](unsigned char character) { return character < ' '; });
        return isOneLine ? QuoteReg(text) : "hex(1):" + HexText(Utf16OfUtf8(text + '\0'));
    }
    if (value.type == NumberType && value.bytes.size() == 4) {
        const std::string highestFirst(value.bytes.rbegin(), value.bytes.rend());
        std::string digits = HexText(highestFirst);
        digits.erase(std::remove(digits.begin(), digits.end(), ','), digits.end());
        return "dword:" + digits;
    }
    if (value.type == BinaryType) {
        return "hex:" + HexText(value.bytes);
    }
    std::array<char, 24> start{};
    std::snprintf(start.data(), start.size(), "hex(%x):", value.type);
    return start.data() + HexText(value.bytes);
}

std::string QuoteReg(std::string_view text) {
    std::string quoted = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') {
            quoted += '\\';
        }
        quoted += character;
    }
    return quoted + '"';
}

std::optional<std::string> TakeQuotedReg(std::string_view& text) {
    std::string plain;
    for (std::size_t at = 1; at < text.size() && text.front() == '"'; ++at) {
        if (text[at] == '"') {
            text.remove_prefix(at + 1);
            return plain;
        }
        if (text[at] == '\\' && at + 1 < text.size()) {
            ++at;
        }
        plain += text[at];
    }
    return std::nullopt;
}
