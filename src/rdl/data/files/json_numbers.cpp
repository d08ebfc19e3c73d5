// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/json_numbers.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <charconv>
#include <cstdint>

#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

bool IsOfNumber(char c) {
    return IsAsciiDigit(c) || c == '-' || c == '+' || c == '.' || c == 'e' || c == 'E';
}

std::size_t SkipDigits(std::string_view text, std::size_t at) {
    while (at < text.size() && IsAsciiDigit(text[at])) {
        ++at;
    }
    return at;
}

// -?(0|[1-9][0-9]*)(\.[0-9]+)?([eE][+-]?[0-9]+)?
bool IsNumber(std::string_view text) {
    std::size_t at = text.starts_with('-') ? 1 : 0;
    std::size_t end = SkipDigits(text, at);
    if (end == at || (text[at] == '0' && end > at + 1)) {
        return false;
    }
    at = end;
    if (at < text.size() && text[at] == '.') {
        end = SkipDigits(text, at + 1);
        if (end == at + 1) {
            return false;
        }
        at = end;
    }
    if (at < text.size() && (text[at] == 'e' || text[at] == 'E')) {
        at += at + 1 < text.size() && (text[at + 1] == '+' || text[at + 1] == '-') ? 2 : 1;
        end = SkipDigits(text, at);
        if (end == at) {
            return false;
        }
        at = end;
    }
    double number = 0;
    const auto [stop, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    return at == text.size() && failure == std::errc();
}

// Returns the place after the text that begins at `at`, or the end.
std::size_t EndOfText(std::string_view bytes, std::size_t at) {
    for (++at; at < bytes.size(); ++at) {
        if (bytes[at] == '\\') {
            ++at;
        } else if (bytes[at] == '"') {
            return at + 1;
        }
    }
    return bytes.size();
}

}  // namespace

std::optional<JsonNumbers> JsonNumbers::Of(std::string_view bytes) {
    JsonNumbers numbers;
    for (std::size_t at = 0; at < bytes.size();) {
        std::size_t end = at + 1;
        if (bytes[at] == '"') {
            end = EndOfText(bytes, at);
        } else if (bytes[at] == '-' || IsAsciiDigit(bytes[at])) {
            while (end < bytes.size() && IsOfNumber(bytes[end])) {
                ++end;
            }
            const std::string_view number = bytes.substr(at, end - at);
            if (!IsNumber(number)) {
                return std::nullopt;
            }
            numbers.m_indexed += std::to_string(numbers.m_numbers.size());
            numbers.m_numbers.push_back(number);
            at = end;
            continue;
        }
        if (bytes[at] == '.' || bytes[at] == '+') {
            return std::nullopt;  // of a number that begins with it
        }
        numbers.m_indexed += bytes.substr(at, end - at);
        at = end;
    }
    return numbers;
}

std::string_view JsonNumbers::Text(const QJsonValue& index) const {
    return m_numbers.at(static_cast<std::size_t>(index.toInteger()));
}

// Goes as deep as the parser, which has a limit.
QJsonValue JsonNumbers::Parsed(const QJsonValue& indexed) const {
    if (indexed.isDouble()) {
        const std::string text = "[" + std::string(Text(indexed)) + "]";
        return QJsonDocument::fromJson(QByteArray::fromStdString(text)).array().at(0);
    }
    if (indexed.isArray()) {
        QJsonArray list;
        for (const QJsonValue& element : indexed.toArray()) {
            list.append(Parsed(element));
        }
        return list;
    }
    if (indexed.isObject()) {
        QJsonObject object = indexed.toObject();
        for (auto member = object.begin(); member != object.end(); ++member) {
            member.value() = Parsed(member.value());
        }
        return object;
    }
    return indexed;
}

}  // namespace rdl::data
