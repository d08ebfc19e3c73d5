// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/shared_file.h"

#include <utility>

#include "designer/document/editing.h"

namespace designer {

SharedFile::SharedFile(std::filesystem::path file)
    : m_file(std::move(file)), m_stamp(StampOf(m_file)), m_document(ReadReportFile(m_file)) {}

std::string SharedFile::TextAt(const std::string& path) const {
    return m_document.TextAt(m_document.Root(), path).value_or("");
}

void SharedFile::Write(const std::vector<Change>& changes) {
    std::vector<TextChange> texts;
    texts.reserve(changes.size());
    for (const Change& change : changes) {
        texts.push_back({m_document.Root(), change.path, change.text});
    }
    SetTexts(m_document, texts, "Change");
    if (!m_document.IsModified()) {
        return;
    }
    if (StampOf(m_file) != m_stamp) {
        throw EditError("Another program has changed the file; open the dialog again");
    }
    WriteReportFile(m_file, m_document.Bytes());
}

}  // namespace designer
