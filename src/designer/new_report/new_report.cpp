// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/new_report.h"

#include <algorithm>

#include "designer/new_report/layouts.h"
#include "designer/new_report/report_plan.h"
#include "platform/base/ascii.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr std::string_view Schema =
    "http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition";
constexpr std::string_view DesignerSchema = "http://schemas.microsoft.com/SQLServer/reporting/reportdesigner";

constexpr double FooterHeight = 9;

// A property that may be an expression, with its line ends.
std::string Constant(const std::string& text) {
    return text.starts_with('=') ? "=" + Quoted(text) : text;
}

Xml DataSources(const NewReport& report, const std::string& source) {
    return Element(
        "DataSources",
        {Named("DataSource", source,
               {Element("ConnectionProperties", {Text("DataProvider", report.provider),
                                                 Text("ConnectString", Constant(report.connectString))})})});
}

Xml DataSets(const NewReport& report, const std::string& source) {
    XmlList fields;
    for (const ReportColumn& column : report.columns) {
        fields.push_back(Named("Field", column.field,
                               {Text("DataField", column.name), Text("rd:TypeName", column.typeName)}));
    }
    const Xml query =
        Element("Query", {Text("DataSourceName", source), Text("CommandText", Constant(report.query))});
    return Element("DataSets",
                   {Named("DataSet", DataSetName, {query, Element("Fields", std::move(fields))})});
}

Look TitleLook(const Theme& theme) {
    return {.font = theme.headingFont, .ink = theme.titleColour, .size = 18, .bold = true, .left = 0};
}

// Returns "Amount by Region and Year", as a matrix with one value does not say what it sums.
std::string MatrixCaption(const Plan& plan) {
    std::string caption;
    for (const ReportColumn* value : plan.values) {
        caption += (caption.empty() ? "" : ", ") + CaptionOf(value->name);
    }
    ColumnList by = plan.rows;
    by.insert(by.end(), plan.across.begin(), plan.across.end());
    for (const ReportColumn* column : by) {
        caption += column == by.front() ? " by " : column == by.back() ? " and " : ", ";
        caption += CaptionOf(column->name);
    }
    return caption;
}

// Title, chart and table from top to bottom.
struct BodyItems {
    XmlList items;
    double height = 0;  // mm
};

BodyItems TitledBody(const Plan& plan, Parts& parts) {
    BodyItems body;
    body.items.push_back(
        parts.Box("Title", Literal(plan.report.title), TitleLook(plan.theme), {0, 0, 9, plan.width}));
    body.height = 10;
    if (plan.report.layout == ReportLayout::Matrix) {
        const Look look{.font = plan.theme.font, .ink = plan.theme.ink, .size = 10, .left = 0};
        body.items.push_back(
            parts.Box("Subtitle", Literal(MatrixCaption(plan)), look, {body.height, 0, 6, plan.width}));
        body.height += 7;
    }
    body.items.push_back(
        parts.Line("TitleRule", plan.theme.titleColour, 1.5, {body.height, 0, 0, plan.width}));
    body.height += 4;
    if (plan.report.chart != ReportChart::None) {
        PlacedItem chart = ChartItem(plan, parts, body.height);
        body.items.push_back(std::move(chart.item));
        body.height += chart.height + 5;
    }
    const bool isBlocked = plan.report.layout == ReportLayout::Blocked && !plan.groups.empty();
    PlacedItem table = plan.report.layout == ReportLayout::Matrix ? MatrixItem(plan, parts, body.height)
                       : isBlocked                                ? BlockedItem(plan, parts, body.height)
                                                                  : TableItem(plan, parts, body.height);
    body.items.push_back(std::move(table.item));
    body.height += table.height;
    return body;
}

Xml PageFooter(const Plan& plan, Parts& parts) {
    Look left{.font = plan.theme.font, .ink = plan.theme.ink, .size = 8, .grows = false, .left = 0};
    Look right = left;
    left.format = "d";
    right.right = true;
    const double half = plan.width / 2;
    return Element(
        "PageFooter",
        {Text("Height", parts.Size(FooterHeight)), Text("PrintOnFirstPage", "true"),
         Text("PrintOnLastPage", "true"),
         Element("ReportItems",
                 {parts.Line("FooterRule", plan.theme.rule, 0.75, {2, 0, 0, plan.width}),
                  parts.Box("FooterDate", "=Globals!ExecutionTime", left, {3, 0, 5, half}),
                  parts.Box("FooterPage", "=\"Page \" & Globals!PageNumber & \" of \" & Globals!TotalPages",
                            right, {3, half, 5, half})})});
}

// `footer` may be no element.
Xml Page(const Plan& plan, const Parts& parts, Xml footer) {
    return Element("Page",
                   {std::move(footer), Text("PageHeight", parts.Size(plan.pageHeight)),
                    Text("PageWidth", parts.Size(plan.pageWidth)), Text("LeftMargin", parts.Size(SideMargin)),
                    Text("RightMargin", parts.Size(SideMargin)), Text("TopMargin", parts.Size(TopMargin)),
                    Text("BottomMargin", parts.Size(TopMargin))});
}

Xml Section(Parts& parts, XmlList items, double height, double width, Xml page) {
    return Element(
        "ReportSection",
        {Element("Body", {Element("ReportItems", std::move(items)), Text("Height", parts.Size(height))}),
         Text("Width", parts.Size(width)), std::move(page)});
}

Xml LabelPage(const Plan& plan, Parts& parts) {
    const LabelSheet& sheet = SheetOf(plan.report.paper);
    // The last row may be a little longer than the page: less of the margin below.
    const double below = std::max(0.0, sheet.top - 1), right = std::max(0.0, sheet.left - 1);
    return Element(
        "Page",
        {Text("PageHeight", parts.Size(plan.pageHeight)), Text("PageWidth", parts.Size(plan.pageWidth)),
         Text("LeftMargin", parts.Size(sheet.left)), Text("RightMargin", parts.Size(right)),
         Text("TopMargin", parts.Size(sheet.top)), Text("BottomMargin", parts.Size(below)),
         Text("Columns", std::to_string(sheet.across)), Text("ColumnSpacing", parts.Size(sheet.gap))});
}

Xml SectionOf(const Plan& plan, Parts& parts) {
    if (plan.report.layout == ReportLayout::Labels) {
        PlacedItem labels = LabelItem(plan, parts);
        return Section(parts, {std::move(labels.item)}, labels.height, SheetOf(plan.report.paper).width,
                       LabelPage(plan, parts));
    }
    if (plan.report.layout == ReportLayout::Letter) {
        PlacedItem letter = LetterItem(plan, parts);
        return Section(parts, {std::move(letter.item)}, letter.height, plan.width, Page(plan, parts, {}));
    }
    BodyItems body = TitledBody(plan, parts);
    return Section(parts, std::move(body.items), body.height, plan.width,
                   Page(plan, parts, PageFooter(plan, parts)));
}

Xml TitleProperty(const std::string& title) {
    return Element(
        "CustomProperties",
        {Element("CustomProperty", {Text("Name", "Title"), Text("Value", WithoutControls(title))})});
}

}  // namespace

std::string NewReportText(const NewReport& report) {
    const Plan plan = PlanOf(report);
    Parts parts(report.paper);
    const std::string source = Names().Add(report.sourceName.empty() ? "Source" : report.sourceName);
    Xml root = Element("Report", {DataSources(report, source), DataSets(report, source),
                                  Element("ReportSections", {SectionOf(plan, parts)}),
                                  Text("Language", report.language), TitleProperty(report.title)});
    root.attributes = {{"xmlns", std::string(Schema)}, {"xmlns:rd", std::string(DesignerSchema)}};
    return Print(root);
}

}  // namespace designer
