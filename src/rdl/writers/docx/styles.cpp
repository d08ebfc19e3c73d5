// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/styles.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "rdl/values/ascii.h"
#include "rdl/writers/docx/contents.h"
#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

using layout::CharStyle;
using layout::Decoration;

constexpr std::size_t MostStyles = 2000;
constexpr int SemiBold = 600;

void AppendSwitch(const char* name, bool on, bool overrides, std::string& out) {
    if (on || overrides) {
        out += std::string("<w:") + name + (on ? "/>" : " w:val=\"0\"/>");
    }
}

// A language has one of three places: that of its script.
std::string LanguageElement(const std::string& language) {
    const std::string primary = LowerAscii(std::string_view(language).substr(0, language.find('-')));
    const char* place = IsOneOf(primary, {"zh", "ja", "ko"})                                 ? "w:eastAsia"
                        : IsOneOf(primary, {"ar", "he", "fa", "ur", "hi", "th", "bn", "ta"}) ? "w:bidi"
                                                                                             : "w:val";
    std::string element = "<w:lang";
    AppendAttribute(place, language, element);
    return element + "/>";
}

void AppendNamedStyle(const std::string& id, const std::string& name, const std::string& properties,
                      std::string& out) {
    out += "<w:style w:type=\"paragraph\" w:styleId=\"" + id + "\"><w:name w:val=\"" + name +
           "\"/><w:basedOn w:val=\"Normal\"/><w:next w:val=\"Normal\"/>" + properties + "</w:style>\n";
}

void AppendOutlineStyles(std::string& out) {
    constexpr int IndentOfLevel = 220;  // twips
    for (int level = 0; level < DocxMostLevels; ++level) {
        const std::string number = std::to_string(level + 1);
        AppendNamedStyle("Heading" + number, "heading " + number,
                         "<w:qFormat/><w:pPr><w:outlineLvl w:val=\"" + std::to_string(level) + "\"/></w:pPr>",
                         out);
        AppendNamedStyle("TOC" + number, "toc " + number,
                         "<w:uiPriority w:val=\"39\"/><w:pPr><w:spacing w:after=\"60\"/><w:ind w:left=\"" +
                             std::to_string(level * IndentOfLevel) + "\"/></w:pPr>",
                         out);
    }
    AppendNamedStyle(
        "TOCHeading", "TOC Heading",
        "<w:uiPriority w:val=\"39\"/><w:qFormat/><w:pPr><w:spacing w:after=\"120\"/></w:pPr><w:rPr>"
        "<w:b/><w:bCs/><w:sz w:val=\"28\"/><w:szCs w:val=\"28\"/></w:rPr>",
        out);
}

}  // namespace

void AppendCharStyle(const CharStyle* style, Overrides overriding, std::string& out) {
    const bool overrides = overriding == Overrides::Yes;
    static const CharStyle Default;
    const CharStyle& textStyle = style ? *style : Default;
    const std::string family = textStyle.family.empty() ? Default.family : textStyle.family;
    out += "<w:rFonts";
    for (const char* script : {"w:ascii", "w:hAnsi", "w:eastAsia", "w:cs"}) {
        AppendAttribute(script, family, out);
    }
    out += "/>";
    const bool bold = textStyle.bold || textStyle.weight >= SemiBold;
    AppendSwitch("b", bold, overrides, out);
    AppendSwitch("bCs", bold, overrides, out);
    AppendSwitch("i", textStyle.italic, overrides, out);
    AppendSwitch("iCs", textStyle.italic, overrides, out);
    AppendSwitch("strike", textStyle.decoration == Decoration::LineThrough, overrides, out);
    const bool visible = layout::IsVisible(textStyle.color);
    out += "<w:color w:val=\"" + (visible ? DocxColor(textStyle.color) : "auto") + "\"/>";
    const float size = std::isfinite(textStyle.size) ? std::clamp(textStyle.size, 1.0F, 1638.0F) : 10.0F;
    const std::string halfPoints = std::to_string(std::lround(size * 2));
    out += "<w:sz w:val=\"" + halfPoints + "\"/><w:szCs w:val=\"" + halfPoints + "\"/>";
    const bool underlined = textStyle.decoration == Decoration::Underline;
    if (underlined || overrides) {
        out += underlined ? "<w:u w:val=\"single\"/>" : "<w:u w:val=\"none\"/>";
    }
}

std::string DocxStyles::Paragraph(const std::string& paragraph, const std::string& run) {
    std::string look = "<w:pPr>" + paragraph + "</w:pPr><w:rPr>" + run + "</w:rPr>";
    const auto known = m_ids.find(look);
    if (known != m_ids.end()) {
        return known->second;
    }
    if (m_looks.size() >= MostStyles) {
        return {};
    }
    m_looks.push_back(look);
    return m_ids.emplace(std::move(look), "Text" + std::to_string(m_looks.size())).first->second;
}

std::string DocxStyles::Part(const std::string& language) const {
    std::string part = std::string(XmlDeclaration) + "<w:styles" + DocxNamespaces() + ">";
    part += "<w:docDefaults><w:rPrDefault><w:rPr>";
    AppendCharStyle(nullptr, Overrides::No, part);
    part += language.empty() ? "" : LanguageElement(language);
    part +=
        "</w:rPr></w:rPrDefault><w:pPrDefault/></w:docDefaults>\n"
        "<w:style w:type=\"paragraph\" w:default=\"1\" w:styleId=\"Normal\"><w:name w:val=\"Normal\"/>"
        "<w:qFormat/></w:style>\n";
    AppendOutlineStyles(part);
    for (std::size_t i = 0; i < m_looks.size(); ++i) {
        const std::string number = std::to_string(i + 1);
        part += "<w:style w:type=\"paragraph\" w:customStyle=\"1\" w:styleId=\"Text" + number +
                "\"><w:name w:val=\"Text " + number + "\"/><w:basedOn w:val=\"Normal\"/>" + m_looks[i] +
                "</w:style>\n";
    }
    return part + "</w:styles>";
}

}  // namespace rdl::writers
