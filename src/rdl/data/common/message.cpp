// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/message.h"

#include <algorithm>

#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"

namespace rdl::data {
namespace {

constexpr std::size_t LongestText = 400;

}  // namespace

std::string TookTooLong(int seconds) {
    return "the query took longer than " + std::to_string(seconds) + (seconds == 1 ? " second" : " seconds") +
           " and was given up";
}

std::string CleanText(std::string_view text) {
    std::string clean;
    clean.reserve(std::min(text.size(), LongestText + 4));
    for (const char c : Trimmed(text)) {
        if (clean.size() > LongestText) {
            break;
        }
        const bool blank = static_cast<unsigned char>(c) <= ' ' || c == 0x7F;
        if (blank && !clean.empty() && clean.back() == ' ') {
            continue;
        }
        clean.push_back(blank ? ' ' : (c == '\'' || c == '`') ? '"' : c);
    }
    if (clean.size() > LongestText) {
        return std::string(WholeCharacters(clean, LongestText)) + " ...";
    }
    while (!clean.empty() && (clean.back() == '.' || clean.back() == ' ')) {
        clean.pop_back();
    }
    return clean;
}

std::string CleanText(std::string_view text, const Secret& secret) {
    return CleanText(Masked(text, secret));
}

}  // namespace rdl::data
