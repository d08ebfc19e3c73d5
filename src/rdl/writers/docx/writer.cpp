// SPDX-License-Identifier: GPL-3.0-or-later
#include <string>
#include <vector>

#include "rdl/writers/common/flow_text.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/docx/body.h"
#include "rdl/writers/docx/page.h"
#include "rdl/writers/docx/parts.h"
#include "rdl/writers/docx/text.h"
#include "rdl/writers/docx/zip.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::PageSetup;

// One run of the writer.
class Writer {
 public:
    Writer(layout::ReportInstance& report, const Options& options)
        : m_report(report), m_options(options), m_archive(options.nowTicks), m_document(m_archive) {}

    void Write(Output& output);

 private:
    // The parts at the margins of the document's sections are numbered from 1; number 0 is empty.
    std::string AddMargin(const char* kind, std::size_t number, const std::vector<Instance>& items,
                          const FlowBody::Backdrop& backdrop);
    DocxMargins AddMargins(layout::SectionInstance& section, std::size_t number);
    // Writes the sections. Returns the properties of the last one.
    std::string WriteSections(DocxBody& body);
    void AddDocument(Spool& text, const std::string& lastSection);

    layout::ReportInstance& m_report;
    const Options& m_options;
    DocxZip m_archive;
    DocxDocument m_document;
    DocxContents m_contents;
    DocxRelations m_relations;
};

std::string Writer::AddMargin(const char* kind, std::size_t number, const std::vector<Instance>& items,
                              const FlowBody::Backdrop& backdrop) {
    const std::string name = kind + std::to_string(number) + ".xml";
    const std::string element = std::string(kind) == "header" ? "w:hdr" : "w:ftr";
    DocxRelations relations;
    Spool spool;
    DocxBody body(m_document, relations, nullptr, spool);
    body.Raw(std::string(XmlDeclaration) + "<" + element + DocxNamespaces() + ">");
    body.Margin(items, backdrop.height, backdrop);
    body.Raw("</" + element + ">");
    body.Flush();
    m_archive.Add("word/" + name, spool);
    relations.Write(m_archive, "word", name);
    return m_relations.Add(kind, name);
}

// A section without a header would have the one of the section before it.
DocxMargins Writer::AddMargins(layout::SectionInstance& section, std::size_t number) {
    const PageSetup& page = section.page;
    const std::string noHeader = m_relations.Add("header", "header0.xml");
    const std::string noFooter = m_relations.Add("footer", "footer0.xml");
    DocxMargins margins{noHeader, noFooter, "", ""};
    std::vector<Instance> header, footer;
    if (page.headerHeight > 0) {
        header = section.Header({});
    }
    if (page.footerHeight > 0) {
        footer = section.Footer({});
    }
    margins.header =
        AddMargin("header", number, header, {page.headerStyle, section.bodyWidth, page.headerHeight});
    margins.footer =
        AddMargin("footer", number, footer, {page.footerStyle, section.bodyWidth, page.footerHeight});
    if (HasTitlePage(page)) {
        margins.firstHeader = page.headerOnFirst ? margins.header : noHeader;
        margins.firstFooter = page.footerOnFirst ? margins.footer : noFooter;
    }
    return margins;
}

std::string Writer::WriteSections(DocxBody& body) {
    std::string properties;
    for (std::size_t i = 0; i < m_report.sections.size(); ++i) {
        layout::SectionInstance& section = *m_report.sections[i];
        const DocxMargins margins = AddMargins(section, i + 1);
        properties = SectionProperties(PaperOf(section), margins);
        const bool isLast = i + 1 == m_report.sections.size();
        body.Section(section.items, {section.bodyStyle, section.bodyWidth, section.bodyHeight},
                     isLast ? "" : properties);
    }
    return properties;
}

void Writer::AddDocument(Spool& text, const std::string& lastSection) {
    m_archive.Add("word/document.xml", [&](const Spool::Take& take) {
        take(std::string(XmlDeclaration) + "<w:document" + DocxNamespaces() + "><w:body>\n");
        if (!m_contents.empty()) {
            PageSetup page = PaperOf(*m_report.sections.front());
            page.headerHeight = page.footerHeight = 0;
            page.columns = 1;
            m_contents.Write(SectionProperties(page, {}), take);
        }
        text.Read(take);
        take(lastSection + "</w:body></w:document>");
    });
}

void Writer::Write(Output& output) {
    m_archive.Add("[Content_Types].xml", DocxContentTypes(m_report.sections.size() + 1));
    m_archive.Add("_rels/.rels", DocxRootRelations());
    const DocumentInfo info = InfoOf(m_report);
    m_archive.Add("docProps/core.xml", DocxProperties(info, m_options.nowTicks));
    m_relations.Add("styles", "styles.xml");
    m_relations.Add("settings", "settings.xml");
    AddMargin("header", 0, {}, {});
    AddMargin("footer", 0, {}, {});
    Spool text;
    DocxBody body(m_document, m_relations, &m_contents, text);
    const std::string lastSection = WriteSections(body);
    body.Flush();
    AddDocument(text, lastSection);
    m_archive.Add("word/styles.xml", m_document.styles.Part(info.language));
    m_archive.Add("word/settings.xml", DocxSettings());
    m_relations.Write(m_archive, "word", "document.xml");
    m_archive.Finish(output);
}

}  // namespace

void WriteDocx(layout::ReportInstance& report, Output& output, const Options& options) {
    Writer(report, options).Write(output);
}

}  // namespace rdl::writers
