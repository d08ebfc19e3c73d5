// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/data.h"

#include <algorithm>

#include "rdl/layout/drawing/chart/axes.h"
#include "rdl/layout/drawing/chart/keywords.h"
#include "rdl/layout/drawing/chart/points.h"
#include "rdl/layout/drawing/chart/tree.h"
#include "rdl/layout/drawing/part_styles.h"
#include "rdl/layout/model/colors.h"
#include "rdl/layout/region/grouping.h"
#include "rdl/layout/region/leaves.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

constexpr std::size_t MostSeries = 500, MostCategories = 20'000, MostPoints = 100'000;

class ChartEvaluator {
 public:
    ChartEvaluator(const ChartPlan& plan, PropertyReader& reader)
        : m_chart(*plan.definition),
          m_reader(reader),
          m_styles(*plan.programs, reader),
          m_region(BuildRegion(*plan.data, reader.Place().Current(), reader.Place())) {}

    ChartData Evaluate() {
        const Evaluator::Stay stay(m_reader.Place());
        m_data.name = m_chart.name;
        m_data.culture = &m_reader.Place().CurrentCulture();
        m_reader.Place().Enter({m_region.get(), -1, -1, 0, 0});
        Palette();
        Frame();
        m_rows = LeavesOf(*m_region, TableAxis::Rows);
        m_columns = LeavesOf(*m_region, TableAxis::Columns);
        CheckSizes();
        if (m_rows.empty() || m_columns.empty() || m_region->rows.empty()) {
            ChartCaption message = m_styles.Caption(m_chart.noData, 10);
            if (!m_chart.noData.caption.IsSet()) {
                message.text = "No Data Available";
            }
            m_data.message = std::move(message);
            return std::move(m_data);
        }
        Categories();
        for (std::size_t i = 0; i < m_rows.size(); ++i) {
            Row(i);
        }
        for (ChartAreaData& area : m_data.areas) {
            MakeSlices(area);
            DropBelowZero(area);
        }
        if (AllFailed()) {
            ChartCaption message = m_styles.Caption(m_chart.noData, 10);
            message.text = "#Error";
            m_data.message = std::move(message);
        }
        return std::move(m_data);
    }

 private:
    // Whether each value is an error. The chart says so, as a cell does; an empty frame would look like no
    // data.
    bool AllFailed() const {
        bool any = false;
        for (const ChartAreaData& area : m_data.areas) {
            for (const ChartRow& row : area.rows) {
                for (const ChartMark& mark : row.marks) {
                    if (!mark.value.IsError()) {
                        return false;
                    }
                    any = true;
                }
            }
        }
        return any;
    }

    // A pie, or another whole, of series without categories: each series is a slice.
    void MakeSlices(ChartAreaData& area) const {
        if (m_data.categories.size() != 1 || area.rows.size() < 2 ||
            !HasSlices(*area.rows.front().definition)) {
            return;
        }
        ChartRow all = area.rows.front();
        all.marks.clear();
        for (ChartRow& row : area.rows) {
            ChartMark& mark = all.marks.emplace_back(std::move(row.marks.front()));
            mark.name = row.name;
        }
        all.name.clear();
        for (ChartMark& mark : all.marks) {
            mark.label = ChartKeywords(mark.labelSource, all, &mark, mark.name, *m_data.culture);
        }
        area.rows.clear();
        area.rows.push_back(std::move(all));
    }

    // A logarithmic axis has no place for zero and less: such points are gaps.
    static void DropBelowZero(ChartAreaData& area) {
        const bool scattered = IsScattered(area);
        for (ChartRow& row : area.rows) {
            for (ChartMark& mark : row.marks) {
                if ((area.valueAxes[row.valueAxis].logarithmic && mark.y <= 0) ||
                    (scattered && area.categoryAxes.front().logarithmic && mark.x <= 0)) {
                    mark.hasY = false;
                }
            }
        }
    }

    void Palette() {
        for (const Expr& source : m_chart.customColors) {
            Color color = Black;
            if (ParseColor(m_styles.Text(source), color)) {
                m_data.palette.push_back(color);
            }
        }
        const std::string name = m_styles.Text(m_chart.palette);
        if (m_data.palette.empty() || !EqualNoCase(name, "Custom")) {
            m_data.palette = PaletteOf(name);
        }
    }

    void Frame() {
        for (const ChartArea& area : m_chart.areas) {
            m_data.areas.push_back(EvaluateArea(area, m_styles));
        }
        for (const ChartText& title : m_chart.titles) {
            m_data.titles.push_back(m_styles.Caption(title, 12));
        }
        for (const ChartLegend& legend : m_chart.legends) {
            if (!m_styles.Flag(legend.hidden).value_or(false)) {
                m_data.legends.push_back({m_styles.Text(legend.position), m_styles.Text(legend.layout),
                                          m_styles.Caption(legend.title, 8), m_styles.TextStyle(legend.style),
                                          m_styles.Box(legend.style)});
            }
        }
    }

    // A tree has a part for each group of each point.
    std::size_t Levels() const {
        std::size_t levels = 1;
        if (std::any_of(m_chart.series.begin(), m_chart.series.end(), IsTree)) {
            for (const Leaf& leaf : m_columns) {
                levels = std::max(levels, leaf.path.size());
            }
        }
        return levels;
    }

    void CheckSizes() const {
        const std::size_t levels = Levels();
        if (m_rows.size() > MostSeries || m_columns.size() > MostCategories ||
            m_rows.size() * m_columns.size() * levels > MostPoints) {
            throw Error("Chart \"" + m_chart.name + "\" has " + std::to_string(m_rows.size()) +
                        " series and " + std::to_string(m_columns.size()) + " categories" +
                        (levels > 1 ? " in " + std::to_string(levels) + " levels" : "") + ": more than " +
                        std::to_string(MostSeries) + ", " + std::to_string(MostCategories) + " or " +
                        std::to_string(MostPoints) + " points cannot be drawn");
        }
    }

    // Returns the name of a member: its label, else the value that it is grouped by.
    Value Called(TableAxis axis, const Leaf::Step& step) {
        const Expr& label =
            (axis == TableAxis::Rows ? m_chart.seriesLabels : m_chart.categoryLabels)[At(step.member)];
        const HierarchyPlan& plan = m_region->Plan(axis);
        const MemberPlan& member = plan.members[At(step.member)];
        m_reader.Place().Enter(Scope::Of(m_region.get(), axis, step.group, step.instance));
        if (label.IsSet()) {
            return m_styles.Get(label);
        }
        if (member.group >= 0 && !plan.groups[At(member.group)].keys.empty()) {
            return plan.groups[At(member.group)].keys.front().Get(m_reader.Place());
        }
        return {};
    }

    void Categories() {
        const std::string format =
            m_data.areas.empty() ? std::string() : m_data.areas.front().categoryAxes.front().format;
        for (const Leaf& leaf : m_columns) {
            const Value value = Called(TableAxis::Columns, leaf.path.back());
            m_data.categoryValues.push_back(value);
            m_data.categories.push_back(ChartNumber(value, format, *m_data.culture));
            Outer(leaf, format);
        }
    }

    void Outer(const Leaf& leaf, const std::string& format) {
        m_data.outer.resize(std::max(m_data.outer.size(), leaf.path.size() - 1));
        const std::size_t place = m_data.categories.size() - 1;
        for (std::size_t i = 0; i + 1 < leaf.path.size(); ++i) {
            const Leaf* before = place > 0 ? &m_columns[place - 1] : nullptr;
            const bool same = before && i < before->path.size() &&
                              before->path[i].member == leaf.path[i].member &&
                              before->path[i].instance == leaf.path[i].instance;
            std::vector<ChartSpan>& spans = m_data.outer[i];
            if (same && !spans.empty()) {
                ++spans.back().count;
            } else {
                spans.push_back(
                    {ChartNumber(Called(TableAxis::Columns, leaf.path[i]), format, *m_data.culture), place,
                     1});
            }
        }
    }

    std::string NameOf(const Leaf& leaf, const ChartSeries& series) {
        std::string name;
        for (const Leaf::Step& step : leaf.path) {
            if (step.alone && leaf.path.size() > 1) {
                continue;
            }
            const std::string part = ChartNumber(Called(TableAxis::Rows, step), "", *m_data.culture);
            name += (name.empty() || part.empty() ? "" : " - ") + part;
        }
        return name.empty() && leaf.group < 0 ? series.name : name;
    }

    void Row(std::size_t index) {
        const Leaf& leaf = m_rows[index];
        const ChartSeries& series = m_chart.series[At(leaf.leaf)];
        ChartRow row;
        row.definition = &series;
        row.name = NameOf(leaf, series);
        m_reader.Place().Enter({m_region.get(), leaf.group, -1, leaf.instance, 0});
        if (m_styles.Flag(series.hidden).value_or(false)) {
            return;
        }
        row.inLegend = !m_styles.Flag(series.hiddenInLegend).value_or(false);
        if (const std::string text = m_styles.Text(series.legendText); !text.empty()) {
            row.name = ChartKeywords(text, row, nullptr, {}, *m_data.culture);
        }
        row.color = m_styles.ColorOf(series.style, {StyleProperty::Color, StyleProperty::BackgroundColor});
        row.ownColor = IsVisible(row.color);
        if (!row.ownColor) {
            row.color = m_data.PaletteColor(index);
        }
        row.look = EvaluateLook(series, m_styles);
        ChartAreaData& area = AreaOf(series, row);
        row.border =
            IsStroked(series) ? StrokeOf(series.style, row.color, m_styles) : m_styles.BorderOf(series.style);
        Marks(leaf, row);
        ColourAsPoints(row);
        area.rows.push_back(std::move(row));
    }

    // One stroke for all points: their colour, where they agree on one, goes before the series'.
    static void ColourAsPoints(ChartRow& row) {
        const auto& marks = row.marks;
        if (marks.empty() || !(IsStroked(*row.definition) || row.definition->kind == ChartKind::Area) ||
            std::any_of(marks.begin(), marks.end(),
                        [&marks](const ChartMark& mark) { return mark.color != marks.front().color; })) {
            return;
        }
        row.color = marks.front().color;
        if (IsStroked(*row.definition)) {
            row.border = marks.front().border;
        }
    }

    ChartAreaData& AreaOf(const ChartSeries& series, ChartRow& row) {
        std::size_t place = 0;
        while (m_chart.areas[place].name != series.area) {
            ++place;
        }
        const auto& axes = m_chart.areas[place].valueAxes;
        for (std::size_t i = 0; i < axes.size(); ++i) {
            if (!series.valueAxis.empty() && axes[i].name == series.valueAxis) {
                row.valueAxis = i;
            }
        }
        return m_data.areas[place];
    }

    void Marks(const Leaf& leaf, ChartRow& row) {
        for (std::size_t i = 0; i < m_columns.size(); ++i) {
            const Leaf& column = m_columns[i];
            m_reader.Place().Enter(
                {m_region.get(), leaf.group, column.group, leaf.instance, column.instance});
            row.marks.push_back(
                EvaluateMark(row, row.definition->points[At(column.leaf)], i, m_styles, *m_data.culture));
            if (m_data.categories[i].empty()) {
                m_data.categories[i] = row.marks.back().axisLabel;
            }
        }
        const ChartSeries& series = *row.definition;
        const bool bySlice = HasSlices(series) && m_columns.size() > 1 && !row.ownColor &&
                             !(IsTree(series) && m_rows.size() > 1);
        for (std::size_t i = 0; i < row.marks.size(); ++i) {
            ChartMark& mark = row.marks[i];
            if (!IsVisible(mark.color)) {
                mark.color = bySlice ? m_data.PaletteColor(PaletteIndex(series, i)) : row.color;
            }
            if (!IsVisible(mark.shapeColor)) {
                mark.shapeColor = mark.color;
            }
            mark.name = m_data.categories[i];
            mark.labelSource = mark.label;
            mark.label = ChartKeywords(mark.label, row, &mark, m_data.categories[i], *m_data.culture);
        }
    }

    // Slices of the groups within one another have the colour of the outermost.
    std::size_t PaletteIndex(const ChartSeries& series, std::size_t category) const {
        return IsTree(series) && !m_data.outer.empty() ? GroupAt(m_data.outer.front(), category) : category;
    }

    const Chart& m_chart;
    PropertyReader& m_reader;
    PartStyles m_styles;
    const std::shared_ptr<Region> m_region;
    ChartData m_data;
    std::vector<Leaf> m_rows, m_columns;
};

}  // namespace

ChartData EvaluateChart(const ChartPlan& plan, PropertyReader& reader) {
    return ChartEvaluator(plan, reader).Evaluate();
}

std::string ChartNumber(const Value& value, const std::string& format, const Culture& culture) {
    if (value.IsNull() || value.IsError()) {
        return {};
    }
    if (value.kind() == Kind::DateTime && format.empty() && value.AsTicks() % TicksPerDay == 0) {
        return FormatValue(value, "d", culture);
    }
    return ReadableText(format.empty() || value.IsText() ? ToText(value, culture)
                                                         : FormatValue(value, format, culture));
}

}  // namespace rdl::layout
