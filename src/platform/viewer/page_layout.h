// SPDX-License-Identifier: GPL-3.0-or-later
// The positions of pages below each other at a zoom. Content coordinates are device-independent pixels from
// the top left corner of the scrolled area.
#pragma once

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <utility>
#include <vector>

namespace viewer {

class PageLayout {
 public:
    static constexpr double Margin = 16, Gap = 14;

    void Clear();
    void Add(QSizeF points);
    int Count() const { return static_cast<int>(m_pages.size()); }
    // `scale` is pixels in a point. `width` is the width in which narrower pages are centred, in pixels.
    void SetScale(double scale) { m_scale = scale; }
    double Scale() const { return m_scale; }
    void SetViewWidth(double width) { m_viewWidth = width; }

    QSizeF Total() const;
    // width of the widest page and height of the highest, in points
    QSizeF Widest() const { return m_widest; }
    // Returns the area of page `n` (from 1).
    QRectF Page(int n) const;
    // Returns the first and the last page that intersect [top, bottom]; first > second if there is none.
    std::pair<int, int> Between(double top, double bottom) const;
    // Returns the page at a height, or the nearest page; 0 without pages.
    int Nearest(double y) const;
    QPointF ToPage(int n, QPointF content) const { return (content - Page(n).topLeft()) / m_scale; }

 private:
    struct Placed {
        double top;  // sum of the heights of the pages before it, in points
        QSizeF size;
    };
    std::vector<Placed> m_pages;
    double m_scale = 1, m_viewWidth = 0, m_height = 0;
    QSizeF m_widest;
};

}  // namespace viewer
