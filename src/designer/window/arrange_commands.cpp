// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignWindow: items that become a group, and what was one.
#include "designer/model/item_grouping.h"
#include "designer/model/placing.h"
#include "designer/window/design_window.h"

namespace designer {

void DesignWindow::GroupSelection() {
    const ReportItems items = m_model->Items();
    const std::vector<ElementId> ids = Movable(items, m_model->SelectedItems());
    if (ids.empty()) {
        m_model->Refuse(ReasonOfCells());
        return;
    }
    ElementId rectangle = NoElement;
    if (m_model->Edit(StepName(*m_model, tr("Group"), ids),
                      [&](Document& document) { rectangle = GroupItems(document, items, ids); })) {
        m_model->Select({rectangle});
    }
}

void DesignWindow::UngroupSelection() {
    const ReportItems items = m_model->Items();
    const std::vector<ElementId> ids = m_model->SelectedItems();
    std::vector<ElementId> freed;
    if (m_model->Edit(StepName(*m_model, tr("Ungroup"), ids),
                      [&](Document& document) { freed = UngroupItems(document, items, ids); })) {
        m_model->Select(freed);
    }
}

QString DesignWindow::ReasonOfCells() {
    return tr("What is in a cell has no place of its own");
}

bool DesignWindow::HasRectangle() const {
    const std::vector<ElementId> ids = m_model->SelectedItems();
    return std::any_of(ids.begin(), ids.end(),
                       [this](ElementId id) { return m_model->Item(id)->kind == "Rectangle"; });
}

}  // namespace designer
