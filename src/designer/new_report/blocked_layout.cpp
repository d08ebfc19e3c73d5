// SPDX-License-Identifier: GPL-3.0-or-later
#include <numeric>

#include "designer/new_report/layouts.h"
#include "designer/new_report/table_parts.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

class Blocked {
 public:
    Blocked(const Plan& plan, Parts& parts)
        : m_plan(plan),
          m_parts(parts),
          m_levels(plan.groups.size()),
          m_fit(FitColumns(Needs(), plan.width)) {}

    PlacedItem Make(double top) {
        XmlList rows = {DetailCells(m_plan, m_parts, m_fit.fontSize, 0)};
        XmlList members = {GroupFrom(0)};
        if (!m_plan.sums.empty()) {
            for (std::size_t level = m_levels; level-- > 0;) {
                rows.push_back(SubtotalRow(level));
            }
            rows.push_back(m_parts.Row(RowHeight + 1, TotalCells(m_plan, m_parts, "", "Total", TotalRow())));
            members.push_back(TotalMember(0, "Total", TotalRow()));
        }
        const double height = HeadHeight + RowHeight * static_cast<double>(rows.size()) + 1;
        const auto first = m_fit.widths.begin() + static_cast<std::ptrdiff_t>(m_levels);
        const double width = std::accumulate(m_fit.widths.begin(), m_fit.widths.end(), 0.0);
        Xml tablix = m_parts.Tablix("Table",
                                    {.widths = {first, m_fit.widths.end()},
                                     .rows = std::move(rows),
                                     .columnMembers = Headings(),
                                     .rowMembers = std::move(members),
                                     .corner = Corner(),
                                     .noRows = NoRows},
                                    {top, 0, height, width});
        return {std::move(tablix), height};
    }

 private:
    static constexpr double HeadHeight = RowHeight + 1;

    std::vector<ColumnNeed> Needs() const {
        std::vector<ColumnNeed> needs;
        for (const ReportColumn* column : m_plan.groups) {
            const bool hasTotals = !m_plan.sums.empty() && column != m_plan.groups.front();
            needs.push_back(
                NeedOfHeading(m_plan, *column, hasTotals ? m_plan.groups[needs.size() - 1] : nullptr));
        }
        for (const ReportColumn* column : m_plan.details) {
            needs.push_back(m_plan.IsSummed(*column) ? NeedOfSum(m_plan, *column) : NeedOf(m_plan, *column));
        }
        return needs;
    }

    Look TotalRow() const { return TotalLook(m_plan.theme, m_fit.fontSize); }
    Look SubtotalRowLook() const { return SubtotalLook(m_plan.theme, m_fit.fontSize); }

    // Returns the width of the columns of the groups from `level` on.
    double WidthFrom(std::size_t level) const {
        const auto begin = m_fit.widths.begin();
        return std::accumulate(begin + static_cast<std::ptrdiff_t>(level),
                               begin + static_cast<std::ptrdiff_t>(m_levels), 0.0);
    }

    // The innermost group has its label in the row itself, as it has no column on its right.
    Xml SubtotalRow(std::size_t level) {
        const ReportColumn& group = *m_plan.groups[level];
        const std::string label = level + 1 == m_levels ? TotalLabel(group) : "";
        return m_parts.Row(RowHeight,
                           TotalCells(m_plan, m_parts, label, group.field + "_Total", SubtotalRowLook()));
    }

    // A row of totals with a heading that is as wide as the columns of the groups from `level` on.
    Xml TotalMember(std::size_t level, const std::string& label, const Look& look) {
        return Member({m_parts.Header(WidthFrom(level), m_parts.Box("Total_Heading", label, look)),
                       Text("KeepWithGroup", "Before"), Text("KeepTogether", "true")});
    }

    Xml GroupFrom(std::size_t level) {
        if (level == m_levels) {
            return DetailMember();
        }
        const ReportColumn& group = *m_plan.groups[level];
        XmlList inner = {GroupFrom(level + 1)};
        if (!m_plan.sums.empty()) {
            inner.push_back(level + 1 == m_levels
                                ? RowWithPrevious()
                                : TotalMember(level + 1, TotalLabel(group), SubtotalRowLook()));
        }
        Look look = GroupLook(m_plan.theme, m_fit.fontSize, 1);
        look.top = true;
        look.format = FormatOf(group);
        Xml box = m_parts.Box(group.field + "_Group", HeadingOf(group), look);
        return GroupMember(m_parts.Name("By_" + group.field), group,
                           {m_parts.Header(m_fit.widths[level], std::move(box))}, std::move(inner));
    }

    Xml Corner() {
        XmlList cells;
        for (const ReportColumn* group : m_plan.groups) {
            Xml box = m_parts.Box(group->field + "_Heading", Literal(CaptionOf(group->name)),
                                  HeadLook(m_plan.theme, m_fit.fontSize));
            cells.push_back(Element("TablixCornerCell", {Element("CellContents", {std::move(box)})}));
        }
        return Element("TablixCorner",
                       {Element("TablixCornerRows", {Element("TablixCornerRow", std::move(cells))})});
    }

    XmlList Headings() {
        XmlList members;
        for (const ReportColumn* column : m_plan.details) {
            Xml box = m_parts.Box(column->field + "_Heading", Literal(CaptionOf(column->name)),
                                  HeadLookOf(m_plan.theme, m_fit.fontSize, *column));
            members.push_back(Member({m_parts.Header(HeadHeight, std::move(box))}));
        }
        return members;
    }

    const Plan& m_plan;
    Parts& m_parts;
    const std::size_t m_levels;
    const ColumnFit m_fit;
};

}  // namespace

PlacedItem BlockedItem(const Plan& plan, Parts& parts, double top) {
    return Blocked(plan, parts).Make(top);
}

}  // namespace designer
