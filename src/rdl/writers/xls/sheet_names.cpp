// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/sheet_names.h"

#include <QChar>
#include <algorithm>
#include <string_view>

#include "rdl/writers/xls/record.h"

namespace rdl::writers {
namespace {

constexpr std::size_t LongestName = 31;

std::u16string Folded(std::u16string name) {
    for (char16_t& c : name) {
        c = c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 32) : c;
    }
    return name;
}

// Without what a sheet's name may not have.
std::u16string ValidName(const std::string& wanted) {
    std::u16string name = ToUtf16(wanted, 200);
    for (char16_t& c : name) {
        if (c < 0x20 || std::u16string_view(u":\\/?*[]").find(c) != std::u16string_view::npos) {
            c = u'_';
        }
    }
    name.erase(0, std::min(name.find_first_not_of(u"' "), name.size()));
    name.resize(std::min(name.size(), LongestName));
    if (!name.empty() && QChar::isHighSurrogate(name.back())) {
        name.pop_back();  // half a character
    }
    name.resize(name.find_last_not_of(u"' ") + 1);
    if (Folded(name) == u"history") {
        name += u'_';  // Excel keeps that name for itself
    }
    return name;
}

std::u16string Numbered(const std::u16string& name, int number) {
    const std::string digits = " (" + std::to_string(number) + ")";
    return name.substr(0, LongestName - digits.size()) + std::u16string(digits.begin(), digits.end());
}

}  // namespace

std::u16string XlsSheetNames::Next(const std::string& own) {
    std::u16string wanted = ValidName(own);
    if (wanted.empty()) {
        wanted = ValidName(m_title);
    }
    if (wanted.empty()) {
        wanted = u"Sheet1";
    }
    std::u16string name = wanted;
    int& number = m_lastNumbers.try_emplace(Folded(wanted), 1).first->second;
    while (!m_used.insert(Folded(name)).second) {
        name = Numbered(wanted, ++number);
    }
    return name;
}

}  // namespace rdl::writers
