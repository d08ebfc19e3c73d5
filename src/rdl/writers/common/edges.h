// SPDX-License-Identifier: GPL-3.0-or-later
// Grid lines from the edges of items in one direction; edges within the tolerance (points) share a line.
#pragma once

#include <cstddef>
#include <vector>

namespace rdl::writers {

class Edges {
 public:
    explicit Edges(double tolerance) : m_tolerance(tolerance) {}
    void Add(double position) { m_lines.push_back(position); }
    // Sorts and merges the lines. Call this after the last Add.
    void Settle();
    const std::vector<double>& lines() const { return m_lines; }
    // Returns the index of the line at a position that was added.
    std::size_t Line(double position) const;
    // Returns the width of the track after a line, in points.
    double Track(std::size_t line) const { return m_lines[line + 1] - m_lines[line]; }
    std::size_t TrackCount() const { return m_lines.empty() ? 0 : m_lines.size() - 1; }

 private:
    double m_tolerance;
    std::vector<double> m_lines;
};

}  // namespace rdl::writers
