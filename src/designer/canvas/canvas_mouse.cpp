// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: what is under the pointer, and what begins and ends with a button.
#include <QApplication>
#include <QMouseEvent>
#include <QWheelEvent>
#include <algorithm>
#include <cmath>

#include "designer/canvas/design_canvas.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

constexpr double EdgeReach = 4, LineReach = 3;  // pixels

bool IsAround(const DesignModel& model, ElementId outer, ElementId inner) {
    for (const ReportItem* item = model.Item(inner); item; item = model.Item(item->container)) {
        if (item->id == outer) {
            return true;
        }
    }
    return false;
}

}  // namespace

ElementId DesignCanvas::ItemAt(QPointF point) const {
    for (auto id = m_drawOrder.rbegin(); id != m_drawOrder.rend(); ++id) {
        const ReportItem* item = m_model.Item(*id);
        if (!item) {
            continue;
        }
        const double reach = item->kind == "Line" ? LineReach : 0;
        if (CanvasArea(*item).normalized().adjusted(-reach, -reach, reach, reach).contains(point)) {
            return *id;
        }
    }
    return NoElement;
}

std::optional<Handle> DesignCanvas::HandleUnder(QPointF point, ElementId& id) const {
    const auto& selection = m_model.Selection();
    for (auto selected = selection.rbegin(); selected != selection.rend(); ++selected) {
        const ReportItem* item = m_model.Item(*selected);
        if (!item || !CanResize(*item)) {
            continue;
        }
        if (const auto handle = HandleAt(point, CanvasArea(*item), item->kind == "Line")) {
            id = *selected;
            return handle;
        }
    }
    return std::nullopt;
}

// The lower edge of each band, and the right edge of a body, can be pulled.
DesignCanvas::Action DesignCanvas::EdgeUnder(QPointF point, std::size_t& band) const {
    for (band = 0; band < m_layout.Count(); ++band) {
        const QRectF place = m_layout.Band(band);
        const bool isBeside = point.y() >= place.top() && point.y() <= place.bottom();
        if (std::abs(point.y() - place.bottom()) <= EdgeReach && point.x() >= place.left() &&
            point.x() <= place.right()) {
            return Action::BandHeight;
        }
        if (isBeside && std::abs(point.x() - place.right()) <= EdgeReach &&
            m_model.Items().bands[band].kind == BandKind::Body) {
            return Action::BandWidth;
        }
    }
    return Action::None;
}

std::vector<Placement> DesignCanvas::PlacesOf(const std::vector<ElementId>& ids) const {
    std::vector<Placement> places;
    for (const ElementId id : ids) {
        if (const ReportItem* item = m_model.Item(id)) {
            places.push_back({id, item->place});
        }
    }
    return places;
}

void DesignCanvas::Press(QPointF point, Qt::KeyboardModifiers modifiers) {
    m_drag = {};
    m_drag.start = m_drag.now = point;
    m_drag.adds = modifiers.testFlag(Qt::ControlModifier);
    m_drag.action = Action::Press;
    if (m_tool) {
        const auto band = m_layout.NearestBand(point);
        m_drag.band = band.value_or(0);
        m_drag.action = band ? Action::Draw : Action::None;
        return;
    }
    const bool extends = modifiers.testFlag(Qt::ShiftModifier);
    if (!m_drag.adds && !extends && PressTable(point)) {
        return;
    }
    ElementId item = NoElement;
    if (const auto handle = HandleUnder(point, item); handle && !m_drag.adds) {
        m_drag.action = Action::Resize;
        m_drag.handle = *handle;
        m_drag.pressed = item;
        m_drag.band = m_model.Item(item)->band;
        const bool isLine = m_model.Item(item)->kind == "Line";
        std::vector<ElementId> ids = Resizable(m_model.Items(), m_model.SelectedItems());
        std::erase_if(ids, [&](ElementId id) { return (m_model.Item(id)->kind == "Line") != isLine; });
        m_drag.before = m_drag.after = PlacesOf(ids);
        return;
    }
    m_drag.pressed = ItemAt(point);
    if (extends && SelectCellsTo(m_drag.pressed)) {
        m_drag = {};
        return;
    }
    if (m_drag.pressed == NoElement) {
        std::size_t band = 0;
        const Action edge = EdgeUnder(point, band);
        if (edge != Action::None) {
            m_drag.action = edge;
            m_drag.band = band;
            const ReportBand& one = m_model.Items().bands[band];
            m_drag.size = edge == Action::BandHeight ? one.height : one.width;
        }
        return;
    }
    m_drag.band = m_model.Item(m_drag.pressed)->band;
    // What is in a selected region or rectangle moves that one.
    const auto& selection = m_model.Selection();
    m_drag.wasSelected = std::any_of(selection.begin(), selection.end(),
                                     [&](ElementId id) { return IsAround(m_model, id, m_drag.pressed); });
    if (!m_drag.wasSelected && !m_drag.adds) {
        m_model.Select({m_drag.pressed});
    }
}

void DesignCanvas::mousePressEvent(QMouseEvent* event) {
    const QPointF point = ToCanvas(event->position());
    setFocus(Qt::MouseFocusReason);
    if (m_editor) {
        FinishEditing();
    }
    if (event->button() == Qt::LeftButton) {
        Press(point, event->modifiers());
    } else if (event->button() == Qt::RightButton) {
        const ElementId item = ItemAt(point);
        if (item != NoElement && !m_model.IsSelected(item)) {
            m_model.Select({item});
        }
    }
}

void DesignCanvas::mouseMoveEvent(QMouseEvent* event) {
    const QPointF point = ToCanvas(event->position());
    ShowPlace(point);
    if (m_drag.action == Action::None) {
        ShowCursor(point);
        return;
    }
    m_drag.now = point;
    if (m_drag.action == Action::Press &&
        (point - m_drag.start).manhattanLength() >= QApplication::startDragDistance()) {
        BeginMoveOrRubberBand();
    }
    switch (m_drag.action) {
        case Action::Move:
            FollowMove();
            break;
        case Action::Resize:
            FollowResize();
            break;
        case Action::Draw:
            FollowDraw();
            break;
        case Action::BandHeight:
        case Action::BandWidth:
            FollowBandEdge();
            break;
        case Action::Track:
            FollowTrack();
            break;
        default:
            break;
    }
    viewport()->update();
}

void DesignCanvas::BeginMoveOrRubberBand() {
    if (m_drag.pressed == NoElement || m_drag.adds) {
        m_drag.action = Action::RubberBand;
        return;
    }
    m_drag.before = m_drag.after = PlacesOf(Movable(m_model.Items(), m_model.SelectedItems()));
    m_drag.action = m_drag.before.empty() ? Action::None : Action::Move;
}

void DesignCanvas::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton && m_drag.action != Action::None) {
        Release();
    }
}

void DesignCanvas::mouseDoubleClickEvent(QMouseEvent* event) {
    const ElementId item = ItemAt(ToCanvas(event->position()));
    if (event->button() != Qt::LeftButton || item == NoElement) {
        return;
    }
    m_drag = {};
    m_model.Select({item});
    EditText();
    if (!m_editor) {
        emit DesignRequested(item);
    }
}

void DesignCanvas::wheelEvent(QWheelEvent* event) {
    if (event->modifiers().testFlag(Qt::ControlModifier)) {
        StepZoom(event->angleDelta().y() > 0 ? 1 : -1);
        event->accept();
    } else {
        QAbstractScrollArea::wheelEvent(event);
    }
}

bool DesignCanvas::viewportEvent(QEvent* event) {
    if (event->type() == QEvent::Leave) {
        m_across->ShowPointer(-1);
        m_down->ShowPointer(-1);
        emit PointerMoved({});
    }
    return QAbstractScrollArea::viewportEvent(event);
}

void DesignCanvas::ShowCursor(QPointF point) {
    if (m_tool) {
        viewport()->setCursor(Qt::CrossCursor);
        return;
    }
    ElementId item = NoElement;
    std::size_t band = 0;
    if (const auto handle = HandleUnder(point, item)) {
        viewport()->setCursor(CursorOf(*handle));
        return;
    }
    if (const auto bars = Bars()) {
        const auto border = bars->BorderAt(point);
        if (border || bars->HandleAt(point)) {
            viewport()->setCursor(!border                         ? Qt::ArrowCursor
                                  : border->axis == Axis::Columns ? Qt::SplitHCursor
                                                                  : Qt::SplitVCursor);
            return;
        }
    }
    const ReportItem* under = m_model.Item(ItemAt(point));
    const Action edge = under ? Action::None : EdgeUnder(point, band);
    viewport()->setCursor(under && CanMove(*under)     ? Qt::SizeAllCursor
                          : edge == Action::BandHeight ? Qt::SplitVCursor
                          : edge == Action::BandWidth  ? Qt::SplitHCursor
                                                       : Qt::ArrowCursor);
}

void DesignCanvas::ShowPlace(QPointF point) {
    const QPointF view = point - Origin();
    m_across->ShowPointer(static_cast<int>(view.x()));
    m_down->ShowPointer(static_cast<int>(view.y()));
    const auto band = m_layout.BandAt(point);
    if (!band) {
        emit PointerMoved({});
        return;
    }
    const QPointF place = m_layout.ToBand(*band, point);
    const ElementId body = BodyOf(m_model.Source());
    const RulerUnit unit =
        UnitOf(body == NoElement ? "" : m_model.Source().TextAt(body, "Height").value_or(""));
    emit PointerMoved(QString("%1 %3, %2 %3")
                          .arg(place.x() / unit.points, 0, 'f', 2)
                          .arg(place.y() / unit.points, 0, 'f', 2)
                          .arg(unit.name));
}

}  // namespace designer
