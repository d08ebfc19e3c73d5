// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/connect_string.h"

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

std::string KeyOf(std::string_view text) {
    std::string key;
    for (const char c : LowerAscii(text)) {
        if (!IsAsciiSpace(c) && c != '_') {
            key.push_back(c);
        }
    }
    return key;
}

// Reads one value at `at` and moves `at` after its semicolon.
std::string ReadValue(std::string_view text, std::size_t& at) {
    while (at < text.size() && (text[at] == ' ' || text[at] == '\t')) {
        ++at;
    }
    const char open = at < text.size() ? text[at] : '\0';
    std::string value;
    if (open == '"' || open == '\'' || open == '{') {
        const char close = open == '{' ? '}' : open;
        for (++at; at < text.size(); ++at) {
            if (text[at] != close) {
                value.push_back(text[at]);
            } else if (at + 1 < text.size() && text[at + 1] == close) {
                value.push_back(text[at++]);
            } else {
                break;
            }
        }
        at = text.find(';', at);
    } else {
        const std::size_t end = text.find(';', at);
        value = Trimmed(text.substr(at, end == std::string_view::npos ? end : end - at));
        at = end;
    }
    at = at == std::string_view::npos ? text.size() : at + 1;
    return value;
}

}  // namespace

ConnectString::ConnectString(std::string_view text) {
    text = Trimmed(text);
    if (!text.empty() && text.find('=') == std::string_view::npos) {
        std::size_t at = 0;
        m_pairs.emplace_back("Data Source", ReadValue(text, at));
        return;
    }
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t equals = text.find('=', at);
        const std::size_t end = text.find(';', at);
        if (equals == std::string_view::npos || end < equals) {
            at = end == std::string_view::npos ? text.size() : end + 1;
            continue;
        }
        std::string key(Trimmed(text.substr(at, equals - at)));
        at = equals + 1;
        m_pairs.emplace_back(std::move(key), ReadValue(text, at));
    }
}

std::string ConnectString::Get(std::initializer_list<std::string_view> keys) const {
    for (const std::string_view key : keys) {
        const std::string wanted = KeyOf(key);
        for (const auto& [name, value] : m_pairs) {
            if (KeyOf(name) == wanted) {
                return value;
            }
        }
    }
    return {};
}

bool ConnectString::Has(std::initializer_list<std::string_view> keys) const {
    for (const std::string_view key : keys) {
        const std::string wanted = KeyOf(key);
        for (const auto& pair : m_pairs) {
            if (KeyOf(pair.first) == wanted) {
                return true;
            }
        }
    }
    return false;
}

}  // namespace rdl
