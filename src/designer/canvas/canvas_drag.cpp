// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: what a drag does while the pointer moves and when the button is released.
#include <algorithm>
#include <cmath>

#include "designer/canvas/design_canvas.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

constexpr double FeltPixels = 5;  // how far an edge of another item is felt
constexpr double Least = 4;       // pixels; a rectangle that is smaller was a click

}  // namespace

double DesignCanvas::GridStep() const {
    const ElementId body = BodyOf(m_model.Source());
    const RulerUnit unit =
        UnitOf(body == NoElement ? "" : m_model.Source().TextAt(body, "Height").value_or(""));
    return unit.points / unit.parts;
}

SnapRules DesignCanvas::Rules() const {
    return m_snaps ? SnapRules{GridStep(), FeltPixels / m_layout.Scale()} : SnapRules{};
}

// The places of the items that a moved one can be in line with: those that stand still, and the band itself.
std::vector<Rect> DesignCanvas::OthersIn(std::size_t band) const {
    const ReportItems& items = m_model.Items();
    std::vector<Rect> others{{0, 0, items.bands[band].width, items.bands[band].height}};
    for (const ReportItem& item : items.items) {
        bool stands = item.band == band && item.cell == NoElement;
        for (const ReportItem* around = &item; stands && around; around = m_model.Item(around->container)) {
            stands = !m_model.IsSelected(around->id);
        }
        if (stands) {
            others.push_back(item.place);
        }
    }
    return others;
}

void DesignCanvas::FollowMove() {
    std::vector<Placement> here;
    for (const Placement& placement : m_drag.before) {
        if (m_model.Item(placement.id)->band == m_drag.band) {
            here.push_back(placement);
        }
    }
    const QPointF moved = (m_drag.now - m_drag.start) / m_layout.Scale();
    const Snapped snapped = Snap(designer::AreaOf(here.empty() ? m_drag.before : here), moved.x(), moved.y(),
                                 {}, OthersIn(m_drag.band), Rules());
    m_drag.dx = snapped.dx;
    m_drag.dy = snapped.dy;
    m_drag.lines = snapped.lines;
    m_drag.after = m_drag.before;
    for (Placement& placement : m_drag.after) {
        placement.place.left += snapped.dx;
        placement.place.top += snapped.dy;
    }
}

void DesignCanvas::FollowResize() {
    const QPointF moved = (m_drag.now - m_drag.start) / m_layout.Scale();
    Rect area = m_model.Item(m_drag.pressed)->place;
    MovingEdges edges = EdgesOf(m_drag.handle);
    if (m_drag.handle == Handle::LineStart || m_drag.handle == Handle::LineEnd) {
        const bool isEnd = m_drag.handle == Handle::LineEnd;
        area = {isEnd ? area.Right() : area.left, isEnd ? area.Bottom() : area.top, 0, 0};
        edges = {false, false, true, true};
    }
    const Snapped snapped = Snap(area, moved.x(), moved.y(), edges, OthersIn(m_drag.band), Rules());
    m_drag.dx = snapped.dx;
    m_drag.dy = snapped.dy;
    m_drag.lines = snapped.lines;
    m_drag.after = m_drag.before;
    for (Placement& placement : m_drag.after) {
        placement.place = Resized(placement.place, m_drag.handle, snapped.dx, snapped.dy);
    }
}

void DesignCanvas::FollowDraw() {
    const QPointF now = m_layout.ToBand(m_drag.band, m_drag.now);
    const Snapped snapped =
        Snap({now.x(), now.y(), 0, 0}, 0, 0, {false, false, true, true}, OthersIn(m_drag.band), Rules());
    m_drag.lines = snapped.lines;
    m_drag.now += QPointF(snapped.dx, snapped.dy) * m_layout.Scale();
}

// A band does not become smaller than what is in it.
void DesignCanvas::FollowBandEdge() {
    const ReportItems& items = m_model.Items();
    const bool isHeight = m_drag.action == Action::BandHeight;
    double least = 0;
    for (const ReportItem& item : items.items) {
        if (isHeight ? item.band == m_drag.band
                     : items.bands[item.band].section == items.bands[m_drag.band].section) {
            const Rect& place = item.place;
            least = isHeight ? std::max({least, place.top, place.Bottom()})
                             : std::max({least, place.left, place.Right()});
        }
    }
    const QPointF at = m_layout.ToBand(m_drag.band, m_drag.now);
    const double wish = isHeight ? at.y() : at.x();
    const double grid = m_snaps ? GridStep() : 0;
    m_drag.size = std::max(least, grid > 0 ? std::round(wish / grid) * grid : wish);
}

void DesignCanvas::Release() {
    const Drag done = m_drag;
    m_isReleasing = true;
    switch (done.action) {
        case Action::Press:
            FinishClick();
            break;
        case Action::Move:
            FinishMove();
            break;
        case Action::Resize:
            if (done.dx != 0 || done.dy != 0) {
                std::vector<ElementId> ids;
                for (const Placement& placement : done.after) {
                    ids.push_back(placement.id);
                }
                m_model.Edit(StepName(m_model, tr("Resize"), ids), [&](Document& document) {
                    Place(document, ReportItems(m_model.Items()), done.after);
                });
            }
            break;
        case Action::RubberBand:
            FinishRubberBand();
            break;
        case Action::Draw:
            FinishDraw();
            break;
        case Action::BandHeight:
        case Action::BandWidth: {
            const ReportBand band = m_model.Items().bands[done.band];
            const bool isHeight = done.action == Action::BandHeight;
            if (done.now != done.start) {
                m_model.Edit(StepName(m_model, tr("Resize"), {band.element}), [&](Document& document) {
                    isHeight ? SetBandHeight(document, band, done.size)
                             : SetBandWidth(document, band, done.size);
                });
            } else {
                m_model.Select({band.element});
            }
            break;
        }
        case Action::Track:
            FinishTrack(done);
            break;
        case Action::None:
            break;
    }
    m_isReleasing = false;
    m_drag = {};
    viewport()->update();
}

void DesignCanvas::FinishClick() {
    if (m_drag.pressed == NoElement) {
        const auto band = m_layout.NearestBand(m_drag.start);
        if (!m_drag.adds) {
            m_model.Select(band ? std::vector{m_model.Items().bands[*band].element}
                                : std::vector<ElementId>{});
        }
    } else if (m_drag.adds) {
        m_model.Toggle(m_drag.pressed);
    } else if (m_drag.wasSelected) {
        m_model.Select({m_drag.pressed});
    }
}

void DesignCanvas::FinishMove() {
    const Drag drag = m_drag;
    if (drag.dx == 0 && drag.dy == 0) {
        return;
    }
    const ReportItems items = m_model.Items();
    const auto target = m_layout.BandAt(drag.now);
    std::vector<ElementId> ids;
    bool isFree = true;  // no moved item is in a rectangle
    for (const Placement& placement : drag.after) {
        const ReportItem* item = m_model.Item(placement.id);
        ids.push_back(placement.id);
        isFree = isFree && item->container == items.bands[item->band].element && item->band == drag.band;
    }
    m_model.Edit(StepName(m_model, tr("Move"), ids), [&](Document& document) {
        if (!target || *target == drag.band || !isFree) {
            Place(document, items, drag.after);
            return;
        }
        for (const Placement& placement : drag.after) {
            const QRectF area = m_layout.FromBand(drag.band, placement.place);
            PlaceInBand(document, items, {placement.id, m_layout.ToBand(*target, area)},
                        items.bands[*target]);
        }
    });
}

void DesignCanvas::FinishRubberBand() {
    const QRectF area = QRectF(m_drag.start, m_drag.now).normalized();
    std::vector<ElementId> ids = m_drag.adds ? m_model.SelectedItems() : std::vector<ElementId>{};
    for (const ReportItem& item : m_model.Items().items) {
        if (item.cell == NoElement &&
            area.contains(CanvasArea(item).normalized().adjusted(0, 0, 0.01, 0.01)) &&
            std::find(ids.begin(), ids.end(), item.id) == ids.end()) {
            ids.push_back(item.id);
        }
    }
    m_model.Select(std::move(ids));
}

void DesignCanvas::FinishDraw() {
    const NewItem kind = *m_tool;
    const QPointF begin = m_layout.ToBand(m_drag.band, m_drag.start);
    const double grid = m_snaps ? GridStep() : 0;
    const auto snapped = [grid](double at) {
        return std::max(0.0, grid > 0 ? std::round(at / grid) * grid : at);
    };
    Rect place{snapped(begin.x()), snapped(begin.y()), 0, 0};
    const QPointF pulled = m_drag.now - m_drag.start;
    if (std::max(std::abs(pulled.x()), std::abs(pulled.y())) < Least) {
        const Rect usual = UsualSize(kind);
        place.width = usual.width;
        place.height = usual.height;
    } else {
        const QPointF end = m_layout.ToBand(m_drag.band, m_drag.now);
        place.width = std::max(0.0, end.x()) - place.left;
        place.height = std::max(0.0, end.y()) - place.top;
        if (kind != NewItem::Line) {
            const QRectF area = QRectF(place.left, place.top, place.width, place.height).normalized();
            place = {area.x(), area.y(), area.width(), area.height()};
        }
    }
    const std::size_t band = m_drag.band;
    SetTool(std::nullopt);
    Insert(kind, band, place);
}

void DesignCanvas::CancelDrag() {
    m_drag = {};
    viewport()->update();
}

}  // namespace designer
