// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/page_layout.h"

#include <algorithm>

namespace viewer {

void PageLayout::Clear() {
    m_pages.clear();
    m_height = 0;
    m_widest = {};
}

void PageLayout::Add(QSizeF points) {
    m_pages.push_back({m_height, points});
    m_height += points.height();
    m_widest = m_widest.expandedTo(points);
}

QSizeF PageLayout::Total() const {
    if (m_pages.empty()) {
        return {};
    }
    return {m_widest.width() * m_scale + 2 * Margin, m_height * m_scale + (Count() - 1) * Gap + 2 * Margin};
}

QRectF PageLayout::Page(int n) const {
    const Placed& page = m_pages.at(static_cast<std::size_t>(n) - 1);
    const QSizeF size = page.size * m_scale;
    const double room = std::max(m_viewWidth, Total().width());
    return {QPointF((room - size.width()) / 2, Margin + page.top * m_scale + (n - 1) * Gap), size};
}

int PageLayout::Nearest(double y) const {
    if (m_pages.empty()) {
        return 0;
    }
    // Finds the first page that ends below; each half of a gap belongs to the page next to it.
    int low = 1, high = Count();
    while (low < high) {
        const int middle = (low + high) / 2;
        if (Page(middle).bottom() + Gap / 2 < y) {
            low = middle + 1;
        } else {
            high = middle;
        }
    }
    return low;
}

std::pair<int, int> PageLayout::Between(double top, double bottom) const {
    int first = Nearest(top), last = Nearest(bottom);
    if (first == 0) {
        return {1, 0};
    }
    if (Page(first).bottom() < top) {
        ++first;
    }
    if (Page(last).top() > bottom) {
        --last;
    }
    return {first, last};
}

}  // namespace viewer
