// SPDX-License-Identifier: GPL-3.0-or-later
// A connect string of a report file: pairs key=value separated by semicolons; values may be in " or ' as in
// OLE DB or in { } as in ODBC (the closing mark doubled inside). Of several equal keys the first counts, as
// in ODBC. platform/data_provider/connection_string.h reads the system's own strings: there the last key
// counts, as in OLE DB, and the path of a database may hold semicolons.
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
