// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/common/edges.h"

#include <algorithm>

namespace rdl::writers {

void Edges::Settle() {
    std::sort(m_lines.begin(), m_lines.end());
    std::size_t kept = 0;
    for (const double position : m_lines) {
        if (kept == 0 || position - m_lines[kept - 1] > m_tolerance) {
            m_lines[kept++] = position;
        }
    }
    m_lines.resize(kept);
}

std::size_t Edges::Line(double position) const {
    // Merging keeps the smallest position of a cluster: the line is the last one not after the position.
    const auto after = std::upper_bound(m_lines.begin(), m_lines.end(), position);
    return after == m_lines.begin() ? 0 : static_cast<std::size_t>(after - m_lines.begin()) - 1;
}

}  // namespace rdl::writers
