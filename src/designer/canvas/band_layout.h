// SPDX-License-Identifier: GPL-3.0-or-later
// Where the bands of a report are on the canvas: below each other, each with a caption above it. Canvas
// coordinates are device-independent pixels from the top left corner of the scrolled area; those of a band
// are points from its own corner.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <optional>
#include <vector>

#include "designer/document/report_items.h"

namespace designer {

class BandLayout {
 public:
    // `scale` is pixels in a point, `caption` the height of a caption in pixels.
    void Set(const std::vector<ReportBand>& bands, double scale, double caption);

    double Scale() const { return m_scale; }
    std::size_t Count() const { return m_places.size(); }
    QSizeF Total() const { return m_total; }
    QRectF Caption(std::size_t band) const;
    QRectF Band(std::size_t band) const { return m_places.at(band); }

    // Returns the band at the point, or nullopt.
    std::optional<std::size_t> BandAt(QPointF point) const;
    // The same, captions included, and of a point between or beside bands the nearest one. Nothing without
    // bands.
    std::optional<std::size_t> NearestBand(QPointF point) const;

    QPointF ToBand(std::size_t band, QPointF point) const {
        return (point - m_places.at(band).topLeft()) / m_scale;
    }
    QPointF FromBand(std::size_t band, QPointF point) const {
        return m_places.at(band).topLeft() + point * m_scale;
    }
    // A negative width or height stays negative.
    QRectF FromBand(std::size_t band, const Rect& place) const;
    Rect ToBand(std::size_t band, const QRectF& area) const;

 private:
    double m_scale = 1, m_caption = 0;
    std::vector<QRectF> m_places;
    QSizeF m_total;
};

}  // namespace designer
