// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/layouts.h"
#include "designer/new_report/refusal.h"

namespace designer {
namespace {

constexpr double Margin = 2.5, LabelLine = 4.4;

// The common sheets of 21 and of 30 labels.
constexpr LabelSheet A4Sheet{63.5, 38.1, 7.2, 15.1, 2.5, 3};
constexpr LabelSheet LetterSheet{66.675, 25.4, 4.7625, 12.7, 3.175, 3};

}  // namespace

const LabelSheet& SheetOf(ReportPaper paper) {
    return paper == ReportPaper::A4 ? A4Sheet : LetterSheet;
}

PlacedItem LabelItem(const Plan& plan, Parts& parts) {
    const LabelSheet& sheet = SheetOf(plan.report.paper);
    const auto most = static_cast<std::size_t>((sheet.height - Margin) / LabelLine);
    if (plan.details.size() > most) {
        Refuse("A label has " + std::to_string(most) + " lines, and " + std::to_string(plan.details.size()) +
               " columns are shown: choose fewer of them");
    }
    XmlList lines;
    double top = Margin;
    for (const ReportColumn* column : plan.details) {
        const Look look{.font = lines.empty() ? plan.theme.headingFont : plan.theme.font,
                        .ink = lines.empty() ? plan.theme.titleColour : plan.theme.ink,
                        .size = 9,
                        .bold = lines.empty(),
                        .grows = false,
                        .format = FormatOf(*column),
                        .above = 0,
                        .below = 0};
        lines.push_back(parts.Box(column->field, ValueOf(*column), look,
                                  {top, Margin, LabelLine, sheet.width - 2 * Margin}));
        top += LabelLine;
    }
    Xml label = Named("Rectangle", parts.Name("Label"),
                      {Element("ReportItems", std::move(lines)), Text("KeepTogether", "true")});
    Xml tablix = parts.Tablix("Labels",
                              {.widths = {sheet.width},
                               .rows = {parts.Row(sheet.height, {Cell(std::move(label))})},
                               .columnMembers = {Member()},
                               .rowMembers = {DetailMember()}},
                              {0, 0, sheet.height, sheet.width});
    return {std::move(tablix), sheet.height};
}

}  // namespace designer
