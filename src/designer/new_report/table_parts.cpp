// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/table_parts.h"

#include <algorithm>

#include "designer/new_report/text_width.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

// Parts of the font size.
constexpr double WidestText = 26, LeastText = 8, WidestHeading = 14;
constexpr double Bold = 1.08;
constexpr double MoreDigits = 1.7;  // of a sum

std::size_t FirstSum(const Plan& plan) {
    const auto first = std::find_if(plan.details.begin(), plan.details.end(),
                                    [&](const ReportColumn* column) { return plan.IsSummed(*column); });
    return static_cast<std::size_t>(first - plan.details.begin());
}

Xml EmptyCell() {
    return Element("TablixCell");
}

}  // namespace

Look HeadLook(const Theme& theme, double size) {
    return {.font = theme.headingFont,
            .ink = theme.headInk,
            .fill = theme.headFill,
            .size = size,
            .bold = true,
            .ruleBelow = theme.headFill.empty() ? theme.ink : theme.rule};
}

Look RightHeadLook(const Theme& theme, double size) {
    Look look = HeadLook(theme, size);
    look.right = true;
    return look;
}

Look HeadLookOf(const Theme& theme, double size, const ReportColumn& column) {
    return column.IsNumeric() ? RightHeadLook(theme, size) : HeadLook(theme, size);
}

Look GroupLook(const Theme& theme, double size, std::size_t level) {
    return {.font = theme.headingFont,
            .ink = theme.groupInk,
            .fill = level == 0 ? theme.groupFill : std::string_view(),
            .size = level == 0 ? size + 1 : size,
            .bold = true,
            .above = level == 0 ? 3.0 : 2.0,
            .ruleBelow = theme.rule};
}

Look DetailLook(const Theme& theme, double size, const ReportColumn& column) {
    Look look{.font = theme.font,
              .ink = theme.ink,
              .size = size,
              .right = column.IsNumeric(),
              .top = true,
              .format = FormatOf(column),
              .above = 3,
              .below = 2.5,
              .ruleBelow = theme.band.empty() ? theme.rule : std::string_view()};
    if (!theme.band.empty()) {
        look.fillExpression = "=IIf(RowNumber(Nothing) Mod 2 = 0, " + Quoted(theme.band) + ", \"#FFFFFF\")";
    }
    return look;
}

Look SubtotalLook(const Theme& theme, double size) {
    return {.font = theme.font,
            .ink = theme.groupInk,
            .size = size,
            .bold = true,
            .above = 3,
            .ruleAbove = theme.ink};
}

Look TotalLook(const Theme& theme, double size) {
    return {.font = theme.headingFont,
            .ink = theme.totalInk,
            .fill = theme.totalFill,
            .size = size,
            .bold = true,
            .above = 3,
            .below = 3,
            .ruleAbove = theme.ink,
            .ruleBelow = theme.totalFill.empty() ? theme.ink : std::string_view()};
}

Look ForSum(Look look, const ReportColumn& column) {
    look.right = true;
    look.format = column.kind == ColumnKind::Code ? "N0" : FormatOf(column);
    return look;
}

ColumnNeed NeedOf(const Plan& plan, const ReportColumn& column) {
    const std::string caption = CaptionOf(column.name);
    const double heading = std::min(WidthOf(caption) * Bold, WidestHeading);
    const double word = std::min(WidthOfWord(caption) * Bold, WidestHeading);
    const bool isText = column.kind == ColumnKind::Text;
    const double value = isText ? std::min(column.widest, WidestText) : column.widest;
    const double least = isText ? std::min(column.widestWord, LeastText) : value;
    const double scale = plan.theme.relativeWidth;
    return {.wish = scale * std::max(value, heading), .least = scale * std::max(least, word)};
}

ColumnNeed NeedOfHeading(const Plan& plan, const ReportColumn& column, const ReportColumn* outer) {
    ColumnNeed need = NeedOf(plan, column);
    if (outer != nullptr) {
        const double total = (std::min(outer->widest, WidestText) + WidthOf("Total ")) * Bold;
        need.wish = std::max(need.wish, plan.theme.relativeWidth * total);
    }
    return need;
}

ColumnNeed NeedOfSum(const Plan& plan, const ReportColumn& column) {
    ReportColumn sum = column;
    sum.widest = column.widest * Bold + MoreDigits;
    return NeedOf(plan, sum);
}

XmlList TotalCells(const Plan& plan, Parts& parts, const std::string& label, const std::string& suffix,
                   const Look& look) {
    const std::size_t first = FirstSum(plan);
    XmlList cells;
    if (first > 0) {
        cells.push_back(Cell(parts.Box("Label_" + suffix, label, look), first));
        cells.insert(cells.end(), first - 1, EmptyCell());
    }
    for (std::size_t i = first; i < plan.details.size(); ++i) {
        const ReportColumn& column = *plan.details[i];
        const std::string name = column.field + "_" + suffix;
        cells.push_back(plan.IsSummed(column) ? Cell(parts.Box(name, SumOf(column), ForSum(look, column)))
                                              : Cell(parts.Box(name, "", look)));
    }
    return cells;
}

std::string TotalLabel(const ReportColumn& group) {
    return "=\"Total \" & " + ShownText(group);
}

Xml HeadingCells(const Plan& plan, Parts& parts, double height, double fontSize) {
    XmlList cells;
    for (const ReportColumn* column : plan.details) {
        cells.push_back(Cell(parts.Box(column->field + "_Heading", Literal(CaptionOf(column->name)),
                                       HeadLookOf(plan.theme, fontSize, *column))));
    }
    return parts.Row(height, std::move(cells));
}

Xml DetailCells(const Plan& plan, Parts& parts, double fontSize, double indent) {
    XmlList cells;
    for (const ReportColumn* column : plan.details) {
        Look look = DetailLook(plan.theme, fontSize, *column);
        look.left += cells.empty() && !look.right ? indent : 0;
        cells.push_back(Cell(parts.Box(column->field, ValueOf(*column), look)));
    }
    return parts.Row(RowHeight, std::move(cells));
}

Xml RepeatedRowWithNext() {
    return Member(
        {Text("KeepWithGroup", "After"), Text("RepeatOnNewPage", "true"), Text("KeepTogether", "true")});
}

Xml RowWithPrevious() {
    return Member({Text("KeepWithGroup", "Before"), Text("KeepTogether", "true")});
}

}  // namespace designer
