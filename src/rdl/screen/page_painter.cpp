// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_painter.h"

#include <QPen>
#include <algorithm>
#include <cmath>

#include "rdl/layout/model/double_line.h"

namespace rdl::screen {
namespace {

using layout::IsVisible;
using layout::LineStyle;

QColor ColorOf(layout::Color color) {
    return QColor::fromRgba(color);
}

// Dashes are as long as the line's own width asks, whatever the pixels make of it.
QPen PenOf(layout::Color color, double width, LineStyle style, double ownWidth) {
    QPen pen(ColorOf(color), width, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin);
    if (const std::string_view lengths = layout::DashesOf(style); !lengths.empty() && width > 0) {
        constexpr double Least = 0.25;
        QList<qreal> dashes;
        for (const char length : lengths) {
            dashes.push_back((length - '0') * std::max(ownWidth, Least) / width);
        }
        pen.setDashPattern(dashes);
    }
    return pen;
}

QRectF ShownArea(const QPainter& painter) {
    QRectF shown = painter.worldTransform().inverted().mapRect(QRectF(painter.window()));
    if (painter.hasClipping()) {
        shown &= painter.clipBoundingRect();
    }
    return shown;
}

// Whether a text can be seen: its box with room for marks above, below and beside.
bool Meets(const QRectF& shown, const layout::Page& page, const layout::TextOp& op) {
    double length = 0;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        length += static_cast<double>(std::abs(page.glyphs[op.firstGlyph + i].advance));
    }
    const double room = 2 * static_cast<double>(op.size);
    if (op.rotation != 0) {
        const double reach = length + room;
        return shown.intersects({op.x - reach, op.baseline - reach, 2 * reach, 2 * reach});
    }
    return shown.intersects({op.x - room, op.baseline - room, length + 2 * room, 2 * room});
}

}  // namespace

void PagePainter::Draw(const layout::Page& page, QPainter& painter) {
    painter.save();
    painter.setClipRect(QRectF(0, 0, page.width, page.height),
                        painter.hasClipping() ? Qt::IntersectClip : Qt::ReplaceClip);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::SmoothPixmapTransform);
    Target target{page, painter, PixelGrid(painter), ShownArea(painter)};
    m_clips = 0;
    try {
        for (const layout::Op& op : page.ops) {
            std::visit([&](const auto& one) { Op(target, one); }, op);
        }
    } catch (...) {
        for (; m_clips >= 0; --m_clips) {
            painter.restore();
        }
        throw;
    }
    for (; m_clips >= 0; --m_clips) {
        painter.restore();
    }
}

QPainterPath PagePainter::OutlineOf(const Target& target, const layout::TextOp& op) {
    constexpr double Slant = 0.2126;  // 12 degrees
    const double slant = text::File(op.font).syntheticItalic ? Slant : 0;
    const double size = static_cast<double>(op.size);
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    double along = 0;
    for (std::uint32_t i = 0; i < op.glyphCount; ++i) {
        const text::Glyph& glyph = target.page.glyphs[op.firstGlyph + i];
        const double x = along + static_cast<double>(glyph.dx), y = -static_cast<double>(glyph.dy);
        along += static_cast<double>(glyph.advance);
        const auto at = [&](const text::OutlineStep& step, int point) {
            const auto px = static_cast<double>(step.x[point]), py = static_cast<double>(step.y[point]);
            return QPointF(x + size * (px - slant * py), y + size * py);
        };
        for (const text::OutlineStep& step : m_outlines.Of(op.font, glyph.id)) {
            if (step.kind == text::OutlineStep::Move) {
                path.moveTo(at(step, 0));
            } else if (step.kind == text::OutlineStep::Line) {
                path.lineTo(at(step, 0));
            } else {
                path.cubicTo(at(step, 0), at(step, 1), at(step, 2));
            }
        }
    }
    return path;
}

void PagePainter::Op(Target& target, const layout::TextOp& op) {
    if (op.glyphCount == 0 || !IsVisible(op.color) || !(op.size > 0) ||
        !Meets(target.shown, target.page, op)) {
        return;
    }
    QPainter& painter = target.painter;
    const QTransform before = painter.worldTransform();
    painter.translate(op.x, op.baseline);
    painter.rotate(static_cast<double>(op.rotation));
    if (text::File(op.font).syntheticBold) {
        painter.setPen(QPen(ColorOf(op.color), static_cast<double>(op.size) / 30, Qt::SolidLine, Qt::FlatCap,
                            Qt::MiterJoin));
        painter.setBrush(ColorOf(op.color));
        painter.drawPath(OutlineOf(target, op));
    } else {
        painter.fillPath(OutlineOf(target, op), ColorOf(op.color));
    }
    painter.setWorldTransform(before);
}

void PagePainter::Stroke(const Target& target, QPointF from, QPointF to, const layout::LineOp& op,
                         double width) {
    QPainter& painter = target.painter;
    const bool alongAxis = from.x() == to.x() || from.y() == to.y();
    if (!target.grid.IsStraight() || !alongAxis) {
        const double least = 1 / std::max(target.grid.Scale(), 1e-6);
        painter.setPen(PenOf(op.color, std::max(width, least), op.style, width));
        painter.drawLine(from, to);
        return;
    }
    const QRectF area = target.grid.Stroke(from, to, width);
    if (layout::DashesOf(op.style).empty()) {
        painter.fillRect(area, ColorOf(op.color));
        return;
    }
    const bool level = from.y() == to.y();
    const QPointF middle = area.center();
    painter.setPen(PenOf(op.color, level ? area.height() : area.width(), op.style, width));
    painter.drawLine(level ? QPointF(area.left(), middle.y()) : QPointF(middle.x(), area.top()),
                     level ? QPointF(area.right(), middle.y()) : QPointF(middle.x(), area.bottom()));
}

void PagePainter::Op(Target& target, const layout::LineOp& op) {
    const auto width = static_cast<double>(op.width);
    const QRectF reach = QRectF(QPointF(op.x1, op.y1), QPointF(op.x2, op.y2))
                             .normalized()
                             .adjusted(-width - 1, -width - 1, width + 1, width + 1);
    if (op.style == LineStyle::None || !IsVisible(op.color) || !target.shown.intersects(reach)) {
        return;
    }
    const QPointF from(op.x1, op.y1), to(op.x2, op.y2);
    if (op.style != LineStyle::Double) {
        Stroke(target, from, to, op, width);
        return;
    }
    for (const layout::LineOp& one : layout::LinesOfDouble(op)) {
        Stroke(target, {one.x1, one.y1}, {one.x2, one.y2}, one, static_cast<double>(one.width));
    }
}

void PagePainter::Op(Target& target, const layout::RectOp& op) {
    const QRectF area(op.x, op.y, op.width, op.height);
    if (IsVisible(op.color) && target.shown.intersects(area)) {
        target.painter.fillRect(target.grid.IsStraight() ? target.grid.Area(area) : area, ColorOf(op.color));
    }
}

void PagePainter::Op(Target& target, const layout::PathOp& op) {
    const bool fill = IsVisible(op.fill);
    const bool stroke = IsVisible(op.stroke) && op.strokeStyle != LineStyle::None;
    if ((!fill && !stroke) || op.segments.empty()) {
        return;
    }
    QPainterPath path;
    path.setFillRule(Qt::WindingFill);
    const auto at = [](const layout::PathOp::Segment& segment, int point) {
        return QPointF(segment.x[point], segment.y[point]);
    };
    using Kind = layout::PathOp::Segment::Kind;
    for (const layout::PathOp::Segment& segment : op.segments) {
        if (segment.kind == Kind::Move) {
            path.moveTo(at(segment, 0));
        } else if (segment.kind == Kind::LineTo) {
            path.lineTo(at(segment, 0));
        } else if (segment.kind == Kind::CurveTo) {
            path.cubicTo(at(segment, 0), at(segment, 1), at(segment, 2));
        } else {
            path.closeSubpath();
        }
    }
    if (fill) {
        target.painter.fillPath(path, ColorOf(op.fill));
    }
    if (stroke) {
        const double least = 1 / std::max(target.grid.Scale(), 1e-6);
        const double width = std::max(static_cast<double>(op.strokeWidth), least);
        target.painter.strokePath(
            path, PenOf(op.stroke, width, op.strokeStyle, static_cast<double>(op.strokeWidth)));
    }
}

void PagePainter::Op(Target& target, const layout::ImageOp& op) {
    QRectF area(op.x, op.y, op.width, op.height);
    if (!op.bytes || op.bytes->empty() || area.isEmpty() || !target.shown.intersects(area)) {
        return;
    }
    if (target.grid.IsStraight()) {
        area = target.grid.Area(area);
    }
    const QSize pixels = (area.size() * target.grid.Scale()).toSize().expandedTo({1, 1});
    QImage image = m_images.Of(op.bytes, op.name, pixels);
    // The painter looks at the nearest pixels only: what shrinks much would flicker.
    if (image.width() >= 2 * pixels.width() || image.height() >= 2 * pixels.height()) {
        image = image.scaled(pixels.boundedTo(image.size()), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    }
    target.painter.drawImage(area, image);
}

void PagePainter::Op(Target& target, const layout::ClipOp& op) {
    target.painter.save();
    ++m_clips;
    target.painter.setClipRect(QRectF(op.x, op.y, op.width, op.height), Qt::IntersectClip);
}

void PagePainter::Op(Target& target, const layout::UnclipOp&) {
    if (m_clips > 0) {
        --m_clips;
        target.painter.restore();
    }
}

}  // namespace rdl::screen
