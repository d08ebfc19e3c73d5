// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/relations.h"

#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

constexpr std::size_t MostKnown = 4096;  // further targets get a relationship each time

}  // namespace

std::string DocxRelations::Add(const char* type, const std::string& target) {
    return Add(type, target, "");
}

std::string DocxRelations::AddLink(const std::string& address) {
    return Add("hyperlink", address, " TargetMode=\"External\"");
}

std::string DocxRelations::Add(const char* type, const std::string& target, const char* mode) {
    if (const auto known = m_known.find(target); known != m_known.end()) {
        return "rId" + std::to_string(known->second);
    }
    ++m_count;
    if (m_known.size() < MostKnown) {
        m_known.emplace(target, m_count);
    }
    std::string id = "rId" + std::to_string(m_count);
    std::string element = "<Relationship";
    AppendAttribute("Id", id, element);
    AppendAttribute(
        "Type", std::string("http://schemas.openxmlformats.org/officeDocument/2006/relationships/") + type,
        element);
    AppendAttribute("Target", target, element);
    m_spool.Append(element + mode + "/>");
    return id;
}

void DocxRelations::Write(DocxZip& archive, const std::string& folder, const std::string& name) {
    if (m_count == 0) {
        return;
    }
    archive.Add(folder + "/_rels/" + name + ".rels", [this](const Spool::Take& take) {
        take(XmlDeclaration);
        take("<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">");
        m_spool.Read(take);
        take("</Relationships>");
    });
}

}  // namespace rdl::writers
