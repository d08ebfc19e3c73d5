// SPDX-License-Identifier: GPL-3.0-or-later
// The relationships of one part: what it refers to outside itself (ECMA-376 Part 2, 9.3).
#pragma once

#include <cstddef>
#include <string>
#include <unordered_map>

#include "rdl/spool/spool.h"
#include "rdl/writers/docx/zip.h"

namespace rdl::writers {

class DocxRelations {
 public:
    // Each returns the id of the relationship. `type` is the last word of its type; a link leads to an
    // address outside the document.
    std::string Add(const char* type, const std::string& target);
    std::string AddLink(const std::string& address);
    // Adds the part with the relationships of the part `folder`/`name`; none if there are no relationships.
    void Write(DocxZip& archive, const std::string& folder, const std::string& name);

 private:
    std::string Add(const char* type, const std::string& target, const char* mode);

    Spool m_spool;
    std::size_t m_count = 0;
    std::unordered_map<std::string, std::size_t> m_known;  // by target; not all of very many
};

}  // namespace rdl::writers
