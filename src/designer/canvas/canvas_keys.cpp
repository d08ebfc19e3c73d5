// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: its keys.
#include <QKeyEvent>
#include <QScrollBar>
#include <algorithm>
#include <utility>

#include "designer/canvas/design_canvas.h"
#include "designer/graphics/part_tree.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

constexpr double FineStep = 0.2;     // of the grid
constexpr qint64 NudgePause = 1000;  // milliseconds; nudges within it are one step

}  // namespace

void DesignCanvas::keyPressEvent(QKeyEvent* event) {
    if (event->modifiers().testFlag(Qt::AltModifier)) {
        event->ignore();  // the key of a command that is disabled
        return;
    }
    const bool fine = event->modifiers().testFlag(Qt::ControlModifier);
    const bool resizes = event->modifiers().testFlag(Qt::ShiftModifier);
    switch (event->key()) {
        case Qt::Key_Left:
            return StepInTable(-1, 0, fine, resizes) ? void() : Nudge(-1, 0, fine, resizes);
        case Qt::Key_Right:
            return StepInTable(1, 0, fine, resizes) ? void() : Nudge(1, 0, fine, resizes);
        case Qt::Key_Up:
            return StepInTable(0, -1, fine, resizes) ? void() : Nudge(0, -1, fine, resizes);
        case Qt::Key_Down:
            return StepInTable(0, 1, fine, resizes) ? void() : Nudge(0, 1, fine, resizes);
        case Qt::Key_Escape:
            if (m_drag.action != Action::None) {
                CancelDrag();
            } else if (m_tool) {
                SetTool(std::nullopt);
            } else {
                ClimbSelection();
            }
            return;
        case Qt::Key_Return:
        case Qt::Key_Enter:
            return fine ? event->ignore() : EditText();
        default:
            return TypeInto(event);
    }
}

// Tab goes through the items in the order of the file, and after the last one to the next part of the window.
bool DesignCanvas::focusNextPrevChild(bool next) {
    const auto& items = m_model.Items().items;
    const auto now = std::find_if(items.begin(), items.end(),
                                  [this](const ReportItem& item) { return item.id == m_model.Leader(); });
    const bool isLast =
        items.empty() || (now != items.end() && &*now == (next ? &items.back() : &items.front()));
    if (!hasFocus() || isLast) {
        return QAbstractScrollArea::focusNextPrevChild(next);
    }
    SelectNext(next ? 1 : -1);
    return true;
}

void DesignCanvas::SelectNext(int step) {
    const auto& items = m_model.Items().items;
    const auto now = std::find_if(items.begin(), items.end(),
                                  [this](const ReportItem& item) { return item.id == m_model.Leader(); });
    if (now == items.end()) {
        m_model.Select({step > 0 ? items.front().id : items.back().id});
    } else {
        m_model.Select({(now + step)->id});
    }
    RevealSelection();
}

// From an item to what it is in, up to its band, and then to nothing.
void DesignCanvas::ClimbSelection() {
    const ReportItem* item = m_model.Item(m_model.Leader());
    const ElementId outer = item ? item->container : OwnerOfPart(m_model.Source(), m_model.Leader());
    m_model.Select(outer != NoElement ? std::vector{outer} : std::vector<ElementId>{});
}

void DesignCanvas::Nudge(int right, int down, bool fine, bool resizes) {
    const ReportItems items = m_model.Items();
    const std::vector<ElementId> ids =
        resizes ? Resizable(items, m_model.SelectedItems()) : Movable(items, m_model.SelectedItems());
    if (ids.empty()) {
        if (m_model.SelectedItems().empty()) {
            horizontalScrollBar()->setValue(horizontalScrollBar()->value() + right * 20);
            verticalScrollBar()->setValue(verticalScrollBar()->value() + down * 20);
        }
        return;
    }
    const double step = GridStep() * (fine ? FineStep : 1);
    std::vector<Placement> places = PlacesOf(ids);
    double leftmost = 0, topmost = 0;  // how far they may go before one is at an edge
    for (std::size_t index = 0; index < places.size(); ++index) {
        const ReportItem* container = m_model.Item(m_model.Item(ids[index])->container);
        const double left = places[index].place.left - (container ? container->place.left : 0);
        const double top = places[index].place.top - (container ? container->place.top : 0);
        leftmost = index == 0 ? -left : std::max(leftmost, -left);
        topmost = index == 0 ? -top : std::max(topmost, -top);
    }
    for (Placement& placement : places) {
        if (resizes) {
            placement.place = Resized(placement.place, Handle::BottomRight, right * step, down * step);
        } else {
            placement.place.left += std::max(leftmost, right * step);
            placement.place.top += std::max(topmost, down * step);
        }
    }
    if (!m_nudged.isValid() || m_nudged.elapsed() > NudgePause) {
        ++m_nudges;
    }
    m_nudged.restart();
    std::string key = (resizes ? "resize " : "move ") + std::to_string(m_nudges);
    for (const ElementId id : ids) {
        key += " " + std::to_string(id);
    }
    m_model.Edit(
        StepName(m_model, resizes ? tr("Resize") : tr("Move"), ids),
        [&](Document& document) { Place(document, items, places); }, key);
    RevealSelection();
}

}  // namespace designer
