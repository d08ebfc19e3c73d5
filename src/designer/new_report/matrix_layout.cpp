// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <numeric>

#include "designer/new_report/layouts.h"
#include "designer/new_report/table_parts.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr std::size_t MostColumns = 40;  // for which the font becomes smaller

class Matrix {
 public:
    Matrix(const Plan& plan, Parts& parts)
        : m_plan(plan), m_parts(parts), m_levels(plan.rows.size()), m_fit(Fit()) {}

    PlacedItem Make(double top) {
        XmlList rows = {BodyRow("", BodyLook())};
        for (std::size_t level = m_levels; level-- > 1;) {
            const std::string suffix = "_" + m_plan.rows[level - 1]->field + "_Total";
            rows.push_back(BodyRow(suffix, SubtotalLook(m_plan.theme, m_fit.fontSize)));
        }
        rows.push_back(BodyRow("_Total", TotalLook(m_plan.theme, m_fit.fontSize)));
        const double height = RowHeight * static_cast<double>(rows.size() + HeadRows());
        return {Tablix(top, height, std::move(rows)), height};
    }

 private:
    // A row of headings for each level of columns, and one for the names of several values.
    std::size_t HeadRows() const { return m_plan.across.size() + (m_plan.values.size() > 1 ? 1 : 0); }

    // The widths are those of the row headings, then of the values.
    ColumnFit Fit() const {
        std::vector<ColumnNeed> needs;
        for (const ReportColumn* column : m_plan.rows) {
            needs.push_back(
                NeedOfHeading(m_plan, *column, needs.empty() ? nullptr : m_plan.rows[needs.size() - 1]));
        }
        std::size_t instances = 1;
        double heading = 0;
        for (const ReportColumn* column : m_plan.across) {
            instances = std::min(MostColumns, instances * std::max<std::size_t>(1, column->different));
            heading = std::max(heading, std::min(NeedOf(m_plan, *column).least, 8.0));
        }
        const std::size_t most =
            static_cast<std::size_t>(m_plan.width / 12) - std::min<std::size_t>(m_levels, 8);
        const std::size_t fitting = std::max<std::size_t>(1, most / m_plan.values.size());
        for (std::size_t i = 0; i <= std::min(instances, fitting - 1); ++i) {
            for (const ReportColumn* column : m_plan.values) {
                ColumnNeed need = NeedOfSum(m_plan, *column);
                need.wish = need.least = std::max(need.least, heading);
                needs.push_back(need);
            }
        }
        return FitColumns(needs, m_plan.width);
    }

    double RowHeadWidth(std::size_t level) const {
        const auto begin = m_fit.widths.begin();
        return std::accumulate(begin + static_cast<std::ptrdiff_t>(level),
                               begin + static_cast<std::ptrdiff_t>(m_levels), 0.0);
    }

    Look BodyLook() const {
        return {.font = m_plan.theme.font,
                .ink = m_plan.theme.ink,
                .size = m_fit.fontSize,
                .top = true,
                .ruleBelow = m_plan.theme.rule};
    }

    // The sums of the columns' instances, then those of all of them.
    Xml BodyRow(const std::string& suffix, const Look& look) {
        XmlList cells;
        for (const bool isTotal : {false, true}) {
            for (const ReportColumn* value : m_plan.values) {
                Look own = ForSum(look, *value);
                own.bold = own.bold || isTotal;
                const std::string name = value->field + suffix + (isTotal ? "_All" : "");
                cells.push_back(Cell(m_parts.Box(name, SumOf(*value), own)));
            }
        }
        return m_parts.Row(RowHeight, std::move(cells));
    }

    Xml RowsFrom(std::size_t level) {
        const ReportColumn& row = *m_plan.rows[level];
        XmlList inner;
        if (level + 1 < m_levels) {
            inner = {RowsFrom(level + 1),
                     TotalMember(level + 1, TotalLabel(row), SubtotalLook(m_plan.theme, m_fit.fontSize))};
        }
        Look look = GroupLook(m_plan.theme, m_fit.fontSize, 1);
        look.top = true;
        look.format = FormatOf(row);
        Xml box = m_parts.Box(row.field + "_Row", HeadingOf(row), look);
        return GroupMember(m_parts.Name("By_" + row.field), row,
                           {m_parts.Header(m_fit.widths[level], std::move(box))}, std::move(inner));
    }

    Xml TotalMember(std::size_t level, const std::string& label, const Look& look) {
        return Member({m_parts.Header(RowHeadWidth(level), m_parts.Box("Total_Heading", label, look)),
                       Text("KeepWithGroup", "Before"), Text("KeepTogether", "true")});
    }

    // A member for each value. With one value the headings above say all.
    XmlList ValueMembers() {
        XmlList members;
        for (const ReportColumn* value : m_plan.values) {
            Xml box = m_parts.Box(value->field + "_Heading", Literal(CaptionOf(value->name)),
                                  RightHeadLook(m_plan.theme, m_fit.fontSize));
            members.push_back(Member({m_parts.Header(RowHeight, std::move(box))}));
        }
        return m_plan.values.size() > 1 ? members : XmlList();
    }

    Xml ColumnsFrom(std::size_t level) {
        const ReportColumn& column = *m_plan.across[level];
        Look look = RightHeadLook(m_plan.theme, m_fit.fontSize);
        look.format = FormatOf(column);
        Xml box = m_parts.Box(column.field + "_Column", HeadingOf(column), look);
        const bool isLast = level + 1 == m_plan.across.size();
        XmlList inner = isLast ? ValueMembers() : XmlList{ColumnsFrom(level + 1)};
        return GroupMember(m_parts.Name("By_" + column.field), column,
                           {m_parts.Header(RowHeight, std::move(box))}, std::move(inner));
    }

    Xml TotalColumn() {
        Xml box = m_parts.Box("Total_Column", "Total", RightHeadLook(m_plan.theme, m_fit.fontSize));
        const double height = RowHeight * static_cast<double>(m_plan.across.size());
        return Member({m_parts.Header(height, std::move(box))}, ValueMembers());
    }

    // The names of the row headings stand in the last row of the corner.
    Xml Corner() {
        XmlList rows;
        for (std::size_t row = 1; row <= HeadRows(); ++row) {
            XmlList cells;
            for (const ReportColumn* column : m_plan.rows) {
                const std::string caption = row == HeadRows() ? Literal(CaptionOf(column->name)) : "";
                Look look = HeadLook(m_plan.theme, m_fit.fontSize);
                look.ruleBelow = row == HeadRows() ? look.ruleBelow : std::string_view();
                Xml box = m_parts.Box(column->field + "_Heading", caption, look);
                cells.push_back(Element("TablixCornerCell", {Element("CellContents", {std::move(box)})}));
            }
            rows.push_back(Element("TablixCornerRow", std::move(cells)));
        }
        return Element("TablixCorner", {Element("TablixCornerRows", std::move(rows))});
    }

    Xml Tablix(double top, double height, XmlList rows) {
        std::vector<double> widths;
        for (std::size_t i = 0; i < 2 * m_plan.values.size(); ++i) {  // of an instance, and of the total
            widths.push_back(m_fit.widths[m_levels + i % m_plan.values.size()]);
        }
        XmlList members = {RowsFrom(0), TotalMember(0, "Total", TotalLook(m_plan.theme, m_fit.fontSize))};
        const double width = RowHeadWidth(0) + std::accumulate(widths.begin(), widths.end(), 0.0);
        return m_parts.Tablix("Matrix",
                              {.widths = widths,
                               .rows = std::move(rows),
                               .columnMembers = {ColumnsFrom(0), TotalColumn()},
                               .rowMembers = std::move(members),
                               .corner = Corner(),
                               .noRows = NoRows},
                              {top, 0, height, width});
    }

    const Plan& m_plan;
    Parts& m_parts;
    const std::size_t m_levels;
    const ColumnFit m_fit;
};

}  // namespace

PlacedItem MatrixItem(const Plan& plan, Parts& parts, double top) {
    return Matrix(plan, parts).Make(top);
}

}  // namespace designer
