// SPDX-License-Identifier: GPL-3.0-or-later
#include <numeric>

#include "designer/new_report/layouts.h"
#include "designer/new_report/table_parts.h"

namespace designer {
namespace {

constexpr double Step = 10;  // points that a group's rows are to the right of its heading

class Table {
 public:
    Table(const Plan& plan, Parts& parts)
        : m_plan(plan), m_parts(parts), m_fit(FitColumns(Needs(), plan.width)) {}

    PlacedItem Make(double top) {
        XmlList rows = {HeadingCells(m_plan, m_parts, RowHeight + 1, m_fit.fontSize)};
        for (std::size_t level = 0; level < m_plan.groups.size(); ++level) {
            rows.push_back(GroupRow(level));
        }
        rows.push_back(DetailCells(m_plan, m_parts, m_fit.fontSize, Indent(m_plan.groups.size())));
        XmlList members = {RepeatedRowWithNext(), GroupsFrom(0)};
        if (!m_plan.sums.empty()) {
            for (std::size_t level = m_plan.groups.size(); level-- > 0;) {
                rows.push_back(SubtotalRow(level));
            }
            rows.push_back(m_parts.Row(RowHeight + 1, TotalCells(m_plan, m_parts, "Total", "Total",
                                                                 TotalLook(m_plan.theme, m_fit.fontSize))));
            members.push_back(RowWithPrevious());
        }
        const double height = RowHeight * static_cast<double>(rows.size()) + 1;
        const double width = std::accumulate(m_fit.widths.begin(), m_fit.widths.end(), 0.0);
        Xml tablix = m_parts.Tablix("Table",
                                    {.widths = m_fit.widths,
                                     .rows = std::move(rows),
                                     .columnMembers = XmlList(m_fit.widths.size(), Member()),
                                     .rowMembers = std::move(members),
                                     .noRows = NoRows},
                                    {top, 0, height, width});
        return {std::move(tablix), height};
    }

 private:
    std::vector<ColumnNeed> Needs() const {
        std::vector<ColumnNeed> needs;
        for (const ReportColumn* column : m_plan.details) {
            needs.push_back(m_plan.IsSummed(*column) ? NeedOfSum(m_plan, *column) : NeedOf(m_plan, *column));
        }
        const double indent = Indent(m_plan.groups.size()) / 9;
        needs.front().wish += indent;
        needs.front().least += indent;
        return needs;
    }

    static double Indent(std::size_t level) { return Step * static_cast<double>(level); }

    Xml GroupRow(std::size_t level) {
        const ReportColumn& group = *m_plan.groups[level];
        Look look = GroupLook(m_plan.theme, m_fit.fontSize, level);
        look.left += Indent(level);
        look.format = FormatOf(group);
        const std::size_t count = m_plan.details.size();
        XmlList cells = {Cell(m_parts.Box(group.field + "_Group", HeadingOf(group), look), count)};
        cells.insert(cells.end(), count - 1, Element("TablixCell"));
        return m_parts.Row(RowHeight, std::move(cells));
    }

    Xml SubtotalRow(std::size_t level) {
        const ReportColumn& group = *m_plan.groups[level];
        Look look = SubtotalLook(m_plan.theme, m_fit.fontSize);
        look.left += Indent(level);
        look.below = 5;
        XmlList cells = TotalCells(m_plan, m_parts, TotalLabel(group), group.field + "_Total", look);
        return m_parts.Row(RowHeight, std::move(cells));
    }

    Xml GroupsFrom(std::size_t level) {
        if (level == m_plan.groups.size()) {
            return DetailMember();
        }
        const ReportColumn& group = *m_plan.groups[level];
        XmlList inner = {RepeatedRowWithNext(), GroupsFrom(level + 1)};
        if (!m_plan.sums.empty()) {
            inner.push_back(RowWithPrevious());
        }
        return GroupMember(m_parts.Name("By_" + group.field), group, {}, std::move(inner));
    }

    const Plan& m_plan;
    Parts& m_parts;
    const ColumnFit m_fit;
};

}  // namespace

PlacedItem TableItem(const Plan& plan, Parts& parts, double top) {
    return Table(plan, parts).Make(top);
}

}  // namespace designer
