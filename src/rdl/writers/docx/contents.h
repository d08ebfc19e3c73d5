// SPDX-License-Identifier: GPL-3.0-or-later
// The table of contents of a document, from the labels of its document map (ECMA-376 Part 1, 17.16.5.68 TOC).
#pragma once

#include <cstddef>
#include <string>

#include "rdl/spool/spool.h"

namespace rdl::writers {

inline constexpr int DocxMostLevels = 9;  // of headings and tables of contents

class DocxContents {
 public:
    // Adds a label in document order, at a level from 0. Returns the name of the bookmark for its place; an
    // empty text after the last entry that a table of contents can have.
    std::string Add(const std::string& label, int level);
    bool empty() const { return m_count == 0; }
    // Passes the table on as paragraphs; `end` are the properties of its last paragraph.
    void Write(const std::string& end, const Spool::Take& take);

 private:
    Spool m_spool;
    std::size_t m_count = 0;
};

}  // namespace rdl::writers
