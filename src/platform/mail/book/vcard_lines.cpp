// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/book/vcard_lines.h"

#include <glib.h>

#include <memory>
#include <optional>

#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace mailer {
namespace {

int HexDigit(char c) {
    return g_ascii_xdigit_value(c);
}

std::string FromQuotedPrintable(std::string_view text) {
    std::string plain;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '=' && at + 2 < text.size() && HexDigit(text[at + 1]) >= 0 &&
            HexDigit(text[at + 2]) >= 0) {
            plain += static_cast<char>(HexDigit(text[at + 1]) * 16 + HexDigit(text[at + 2]));
            at += 2;
        } else {
            plain += text[at];
        }
    }
    return plain;
}

std::optional<std::string> Converted(const std::string& text, const char* charset) {
    gsize written = 0;
    const std::unique_ptr<char, decltype(&g_free)> converted(
        g_convert(text.data(), static_cast<gssize>(text.size()), "UTF-8", charset, nullptr, &written,
                  nullptr),
        &g_free);
    return converted ? std::optional(std::string(converted.get(), written)) : std::nullopt;
}

// Old address books use Windows-1252 without saying so.
std::string ToUtf8(const std::string& text, const std::string& charset) {
    if (!charset.empty() && ToUpper(charset) != "UTF-8") {
        if (const auto converted = Converted(text, charset.c_str()); converted && IsUtf8(*converted)) {
            return *converted;
        }
    }
    if (IsUtf8(text)) {
        return text;
    }
    return Converted(text, "WINDOWS-1252").value_or("");
}

// Returns the position of the first of `characters` outside double quotes.
std::size_t FindUnquoted(std::string_view text, std::string_view characters, std::size_t from) {
    bool quoted = false;
    for (std::size_t at = from; at < text.size(); ++at) {
        if (text[at] == '"') {
            quoted = !quoted;
        } else if (!quoted && characters.find(text[at]) != std::string_view::npos) {
            return at;
        }
    }
    return std::string_view::npos;
}

CardLine::Parameter ReadParameter(std::string_view text) {
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos) {
        return {"TYPE", std::string(Trim(text))};
    }
    std::string value(Trim(text.substr(equals + 1)));
    std::erase(value, '"');
    return {ToUpper(Trim(text.substr(0, equals))), value};
}

bool IsQuotedPrintable(const CardLine::Parameter& parameter) {
    const std::string value = ToUpper(parameter.value);
    return value == "QUOTED-PRINTABLE" && (parameter.name == "ENCODING" || parameter.name == "TYPE");
}

std::optional<CardLine> ReadCardLine(std::string_view text) {
    const std::size_t colon = FindUnquoted(text, ":", 0);
    if (colon == std::string_view::npos) {
        return std::nullopt;
    }
    const std::string_view head = text.substr(0, colon);
    std::size_t end = FindUnquoted(head, ";", 0);
    std::string_view name = head.substr(0, end);
    name.remove_prefix(name.rfind('.') == std::string_view::npos ? 0 : name.rfind('.') + 1);
    CardLine line;
    line.name = ToUpper(Trim(name));
    std::string charset;
    bool quotedPrintable = false;
    while (end != std::string_view::npos) {
        const std::size_t start = end + 1;
        end = FindUnquoted(head, ";", start);
        line.parameters.push_back(
            ReadParameter(head.substr(start, end == std::string_view::npos ? end : end - start)));
        const CardLine::Parameter& parameter = line.parameters.back();
        charset = parameter.name == "CHARSET" ? parameter.value : charset;
        quotedPrintable = quotedPrintable || IsQuotedPrintable(parameter);
    }
    const std::string value(text.substr(colon + 1));
    line.value = ToUtf8(quotedPrintable ? FromQuotedPrintable(value) : value, charset);
    return line;
}

bool SaysQuotedPrintable(std::string_view line) {
    return ToUpper(line.substr(0, line.find(':'))).find("QUOTED-PRINTABLE") != std::string::npos;
}

std::string_view TakeLine(std::string_view& text) {
    const std::size_t end = text.find_first_of("\r\n");
    const std::string_view line = text.substr(0, end);
    std::size_t next = end == std::string_view::npos ? text.size() : end + 1;
    if (next < text.size() && text[next - 1] == '\r' && text[next] == '\n') {
        ++next;
    }
    text.remove_prefix(next);
    return line;
}

}  // namespace

std::vector<CardLine> ReadCardLines(std::string_view text, std::size_t longestLine) {
    std::vector<CardLine> lines;
    while (!text.empty()) {
        std::string whole(TakeLine(text).substr(0, longestLine + 1));
        const bool quotedPrintable = SaysQuotedPrintable(whole);
        while (!text.empty()) {
            // A line in quoted-printable continues if it ends in =, whatever the next line begins with
            // (version 2.1).
            const bool quoted = quotedPrintable && whole.ends_with('=');
            const bool folded = text.front() == ' ' || text.front() == '\t';
            if (!folded && !quoted) {
                break;
            }
            if (quoted) {
                whole.pop_back();
            }
            const std::string_view more = TakeLine(text);
            if (whole.size() <= longestLine) {
                whole.append(folded ? more.substr(1) : more);
            }
        }
        if (whole.size() <= longestLine && whole.find('\0') == std::string::npos) {
            if (std::optional<CardLine> line = ReadCardLine(whole)) {
                lines.push_back(std::move(*line));
            }
        }
    }
    return lines;
}

std::vector<std::string> SplitCardValue(std::string_view value, char separator) {
    std::vector<std::string> pieces(1);
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] == '\\' && at + 1 < value.size()) {
            ++at;
            pieces.back() += value[at] == 'n' || value[at] == 'N' ? ' ' : value[at];
        } else if (separator != '\0' && value[at] == separator) {
            pieces.emplace_back();
        } else {
            pieces.back() += value[at];
        }
    }
    return pieces;
}

std::string UnescapedCardValue(std::string_view value) {
    return SplitCardValue(value, '\0').front();
}

}  // namespace mailer
