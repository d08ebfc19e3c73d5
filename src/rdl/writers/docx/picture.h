// SPDX-License-Identifier: GPL-3.0-or-later
// Writes images as pictures in the line of text (ECMA-376 Part 1, 20.2 and 20.4.2.8).
#pragma once

#include <map>
#include <memory>
#include <string>

#include "rdl/layout/model/instance.h"
#include "rdl/writers/docx/relations.h"
#include "rdl/writers/docx/zip.h"

namespace rdl::writers {

class DocxPictures {
 public:
    explicit DocxPictures(DocxZip& archive) : m_archive(archive) {}
    // Appends the image of an item at its size as a run, nothing if it has no bytes. `relations` are those of
    // the part that the run is in. A GIF or BMP becomes a PNG. Raises rdl::Error naming the item if its
    // format is not supported.
    void Append(const layout::Instance& item, DocxRelations& relations, std::string& out);

 private:
    const std::string& FileOf(const layout::Instance& item);

    DocxZip& m_archive;
    std::map<std::string, std::string> m_files;  // by a digest of the image
    std::shared_ptr<const std::string> m_last;   // tables repeat the same image in many rows
    std::string m_lastFile;
    int m_count = 0;
};

}  // namespace rdl::writers
