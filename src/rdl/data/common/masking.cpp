// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/masking.h"

#include <QtCore/QChar>
#include <algorithm>
#include <cstddef>
#include <vector>

#include "rdl/values/characters.h"
#include "rdl/values/utf8.h"

namespace rdl::data {
namespace {

using Text = std::u32string;
using View = std::u32string_view;

constexpr std::size_t LongWord = 6;

// Words of that length that messages of servers, drivers and networks use.
constexpr View LongWordsOfMessages =
    U" access account address administrator already answer authenticate authentication authorization "
    U"before between cannot certificate client closed column command communication connect connected "
    U"connecting connection connections contact cursor database default denied directory disabled "
    U"driver encryption exception execute exists expired failed failure freetds function granted "
    U"handshake incorrect internal invalid length localhost locked manager manual mariadb maximum "
    U"message microsoft missing native network number object operation option oracle parameter "
    U"password passwords permission please postgres postgresql privilege problem procedure protocol "
    U"provided reason refused rejected relation remote report request required result schema select "
    U"server service session socket source specified sqlserver statement string supplied support "
    U"supported syntax system terminated timeout transaction trusted unable unexpected unixodbc "
    U"unknown username version ";
// Words before a quoted name that is not a password.
constexpr View KindsOfNames =
    U" at column constraint database driver field function host index login near procedure relation role "
    U"schema server source table type user ";

bool HasWord(View list, const Text& word) {
    return list.find(U" " + word + U" ") != View::npos;
}

bool IsOfName(char32_t c) {
    return c == U'_' || QChar::isLetterOrNumber(c) || QChar::isMark(c);
}

bool IsQuoteOrBracket(char32_t c) {
    switch (QChar::category(c)) {
        case QChar::Punctuation_Open:
        case QChar::Punctuation_Close:
        case QChar::Punctuation_InitialQuote:
        case QChar::Punctuation_FinalQuote:
            return true;
        default:
            return View(U"\"'`<>").find(c) != View::npos;
    }
}

// Whether messages may say it by themselves, a number among other things.
bool IsWordOfMessages(const Text& word) {
    const auto digits = std::count_if(word.begin(), word.end(), [](char32_t c) { return QChar::isDigit(c); });
    const bool isMixed = digits > 0 && static_cast<std::size_t>(digits) < word.size();
    return HasWord(LongWordsOfMessages, word) ||
           (word.size() < LongWord && !isMixed && word.find(U'_') == Text::npos);
}

// One such word or two, with punctuation, or punctuation alone.
bool IsMadeOfTheirWords(View password) {
    constexpr std::size_t MostWords = 2;
    std::vector<Text> words;
    bool isInWord = false;
    bool hasSign = false;
    for (const char32_t c : Lower(Text(password))) {
        if (IsOfName(c)) {
            if (!isInWord) {
                words.emplace_back();
            }
            words.back() += c;
        }
        isInWord = IsOfName(c);
        hasSign = hasSign || !(isInWord || c == U' ' || QChar::isPunct(c)) ||
                  View(U"!#%&*@\\").find(c) != View::npos;
    }
    if (words.empty()) {
        return password.size() < LongWord;
    }
    return !hasSign && words.size() <= MostWords && std::all_of(words.begin(), words.end(), IsWordOfMessages);
}

// One password in one text.
class Mask {
 public:
    Mask(View text, const Secret& secret) : m_text(text), m_password(ToUtf32(secret.password)) {
        m_isPlain = IsMadeOfTheirWords(m_password) ||
                    std::any_of(secret.names.begin(), secret.names.end(), [this](const std::string& name) {
                        return Lower(ToUtf32(name)) == Lower(m_password);
                    });
    }

    Text Apply() const {
        Text result;
        std::size_t done = 0;
        for (std::size_t at = m_text.find(m_password); at != View::npos; at = m_text.find(m_password, at)) {
            const bool isStruckOut = IsWhole(at) && (!m_isPlain || IsValue(at));
            result += m_text.substr(done, at - done);
            result += isStruckOut ? View(U"***") : m_text.substr(at, 1);
            at += isStruckOut ? m_password.size() : 1;
            done = at;
        }
        return result.append(m_text.substr(done));
    }

 private:
    // 0 beyond the text.
    char32_t At(std::size_t at) const { return at < m_text.size() ? m_text[at] : U'\0'; }
    char32_t Before(std::size_t at) const { return at > 0 ? m_text[at - 1] : U'\0'; }

    bool IsWhole(std::size_t at) const {
        return !(IsOfName(m_password.front()) && IsOfName(Before(at))) &&
               !(IsOfName(m_password.back()) && IsOfName(At(at + m_password.size())));
    }

    bool IsValue(std::size_t at) const {
        // Enough for a word and what may stand between; a server may send megabytes.
        constexpr std::size_t Lookback = 64;
        const char32_t next = At(at + m_password.size());
        View before = m_text.substr(at - std::min(at, Lookback), std::min(at, Lookback));
        while (!before.empty() && (before.back() == U' ' || IsQuoteOrBracket(before.back()))) {
            before.remove_suffix(1);
        }
        const Text lower = Lower(Text(before));
        if (lower.ends_with(U"pwd=") || lower.ends_with(U"password=") ||
            (lower.ends_with(U':') && next == U'@')) {
            return true;
        }
        return IsQuoteOrBracket(Before(at)) && IsQuoteOrBracket(next) && !IsNamed(lower) &&
               !IsNameOfDriver(at);
    }

    // Whether the text before the quotes says that a name is in them: user "p", "shop"."p", "ann"@"p".
    static bool IsNamed(const Text& before) {
        if (before.ends_with(U'.') || before.ends_with(U'@')) {
            return true;
        }
        const auto begin = std::find_if_not(before.rbegin(), before.rend(), IsOfName).base();
        return HasWord(KindsOfNames, Text(begin, before.end()));
    }

    // [unixODBC][Driver Manager]
    bool IsNameOfDriver(std::size_t at) const {
        return Before(at) == U'[' && (at == 1 || m_text[at - 2] == U']');
    }

    View m_text;
    Text m_password;
    bool m_isPlain = false;
};

}  // namespace

std::string Masked(std::string_view text, const Secret& secret) {
    if (secret.password.empty()) {
        return std::string(text);
    }
    const Text open = ToUtf32(text);
    return ToUtf8(Mask(open, secret).Apply());
}

}  // namespace rdl::data
