// SPDX-License-Identifier: GPL-3.0-or-later
// A file that several reports share, NAME.rds or NAME.rsd, as it is changed: what is not changed of it stays
// byte for byte.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "designer/document/document.h"
#include "designer/document/report_file.h"

namespace designer {

class SharedFile {
 public:
    // Raises RuntimeError if the file cannot be read, and SourceFlaw if it is not well-formed.
    explicit SharedFile(std::filesystem::path file);

    const std::filesystem::path& Path() const { return m_file; }
    bool Has(const std::string& path) const { return m_document.Find(m_document.Root(), path) != NoElement; }
    // Returns the text of the element at the path from the root; empty if there is none.
    std::string TextAt(const std::string& path) const;

    struct Change {
        std::string path, text;
    };
    // Writes the texts, whole or not at all. Raises EditError if another program has changed the file
    // meanwhile, RuntimeError as WriteReportFile, and SourceFlaw for a character that its encoding does not
    // have.
    void Write(const std::vector<Change>& changes);

 private:
    const std::filesystem::path m_file;
    const std::optional<FileStamp> m_stamp;  // when the file was read
    Document m_document;
};

}  // namespace designer
