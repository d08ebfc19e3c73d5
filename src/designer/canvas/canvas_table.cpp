// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: the bars of a selected table, its borders, its cells, and fields that are dropped.
#include <QDragEnterEvent>
#include <QMimeData>
#include <algorithm>
#include <cmath>

#include "designer/canvas/design_canvas.h"
#include "designer/canvas/table_bars.h"
#include "designer/document/item_size.h"
#include "designer/model/field_drag.h"
#include "designer/model/placing.h"
#include "designer/tables/header_levels.h"
#include "designer/tables/tracks.h"

namespace designer {
namespace {

constexpr QRgb Mark = qRgb(0, 110, 220);
constexpr double LeastSize = 2;  // points of a track that is pulled

}  // namespace

std::optional<TableBars> DesignCanvas::BarsOf(ElementId region) const {
    const ReportItem* item = m_model.Item(region);
    if (!item || !HasGrid(item->kind) || item->band >= m_layout.Count()) {
        return std::nullopt;
    }
    auto table = SelectedTable(m_model);
    if (!table || table->region != region) {
        table = TableSelection{};
        table->region = region;
    }
    return TableBars(m_model, *table, CanvasArea(*item), m_layout.Scale());
}

std::optional<TableBars> DesignCanvas::Bars() const {
    const auto table = SelectedTable(m_model);
    return table ? BarsOf(table->region) : std::nullopt;
}

void DesignCanvas::PaintBars(QPainter& painter) {
    if (const auto bars = Bars()) {
        bars->Paint(painter, palette());
    }
}

bool DesignCanvas::PressTable(QPointF point) {
    const auto table = SelectedTable(m_model);
    const auto bars = table ? BarsOf(table->region) : std::nullopt;
    if (!bars) {
        return false;
    }
    if (const auto border = bars->BorderAt(point)) {
        m_drag.action = Action::Track;
        m_drag.track = *border;
        m_drag.pressed = table->region;
        m_drag.band = m_model.Item(table->region)->band;
        m_drag.size = TrackOf(bars->Grid(), *border).size;
        return true;
    }
    if (const auto handle = bars->HandleAt(point)) {
        const TrackRange all{0, std::max(bars->Grid().columns.size(), bars->Grid().rows.size())};
        const TrackRange one{handle->track, 1};
        const bool isColumn = handle->axis == Axis::Columns;
        m_drag.action = Action::None;
        m_model.Select(ItemsOfCells(m_model, table->region, isColumn ? all : one, isColumn ? one : all));
        return true;
    }
    return false;
}

void DesignCanvas::FollowTrack() {
    const ReportItem* region = m_model.Item(m_drag.pressed);
    const TablixGrid grid = GridOf(m_model.Source(), m_drag.pressed);
    const bool isColumn = m_drag.track.axis == Axis::Columns;
    const GridTrack track = TrackOf(grid, m_drag.track);
    const double corner = isColumn ? region->place.left : region->place.top;
    const double end = corner + track.begin + track.size;
    const QPointF moved = (m_drag.now - m_drag.start) / m_layout.Scale();
    const Rect edge = isColumn ? Rect{end, region->place.top, 0, region->place.height}
                               : Rect{region->place.left, end, region->place.width, 0};
    const Snapped snapped = Snap(edge, isColumn ? moved.x() : 0, isColumn ? 0 : moved.y(),
                                 {false, false, isColumn, !isColumn}, OthersIn(m_drag.band), Rules());
    m_drag.lines = snapped.lines;
    m_drag.size = std::max(LeastSize, track.size + (isColumn ? snapped.dx : snapped.dy));
}

void DesignCanvas::FinishTrack(const Drag& done) {
    if (done.now == done.start) {
        return;
    }
    const ReportItems items = m_model.Items();
    const TrackHandle& track = done.track;
    const QString step = track.isHeader                ? tr("Resize headings")
                         : track.axis == Axis::Columns ? tr("Resize column")
                                                       : tr("Resize row");
    m_model.Edit(step, [&](Document& document) {
        track.isHeader ? SetHeaderSize(document, done.pressed, track.axis, track.track, done.size)
                       : SetTrackSize(document, done.pressed, track.axis, track.track, done.size);
        GrowBandOfTable(document, items, done.pressed);
    });
}

// The border as it would be, over the whole table.
void DesignCanvas::PaintTrackDrag(QPainter& painter) {
    const auto bars = BarsOf(m_drag.pressed);
    if (!bars) {
        return;
    }
    const bool isColumn = m_drag.track.axis == Axis::Columns;
    const GridTrack track = TrackOf(bars->Grid(), m_drag.track);
    const QRectF& area = bars->Area();
    const double at = (isColumn ? area.left() : area.top()) + (track.begin + m_drag.size) * m_layout.Scale();
    painter.setPen(QPen(QColor(Mark), 1, Qt::DashLine));
    isColumn ? painter.drawLine(QPointF(at, area.top() - TableBars::Thickness), QPointF(at, area.bottom()))
             : painter.drawLine(QPointF(area.left() - TableBars::Thickness, at), QPointF(area.right(), at));
}

// Selects all cells between that of the leader and the pressed one. Returns false if these are not in the
// body of one table.
bool DesignCanvas::SelectCellsTo(ElementId item) {
    const auto from = SelectedTable(m_model);
    const ReportItem* pressed = m_model.Item(item);
    if (!from || !from->isBody || !pressed || pressed->container != from->region) {
        return false;
    }
    const TablixGrid grid = GridOf(m_model.Source(), from->region);
    const auto find = [&grid](ElementId element) {
        return std::find_if(grid.cells.begin(), grid.cells.end(), [element](const GridCell& cell) {
            return cell.element == element && cell.part == GridCell::Part::Body;
        });
    };
    const auto first = find(from->cell), last = find(pressed->cell);
    if (first == grid.cells.end() || last == grid.cells.end()) {
        return false;
    }
    const auto range = [](std::size_t a, std::size_t aCount, std::size_t b, std::size_t bCount) {
        const std::size_t begin = std::min(a, b);
        return TrackRange{begin, std::max(a + aCount, b + bCount) - begin};
    };
    std::vector<ElementId> ids =
        ItemsOfCells(m_model, from->region, range(first->row, first->rowSpan, last->row, last->rowSpan),
                     range(first->column, first->columnSpan, last->column, last->columnSpan));
    // The leader stays, so that another click with Shift selects from the same cell.
    const auto leader = std::find(ids.begin(), ids.end(), first->item);
    if (leader != ids.end()) {
        std::rotate(leader, leader + 1, ids.end());
    }
    m_model.Select(std::move(ids));
    return true;
}

// The arrow goes to the next cell, with Shift it makes the selected area larger or smaller. Returns false if
// the key means something else.
bool DesignCanvas::StepInTable(int right, int down, bool withControl, bool withShift) {
    return !withControl && (withShift ? StretchCells(right, down) : StepToCell(right, down));
}

// The leader stays a corner of the area, and the opposite corner moves.
bool DesignCanvas::StretchCells(int right, int down) {
    const auto table = SelectedTable(m_model);
    if (!table || !table->isBody || !table->rows || !table->columns) {
        return false;
    }
    const TablixGrid grid = GridOf(m_model.Source(), table->region);
    const auto leader = std::find_if(grid.cells.begin(), grid.cells.end(),
                                     [&](const GridCell& cell) { return cell.element == table->cell; });
    if (leader == grid.cells.end()) {
        return false;
    }
    const auto corner = [](TrackRange range, TrackRange own, int step) {
        const std::size_t end = range.first + range.count;
        const bool isBefore = range.first<own.first, isAfter = end> own.first + own.count;
        return step > 0   ? (isBefore ? range.first + 1 : end)
               : step < 0 ? (isAfter ? end - 2 : range.first - 1)
                          : (isAfter ? end - 1 : range.first);
    };
    const int across = IsMirrored(m_model.Source(), table->region) ? -right : right;
    const std::size_t column = corner(*table->columns, {leader->column, leader->columnSpan}, across);
    const std::size_t row = corner(*table->rows, {leader->row, leader->rowSpan}, down);
    const auto items = ItemsOfCells(m_model, table->region, {row, 1}, {column, 1});
    if (!items.empty()) {
        SelectCellsTo(items.front());
    }
    return true;
}

// From a cell to the next one that the arrow points to. Returns false if the leader is in no cell.
bool DesignCanvas::StepToCell(int right, int down) {
    const auto table = SelectedTable(m_model);
    if (!table || table->cell == NoElement) {
        return false;
    }
    const TablixGrid grid = GridOf(m_model.Source(), table->region);
    const auto now = std::find_if(grid.cells.begin(), grid.cells.end(),
                                  [&](const GridCell& cell) { return cell.element == table->cell; });
    if (now == grid.cells.end()) {
        return false;
    }
    // A point just past the border, at the height or width where the cell begins.
    const Rect& place = now->place;
    const double x = right > 0 ? place.Right() + 0.01 : right < 0 ? place.left - 0.01 : place.left + 0.01;
    const double y = down > 0 ? place.Bottom() + 0.01 : down < 0 ? place.top - 0.01 : place.top + 0.01;
    for (const GridCell& cell : grid.cells) {
        if (cell.item != NoElement && x >= cell.place.left && x < cell.place.Right() && y >= cell.place.top &&
            y < cell.place.Bottom()) {
            m_model.Select({cell.item});
            RevealSelection();
            break;
        }
    }
    return true;
}

DesignCanvas::Drop DesignCanvas::DropAt(QPointF point) const {
    Drop drop;
    if (const ElementId box = ItemAt(point); IsFreeBox(m_model, box)) {
        const ReportItem& item = *m_model.Item(box);
        return {Drop::Kind::Box, box, NoElement, 0, item.band, CanvasArea(item)};
    }
    for (auto item = m_model.Items().items.rbegin(); item != m_model.Items().items.rend(); ++item) {
        const auto bars = BarsOf(item->id);
        if (!bars) {
            continue;
        }
        if (const auto column = bars->NewColumnAt(point)) {
            const double at = bars->ColumnBegin(*column);
            return {Drop::Kind::Column, item->id,
                    NoElement,          *column,
                    item->band,         QRectF(at - 1, bars->Area().top(), 2, bars->Area().height())};
        }
        if (bars->IsOnRowBar(point)) {
            return {Drop::Kind::Group,
                    item->id,
                    NoElement,
                    0,
                    item->band,
                    QRectF(bars->Area().left() - 1, bars->Area().top(), 2, bars->Area().height())};
        }
        for (const GridCell& cell : bars->Grid().cells) {
            const QRectF area(bars->Area().left() + cell.place.left * m_layout.Scale(),
                              bars->Area().top() + cell.place.top * m_layout.Scale(),
                              cell.place.width * m_layout.Scale(), cell.place.height * m_layout.Scale());
            if (area.contains(point)) {
                return {Drop::Kind::Cell, item->id, cell.element, 0, item->band, area};
            }
        }
    }
    if (const auto band = m_layout.BandAt(point); band && ItemAt(point) == NoElement) {
        drop = {Drop::Kind::Page, NoElement, NoElement, 0, *band, QRectF(point, QSizeF(1, 1))};
    }
    return drop;
}

DesignCanvas::Drop DesignCanvas::DropAt(QPointF point, const DraggedValue& value) const {
    const ElementId id = ItemAt(point);
    if (TakesValue(m_model, id, value)) {
        const ReportItem& item = *m_model.Item(id);
        return {Drop::Kind::None, NoElement, NoElement, 0, item.band, CanvasArea(item), id};
    }
    const auto band = m_layout.BandAt(point);
    return band && id == NoElement
               ? Drop{Drop::Kind::Page, NoElement, NoElement, 0, *band, QRectF(point, QSizeF(1, 1))}
               : Drop{};
}

DesignCanvas::Drop DesignCanvas::DropOf(const QMimeData& dragged, QPointF point) const {
    if (const auto value = ValueIn(dragged)) {
        return DropAt(point, *value);
    }
    return FieldIn(dragged) ? DropAt(point) : Drop{};
}

QPointF DesignCanvas::PlaceOf(const Drop& drop, QPointF point) const {
    const QPointF place = m_layout.ToBand(drop.band, point);
    const double grid = m_snaps ? GridStep() : 0;
    const auto snapped = [grid](double at) { return grid > 0 ? std::round(at / grid) * grid : at; };
    return {std::max(0.0, snapped(place.x())), std::max(0.0, snapped(place.y()))};
}

void DesignCanvas::dragEnterEvent(QDragEnterEvent* event) {
    if (FieldIn(*event->mimeData()) || ValueIn(*event->mimeData())) {
        event->acceptProposedAction();
    }
}

void DesignCanvas::dragMoveEvent(QDragMoveEvent* event) {
    m_drop = DropOf(*event->mimeData(), ToCanvas(event->position()));
    event->setAccepted(m_drop.kind != Drop::Kind::None || m_drop.item != NoElement);
    viewport()->update();
}

void DesignCanvas::dragLeaveEvent(QDragLeaveEvent*) {
    m_drop = {};
    viewport()->update();
}

void DesignCanvas::dropEvent(QDropEvent* event) {
    const QPointF point = ToCanvas(event->position());
    const Drop drop = DropOf(*event->mimeData(), point);
    m_drop = {};
    viewport()->update();
    const bool isOnPage = drop.kind == Drop::Kind::Page;
    const QPointF place = isOnPage ? PlaceOf(drop, point) : QPointF();
    if (const auto value = ValueIn(*event->mimeData())) {
        if (drop.item != NoElement) {
            PlaceValue(m_model, *value, drop.item);
        } else if (isOnPage) {
            PlaceValue(m_model, *value, drop.band, place);
        } else {
            return;
        }
    } else if (const auto field = FieldIn(*event->mimeData()); field && drop.kind != Drop::Kind::None) {
        PlaceField(m_model, *field, {drop.kind, drop.region, drop.cell, drop.column, drop.band, place});
    } else {
        return;
    }
    event->acceptProposedAction();
    setFocus();
}

void DesignCanvas::PaintDrop(QPainter& painter) {
    if (m_drop.item == NoElement && (m_drop.kind == Drop::Kind::None || m_drop.kind == Drop::Kind::Page)) {
        return;
    }
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(Mark), 2));
    painter.drawRect(m_drop.area);
}

}  // namespace designer
