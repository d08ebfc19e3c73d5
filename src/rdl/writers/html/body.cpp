// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/body.h"

#include <algorithm>
#include <cmath>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/common/edges.h"
#include "rdl/writers/common/extent.h"
#include "rdl/writers/html/text.h"

namespace rdl::writers {
namespace {

using layout::CharStylePtr;
using layout::HAlign;
using layout::Instance;
using layout::InstanceKind;
using layout::ParagraphInstance;

constexpr double EdgeTolerance = 0.5;

// Returns the style that all runs of a box share, for its class; else null.
CharStylePtr CommonStyle(const Instance& item) {
    CharStylePtr common;
    for (const ParagraphInstance& paragraph : item.paragraphs) {
        for (const layout::RunInstance& run : paragraph.runs) {
            if (!run.style) {
                continue;
            }
            if (!common) {
                common = run.style;
            } else if (common != run.style && !(*common == *run.style)) {
                return nullptr;
            }
        }
    }
    return common;
}

// The indent and the hanging indent of a list, as on pages.
constexpr double ListIndent = 18, ListHang = 13.5;

HAlign BoxAlign(const Instance& item) {
    return AlignmentOf(item, item.paragraphs.empty() ? HAlign::General : item.paragraphs.front().align);
}

void AppendTracks(const Edges& edges, const std::vector<bool>& grows, std::string& css) {
    for (std::size_t i = 0; i < edges.TrackCount(); ++i) {
        css += i ? " " : "";
        css += grows[i] ? "minmax(" : "";
        const std::size_t before = css.size();
        AppendPoints(edges.Track(i), css);
        if (css.size() - before == 1) {
            css += "pt";  // a track without a unit is none
        }
        css += grows[i] ? ",auto)" : "";
    }
}

struct Grid {
    Edges columns{EdgeTolerance}, rows{EdgeTolerance};
    bool layered;

    Grid(const std::vector<Instance>& items, double width, double height) : layered(NeedsLayers(items)) {
        columns.Add(0);
        columns.Add(width);
        rows.Add(0);
        rows.Add(height);
        for (const Instance& item : items) {
            columns.Add(std::min(item.x, item.x + item.width));
            columns.Add(std::max(item.x, item.x + item.width));
            rows.Add(Top(item));
            rows.Add(Bottom(item));
        }
        columns.Settle();
        rows.Settle();
    }

    static void AppendSpan(const char* property, const Edges& edges, double from, double to,
                           std::string& css) {
        const std::size_t last = std::max<std::size_t>(edges.TrackCount(), 1) - 1;
        const std::size_t first = std::min(edges.Line(from), last);
        const std::size_t end = std::max(edges.Line(to), first + 1);
        css += property + std::to_string(first + 1) + "/" + std::to_string(end + 1) + ";";
    }

    // Items overlap in the order in which they are written, unless it is not that of their layers.
    static bool NeedsLayers(const std::vector<Instance>& items) {
        for (std::size_t i = 0; i < items.size(); ++i) {
            for (std::size_t j = i + 1; j < items.size() && Top(items[j]) < Bottom(items[i]); ++j) {
                const bool beside =
                    std::max(items[i].x, items[j].x) >= std::min(Right(items[i]), Right(items[j]));
                if (!beside && items[j].layer < items[i].layer) {
                    return true;
                }
            }
        }
        return false;
    }

    std::string PlaceOf(const Instance& item) const {
        std::string css;
        AppendSpan("grid-column:", columns, std::min(item.x, item.x + item.width),
                   std::max(item.x, item.x + item.width), css);
        AppendSpan("grid-row:", rows, Top(item), Bottom(item), css);
        if (item.kind == InstanceKind::Line && rows.Line(Top(item)) >= rows.TrackCount()) {
            css += "align-self:end;";  // along the lower edge, where no track begins
        }
        css += layered ? "z-index:" + std::to_string(item.layer) + ";" : "";
        return css;
    }

    std::string Declarations(const std::vector<Instance>& items) const {
        std::vector<bool> grows(rows.TrackCount(), false);
        for (const Instance& item : items) {
            for (std::size_t i = rows.Line(Top(item)); i < rows.Line(Bottom(item)) && i < grows.size(); ++i) {
                grows[i] = grows[i] || item.kind != InstanceKind::Line;
            }
        }
        std::string css = "display:grid;grid-template-columns:";
        AppendTracks(columns, std::vector<bool>(columns.TrackCount(), false), css);
        css += ";grid-template-rows:";
        AppendTracks(rows, grows, css);
        css += ";";
        return css;
    }
};

}  // namespace

void HtmlBody::Raw(std::string_view html) {
    m_out += html;
}

void HtmlBody::Flush() {
    m_spool.Append(m_out);
    m_out.clear();
}

void HtmlBody::Items(const std::vector<Instance>& items, double width, double height) {
    if (items.empty()) {
        return;
    }
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + items.front().name + "\" is nested too deeply");
    }
    const Grid grid(items, width, height);
    m_out += "<div class=\"" + m_styles.Class(grid.Declarations(items)) + "\">\n";
    for (const Instance& item : items) {
        Item(item, m_styles.Class(grid.PlaceOf(item)));
        if (m_out.size() > PieceSize) {
            Flush();
        }
    }
    m_out += "</div>\n";
    --m_depth;
}

void HtmlBody::Item(const Instance& item, const std::string& placeClass) {
    std::string classes = placeClass;
    classes += item.breakBefore ? " bb" : "";
    classes += item.breakAfter ? " ba" : "";
    switch (item.kind) {
        case InstanceKind::Text:
            TextBlock(item, classes);
            break;
        case InstanceKind::Image:
            Image(item, classes);
            break;
        case InstanceKind::Line:
            Line(item, classes);
            break;
        case InstanceKind::Container:
            Container(item, classes);
            break;
        case InstanceKind::Table:
            Table(item, classes);
            break;
        case InstanceKind::Drawing:
            Drawing(item, classes);
            break;
    }
}

void HtmlBody::Attribute(const char* name, std::string_view value) {
    m_out += ' ';
    m_out += name;
    m_out += "=\"";
    AppendHtml(value, m_out);
    m_out += '"';
}

// Bookmarks are any text, ids have no spaces: they get numbers.
const std::string& HtmlBody::AnchorOf(const std::string& bookmark) {
    std::string& anchor = m_anchors[bookmark];
    if (anchor.empty()) {
        anchor = "b" + std::to_string(m_anchors.size());
    }
    return anchor;
}

void HtmlBody::OpenTag(const char* element, const Instance& item, const std::string& classes) {
    m_out += '<';
    m_out += element;
    m_out += " class=\"" + classes + "\"";
    Identify(item);
    if (!item.toolTip.empty()) {
        Attribute("title", item.toolTip);
    }
}

// What leads to the item finds it by this.
void HtmlBody::Identify(const Instance& item) {
    std::string id;
    if (!item.bookmark.empty() && !m_anchorUsed[item.bookmark]) {
        m_anchorUsed[item.bookmark] = true;  // an id is there once
        id = AnchorOf(item.bookmark);
    } else if (!item.documentMapLabel.empty()) {
        id = m_map.NextId();
    }
    if (!id.empty()) {
        Attribute("id", id);
    }
    if (!item.documentMapLabel.empty()) {
        m_map.Add(item.documentMapLabel, 0, id);
    }
}

bool HtmlBody::OpenLink(const std::string& link) {
    const std::string safe = WebAddress(link);
    if (safe.empty()) {
        return false;
    }
    m_out += "<a";
    Attribute("href", safe);
    m_out += " rel=\"noopener noreferrer\">";
    return true;
}

bool HtmlBody::OpenLink(const Instance& item) {
    if (!item.bookmarkLink.empty()) {
        m_out += "<a href=\"#" + AnchorOf(item.bookmarkLink) + "\">";
        return true;
    }
    return !item.hyperlink.empty() && OpenLink(item.hyperlink);
}

void HtmlBody::CloseLink(bool open) {
    m_out += open ? "</a>" : "";
}

void HtmlBody::TextBlock(const Instance& item, const std::string& placeClass) {
    const CharStylePtr own = CommonStyle(item);
    const std::string& box = m_styles.Box(item.box, HtmlStyles::Place::Block, own, BoxAlign(item));
    std::string size = item.canGrow ? "min-height:" : "height:";
    AppendPoints(std::max(item.height, 0.0), size);
    size += item.canGrow ? ";" : ";overflow:hidden;";
    OpenTag("div", item,
            placeClass + " t " + box + (item.canShrink && item.canGrow ? "" : " " + m_styles.Class(size)));
    m_out += '>';
    Paragraphs(item, own);
    m_out += "</div>\n";
}

void HtmlBody::Paragraphs(const Instance& item, const CharStylePtr& own) {
    for (const ParagraphInstance& paragraph : item.paragraphs) {
        Paragraph(item, paragraph, own);
    }
}

void HtmlBody::Paragraph(const Instance& item, const ParagraphInstance& paragraph, const CharStylePtr& own) {
    std::string css;
    // Lines after the first are indented, in lists after the list mark.
    const bool listed = paragraph.bulleted || paragraph.listNumber > 0;
    const double list = listed ? ListIndent * (1 + std::clamp(paragraph.listLevel - 1, 0, 9)) : 0;
    const double hanging = listed ? ListHang : static_cast<double>(paragraph.hangingIndent);
    const double rest =
        listed ? 0 : std::max(hanging, 0.0);  // of the lines after the first, where they begin
    const bool rightToLeft = item.box && item.box->rightToLeft;
    // Margins are sides of the page. Turned lines run down, the first one is at the right.
    const bool isTurned = item.box && item.box->writingMode != layout::WritingMode::Horizontal;
    const std::pair<const char*, double> lengths[] = {
        {isTurned ? "margin-top:" : "margin-left:", paragraph.leftIndent + list + (rightToLeft ? 0 : rest)},
        {isTurned ? "margin-bottom:" : "margin-right:", paragraph.rightIndent + (rightToLeft ? rest : 0)},
        {"text-indent:", -hanging},
        {isTurned ? "margin-right:" : "margin-top:", paragraph.spaceBefore},
        {isTurned ? "margin-left:" : "margin-bottom:", paragraph.spaceAfter},
        {"line-height:", paragraph.lineHeight}};
    for (const auto& [property, length] : lengths) {
        if (length != 0) {
            css += property;
            AppendPoints(length, css);
            css += ';';
        }
    }
    const HAlign align = AlignmentOf(item, paragraph.align);
    if (align != BoxAlign(item)) {
        const char* words[] = {"left", "left", "center", "right", "justify"};
        css += std::string("text-align:") + words[static_cast<int>(align)] + ";";
    }
    m_out += css.empty() ? "<div>" : "<div class=\"" + m_styles.Class(css) + "\">";
    const bool link = OpenLink(item);
    ListMark(paragraph);
    for (const layout::RunInstance& run : paragraph.runs) {
        Run(run, own);
    }
    CloseLink(link);
    m_out += "</div>";
}

void HtmlBody::ListMark(const ParagraphInstance& paragraph) {
    if (!paragraph.bulleted && paragraph.listNumber <= 0) {
        return;
    }
    std::string css = "display:inline-block;text-indent:0;min-width:";
    AppendPoints(ListHang, css);
    m_out += "<span class=\"" + m_styles.Class(css + ";") + "\">";
    m_out += paragraph.bulleted ? "\xE2\x80\xA2 " : std::to_string(paragraph.listNumber) + ". ";
    m_out += "</span>";
}

void HtmlBody::Run(const layout::RunInstance& run, const CharStylePtr& own) {
    const bool link = !run.hyperlink.empty() && OpenLink(run.hyperlink);
    const bool span = !own && run.style;
    if (span) {
        m_out += "<span class=\"" + m_styles.Text(run.style) + "\">";
    }
    AppendHtml(WithoutPageMarks(run.text), m_out);
    m_out += span ? "</span>" : "";
    CloseLink(link);
}

void HtmlBody::Image(const Instance& item, const std::string& placeClass) {
    OpenTag("div", item,
            placeClass + " " + m_styles.Box(item.box, HtmlStyles::Place::Block, nullptr, HAlign::Left));
    m_out += '>';
    if (item.imageBytes && !item.imageBytes->empty()) {
        const image::Type type = TypeOfImage(item);
        std::string css;
        if (item.sizing != Instance::Sizing::AutoSize) {
            static constexpr const char* Fits[] = {"", "fill", "contain", "none"};
            css = "display:block;width:";
            AppendPoints(std::max(item.width, 0.0), css);
            css += ";height:";
            AppendPoints(std::max(item.height, 0.0), css);
            css += std::string(";object-position:left top;object-fit:") +
                   Fits[static_cast<int>(item.sizing)] + ";";
        } else {
            css = "display:block;";
        }
        const bool link = OpenLink(item);
        m_out += "<img class=\"" + m_styles.Class(css) + "\" src=\"";
        AppendDataUri(type, *item.imageBytes, m_out);
        m_out += '"';
        Attribute("alt", item.toolTip);
        m_out += '>';
        CloseLink(link);
    }
    m_out += "</div>\n";
}

void HtmlBody::Drawing(const Instance& item, const std::string& placeClass) {
    OpenTag("div", item,
            placeClass + " " + m_styles.Box(item.box, HtmlStyles::Place::Block, nullptr, HAlign::Left));
    m_out += '>';
    const bool link = OpenLink(item);
    m_drawings.Append(*item.drawing, item.toolTip.empty() ? item.drawing->description : item.toolTip, m_out);
    CloseLink(link);
    m_out += "</div>\n";
}

void HtmlBody::Line(const Instance& item, const std::string& placeClass) {
    layout::BoxStyle style;
    if (item.box) {
        style.top = item.box->top;
    }
    const double width = std::fabs(item.width), height = std::fabs(item.height);
    if (width > EdgeTolerance && height > EdgeTolerance) {  // aslant
        const bool up = (item.height < 0) != (item.width < 0);
        m_out += "<svg class=\"" + placeClass +
                 "\" aria-hidden=\"true\" width=\"100%\" height=\"100%\" viewBox=\"0 0 100 100\""
                 " preserveAspectRatio=\"none\"><line class=\"" +
                 m_styles.Stroke(style.top) + "\" x1=\"0\" x2=\"100\" y1=\"" + (up ? "100" : "0") +
                 "\" y2=\"" + (up ? "0" : "100") + "\" vector-effect=\"non-scaling-stroke\"></line></svg>\n";
        return;
    }
    if (width <= EdgeTolerance) {
        std::swap(style.left, style.top);
    }
    auto box = std::make_shared<const layout::BoxStyle>(style);
    m_out += "<div class=\"" + placeClass + " " +
             m_styles.Box(box, HtmlStyles::Place::Block, nullptr, HAlign::Left) + "\"></div>\n";
}

void HtmlBody::Container(const Instance& item, const std::string& placeClass) {
    const std::string& box = m_styles.Box(item.box, HtmlStyles::Place::Block, nullptr, HAlign::Left);
    OpenTag("div", item, placeClass + " " + box + (item.keepTogether ? " k" : ""));
    m_out += '>';
    const bool link = OpenLink(item);
    Items(item.children, item.width, item.height);
    CloseLink(link);
    m_out += "</div>\n";
}

}  // namespace rdl::writers
