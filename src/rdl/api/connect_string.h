// SPDX-License-Identifier: GPL-3.0-or-later
// A connect string: pairs key=value separated by semicolons; values may be in " or ' (doubled inside) or in {
// }.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace rdl {

class ConnectString {
 public:
    ConnectString() = default;
    // A text without = is the value of the key "data source": many reports give only a file name.
    explicit ConnectString(std::string_view text);

    // Returns the value of the first key present, ignoring case and blanks in keys; empty if there is none.
    std::string Get(std::initializer_list<std::string_view> keys) const;
    bool Has(std::initializer_list<std::string_view> keys) const;
    const std::vector<std::pair<std::string, std::string>>& Pairs() const { return m_pairs; }

 private:
    std::vector<std::pair<std::string, std::string>> m_pairs;  // keys as written
};

}  // namespace rdl
