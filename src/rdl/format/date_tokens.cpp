// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/format/date_tokens.h"

#include <algorithm>

#include "rdl/format/date_format.h"
#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr std::string_view QtLetters = "dMyHhmsAaBbt";

void AddText(DateTokens& tokens, std::string_view text) {
    if (tokens.empty() || tokens.back().letter != 0) {
        tokens.emplace_back();
    }
    tokens.back().text += text;
}

// Returns the length of the pattern letters at `i`; AP in any case is the AM/PM designator.
std::size_t LettersAt(std::string_view pattern, std::size_t i) {
    const bool half = AsciiLower(pattern[i]) == 'a';
    return half && i + 1 < pattern.size() && AsciiLower(pattern[i + 1]) == 'p' ? 2 : RepeatCount(pattern, i);
}

DateTokens Cut(std::string_view pattern) {
    DateTokens tokens;
    for (std::size_t i = 0; i < pattern.size();) {
        std::string literal;
        if (pattern[i] == '\'') {
            i += AppendPatternLiteral(pattern, i, literal);
            AddText(tokens, literal);
        } else if (QtLetters.find(pattern[i]) != std::string_view::npos) {
            const std::size_t length = LettersAt(pattern, i);
            tokens.push_back({pattern[i], std::string(pattern.substr(i, length))});
            i += length;
        } else {
            AddText(tokens, pattern.substr(i++, 1));
        }
    }
    return tokens;
}

void SetLetters(DateToken& token, char letter, std::size_t count) {
    token.letter = letter;
    token.text.assign(count, letter);
}

bool IsZone(const DateToken& token) {
    return token.letter == 't';
}

bool IsHalf(const DateToken& token) {
    return std::string_view("AaBb").find(token.letter) != std::string_view::npos && token.letter != 0;
}

bool IsKept(const DateToken& token, std::string_view kept) {
    return token.letter != 0 && kept.find(token.letter) != std::string_view::npos &&
           (token.letter != 'd' || token.text.size() <= 2);
}

// What is written to a number without a blank: a full stop, the word "day" of Chinese.
std::string_view Suffix(std::string_view text) {
    const std::size_t end = std::min(text.find_first_of(" ,"), text.find("\xD8\x8C"));
    return text.substr(0, end);
}

}  // namespace

DateTokens ReadDateTokens(std::string_view pattern) {
    DateTokens tokens = Cut(pattern);
    const bool halves = std::any_of(tokens.begin(), tokens.end(), IsHalf);
    tokens.erase(std::remove_if(tokens.begin(), tokens.end(), IsZone), tokens.end());
    for (DateToken& token : tokens) {
        if (IsHalf(token)) {
            SetLetters(token, 't', 2);
        } else if (token.letter == 'h' && !halves) {
            SetLetters(token, 'H', token.text.size());
        } else if (token.letter == 'y') {
            SetLetters(token, 'y', 4);
        }
    }
    return tokens;
}

std::string PatternOf(const DateTokens& tokens) {
    std::string pattern;
    for (const DateToken& token : tokens) {
        const bool plain =
            token.letter != 0 || std::none_of(token.text.begin(), token.text.end(), [](char c) {
                return IsAsciiLetter(c) || std::string_view("'\"\\%").find(c) != std::string_view::npos;
            });
        if (plain) {
            pattern += token.text;
            continue;
        }
        pattern += '\'';
        for (const char c : token.text) {
            pattern += c == '\'' || c == '\\' ? "\\" : "";
            pattern += c;
        }
        pattern += '\'';
    }
    return pattern;
}

DateTokens OnlyLetters(const DateTokens& tokens, std::string_view kept) {
    DateTokens result;
    std::string before;    // text since the last letter that is kept
    bool leftOut = false;  // a pattern letter was dropped since then
    for (const DateToken& token : tokens) {
        if (IsKept(token, kept)) {
            if (!before.empty() && !(result.empty() && leftOut)) {
                result.push_back({0, before});
            }
            result.push_back(token);
            before.clear();
            leftOut = false;
        } else if (token.letter != 0) {
            leftOut = true;
        } else if (!leftOut) {
            before = token.text;
        }
    }
    const std::string_view last = leftOut ? Suffix(before) : std::string_view(before);
    if (!last.empty()) {
        result.push_back({0, std::string(last)});
    }
    return result;
}

}  // namespace rdl
