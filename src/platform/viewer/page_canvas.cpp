// SPDX-License-Identifier: GPL-3.0-or-later
// Members of PageCanvas: pages, zoom and drawing. The input is in page_canvas_input.cpp.
#include "platform/viewer/page_canvas.h"

#include <QPaintEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>
#include <array>
#include <cmath>

#include "rdl/api/size_units.h"

namespace viewer {
namespace {

constexpr std::array UsualZooms = {10.0,  25.0,  50.0,  75.0,  100.0, 125.0,
                                   150.0, 200.0, 250.0, 300.0, 350.0, 400.0};

double PixelsPerPoint(const QWidget& widget) {
    return widget.logicalDpiY() / rdl::PointsPerInch;
}

QRectF OnScreen(const QRectF& points, double scale, QPointF corner) {
    return {points.topLeft() * scale + corner, points.size() * scale};
}

}  // namespace

PageCanvas::PageCanvas(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    setFrameShape(QFrame::NoFrame);
    viewport()->setMouseTracking(true);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    setAccessibleName(tr("Pages of the report"));
}

void PageCanvas::SetDocument(PageDocument* document) {
    if (m_document) {
        m_document->disconnect(this);
    }
    m_document = document;
    m_layout.Clear();
    m_tiles.Clear();
    m_failure.clear();
    m_hit = {};
    m_selection.reset();
    m_target = {};
    m_followEnd = false;
    m_shownPage = 0;
    if (m_document) {
        connect(m_document, &PageDocument::Grown, this, &PageCanvas::TakePages);
        connect(m_document, &PageDocument::Redrawn, this, &PageCanvas::Redraw);
        connect(m_document, &PageDocument::Finished, this, [this] { m_followEnd = false; });
        TakePages();
    }
    Arrange();
    horizontalScrollBar()->setValue(horizontalScrollBar()->maximum() / 2);
    verticalScrollBar()->setValue(0);
    CheckPage();
    viewport()->update();
}

void PageCanvas::TakePages() {
    while (m_layout.Count() < m_document->Count()) {
        m_layout.Add(m_document->Size(m_layout.Count() + 1));
    }
    Arrange();
    if (m_followEnd) {
        verticalScrollBar()->setValue(verticalScrollBar()->maximum());
        m_followEnd = true;
    }
    CheckPage();
    viewport()->update();
}

void PageCanvas::Redraw() {
    m_tiles.Clear();
    viewport()->update();
}

double PageCanvas::FittingZoom() const {
    const QSizeF page = m_layout.Widest();
    if (page.isEmpty()) {
        return m_zoom;
    }
    const QSizeF room = viewport()->size() - QSizeF(2 * PageLayout::Margin, 2 * PageLayout::Margin);
    const double across = room.width() / page.width();
    const double scale =
        m_mode == ZoomMode::FitPage ? std::min(across, room.height() / page.height()) : across;
    return std::clamp(100 * scale / PixelsPerPoint(*this), LeastZoom, MostZoom);
}

void PageCanvas::Arrange() {
    m_arranging = true;
    if (m_mode != ZoomMode::Percent) {
        SetScaleKeeping(FittingZoom(), {viewport()->width() / 2.0, 0});
    }
    m_layout.SetScale(m_zoom / 100 * PixelsPerPoint(*this));
    m_layout.SetViewWidth(viewport()->width());
    const QSizeF total = m_layout.Total();
    const QSize view = viewport()->size();
    const auto set = [](QScrollBar* bar, double length, int room) {
        bar->setRange(0, std::max(0, static_cast<int>(std::ceil(length)) - room));
        bar->setPageStep(room);
        constexpr int Step = 40;
        bar->setSingleStep(Step);
    };
    set(horizontalScrollBar(), total.width(), view.width());
    set(verticalScrollBar(), total.height(), view.height());
    // Tiles for two views, so that going back a page needs no drawing.
    const double pixels = devicePixelRatioF() * devicePixelRatioF() * view.width() * view.height();
    constexpr qsizetype LeastBudget = 64 << 20;
    m_tiles.SetBudget(std::max(LeastBudget, static_cast<qsizetype>(pixels) * 4 * 3));
    m_arranging = false;
}

QPointF PageCanvas::Origin() const {
    return {static_cast<double>(horizontalScrollBar()->value()),
            static_cast<double>(verticalScrollBar()->value())};
}

void PageCanvas::SetScaleKeeping(double percent, QPointF viewPoint) {
    const double zoom = std::clamp(percent, LeastZoom, MostZoom);
    if (zoom == m_zoom) {
        return;
    }
    const int page = m_layout.Nearest(Origin().y() + viewPoint.y());
    const QPointF kept = page > 0 ? m_layout.ToPage(page, Origin() + viewPoint) : QPointF();
    const bool atTop = verticalScrollBar()->value() == 0;
    m_zoom = zoom;
    m_tiles.Clear();
    const ZoomMode mode = std::exchange(m_mode, ZoomMode::Percent);
    Arrange();
    m_mode = mode;
    if (page > 0) {
        const QPointF now = m_layout.Page(page).topLeft() + kept * m_layout.Scale() - viewPoint;
        horizontalScrollBar()->setValue(static_cast<int>(std::lround(now.x())));
        verticalScrollBar()->setValue(atTop ? 0 : static_cast<int>(std::lround(now.y())));
    }
    viewport()->update();
    emit ZoomChanged();
}

void PageCanvas::SetZoom(double percent) {
    m_mode = ZoomMode::Percent;
    SetScaleKeeping(percent, QPointF(viewport()->width(), viewport()->height()) / 2);
    emit ZoomChanged();
}

void PageCanvas::SetZoomMode(ZoomMode mode) {
    m_mode = mode;
    Arrange();
    viewport()->update();
    emit ZoomChanged();
}

void PageCanvas::StepZoom(int steps) {
    double zoom = m_zoom;
    for (; steps > 0; --steps) {
        const auto* const next = std::upper_bound(UsualZooms.begin(), UsualZooms.end(), zoom + 0.5);
        zoom = next == UsualZooms.end() ? MostZoom : *next;
    }
    for (; steps < 0; ++steps) {
        const auto* const next = std::lower_bound(UsualZooms.begin(), UsualZooms.end(), zoom - 0.5);
        zoom = next == UsualZooms.begin() ? LeastZoom : *std::prev(next);
    }
    SetZoom(zoom);
}

int PageCanvas::CurrentPage() const {
    const double top = Origin().y(), bottom = top + viewport()->height();
    const auto [first, last] = m_layout.Between(top, bottom);
    const int scrolled = verticalScrollBar()->value();
    // If several pages are visible, the requested one counts until the user scrolls.
    if (m_target.page >= first && m_target.page <= last && m_target.scrolled == scrolled) {
        return m_target.page;
    }
    if (scrolled > 0 && scrolled == verticalScrollBar()->maximum()) {
        return m_layout.Count();
    }
    int current = m_layout.Nearest(top);
    double most = 0;
    for (int page = first; page <= last; ++page) {
        const QRectF area = m_layout.Page(page);
        const double seen = std::min(area.bottom(), bottom) - std::max(area.top(), top);
        if (seen > most + 1) {
            most = seen;
            current = page;
        }
    }
    return current;
}

void PageCanvas::CheckPage() {
    if (const int page = CurrentPage(); page != m_shownPage) {
        m_shownPage = page;
        emit PageChanged();
    }
}

void PageCanvas::GoTo(int page, double y) {
    if (m_layout.Count() == 0) {
        return;
    }
    const int reached = std::clamp(page, 1, m_layout.Count());
    const double top = m_layout.Page(reached).top() + (reached == page ? y * m_layout.Scale() : 0);
    // Part of the gap shows that the page begins here.
    verticalScrollBar()->setValue(static_cast<int>(std::floor(top - PageLayout::Gap / 2)));
    m_followEnd = false;
    m_target = {reached, verticalScrollBar()->value()};
    CheckPage();
}

void PageCanvas::GoToEnd() {
    m_target = {};
    verticalScrollBar()->setValue(verticalScrollBar()->maximum());
    m_followEnd = m_document && !m_document->IsComplete();
    CheckPage();
}

void PageCanvas::Reveal(int page, const CharacterRange& range) {
    if (!m_document || page > m_layout.Count()) {
        return;
    }
    QRectF area;
    for (const QRectF& line : m_document->Text(page)->Areas(range)) {
        area |= line;
    }
    area = OnScreen(area, m_layout.Scale(), m_layout.Page(page).topLeft());
    const auto show = [](QScrollBar* bar, double from, double to, int room) {
        if (from < bar->value() || to > bar->value() + room) {
            bar->setValue(static_cast<int>((from + to) / 2 - room / 3.0));
        }
    };
    show(verticalScrollBar(), area.top(), area.bottom(), viewport()->height());
    show(horizontalScrollBar(), area.left(), area.right(), viewport()->width());
}

void PageCanvas::SetWords(const QString& words) {
    m_words = words;
    viewport()->update();
}

void PageCanvas::SetHit(int page, const CharacterRange& range) {
    m_hit = {page, range};
    Reveal(page, range);
    viewport()->update();
}

void PageCanvas::ClearHit() {
    m_hit = {};
    viewport()->update();
}

PageCanvas::Place PageCanvas::SearchStart(Direction direction) const {
    if (m_hit.page > 0) {
        return {m_hit.page, m_hit.range.first + (direction == Direction::Forwards ? 1 : 0)};
    }
    return {std::max(CurrentPage(), 1), 0};
}

void PageCanvas::resizeEvent(QResizeEvent* event) {
    QAbstractScrollArea::resizeEvent(event);
    if (!m_arranging) {
        Arrange();
        CheckPage();
    }
}

void PageCanvas::scrollContentsBy(int, int) {
    m_followEnd = m_followEnd && m_arranging;
    viewport()->update();
    if (!m_arranging) {
        CheckPage();
    }
}

void PageCanvas::paintEvent(QPaintEvent* event) {
    QPainter painter(viewport());
    const QRectF exposed = event->rect();
    if (m_tileRatio != devicePixelRatioF()) {  // the window has moved to another screen
        m_tileRatio = devicePixelRatioF();
        m_tiles.Clear();
    }
    painter.fillRect(exposed, palette().color(QPalette::Window).darker(118));
    const double top = Origin().y() + exposed.top();
    constexpr double ShadowReach = 6;
    const auto [first, last] = m_layout.Between(top - ShadowReach, top + exposed.height());
    for (int page = first; page <= last; ++page) {
        PaintPage(painter, page, exposed);
    }
}

// On a whole device pixel, so that tiles are copied unchanged.
QPointF PageCanvas::SnappedCorner(int page) const {
    const double ratio = devicePixelRatioF();
    const QPointF corner = m_layout.Page(page).topLeft() - Origin();
    return {std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio};
}

void PageCanvas::PaintPage(QPainter& painter, int page, const QRectF& exposed) {
    const QPointF corner = SnappedCorner(page);
    const QRectF area(corner, m_layout.Page(page).size());
    for (int i = 4; i > 0; --i) {
        painter.fillRect(area.adjusted(2 - i, 2 - i, i, i), QColor(0, 0, 0, 22));
    }
    painter.fillRect(area, Qt::white);
    try {
        PaintTiles(painter, page, corner, exposed);
        PaintMarks(painter, page, corner);
    } catch (const RuntimeError& error) {
        const QString message = tr("Page %1 cannot be shown: %2").arg(page).arg(ErrorText(error));
        painter.setPen(Qt::black);
        painter.drawText(area.adjusted(20, 20, -20, -20), Qt::AlignCenter | Qt::TextWordWrap, message);
        if (message != m_failure) {
            m_failure = message;
            // Not during painting: a handler shows a bar and so moves this widget.
            QMetaObject::invokeMethod(
                this, [this, message] { emit DrawFailed(message); }, Qt::QueuedConnection);
        }
    }
}

void PageCanvas::PaintTiles(QPainter& painter, int page, QPointF corner, const QRectF& exposed) {
    const double ratio = devicePixelRatioF();
    const QSizeF size = m_layout.Page(page).size() * ratio;
    const QSize pixels(static_cast<int>(std::ceil(size.width())), static_cast<int>(std::ceil(size.height())));
    const QRectF seen = exposed.intersected(QRectF(corner, size / ratio));
    if (seen.isEmpty()) {
        return;
    }
    const auto index = [ratio](double from, int tile) { return static_cast<int>(from * ratio) / tile; };
    const int lastColumn = index(seen.right() - corner.x(), TileCache::TileWidth);
    const int lastRow = index(seen.bottom() - corner.y(), TileCache::TileHeight);
    for (int row = index(seen.top() - corner.y(), TileCache::TileHeight); row <= lastRow; ++row) {
        for (int column = index(seen.left() - corner.x(), TileCache::TileWidth); column <= lastColumn;
             ++column) {
            const QPointF at(column * TileCache::TileWidth / ratio, row * TileCache::TileHeight / ratio);
            if (column * TileCache::TileWidth < pixels.width() &&
                row * TileCache::TileHeight < pixels.height()) {
                painter.drawPixmap(corner + at, Tile({page, column, row}, pixels));
            }
        }
    }
}

const QPixmap& PageCanvas::Tile(const TileKey& key, QSize pagePixels) {
    if (const QPixmap* known = m_tiles.Find(key)) {
        return *known;
    }
    const double ratio = devicePixelRatioF();
    const QPoint from(key.column * TileCache::TileWidth, key.row * TileCache::TileHeight);
    const QSize rest(pagePixels.width() - from.x(), pagePixels.height() - from.y());
    QPixmap tile(rest.boundedTo({TileCache::TileWidth, TileCache::TileHeight}));
    tile.fill(Qt::white);
    {
        QPainter painter(&tile);
        painter.translate(-from);
        painter.scale(m_layout.Scale() * ratio, m_layout.Scale() * ratio);
        m_document->Draw(key.page, painter);
    }
    tile.setDevicePixelRatio(ratio);
    return m_tiles.Put(key, std::move(tile));
}

void PageCanvas::PaintMarks(QPainter& painter, int page, QPointF corner) {
    const CharacterRange selected = SelectedOn(page);
    if (m_words.isEmpty() && selected.count == 0) {
        return;
    }
    const std::shared_ptr<const PageText> text = m_document->Text(page);
    // Text stays black under the colour of a marker.
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    const auto mark = [&](const CharacterRange& range, const QColor& color) {
        for (const QRectF& area : text->Areas(range)) {
            painter.fillRect(OnScreen(area, m_layout.Scale(), corner).adjusted(-1, 0, 1, 0), color);
        }
    };
    for (const CharacterRange& range : text->Find(m_words)) {
        const bool current = m_hit.page == page && m_hit.range == range;
        mark(range, current ? QColor(255, 170, 60) : QColor(255, 240, 120));
    }
    if (selected.count > 0) {
        mark(selected, QColor(170, 205, 255));
    }
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
}

}  // namespace viewer
