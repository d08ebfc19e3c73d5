// SPDX-License-Identifier: GPL-3.0-or-later
// A chart above the table (MS-RDL, Chart).
#include <algorithm>

#include "designer/new_report/layouts.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

// The markers of more points would hide the line.
constexpr std::size_t MostMarkers = 40;

struct Series {
    std::string name, caption, value;
};

struct ChartTextStyle {
    bool bold = false;
    std::string_view format = {};
};

class Chart {
 public:
    Chart(const Plan& plan, Parts& parts)
        : m_plan(plan),
          m_parts(parts),
          m_kind(plan.report.chart),
          m_category(Category()),
          m_series(Value()) {}

    PlacedItem Make(double top) {
        const double height = Height();
        XmlList content = {CategoryHierarchy(),
                           SeriesHierarchy(),
                           Data(),
                           Areas(),
                           Legends(),
                           Title(),
                           Text("Palette", "Custom"),
                           Palette(),
                           Text("DataSetName", DataSetName)};
        m_parts.AddPlace(content, {top, 0, height, m_plan.width});
        return {Named("Chart", m_parts.Name("Chart"), std::move(content)), height};
    }

 private:
    bool IsMatrix() const { return m_plan.report.layout == ReportLayout::Matrix; }

    const ReportColumn& Category() const {
        if (IsMatrix()) {
            return *m_plan.rows.front();
        }
        if (!m_plan.groups.empty()) {
            return *m_plan.groups.front();
        }
        const auto found =
            std::find_if(m_plan.details.begin(), m_plan.details.end(),
                         [&](const ReportColumn* column) { return !m_plan.IsSummed(*column); });
        return found == m_plan.details.end() ? *m_plan.details.front() : **found;
    }

    // The first sum only: the others most likely have another unit.
    Series Value() const {
        const ColumnList& columns = IsMatrix() ? m_plan.values : m_plan.sums;
        return columns.empty() ? Series{"Rows", "Rows", "=CountRows()"}
                               : Series{columns.front()->field, CaptionOf(columns.front()->name),
                                        SumOf(*columns.front())};
    }

    bool HasSeriesGroup() const { return IsMatrix() && m_kind != ReportChart::Pie; }

    // Bars need room for the names of their categories.
    double Height() const {
        const auto categories = static_cast<double>(m_category.different);
        return m_kind == ReportChart::Bar ? std::clamp(25 + categories * 6, 60.0, 120.0) : 70;
    }

    Xml StyleOf(double size, const ChartTextStyle& style = {}) const {
        return Element("Style",
                       {Text("FontFamily", style.bold ? m_plan.theme.headingFont : m_plan.theme.font),
                        Text("FontSize", std::to_string(static_cast<int>(size)) + "pt"),
                        style.bold ? Text("FontWeight", "Bold") : Xml{},
                        style.format.empty() ? Xml{} : Text("Format", style.format),
                        Text("Color", style.bold ? m_plan.theme.titleColour : m_plan.theme.ink)});
    }

    Xml GroupMemberOf(const std::string& name, const ReportColumn& column) {
        const Xml group = Named("Group", m_parts.Name(name),
                                {Element("GroupExpressions", {Text("GroupExpression", ValueOf(column))})});
        return Element(
            "ChartMember",
            {group, Element("SortExpressions", {Element("SortExpression", {Text("Value", ValueOf(column))})}),
             Text("Label", "=" + ShownText(column))});
    }

    Xml CategoryHierarchy() {
        return Element(
            "ChartCategoryHierarchy",
            {Element("ChartMembers", {GroupMemberOf("Category_" + m_category.field, m_category)})});
    }

    Xml SeriesHierarchy() {
        XmlList members;
        if (HasSeriesGroup()) {
            const ReportColumn& across = *m_plan.across.front();
            members.push_back(GroupMemberOf("Series_" + across.field, across));
        } else {
            members.push_back(Element("ChartMember", {Text("Label", Literal(m_series.caption))}));
        }
        return Element("ChartSeriesHierarchy", {Element("ChartMembers", std::move(members))});
    }

    std::string_view Type() const {
        switch (m_kind) {
            case ReportChart::Bar:
                return "Bar";
            case ReportChart::Line:
                return "Line";
            case ReportChart::Pie:
                return "Shape";
            default:
                return "Column";
        }
    }

    Xml Data() {
        const bool isPie = m_kind == ReportChart::Pie;
        const Xml label = isPie ? Element("ChartDataLabel", {StyleOf(8), Text("Label", "#PERCENT{P0}"),
                                                             Text("Visible", "true")})
                                : Xml{};
        const Xml marker = m_kind == ReportChart::Line && m_category.different <= MostMarkers
                               ? Element("ChartMarker", {Text("Type", "Circle"), Text("Size", "5pt")})
                               : Xml{};
        const Xml point = Element(
            "ChartDataPoint", {Element("ChartDataPointValues", {Text("Y", m_series.value)}), label, marker});
        // A percentage within a dark slice would not be seen.
        const Xml outside =
            Element("CustomProperties",
                    {Element("CustomProperty", {Text("Name", "PieLabelStyle"), Text("Value", "Outside")})});
        const Xml series = Named("ChartSeries", m_parts.Name("Series_" + m_series.name),
                                 {Element("ChartDataPoints", {point}), Text("Type", Type()),
                                  Text("Subtype", isPie ? "Pie" : "Plain"), isPie ? outside : Xml{}});
        return Element("ChartData", {Element("ChartSeriesCollection", {series})});
    }

    Xml Areas() {
        // The first bar is at the top.
        const Xml categories =
            Named("ChartAxis", "Primary",
                  {StyleOf(8), m_kind == ReportChart::Bar ? Text("Reverse", "true") : Xml{}});
        const Xml grid = Element(
            "ChartMajorGridLines",
            {Text("Enabled", "True"),
             Element("Style", {Element("Border", {Text("Color", "#DDDDDD"), Text("Style", "Solid")})})});
        const Xml values = Named("ChartAxis", "Primary", {StyleOf(8, {.format = "N0"}), grid});
        return Element(
            "ChartAreas",
            {Named("ChartArea", "Default",
                   {Element("ChartCategoryAxes", {categories}), Element("ChartValueAxes", {values})})});
    }

    Xml Legends() {
        const bool isNeeded = HasSeriesGroup() || m_kind == ReportChart::Pie;
        return isNeeded
                   ? Element("ChartLegends",
                             {Named("ChartLegend", "Legend", {StyleOf(8), Text("Position", "RightCenter")})})
                   : Xml{};
    }

    Xml Title() {
        const std::string caption = m_series.caption + " by " + CaptionOf(m_category.name);
        return Element(
            "ChartTitles",
            {Named("ChartTitle", "Title", {Text("Caption", Literal(caption)), StyleOf(11, {.bold = true})})});
    }

    Xml Palette() {
        XmlList colours;
        for (const std::string_view colour : m_plan.theme.palette) {
            colours.push_back(Text("ChartCustomPaletteColor", colour));
        }
        return Element("ChartCustomPaletteColors", std::move(colours));
    }

    const Plan& m_plan;
    Parts& m_parts;
    const ReportChart m_kind;
    const ReportColumn& m_category;
    const Series m_series;
};

}  // namespace

PlacedItem ChartItem(const Plan& plan, Parts& parts, double top) {
    return Chart(plan, parts).Make(top);
}

}  // namespace designer
