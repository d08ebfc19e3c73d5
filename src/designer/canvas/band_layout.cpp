// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/band_layout.h"

#include <algorithm>
#include <cmath>

namespace designer {
namespace {

constexpr double Margin = 12, Gap = 10;  // pixels

}  // namespace

void BandLayout::Set(const std::vector<ReportBand>& bands, double scale, double caption) {
    m_scale = scale;
    m_caption = caption;
    m_places.clear();
    double top = Margin, right = 0;
    for (const ReportBand& band : bands) {
        top += caption;
        const QRectF place(Margin, std::round(top), std::max(0.0, band.width) * scale,
                           std::max(0.0, band.height) * scale);
        m_places.push_back(place);
        right = std::max(right, place.right());
        top = place.bottom() + Gap;
    }
    // Room to draw an item beyond the edge, and to pull the edge.
    m_total = {right + 10 * Margin, top + 4 * Margin};
}

QRectF BandLayout::Caption(std::size_t band) const {
    const QRectF& place = m_places.at(band);
    return {place.left(), place.top() - m_caption, place.width(), m_caption};
}

std::optional<std::size_t> BandLayout::BandAt(QPointF point) const {
    for (std::size_t band = 0; band < m_places.size(); ++band) {
        if (m_places[band].contains(point)) {
            return band;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> BandLayout::NearestBand(QPointF point) const {
    if (m_places.empty()) {
        return std::nullopt;
    }
    for (std::size_t band = 0; band + 1 < m_places.size(); ++band) {
        if (point.y() < Caption(band + 1).top()) {
            return band;
        }
    }
    return m_places.size() - 1;
}

QRectF BandLayout::FromBand(std::size_t band, const Rect& place) const {
    return {FromBand(band, QPointF(place.left, place.top)), QSizeF(place.width, place.height) * m_scale};
}

Rect BandLayout::ToBand(std::size_t band, const QRectF& area) const {
    const QPointF corner = ToBand(band, area.topLeft());
    return {corner.x(), corner.y(), area.width() / m_scale, area.height() / m_scale};
}

}  // namespace designer
