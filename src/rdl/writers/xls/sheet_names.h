// SPDX-License-Identifier: GPL-3.0-or-later
// The names of a workbook's sheets: valid, and no two alike in any case.
#pragma once

#include <map>
#include <set>
#include <string>

namespace rdl::writers {

class XlsSheetNames {
 public:
    // `title` names sheets that have no name of their own.
    explicit XlsSheetNames(std::string title) : m_title(std::move(title)) {}
    // Returns the name of the next sheet: the wanted one without what a name may not have, cut to its limit,
    // and numbered if an earlier sheet has it.
    std::u16string Next(const std::string& wanted);

 private:
    std::string m_title;
    std::set<std::u16string> m_used;
    std::map<std::u16string, int> m_lastNumbers;  // of sheets that want the same name
};

}  // namespace rdl::writers
