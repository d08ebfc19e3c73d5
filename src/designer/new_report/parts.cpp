// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/parts.h"

#include <array>
#include <charconv>

#include "platform/base/ascii.h"
#include "platform/base/caption.h"
#include "platform/base/text.h"
#include "rdl/api/text_literal.h"

namespace designer {
namespace {

std::string Plain(double number, int decimals) {
    std::array<char, 64> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number,
                                   std::chars_format::fixed, decimals);
    std::string text(digits.data(), end.ptr);
    if (text.find('.') != std::string::npos) {
        text.erase(text.find_last_not_of('0') + 1);
        text.erase(text.find_last_not_of('.') + 1);
    }
    return text;
}

std::string Points(double points) {
    return Plain(points, 2) + "pt";
}

Xml Optional(std::string_view name, std::string_view text) {
    return text.empty() ? Xml{} : Text(name, text);
}

Xml Border(std::string_view edge, std::string_view colour) {
    return colour.empty()
               ? Xml{}
               : Element(edge, {Text("Color", colour), Text("Style", "Solid"), Text("Width", "0.75pt")});
}

Xml BoxStyle(const Look& look) {
    return Element(
        "Style", {Border("TopBorder", look.ruleAbove), Border("BottomBorder", look.ruleBelow),
                  Optional("BackgroundColor", look.fillExpression.empty() ? look.fill : look.fillExpression),
                  Text("VerticalAlign", look.top ? "Top" : "Middle"), Text("PaddingLeft", Points(look.left)),
                  Text("PaddingRight", "4pt"), Text("PaddingTop", Points(look.above)),
                  Text("PaddingBottom", Points(look.below))});
}

Xml Paragraphs(std::string_view value, const Look& look) {
    const Xml runStyle = Element("Style", {Text("FontFamily", look.font), Text("FontSize", Points(look.size)),
                                           look.bold ? Text("FontWeight", "Bold") : Xml{},
                                           Optional("Format", look.format), Text("Color", look.ink)});
    const Xml run = Element("TextRun", {Text("Value", value), runStyle});
    return Element(
        "Paragraphs",
        {Element("Paragraph", {Element("TextRuns", {run}),
                               Element("Style", {Text("TextAlign", look.right ? "Right" : "Left")})})});
}

XmlList BoxContent(std::string_view value, const Look& look) {
    return {look.grows ? Text("CanGrow", "true") : Xml{}, Text("KeepTogether", "true"),
            Paragraphs(value, look)};
}

}  // namespace

std::string Quoted(std::string_view text) {
    return rdl::TextLiteral(WithoutControls(text));
}

std::string Literal(std::string_view text) {
    const std::string line = ValidUtf8(WithoutControls(text));
    const bool isExpression = line.starts_with('=') || line.find('{') != std::string::npos;
    return isExpression ? "=" + Quoted(line) : line;
}

namespace {

// Replaces the expression by words where the column is Null: an empty heading looks like a mistake.
std::string WithWordsForNull(const ReportColumn& column, const std::string& expression) {
    return column.hasNulls ? "IIf(IsNothing(Fields!" + column.field + ".Value), " +
                                 Quoted("(no " + CaptionOf(column.name) + ")") + ", " + expression + ")"
                           : expression;
}

}  // namespace

std::string HeadingOf(const ReportColumn& column) {
    return "=" + WithWordsForNull(column, "Fields!" + column.field + ".Value");
}

std::string ValueOf(const ReportColumn& column) {
    return "=Fields!" + column.field + ".Value";
}

std::string SumOf(const ReportColumn& column) {
    return "=Sum(Fields!" + column.field + ".Value)";
}

std::string ShownText(const ReportColumn& column) {
    const std::string value = "Fields!" + column.field + ".Value", format = FormatOf(column);
    return WithWordsForNull(column, format.empty() ? value : "Format(" + value + ", " + Quoted(format) + ")");
}

Parts::Parts(ReportPaper paper) : m_paper(paper) {
    m_names.Add(DataSetName);
    m_names.Add(DetailGroup);
}

std::string Parts::Size(double millimetres) const {
    return m_paper == ReportPaper::A4 ? Plain(millimetres / 10, 3) + "cm"
                                      : Plain(millimetres / 25.4, 4) + "in";
}

Xml Parts::Box(std::string_view name, std::string_view value, const Look& look) {
    XmlList content = BoxContent(value, look);
    content.push_back(BoxStyle(look));
    return Named("Textbox", Name(name), std::move(content));
}

Xml Parts::Box(std::string_view name, std::string_view value, const Look& look, const Place& place) {
    XmlList content = BoxContent(value, look);
    AddPlace(content, place);
    content.push_back(BoxStyle(look));
    return Named("Textbox", Name(name), std::move(content));
}

Xml Parts::Line(std::string_view name, std::string_view colour, double points, const Place& place) {
    XmlList content;
    AddPlace(content, place);
    content.push_back(Element("Style", {Element("Border", {Text("Color", colour), Text("Style", "Solid"),
                                                           Text("Width", Points(points))})}));
    return Named("Line", Name(name), std::move(content));
}

void Parts::AddPlace(XmlList& content, const Place& place) const {
    content.push_back(Text("Top", Size(place.top)));
    content.push_back(Text("Left", Size(place.left)));
    content.push_back(Text("Height", Size(place.height)));
    content.push_back(Text("Width", Size(place.width)));
}

Xml Parts::Tablix(std::string_view name, TablixContent content, const Place& place) {
    XmlList columns;
    for (const double width : content.widths) {
        columns.push_back(Element("TablixColumn", {Text("Width", Size(width))}));
    }
    const bool hasHeadings = !content.corner.name.empty();
    XmlList all = {
        std::move(content.corner),
        Element("TablixBody", {Element("TablixColumns", std::move(columns)),
                               Element("TablixRows", std::move(content.rows))}),
        Element("TablixColumnHierarchy", {Element("TablixMembers", std::move(content.columnMembers))}),
        Element("TablixRowHierarchy", {Element("TablixMembers", std::move(content.rowMembers))}),
        hasHeadings ? Text("RepeatColumnHeaders", "true") : Xml{},
        hasHeadings ? Text("RepeatRowHeaders", "true") : Xml{},
        Optional("NoRowsMessage", content.noRows),
        Text("DataSetName", DataSetName)};
    AddPlace(all, place);
    return Named("Tablix", Name(name), std::move(all));
}

Xml Parts::Row(double height, XmlList cells) const {
    return Element("TablixRow", {Text("Height", Size(height)), Element("TablixCells", std::move(cells))});
}

Xml Parts::Header(double size, Xml item) const {
    return Element("TablixHeader", {Text("Size", Size(size)), Element("CellContents", {std::move(item)})});
}

Xml Cell(Xml item, std::size_t columns) {
    return Element(
        "TablixCell",
        {Element("CellContents",
                 {std::move(item), columns > 1 ? Text("ColSpan", std::to_string(columns)) : Xml{}})});
}

Xml Member(XmlList content, XmlList inner) {
    if (!inner.empty()) {
        content.push_back(Element("TablixMembers", std::move(inner)));
    }
    return Element("TablixMember", std::move(content));
}

Xml GroupMember(const std::string& name, const ReportColumn& column, XmlList content, XmlList inner) {
    XmlList all = {
        Named("Group", name, {Element("GroupExpressions", {Text("GroupExpression", ValueOf(column))})}),
        Element("SortExpressions", {Element("SortExpression", {Text("Value", ValueOf(column))})})};
    for (Xml& one : content) {
        all.push_back(std::move(one));
    }
    return Member(std::move(all), std::move(inner));
}

Xml DetailMember() {
    return Member({Named("Group", DetailGroup)});
}

}  // namespace designer
