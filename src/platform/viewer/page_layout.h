// Where pages stand under each other at a zoom. Content coordinates: device-independent pixels from the top
// left corner of what is scrolled.
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
    // Pixels that a point takes, and the width that pages are centred in when they are narrower.
    void SetScale(double scale) { m_scale = scale; }
    double Scale() const { return m_scale; }
    void SetViewWidth(double width) { m_viewWidth = width; }

    QSizeF Total() const;
    QSizeF Widest() const { return m_widest; }  // width of the widest page and height of the highest; points
    // Page n from 1.
    QRectF Page(int n) const;
    // Pages that meet [top, bottom]; first > second when none does.
    std::pair<int, int> Between(double top, double bottom) const;
    // The page at a height, or the nearest one; 0 when there is none.
    int Nearest(double y) const;
    QPointF ToPage(int n, QPointF content) const { return (content - Page(n).topLeft()) / m_scale; }

 private:
    struct Placed {
        double top;  // sum of the heights above, points
        QSizeF size;
    };
    std::vector<Placed> m_pages;
    double m_scale = 1, m_viewWidth = 0, m_height = 0;
    QSizeF m_widest;
};

}  // namespace viewer
