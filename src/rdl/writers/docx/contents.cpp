// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/contents.h"

#include <algorithm>

#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

constexpr std::size_t MostEntries = 10'000;

// Headings and the TC fields of labels that no heading shows; links, no page numbers: only a word processor
// knows on which page an entry is.
constexpr const char* Field =
    "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText xml:space=\"preserve\"> TOC \\o "
    "&quot;1-9&quot; \\f C \\h \\n </w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"separate\"/></w:r>";

}  // namespace

std::string DocxContents::Add(const std::string& label, int level) {
    if (m_count == MostEntries) {
        return {};
    }
    const std::string name = "_Toc" + std::to_string(++m_count);
    std::string entry = "<w:p><w:pPr><w:pStyle w:val=\"TOC" +
                        std::to_string(std::clamp(level, 0, DocxMostLevels - 1) + 1) + "\"/></w:pPr>";
    entry += m_count == 1 ? Field : "";
    entry += "<w:hyperlink w:anchor=\"" + name + "\" w:history=\"1\"><w:r>";
    AppendRunText(label, entry);
    m_spool.Append(entry + "</w:r></w:hyperlink></w:p>\n");
    return name;
}

void DocxContents::Write(const std::string& end, const Spool::Take& take) {
    take("<w:p><w:pPr><w:pStyle w:val=\"TOCHeading\"/></w:pPr><w:r><w:t>Contents</w:t></w:r></w:p>\n");
    m_spool.Read(take);
    take("<w:p><w:pPr>" + end + "</w:pPr><w:r><w:fldChar w:fldCharType=\"end\"/></w:r></w:p>\n");
}

}  // namespace rdl::writers
