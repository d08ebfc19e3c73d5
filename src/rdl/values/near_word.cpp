// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/near_word.h"

#include <algorithm>
#include <vector>

#include "rdl/values/ascii.h"

namespace rdl {
namespace {

constexpr std::size_t LongestWord = 40;

// Short words are near to many others.
std::size_t Most(std::size_t length) {
    return length < 6 ? 1 : length < 10 ? 2 : 3;
}

bool Same(char a, char b) {
    return AsciiLower(a) == AsciiLower(b);
}

// Characters added, removed, replaced or exchanged with the next.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before, last, now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        now[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before = std::move(last);
        last = now;
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (Same(a[i - 1], b[j - 1]) ? 0 : 1);
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && Same(a[i - 1], b[j - 2]) && Same(a[i - 2], b[j - 1])) {
                now[j] = std::min(now[j], before[j - 2] + 1);
            }
        }
    }
    return now.back();
}

}  // namespace

NearWord::NearWord(std::string_view wanted)
    : m_wanted(wanted), m_least(wanted.size() > LongestWord ? 0 : Most(wanted.size()) + 1) {}

void NearWord::Try(std::string_view word, std::string_view before) {
    const std::size_t gap =
        word.size() > m_wanted.size() ? word.size() - m_wanted.size() : m_wanted.size() - word.size();
    if (gap >= m_least) {
        return;
    }
    if (const std::size_t distance = Distance(m_wanted, word); distance < m_least) {
        m_least = distance;
        m_nearest = std::string(before) + std::string(word);
    }
}

}  // namespace rdl
