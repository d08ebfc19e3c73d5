// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/parts.h"

#include "rdl/format/format.h"
#include "rdl/format/iso_date.h"
#include "rdl/writers/common/xml_text.h"
#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

void AppendOverride(const std::string& part, const std::string& type, std::string& out) {
    out += "<Override PartName=\"/" + part + "\" ContentType=\"application/vnd.openxmlformats-" + type +
           "+xml\"/>\n";
}

void AppendProperty(const char* element, const std::string& text, std::string& out) {
    if (!text.empty()) {
        out += std::string("<") + element + ">";
        AppendXml(text, out);
        out += std::string("</") + element + ">";
    }
}

}  // namespace

std::string DocxContentTypes(std::size_t margins) {
    std::string types = std::string(XmlDeclaration) +
                        "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\">\n"
                        "<Default Extension=\"rels\" "
                        "ContentType=\"application/vnd.openxmlformats-package.relationships+xml\"/>\n"
                        "<Default Extension=\"xml\" ContentType=\"application/xml\"/>\n"
                        "<Default Extension=\"png\" ContentType=\"image/png\"/>\n"
                        "<Default Extension=\"jpeg\" ContentType=\"image/jpeg\"/>\n";
    const std::string word = "officedocument.wordprocessingml.";
    AppendOverride("word/document.xml", word + "document.main", types);
    AppendOverride("word/styles.xml", word + "styles", types);
    AppendOverride("word/settings.xml", word + "settings", types);
    for (std::size_t i = 0; i < margins; ++i) {
        AppendOverride("word/header" + std::to_string(i) + ".xml", word + "header", types);
        AppendOverride("word/footer" + std::to_string(i) + ".xml", word + "footer", types);
    }
    AppendOverride("docProps/core.xml", "package.core-properties", types);
    return types + "</Types>";
}

std::string DocxRootRelations() {
    std::string relations(XmlDeclaration);
    relations +=
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">"
        "<Relationship Id=\"rId1\" "
        "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/"
        "officeDocument\" Target=\"word/document.xml\"/>"
        "<Relationship Id=\"rId2\" Type=\"http://schemas.openxmlformats.org/package/2006/relationships/"
        "metadata/core-properties\" Target=\"docProps/core.xml\"/></Relationships>";
    return relations;
}

std::string DocxProperties(const DocumentInfo& info, std::int64_t nowTicks) {
    const DateTimeParts at = SplitTicks(nowTicks);
    std::string core =
        std::string(XmlDeclaration) +
        "<cp:coreProperties "
        "xmlns:cp=\"http://schemas.openxmlformats.org/package/2006/metadata/core-properties\" "
        "xmlns:dc=\"http://purl.org/dc/elements/1.1/\" xmlns:dcterms=\"http://purl.org/dc/terms/\" "
        "xmlns:xsi=\"http://www.w3.org/2001/XMLSchema-instance\">";
    AppendProperty("dc:title", info.title, core);
    AppendProperty("dc:creator", info.author, core);
    AppendProperty("dc:description", info.description, core);
    AppendProperty("dc:language", info.language, core);
    return core + "<dcterms:created xsi:type=\"dcterms:W3CDTF\">" + IsoDate(at) + "T" + IsoTime(at) + "Z" +
           "</dcterms:created></cp:coreProperties>";
}

// Mode 15 is the layout of present word processors: a table begins at its border, not at its text.
std::string DocxSettings() {
    return std::string(XmlDeclaration) + "<w:settings" + DocxNamespaces() +
           "><w:defaultTabStop w:val=\"720\"/><w:compat><w:compatSetting w:name=\"compatibilityMode\" "
           "w:uri=\"http://schemas.microsoft.com/office/word\" w:val=\"15\"/></w:compat></w:settings>";
}

}  // namespace rdl::writers
