// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/report_plan.h"

#include <algorithm>

#include "designer/new_report/refusal.h"
#include "platform/base/text.h"

namespace designer {
namespace {

std::string ListOf(const std::vector<ReportColumn>& columns) {
    constexpr std::size_t Enough = 300;
    std::string list;
    for (const ReportColumn& column : columns) {
        if (list.size() > Enough) {
            return list + " ...";
        }
        list += (list.empty() ? "\"" : ", \"") + column.name + "\"";
    }
    return list;
}

const ReportColumn& Find(const NewReport& report, const std::string& name) {
    const auto found = std::find_if(report.columns.begin(), report.columns.end(),
                                    [&](const ReportColumn& column) { return SameText(column.name, name); });
    if (found == report.columns.end()) {
        Refuse("The query has no column \"" + name + "\"; it has " + ListOf(report.columns));
    }
    if (found->kind == ColumnKind::Bytes) {
        Refuse("The column \"" + found->name + "\" cannot be used: it has pictures or other bytes");
    }
    return *found;
}

bool Contains(const ColumnList& list, const ReportColumn& column) {
    return std::find(list.begin(), list.end(), &column) != list.end();
}

ColumnList FindAll(const NewReport& report, const std::vector<std::string>& names) {
    ColumnList list;
    for (const std::string& name : names) {
        const ReportColumn& column = Find(report, name);
        if (Contains(list, column)) {
            Refuse("The column \"" + column.name + "\" is named twice");
        }
        list.push_back(&column);
    }
    return list;
}

ColumnList NumbersOf(const NewReport& report, const std::vector<std::string>& names) {
    ColumnList list = FindAll(report, names);
    for (const ReportColumn* column : list) {
        if (!column->IsNumeric() && column->kind != ColumnKind::Code) {
            Refuse("The column \"" + column->name + "\" cannot be summed: its values are no numbers");
        }
    }
    return list;
}

ColumnList ShownOf(const NewReport& report) {
    if (!report.shown.empty()) {
        return FindAll(report, report.shown);
    }
    ColumnList list;
    for (const ReportColumn& column : report.columns) {
        if (column.kind != ColumnKind::Bytes) {
            list.push_back(&column);
        }
    }
    return list;
}

void TakeTable(Plan& plan) {
    plan.groups = FindAll(plan.report, plan.report.groups);
    plan.sums = NumbersOf(plan.report, plan.report.sums);
    plan.details = ShownOf(plan.report);
    for (const ReportColumn* column : plan.sums) {
        if (!Contains(plan.details, *column)) {
            plan.details.push_back(column);
        }
        if (Contains(plan.groups, *column)) {
            Refuse("The column \"" + column->name + "\" cannot be both a group and a sum");
        }
    }
    std::erase_if(plan.details, [&](const ReportColumn* column) { return Contains(plan.groups, *column); });
    if (plan.details.empty()) {
        Refuse("All columns that are shown are groups; the query has " + ListOf(plan.report.columns));
    }
}

void TakeMatrix(Plan& plan) {
    plan.rows = FindAll(plan.report, plan.report.rows);
    plan.across = FindAll(plan.report, plan.report.across);
    plan.values = NumbersOf(plan.report, plan.report.values);
    for (const ReportColumn* column : plan.across) {
        if (Contains(plan.rows, *column)) {
            Refuse("The column \"" + column->name + "\" cannot give both rows and columns of a matrix");
        }
    }
    if (plan.rows.empty() || plan.across.empty() || plan.values.empty()) {
        Refuse("A matrix needs columns for its rows, its columns and its values; the query has " +
               ListOf(plan.report.columns));
    }
}

}  // namespace

bool Plan::IsSummed(const ReportColumn& column) const {
    return Contains(sums, column);
}

Plan PlanOf(const NewReport& report) {
    const Theme* const theme = FindTheme(report.theme);
    if (theme == nullptr) {
        Refuse("There is no theme \"" + report.theme + "\": the themes are " + ThemeNames());
    }
    Plan plan{.report = report, .theme = *theme};
    const bool isA4 = report.paper == ReportPaper::A4;
    plan.pageWidth = isA4 ? 210 : 215.9;
    plan.pageHeight = isA4 ? 297 : 279.4;
    if (report.landscape) {
        std::swap(plan.pageWidth, plan.pageHeight);
    }
    plan.width = plan.pageWidth - 2 * SideMargin;
    if (report.layout == ReportLayout::Matrix) {
        TakeMatrix(plan);
    } else if (report.layout == ReportLayout::Labels) {
        plan.details = ShownOf(report);
    } else {
        TakeTable(plan);
    }
    return plan;
}

}  // namespace designer
