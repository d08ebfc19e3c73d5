// SPDX-License-Identifier: GPL-3.0-or-later
// Members of DesignCanvas: painting.
#include <QPaintEvent>
#include <QPainter>
#include <algorithm>

#include "designer/canvas/design_canvas.h"
#include "designer/graphics/part_tree.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

// Colours on paper, which is white on a dark desktop too.
constexpr QRgb Outline = qRgb(190, 196, 204);
constexpr QRgb Frame = qRgb(0, 110, 220);
constexpr QRgb Guide = qRgb(225, 60, 120);

QString CaptionOf(const ReportItems& items, std::size_t index) {
    const ReportBand& band = items.bands[index];
    QString text = band.kind == BandKind::PageHeader   ? DesignCanvas::tr("Page Header")
                   : band.kind == BandKind::PageFooter ? DesignCanvas::tr("Page Footer")
                                                       : DesignCanvas::tr("Body");
    if (items.bands.back().section > 0) {
        text += DesignCanvas::tr(", section %1").arg(band.section + 1);
    }
    if (band.element == NoElement) {
        text += DesignCanvas::tr(": not in the report yet; what you put here makes it");
    }
    return text;
}

// Lines one pixel wide look sharp in the middle of a pixel.
QRectF Sharp(const QRectF& area) {
    const QRectF whole = area.normalized();
    const QPointF corner(std::floor(whole.left()) + 0.5, std::floor(whole.top()) + 0.5);
    const QPointF end(std::floor(whole.right()) + 0.5, std::floor(whole.bottom()) + 0.5);
    return {corner, end};
}

void DrawFrame(QPainter& painter, const ReportItem& item, const QRectF& area) {
    if (item.kind == "Line") {
        painter.drawLine(area.topLeft(), area.topLeft() + QPointF(area.width(), area.height()));
    } else {
        painter.drawRect(Sharp(area));
    }
}

}  // namespace

void DesignCanvas::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.drawPixmap(0, 0, Backing());
    painter.translate(-Origin());
    PaintSelection(painter);
    PaintBars(painter);
    PaintDrag(painter);
    PaintDrop(painter);
}

// The bands as they are when nothing is dragged, for the visible part.
const QPixmap& DesignCanvas::Backing() {
    const double ratio = devicePixelRatioF();
    const QSize size = viewport()->size() * ratio;
    if (!m_backingIsOld && m_backing.size() == size) {
        return m_backing;
    }
    m_backing = QPixmap(size);
    m_backing.setDevicePixelRatio(ratio);
    m_backing.fill(palette().color(QPalette::Mid));
    QPainter painter(&m_backing);
    painter.setFont(font());
    painter.translate(-Origin());
    PaintBands(painter);
    m_backingIsOld = false;
    return m_backing;
}

void DesignCanvas::PaintBands(QPainter& painter) {
    const ReportItems& items = m_model.Items();
    const QRectF visible(Origin(), QSizeF(viewport()->size()));
    for (std::size_t band = 0; band < items.bands.size(); ++band) {
        const QRectF caption = m_layout.Caption(band), place = m_layout.Band(band);
        if (!caption.united(place).adjusted(-50, -50, 50, 50).intersects(visible)) {
            continue;
        }
        PaintCaption(painter, band, CaptionLook::Plain);
        painter.fillRect(place, Qt::white);
        painter.save();
        painter.setClipRect((place & visible).adjusted(-1, -1, 1, 1));
        painter.translate(place.topLeft());
        painter.scale(m_layout.Scale(), m_layout.Scale());
        m_picture.PaintBand(band, painter);
        painter.restore();
        PaintOutlines(painter, band);
    }
}

void DesignCanvas::PaintCaption(QPainter& painter, std::size_t band, CaptionLook look) {
    const bool isSelected = look == CaptionLook::Selected;
    const QRectF area = m_layout.Caption(band);
    painter.fillRect(area, palette().color(isSelected ? QPalette::Highlight : QPalette::Window));
    painter.setPen(palette().color(isSelected ? QPalette::HighlightedText : QPalette::WindowText));
    painter.drawText(area.adjusted(6, 0, -6, 0), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextDontClip,
                     CaptionOf(m_model.Items(), band));
}

// Most items have no border: thin lines show where they are. Without a picture their names stand in them.
void DesignCanvas::PaintOutlines(QPainter& painter, std::size_t band) {
    const QRectF visible(Origin(), QSizeF(viewport()->size()));
    for (const ReportItem& item : m_model.Items().items) {
        const QRectF area = CanvasArea(item);
        if (item.band != band || !area.normalized().adjusted(-1, -1, 1, 1).intersects(visible)) {
            continue;
        }
        painter.setPen(QPen(QColor(Outline), 1, m_picture.IsThere() ? Qt::DotLine : Qt::SolidLine));
        DrawFrame(painter, item, area);
        if (!m_picture.IsThere()) {
            painter.setPen(Qt::darkGray);
            painter.drawText(area.adjusted(3, 1, -3, -1), Qt::AlignLeft | Qt::AlignTop,
                             QString::fromStdString(item.name));
        }
    }
}

void DesignCanvas::PaintSelection(QPainter& painter) {
    const QColor frame(Frame);
    for (const ElementId id : m_model.Selection()) {
        const ReportItem* item = m_model.Item(id);
        if (!item) {
            PaintSelectedBand(painter, id);
            if (const ReportItem* owner = m_model.Item(OwnerOfPart(m_model.Source(), id))) {
                painter.setPen(QPen(frame, 1, Qt::DashLine));
                painter.drawRect(Sharp(CanvasArea(*owner)));
            }
            continue;
        }
        const QRectF area = CanvasArea(*item);
        painter.setPen(QPen(frame, CanMove(*item) ? 1 : 2));
        painter.setBrush(Qt::NoBrush);
        DrawFrame(painter, *item, area);
        if (!CanResize(*item)) {
            continue;
        }
        painter.setPen(frame);
        painter.setBrush(id == m_model.Leader() ? QBrush(frame) : QBrush(Qt::white));
        for (const Handle handle : HandlesOf(item->kind == "Line")) {
            painter.drawRect(Sharp(HandleArea(handle, area)));
        }
    }
}

void DesignCanvas::PaintSelectedBand(QPainter& painter, ElementId id) {
    const auto& bands = m_model.Items().bands;
    for (std::size_t band = 0; band < bands.size(); ++band) {
        if (bands[band].element == id) {
            PaintCaption(painter, band, CaptionLook::Selected);
            painter.setPen(QColor(Frame));
            painter.setBrush(Qt::NoBrush);
            painter.drawRect(Sharp(m_layout.Band(band)));
        }
    }
}

void DesignCanvas::PaintDrag(QPainter& painter) {
    painter.setBrush(Qt::NoBrush);
    if (m_drag.action == Action::Move || m_drag.action == Action::Resize) {
        painter.setPen(QPen(QColor(Frame), 1, Qt::DashLine));
        for (const Placement& placement : m_drag.after) {
            if (const ReportItem* item = m_model.Item(placement.id)) {
                DrawFrame(painter, *item, m_layout.FromBand(item->band, placement.place));
            }
        }
    }
    if (m_drag.action == Action::RubberBand || m_drag.action == Action::Draw) {
        painter.setPen(QPen(QColor(Frame), 1, Qt::DashLine));
        if (m_drag.action == Action::Draw && m_tool == NewItem::Line) {
            painter.drawLine(m_drag.start, m_drag.now);
        } else {
            painter.drawRect(Sharp(QRectF(m_drag.start, m_drag.now)));
        }
    }
    if (m_drag.action == Action::Track) {
        PaintTrackDrag(painter);
    }
    if (m_drag.action == Action::BandHeight || m_drag.action == Action::BandWidth) {
        const QRectF band = m_layout.Band(m_drag.band);
        const double at = m_drag.size * m_layout.Scale();
        painter.setPen(QPen(QColor(Frame), 1, Qt::DashLine));
        if (m_drag.action == Action::BandHeight) {
            painter.drawLine(QPointF(band.left(), band.top() + at), QPointF(band.right(), band.top() + at));
        } else {
            painter.drawLine(QPointF(band.left() + at, band.top()), QPointF(band.left() + at, band.bottom()));
        }
    }
    painter.setPen(QColor(Guide));
    for (const SnapLine& line : m_drag.lines) {
        const QPointF begin = line.isUpright ? QPointF(line.at, line.begin) : QPointF(line.begin, line.at);
        const QPointF end = line.isUpright ? QPointF(line.at, line.end) : QPointF(line.end, line.at);
        painter.drawLine(m_layout.FromBand(m_drag.band, begin), m_layout.FromBand(m_drag.band, end));
    }
}

}  // namespace designer
