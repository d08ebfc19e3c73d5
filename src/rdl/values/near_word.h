// SPDX-License-Identifier: GPL-3.0-or-later
// What a mistyped word may mean.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace rdl {

// Keeps the nearest of the words that it is shown, upper and lower case alike; of equally near ones the
// first. A word is near that one typing error makes of the other, in longer words up to three.
class NearWord {
 public:
    // `wanted` must outlive it.
    explicit NearWord(std::string_view wanted);
    // Nearest() has `before` before the word.
    void Try(std::string_view word, std::string_view before = {});
    // Returns an empty text if none is near.
    const std::string& Nearest() const { return m_nearest; }

 private:
    std::string_view m_wanted;
    std::size_t m_least;  // only what is nearer counts
    std::string m_nearest;
};

}  // namespace rdl
