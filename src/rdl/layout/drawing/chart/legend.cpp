// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/draw.h"
#include "rdl/layout/drawing/chart/keywords.h"
#include "rdl/layout/drawing/chart/points.h"
#include "rdl/layout/drawing/chart/tree.h"
#include "rdl/layout/drawing/docking.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr double LegendGap = 4, SymbolGap = 3, LargestShare = 0.45;  // points; of the chart

struct Entry {
    std::string text;
    Color color;
    const ChartRow* row;
    const ChartMark* mark;  // of a slice; else null
};

// The first level of a tree: its series, or the outermost groups of the only one.
void AppendTree(const ChartData& data, const ChartAreaData& area, const ChartRow& row,
                std::vector<Entry>& entries) {
    if (area.rows.size() > 1) {
        entries.push_back({row.name, row.color, &row, nullptr});
        return;
    }
    for (const ChartNode& node : TreeOf(data, area)) {
        entries.push_back({node.name, node.color, &row, nullptr});
    }
}

std::vector<Entry> EntriesOf(const ChartData& data) {
    std::vector<Entry> entries;
    for (const ChartAreaData& area : data.areas) {
        for (const ChartRow& row : area.rows) {
            if (!row.inLegend) {
                continue;
            }
            if (!HasSlices(*row.definition)) {
                entries.push_back({row.name, row.color, &row, nullptr});
                continue;
            }
            if (IsTree(*row.definition)) {
                AppendTree(data, area, row, entries);
                continue;
            }
            // One ring more has the same categories.
            for (std::size_t i = 0; i < row.marks.size() && &row == &area.rows.front(); ++i) {
                const ChartMark& mark = row.marks[i];
                const std::string& own = row.definition->legendText.source;
                entries.push_back({own.find('#') == std::string::npos
                                       ? mark.name
                                       : ChartKeywords(own, row, &mark, mark.name, *data.culture),
                                   mark.color, &row, &mark});
            }
        }
    }
    return entries;
}

void Symbol(const Entry& entry, Spot center, double size, Canvas& canvas) {
    const ChartKind kind = entry.row->definition->kind;
    const bool circle = FrameOf(*entry.row->definition) == ChartFrame::Circle;
    const bool line = kind == ChartKind::Line || entry.row->definition->joined || kind == ChartKind::Stock ||
                      kind == ChartKind::ErrorBar ||
                      (circle && entry.row->look.circle == ChartLook::Circle::Line);
    const bool marker = kind == ChartKind::Scatter || kind == ChartKind::ErrorBar ||
                        (circle && entry.row->look.circle == ChartLook::Circle::Marker);
    if (line) {
        canvas.Line({center.x - size, center.y}, {center.x + size, center.y}, entry.row->border);
    }
    const ChartMark* first = entry.row->marks.empty() ? nullptr : &entry.row->marks.front();
    if (line || marker) {
        if (first && first->shape != ChartShape::None) {
            DrawShape(first->shape, center, std::min(first->shapeSize, size), first->shapeColor, canvas);
        }
    } else if (kind == ChartKind::Bubble) {
        DrawShape(ChartShape::Circle, center, size, entry.color, canvas);
    } else {
        canvas.Rectangle({center.x - size / 2, center.y - size / 2, size, size}, entry.color,
                         entry.mark                          ? entry.mark->border
                         : IsStroked(*entry.row->definition) ? Border()
                                                             : entry.row->border);
    }
}

// The measures of a legend whose entries are a table of equal cells.
struct LegendGrid {
    std::size_t columns = 1, rows = 1, shown = 0;
    double cellWidth = 0, cellHeight = 0, symbol = 0, titleHeight = 0;
    double Width() const { return static_cast<double>(columns) * cellWidth + LegendGap; }
    double Height() const { return static_cast<double>(rows) * cellHeight + titleHeight + LegendGap; }
};

LegendGrid LegendGridOf(const ChartLegendData& legend, const std::vector<Entry>& entries,
                        const Rect& available, bool beside) {
    LegendGrid grid;
    const CharStyle& style = *legend.style;
    grid.symbol = static_cast<double>(style.size) * 0.8;
    grid.cellHeight = Canvas::LineHeight(style) * 1.15;
    grid.titleHeight = legend.title.text.empty() ? 0 : Canvas::LineHeight(*legend.title.style);
    for (const Entry& entry : entries) {
        grid.cellWidth = std::max(grid.cellWidth, Canvas::Measure(entry.text, style).width);
    }
    const double most = available.width * (beside ? LargestShare : 1) - LegendGap;
    grid.cellWidth = std::min(grid.cellWidth + 2 * grid.symbol + SymbolGap + LegendGap, most);
    const auto fitting =
        static_cast<std::size_t>(std::max(1.0, std::floor(most / std::max(grid.cellWidth, 1.0))));
    const auto high = static_cast<std::size_t>(std::max(
        1.0, std::floor((available.height * (beside ? 1 : LargestShare) - grid.titleHeight - LegendGap) /
                        grid.cellHeight)));
    const std::size_t count = std::max<std::size_t>(entries.size(), 1);
    grid.columns = beside ? std::min(fitting, (count + high - 1) / high) : std::min(fitting, count);
    if (!beside && EqualNoCase(legend.layout, "Column")) {
        grid.columns = std::min(grid.columns, (count + high - 1) / high);
    }
    grid.rows = std::min(high, (count + grid.columns - 1) / grid.columns);
    grid.shown = std::min(entries.size(), grid.rows * grid.columns);
    return grid;
}

}  // namespace

void DrawShape(ChartShape shape, Spot center, double size, Color color, Canvas& canvas) {
    const double half = size / 2;
    const Border none;
    const auto [x, y] = center;
    switch (shape) {
        case ChartShape::None:
            break;
        case ChartShape::Square:
            canvas.Rectangle({x - half, y - half, size, size}, color, none);
            break;
        case ChartShape::Circle:
            canvas.Circle(center, half, color, none);
            break;
        case ChartShape::Diamond:
            canvas.Polygon({{x, y - half}, {x + half, y}, {x, y + half}, {x - half, y}}, color, none);
            break;
        case ChartShape::Triangle:
            canvas.Polygon({{x, y - half}, {x + half, y + half}, {x - half, y + half}}, color, none);
            break;
        case ChartShape::Cross: {
            const Border stroke{LineStyle::Solid, color, static_cast<float>(size / 4)};
            canvas.Line({x - half, y - half}, {x + half, y + half}, stroke);
            canvas.Line({x - half, y + half}, {x + half, y - half}, stroke);
            break;
        }
        case ChartShape::Star: {
            constexpr int Corners = 10;
            std::vector<Spot> corners;
            corners.reserve(Corners);
            for (int i = 0; i < Corners; ++i) {
                corners.push_back(OnCircle(center, i % 2 == 0 ? half : half * 0.4, i * 6.2831853 / Corners));
            }
            canvas.Polygon(corners, color, none);
            break;
        }
    }
}

void DrawLegend(const ChartData& data, const ChartLegendData& legend, Rect& available, Canvas& canvas) {
    const std::vector<Entry> entries = EntriesOf(data);
    if (entries.empty()) {
        return;
    }
    const auto begins = [&](std::string_view word) {
        return EqualNoCase(legend.position.substr(0, word.size()), word);
    };
    const LegendGrid grid = LegendGridOf(legend, entries, available, !begins("Top") && !begins("Bottom"));
    const Rect area = DockAt(legend.position.empty() ? "RightTop" : legend.position,
                             {grid.Width(), grid.Height()}, available);
    canvas.Box(area, legend.box.get());
    if (!legend.title.text.empty()) {
        canvas.Text(Shortened(legend.title.text, *legend.title.style, area.width), *legend.title.style,
                    {area.x + area.width / 2, area.y + LegendGap / 2}, {0.5, 0});
    }
    for (std::size_t i = 0; i < grid.shown; ++i) {
        // An ellipsis reports the entries that do not fit.
        const bool more = i + 1 == grid.shown && grid.shown < entries.size();
        const std::size_t column = i % grid.columns, row = i / grid.columns;
        const double x = area.x + LegendGap / 2 + static_cast<double>(column) * grid.cellWidth;
        const double y =
            area.y + LegendGap / 2 + grid.titleHeight + (static_cast<double>(row) + 0.5) * grid.cellHeight;
        if (!more) {
            Symbol(entries[i], {x + grid.symbol, y}, grid.symbol, canvas);
        }
        const double textRoom = grid.cellWidth - 2 * grid.symbol - SymbolGap;
        canvas.Text(more ? "\xE2\x80\xA6" : Shortened(entries[i].text, *legend.style, textRoom),
                    *legend.style, {x + 2 * grid.symbol + SymbolGap, y}, {0, 0.5});
    }
}

}  // namespace rdl::layout
