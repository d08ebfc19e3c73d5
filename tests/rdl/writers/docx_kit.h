// SPDX-License-Identifier: GPL-3.0-or-later
// Word documents of sample reports, written and read again.
#pragma once

#include <gtest/gtest.h>

#include <QXmlStreamReader>
#include <memory>
#include <pugixml.hpp>
#include <string>
#include <utility>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/writers/sample_report.h"
#include "rdl/writers/zip_kit.h"

namespace rdl::writers::test {

inline std::string Docx(const std::unique_ptr<layout::ReportInstance>& report) {
    StringOutput output;
    Options options;
    options.nowTicks = MakeTicks(2024, 2, 29, 13);
    WriteDocx(*report, output, options);
    return output.bytes;
}

// Why a part is not well-formed XML with namespaces; empty if it is.
inline std::string FaultOf(const std::string& part) {
    QXmlStreamReader reader(QByteArray::fromStdString(part));
    while (!reader.atEnd()) {
        reader.readNext();
    }
    return reader.errorString().toStdString();
}

// The text of a part of a document.
class DocxRead {
 public:
    explicit DocxRead(const std::string& part) : m_part(part) {
        EXPECT_EQ(FaultOf(part), "");
        EXPECT_TRUE(m_document.load_string(part.c_str(), pugi::parse_default | pugi::parse_ws_pcdata));
    }
    // The document of a report.
    explicit DocxRead(const std::unique_ptr<layout::ReportInstance>& report)
        : DocxRead(ZipPart(Docx(report), "word/document.xml")) {}

    const std::string& xml() const { return m_part; }
    int Count(const std::string& path) const {
        return static_cast<int>(m_document.select_nodes(path.c_str()).size());
    }
    // The texts of the elements or attributes; in elements a break is | and a tab \t.
    std::vector<std::string> Texts(const std::string& path) const {
        std::vector<std::string> texts;
        for (const pugi::xpath_node& found : m_document.select_nodes(path.c_str())) {
            texts.emplace_back(found.attribute() ? found.attribute().value() : TextOf(found.node()));
        }
        return texts;
    }

 private:
    static std::string TextOf(const pugi::xml_node& node) {
        const std::string name = node.name();
        if (name == "w:t") {
            return node.text().get();
        }
        std::string text = name == "w:br" ? "|" : name == "w:tab" && !node.attribute("w:pos") ? "\t" : "";
        for (const pugi::xml_node& child : node.children()) {
            text += TextOf(child);
        }
        return text;
    }

    std::string m_part;
    pugi::xml_document m_document;
};

}  // namespace rdl::writers::test
