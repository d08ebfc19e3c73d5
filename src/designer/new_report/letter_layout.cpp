// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/layouts.h"
#include "designer/new_report/table_parts.h"
#include "platform/base/caption.h"

namespace designer {
namespace {

constexpr double LetterLine = 5;
constexpr double AddressTop = 25, AddressWidth = 85, DateWidth = 50;
constexpr double CaptionWidth = 45;

class Letter {
 public:
    Letter(const Plan& plan, Parts& parts) : m_plan(plan), m_parts(parts) {}

    PlacedItem Make() {
        AddAddress();
        AddSubject();
        if (m_plan.groups.empty()) {
            AddValues();
        } else {
            PlacedItem table = Rows();
            m_items.push_back(std::move(table.item));
            m_top += table.height;
        }
        const double height = m_top + LetterLine;
        return {List(height), height};
    }

 private:
    Look Plain() const {
        return {.font = m_plan.theme.font,
                .ink = m_plan.theme.ink,
                .size = 10,
                .left = 0,
                .above = 0,
                .below = 0};
    }

    // A line for each group, where the window of an envelope is, and the date on the right.
    void AddAddress() {
        m_top = AddressTop;
        for (const ReportColumn* group : m_plan.groups) {
            Look look = Plain();
            look.format = FormatOf(*group);
            look.bold = m_top == AddressTop;
            m_items.push_back(
                m_parts.Box(group->field, ValueOf(*group), look, {m_top, 0, LetterLine, AddressWidth}));
            m_top += LetterLine;
        }
        Look date = Plain();
        date.right = true;
        date.format = "D";
        m_items.push_back(
            m_parts.Box("Date", "=Globals!ExecutionTime", date,
                        {AddressTop, m_plan.width - DateWidth - 10, LetterLine, DateWidth + 10}));
        m_top += 3 * LetterLine;
    }

    void AddSubject() {
        Look look = Plain();
        look.font = m_plan.theme.headingFont;
        look.ink = m_plan.theme.titleColour;
        look.size = 13;
        look.bold = true;
        m_items.push_back(
            m_parts.Box("Subject", Literal(m_plan.report.title), look, {m_top, 0, 7, m_plan.width}));
        m_top += 12;
    }

    // Without groups a letter is of one row: its columns are below each other.
    void AddValues() {
        for (const ReportColumn* column : m_plan.details) {
            Look caption = Plain();
            caption.ink = m_plan.theme.titleColour;
            Look value = Plain();
            value.format = FormatOf(*column);
            m_items.push_back(m_parts.Box(column->field + "_Heading", Literal(CaptionOf(column->name)),
                                          caption, {m_top, 0, LetterLine, CaptionWidth}));
            m_items.push_back(m_parts.Box(column->field, ValueOf(*column), value,
                                          {m_top, CaptionWidth, LetterLine, m_plan.width - CaptionWidth}));
            m_top += LetterLine + 1;
        }
    }

    // The rows of the letter's group.
    PlacedItem Rows() {
        Plan inner = m_plan;
        inner.groups.clear();
        return TableItem(inner, m_parts, m_top);
    }

    Xml Pages() {
        XmlList group, sorts;
        for (const ReportColumn* column : m_plan.groups) {
            group.push_back(Text("GroupExpression", ValueOf(*column)));
            sorts.push_back(Element("SortExpression", {Text("Value", ValueOf(*column))}));
        }
        const Xml breaks = Element("PageBreak", {Text("BreakLocation", "Between")});
        return Member({Named("Group", m_parts.Name("Letters"),
                             {group.empty() ? Xml{} : Element("GroupExpressions", std::move(group)), breaks}),
                       sorts.empty() ? Xml{} : Element("SortExpressions", std::move(sorts))});
    }

    Xml List(double height) {
        Xml page = Named("Rectangle", m_parts.Name("Page"), {Element("ReportItems", std::move(m_items))});
        return m_parts.Tablix("Letter",
                              {.widths = {m_plan.width},
                               .rows = {m_parts.Row(height, {Cell(std::move(page))})},
                               .columnMembers = {Member()},
                               .rowMembers = {Pages()}},
                              {0, 0, height, m_plan.width});
    }

    const Plan& m_plan;
    Parts& m_parts;
    XmlList m_items;
    double m_top = 0;
};

}  // namespace

PlacedItem LetterItem(const Plan& plan, Parts& parts) {
    return Letter(plan, parts).Make();
}

}  // namespace designer
