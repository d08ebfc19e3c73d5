// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/docx/paragraphs.h"

#include <QString>
#include <algorithm>

#include "rdl/writers/common/xml_text.h"
#include "rdl/writers/docx/text.h"

namespace rdl::writers {
namespace {

using layout::HAlign;
using layout::Instance;
using layout::ParagraphInstance;
using layout::RunInstance;

constexpr const char* TinyText = "<w:sz w:val=\"2\"/><w:szCs w:val=\"2\"/>";

// The direction of the first character that has one.
bool IsRightToLeft(const std::string& text) {
    if (!HasComplexScript(text)) {
        return false;
    }
    return QString::fromStdString(text).isRightToLeft();
}

// Programs take "left" for the side where lines begin, which is the right one in a paragraph from right to
// left.
const char* JustificationOf(const FlowMeasures& measures) {
    switch (measures.align) {
        case HAlign::Center:
            return "center";
        case HAlign::Right:
            return measures.rightToLeft ? "left" : "right";
        case HAlign::Justify:
            return "both";
        case HAlign::General:
        case HAlign::Left:
            break;
    }
    return measures.rightToLeft ? "right" : "left";
}

void AppendSpacing(const FlowMeasures& measures, std::string& out) {
    if (measures.before == 0 && measures.after == 0 && measures.lineHeight == 0) {
        return;
    }
    out += "<w:spacing";
    AppendTwipsAttribute("w:before", std::max(measures.before, 0.0), out);
    AppendTwipsAttribute("w:after", std::max(measures.after, 0.0), out);
    if (measures.lineHeight > 0) {
        AppendTwipsAttribute("w:line", measures.lineHeight, out);
        out += " w:lineRule=\"exact\"";
    }
    out += "/>";
}

void AppendIndents(const FlowMeasures& measures, std::string& out) {
    if (measures.left == 0 && measures.right == 0 && measures.firstLine == 0) {
        return;
    }
    out += "<w:ind";
    AppendTwipsAttribute("w:left", measures.left, out);
    AppendTwipsAttribute("w:right", measures.right, out);
    if (measures.firstLine != 0) {
        const bool hangs = measures.firstLine < 0;
        AppendTwipsAttribute(hangs ? "w:hanging" : "w:firstLine",
                             hangs ? -measures.firstLine : measures.firstLine, out);
    }
    out += "/>";
}

// The properties of a paragraph that its style can have, in the order of the schema.
std::string PropertiesOf(const FlowMeasures& measures) {
    std::string properties;
    if (!measures.mark.empty()) {
        properties += "<w:tabs><w:tab w:val=\"left\"";
        AppendTwipsAttribute("w:pos", measures.left, properties);
        properties += "/></w:tabs>";
    }
    properties += measures.rightToLeft ? "<w:bidi/>" : "";
    AppendSpacing(measures, properties);
    AppendIndents(measures, properties);
    return properties + "<w:jc w:val=\"" + JustificationOf(measures) + "\"/>";
}

std::string RunPropertiesOf(const layout::CharStyle* style) {
    std::string characters;
    AppendCharStyle(style, Overrides::No, characters);
    return characters;
}

std::string TextOf(const ParagraphInstance& paragraph) {
    std::string text;
    for (const RunInstance& run : paragraph.runs) {
        text += run.text;
    }
    return text;
}

// Whether a text in a cell of the row is the label.
bool Shows(const FlowRow& row, const std::string& label) {
    const auto isLabel = [&label](const ParagraphInstance& paragraph) { return TextOf(paragraph) == label; };
    return std::any_of(row.cells.begin(), row.cells.end(), [&isLabel](const FlowCell& cell) {
        return std::any_of(cell.content.begin(), cell.content.end(), [&isLabel](const Instance* item) {
            return item->kind == layout::InstanceKind::Text &&
                   std::any_of(item->paragraphs.begin(), item->paragraphs.end(), isLabel);
        });
    });
}

void AppendRun(std::string_view text, const std::string& properties, std::string& out) {
    if (text.empty()) {
        return;
    }
    out += "<w:r>";
    out += properties.empty() ? "" : "<w:rPr>" + properties + "</w:rPr>";
    AppendRunText(text, out);
    out += "</w:r>";
}

// Shading (17.3.1.31).
void AppendBackground(const FlowPlace& place, std::string& out) {
    if (layout::IsVisible(place.background)) {
        out += "<w:shd w:val=\"clear\" w:color=\"auto\" w:fill=\"" + DocxColor(place.background) + "\"/>";
    }
}

// A hidden entry for the table of contents (17.16.5.67 TC).
void AppendEntry(const std::string& label, int level, std::string& out) {
    std::string quoted;
    for (const char c : label) {
        quoted += c == '"' || c == '\\' ? "\\" : "";
        quoted += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    out += "<w:r><w:fldChar w:fldCharType=\"begin\"/></w:r><w:r><w:instrText";
    std::string instruction = " TC \"" + quoted + "\" \\f C \\l " + std::to_string(level + 1) + " ";
    AppendAttribute("xml:space", "preserve", out);
    out += '>';
    AppendXml(instruction, out);
    out += "</w:instrText></w:r><w:r><w:fldChar w:fldCharType=\"end\"/></w:r>";
}

}  // namespace

void DocxParagraphs::Mark(const std::string& bookmark, const std::string& label, int level) {
    if (std::string name = m_document.bookmarks.Place(bookmark); !name.empty()) {
        m_bookmarks.push_back(std::move(name));
    }
    if (label.empty() || !m_contents) {
        return;
    }
    const int bounded = std::clamp(level, 0, DocxMostLevels - 1);
    if (std::string name = m_contents->Add(label, bounded); !name.empty()) {
        m_labels.push_back({label, std::move(name), bounded, false});
    }
}

void DocxParagraphs::MarkRow(const layout::MapLabel& label, const FlowRow& row) {
    const std::size_t before = m_labels.size();
    Mark("", label.text, label.level);
    const auto isWaiting = [&label](const LabelMark& mark) {
        return mark.isAwaited && mark.label == label.text;
    };
    if (m_labels.size() > before && std::none_of(m_labels.begin(), m_labels.end(), isWaiting)) {
        m_labels.back().isAwaited = Shows(row, label.text);
    }
}

void DocxParagraphs::AppendBookmark(const std::string& name, std::string& out) {
    const std::string id = std::to_string(++m_document.bookmarkCount);
    out +=
        "<w:bookmarkStart w:id=\"" + id + "\" w:name=\"" + name + "\"/><w:bookmarkEnd w:id=\"" + id + "\"/>";
}

std::string DocxParagraphs::TakeHeading(const ParagraphInstance& paragraph) {
    if (m_labels.empty()) {
        return {};
    }
    const std::string text = TextOf(paragraph);
    const auto shown = std::find_if(m_labels.begin(), m_labels.end(),
                                    [&text](const LabelMark& mark) { return mark.label == text; });
    if (shown == m_labels.end()) {
        return {};
    }
    std::string style = "Heading" + std::to_string(shown->level + 1);
    m_bookmarks.push_back(shown->name);
    m_labels.erase(shown);
    return style;
}

void DocxParagraphs::AppendMarks(std::string& out) {
    for (const std::string& name : m_bookmarks) {
        AppendBookmark(name, out);
    }
    for (const LabelMark& mark : m_labels) {
        if (!mark.isAwaited) {
            AppendBookmark(mark.name, out);
            AppendEntry(mark.label, mark.level, out);
        }
    }
    m_bookmarks.clear();
    std::erase_if(m_labels, [](const LabelMark& mark) { return !mark.isAwaited; });
}

const DocxParagraphs::Look& DocxParagraphs::LookOf(const FlowMeasures& measures,
                                                   const layout::CharStylePtr& characters) {
    constexpr std::size_t MostLooks = 16;
    for (const KnownLook& known : m_looks) {
        if (known.characters == characters && known.measures == measures) {
            return known.look;
        }
    }
    KnownLook made{measures, characters, {PropertiesOf(measures), RunPropertiesOf(characters.get()), {}}};
    made.look.style = m_document.styles.Paragraph(made.look.paragraph, made.look.characters);
    if (m_looks.size() < MostLooks) {
        return m_looks.emplace_back(std::move(made)).look;
    }
    m_oldest = (m_oldest + 1) % MostLooks;
    return (m_looks[m_oldest] = std::move(made)).look;
}

bool DocxParagraphs::Begin(const Look& look, const FlowPlace& place, const std::string& heading,
                           std::string& out) {
    const std::string& style = heading.empty() ? look.style : heading;
    const bool isStyled = heading.empty() && !style.empty();
    out += "<w:p><w:pPr>";
    out += style.empty() ? "" : "<w:pStyle w:val=\"" + style + "\"/>";
    out += place.keepNext ? "<w:keepNext/>" : "";
    AppendBackground(place, out);
    out += isStyled ? "" : look.paragraph + "<w:rPr>" + look.characters + "</w:rPr>";
    out += "</w:pPr>";
    return isStyled;
}

void DocxParagraphs::Blank(double height, const FlowPlace& place, const std::string& end, std::string& out) {
    out += "<w:p><w:pPr>";
    out += place.keepNext ? "<w:keepNext/>" : "";
    AppendBackground(place, out);
    out += "<w:spacing";
    AppendTwipsAttribute("w:line", std::max(height, 1.0), out);
    out += std::string(" w:lineRule=\"exact\"/><w:rPr>") + TinyText + "</w:rPr>" + end + "</w:pPr>";
    if (place.level == 0) {  // in a cell a text may follow
        AppendMarks(out);
    }
    out += "</w:p>";
}

void DocxParagraphs::PageBreak(std::string& out) {
    out += std::string(
               "<w:p><w:pPr><w:pageBreakBefore/><w:spacing w:line=\"20\" w:lineRule=\"exact\"/><w:rPr>") +
           TinyText + "</w:rPr></w:pPr></w:p>\n";
}

void DocxParagraphs::Message(const layout::TableInstance& table, const FlowPlace& place, std::string& out) {
    FlowMeasures measures;
    measures.rightToLeft = table.rightToLeft;
    measures.align = table.rightToLeft ? HAlign::Right : HAlign::Left;
    const Look& look = LookOf(measures, table.noRowsStyle);
    const bool isStyled = Begin(look, place, "", out);
    AppendMarks(out);
    AppendRun(table.noRowsMessage, isStyled ? "" : look.characters, out);
    out += "</w:p>";
}

void DocxParagraphs::Picture(const Instance& item, const FlowPlace& place, std::string& out) {
    Mark(item.bookmark, item.documentMapLabel, 0);
    out += "<w:p><w:pPr>";
    out += place.keepNext ? "<w:keepNext/>" : "";
    out += std::string("<w:rPr>") + TinyText + "</w:rPr></w:pPr>";
    AppendMarks(out);
    const std::string link = OpenLink(item);
    out += link;
    m_document.pictures.Append(item, m_relations, out);
    out += link.empty() ? "</w:p>" : "</w:hyperlink></w:p>";
}

void DocxParagraphs::Box(const Instance& item, const FlowPlace& place, std::string& out) {
    static const ParagraphInstance Empty;
    Mark(item.bookmark, item.documentMapLabel, 0);
    if (item.paragraphs.empty()) {
        Paragraph(item, Empty, place, out);
    }
    for (const ParagraphInstance& paragraph : item.paragraphs) {
        Paragraph(item, paragraph, place, out);
    }
}

void DocxParagraphs::Paragraph(const Instance& item, const ParagraphInstance& paragraph,
                               const FlowPlace& place, std::string& out) {
    FlowMeasures measures = MeasuresOf(item, paragraph);
    if (measures.rightToLeft) {
        std::swap(measures.left, measures.right);
    }
    const layout::CharStylePtr first =
        paragraph.runs.empty() ? layout::CharStylePtr() : paragraph.runs.front().style;
    const Look& look = LookOf(measures, first);
    const bool isStyled = Begin(look, place, TakeHeading(paragraph), out);
    AppendMarks(out);
    const std::string own = isStyled ? "" : look.characters;
    AppendRun(measures.mark, own, out);
    const std::string link = OpenLink(item);
    out += link;
    for (const RunInstance& run : paragraph.runs) {
        std::string properties = own;
        if (run.style != first) {
            properties.clear();
            AppendCharStyle(run.style.get(), Overrides::Yes, properties);
        }
        properties += IsRightToLeft(run.text) ? "<w:rtl/>" : "";
        const std::string address = link.empty() ? OpenAddress(run.hyperlink, item.toolTip) : "";
        out += address;
        Run(run, properties, out);
        out += address.empty() ? "" : "</w:hyperlink>";
    }
    out += link.empty() ? "</w:p>" : "</w:hyperlink></w:p>";
}

void DocxParagraphs::Run(const RunInstance& run, const std::string& properties, std::string& out) {
    SplitFields(
        run.text, [&](std::string_view text) { AppendRun(text, properties, out); },
        [&](const char* field) {
            out += std::string("<w:fldSimple w:instr=\" ") + field + " \">";
            AppendRun("1", properties, out);
            out += "</w:fldSimple>";
        });
}

std::string DocxParagraphs::OpenAddress(const std::string& link, const std::string& toolTip) {
    const std::string address = link.empty() ? "" : DocumentAddress(link);
    if (address.empty()) {
        return {};
    }
    std::string element = "<w:hyperlink";
    AppendAttribute("r:id", m_relations.AddLink(address), element);
    if (!toolTip.empty()) {
        AppendAttribute("w:tooltip", toolTip, element);
    }
    return element + " w:history=\"1\">";
}

std::string DocxParagraphs::OpenLink(const Instance& item) {
    if (!item.bookmarkLink.empty()) {
        return "<w:hyperlink w:anchor=\"" + m_document.bookmarks.NameOf(item.bookmarkLink) +
               "\" w:history=\"1\">";
    }
    return OpenAddress(item.hyperlink, item.toolTip);
}

}  // namespace rdl::writers
