// The edges of items in one direction as the lines of a grid; edges that nearly meet are one line.
#pragma once

#include <cstddef>
#include <vector>

namespace rdl::writers {

class Edges {
 public:
    explicit Edges(double tolerance) : m_tolerance(tolerance) {}
    void Add(double position) { m_lines.push_back(position); }
    // After the last Add: sorts and merges.
    void Settle();
    const std::vector<double>& lines() const { return m_lines; }
    // The line at a position that was added.
    std::size_t Line(double position) const;
    // The width of the track behind a line.
    double Track(std::size_t line) const { return m_lines[line + 1] - m_lines[line]; }
    std::size_t TrackCount() const { return m_lines.empty() ? 0 : m_lines.size() - 1; }

 private:
    double m_tolerance;
    std::vector<double> m_lines;
};

}  // namespace rdl::writers
