// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/default_font.h"

namespace rdl {
namespace {

// Calls `visit` for every text box among the items, those in rectangles and regions included.
template <typename Visit>
void ForEachTextbox(std::vector<ItemPtr>& items, const Visit& visit);

template <typename Visit>
void VisitItem(ReportItem* item, const Visit& visit);

template <typename Visit>
void VisitHeaders(std::vector<TablixMember>& members, const Visit& visit) {
    for (TablixMember& member : members) {
        VisitItem(member.header.get(), visit);
        VisitHeaders(member.members, visit);
    }
}

template <typename Visit>
void VisitItem(ReportItem* item, const Visit& visit) {
    if (auto* textbox = dynamic_cast<Textbox*>(item)) {
        visit(*textbox);
    } else if (auto* rectangle = dynamic_cast<Rectangle*>(item)) {
        ForEachTextbox(rectangle->items, visit);
    } else if (auto* tablix = dynamic_cast<Tablix*>(item)) {
        VisitHeaders(tablix->columnMembers, visit);
        VisitHeaders(tablix->rowMembers, visit);
        for (std::vector<TablixCell>& row : tablix->corner) {
            for (TablixCell& cell : row) {
                VisitItem(cell.item.get(), visit);
            }
        }
        for (TablixRow& row : tablix->rows) {
            for (TablixCell& cell : row.cells) {
                VisitItem(cell.item.get(), visit);
            }
        }
    }
}

template <typename Visit>
void ForEachTextbox(std::vector<ItemPtr>& items, const Visit& visit) {
    for (ItemPtr& item : items) {
        VisitItem(item.get(), visit);
    }
}

}  // namespace

void ApplyDefaultFont(Definition& definition, const Expr& font) {
    if (!font.IsSet() || font.IsExpression()) {
        return;
    }
    const auto apply = [&](Textbox& textbox) {
        for (Paragraph& paragraph : textbox.paragraphs) {
            for (TextRun& run : paragraph.runs) {
                if (!run.style.Find(StyleProperty::FontFamily)) {
                    run.style.properties.emplace_back(StyleProperty::FontFamily, font);
                }
            }
        }
    };
    for (Section& section : definition.sections) {
        ForEachTextbox(section.items, apply);
        for (std::optional<PageSection>* part : {&section.page.header, &section.page.footer}) {
            if (*part) {
                ForEachTextbox((*part)->items, apply);
            }
        }
    }
}

}  // namespace rdl
