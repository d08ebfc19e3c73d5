// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/chart/points.h"
#include "rdl/values/ascii.h"

#include <algorithm>

namespace rdl::layout {
namespace {

constexpr float LineWidth = 1.5F;
constexpr std::initializer_list<StyleProperty> Fills = {StyleProperty::Color, StyleProperty::BackgroundColor};

ChartShape ShapeOf(const std::string& name, ChartShape otherwise) {
    constexpr std::pair<std::string_view, ChartShape> Shapes[] = {
        {"None", ChartShape::None},       {"Square", ChartShape::Square},     {"Circle", ChartShape::Circle},
        {"Diamond", ChartShape::Diamond}, {"Triangle", ChartShape::Triangle}, {"Cross", ChartShape::Cross},
        {"Auto", ChartShape::Circle}};
    for (const auto& [word, shape] : Shapes) {
        if (EqualNoCase(word, name)) {
            return shape;
        }
    }
    return name.starts_with("Star") ? ChartShape::Star : otherwise;
}

class MarkReader {
 public:
    MarkReader(const ChartRow& row, const ChartPoint& point, const PartStyles& styles, const Culture& culture)
        : m_row(row), m_series(*row.definition), m_point(point), m_styles(styles), m_culture(culture) {}

    ChartMark Read(std::size_t place) {
        Numbers();
        Across(place);
        m_mark.color = m_styles.ColorOf(m_point.style, Fills);
        m_mark.border = m_row.border;
        if (!m_point.style.properties.empty()) {
            const Color color = IsVisible(m_mark.color) ? m_mark.color : m_row.color;
            m_mark.border = IsStroked(m_series) ? StrokeOf(m_point.style, color, m_styles)
                                                : m_styles.BorderOf(m_point.style);
        }
        Shape();
        Label(m_point.label.isSet ? m_point.label : m_series.label);
        m_mark.axisLabel = m_styles.Text(m_point.axisLabel);
        return std::move(m_mark);
    }

 private:
    // Also of an error: a point that fails is a gap, and a chart all of whose points fail says so.
    std::optional<double> Take(const Value& value) {
        double number = 0;
        if (NumberOf(value, number)) {
            return number;
        }
        if (value.IsError()) {
            m_failure = value;
        }
        return std::nullopt;
    }

    std::optional<double> Take(const Expr& source) { return Take(m_styles.Get(source)); }

    void Numbers() {
        if (IsSpan(m_series)) {
            Span();
        } else {
            m_mark.value = m_styles.Get(m_point.y);
            m_mark.hasY = NumberOf(m_mark.value, m_mark.y);
            m_mark.high = m_mark.y;
            if (m_series.range) {
                const std::optional<double> low = Take(m_point.low);
                m_mark.low = low.value_or(0);
                m_mark.hasY = m_mark.hasY && low;
            }
        }
        if (!m_mark.hasY && m_failure.IsError()) {
            m_mark.value = m_failure;
        }
    }

    // A line from a low to a high value, which may have a centre, a start and an end.
    void Span() {
        const Value high = m_styles.Get(m_point.high), low = m_styles.Get(m_point.low);
        const std::optional<double> top = Take(high), bottom = Take(low);
        const Value end = m_styles.Get(m_point.end), median = m_styles.Get(m_point.median);
        const Value mean = m_styles.Get(m_point.mean), start = m_styles.Get(m_point.start);
        m_mark.start = Take(start);
        m_mark.end = Take(end);
        m_mark.median = Take(median);
        m_mark.mean = Take(mean);
        if (m_series.kind == ChartKind::ErrorBar) {
            m_mark.value = m_styles.Get(m_point.y);
            m_mark.hasY = NumberOf(m_mark.value, m_mark.y);
            m_mark.low = m_row.look.lowerError ? bottom.value_or(m_mark.y) : m_mark.y;
            m_mark.high = m_row.look.upperError ? top.value_or(m_mark.y) : m_mark.y;
            return;
        }
        const bool box = m_series.kind == ChartKind::BoxPlot;
        m_mark.value = box ? (m_mark.median ? median : m_mark.mean ? mean : high) : m_mark.end ? end : high;
        m_mark.hasY = top && bottom && NumberOf(m_mark.value, m_mark.y);
        m_mark.low = bottom.value_or(0);
        m_mark.high = top.value_or(0);
        const std::string& wanted = m_row.look.labelPrice;
        m_labelled = EqualNoCase(wanted, "High")   ? high
                     : EqualNoCase(wanted, "Low")  ? low
                     : EqualNoCase(wanted, "Open") ? start
                                                   : Value();
    }

    void Across(std::size_t place) {
        const Value x = m_styles.Get(m_point.x);
        m_mark.hasX = NumberOf(x, m_mark.x);
        m_mark.isDate = x.kind() == Kind::DateTime;
        double size = 0;
        m_mark.size = NumberOf(m_styles.Get(m_point.size), size) ? size : 0;
        if (!m_mark.hasX) {
            m_mark.x = static_cast<double>(place + 1);
        }
    }

    // Whether a point without a marker could not be seen.
    bool NeedsMarker() const {
        return (m_series.kind == ChartKind::Scatter && !m_series.joined) ||
               m_series.kind == ChartKind::ErrorBar ||
               (FrameOf(m_series) == ChartFrame::Circle && m_row.look.circle == ChartLook::Circle::Marker);
    }

    void Shape() {
        const ChartMarker& marker = m_point.marker.type.IsSet() ? m_point.marker : m_series.marker;
        const bool needed = NeedsMarker();
        m_mark.shape = ShapeOf(m_styles.Text(marker.type), needed ? ChartShape::Circle : ChartShape::None);
        if (needed && m_mark.shape == ChartShape::None) {
            m_mark.shape = ChartShape::Circle;
        }
        m_mark.shapeSize = m_styles.Points(marker.size, m_mark.shapeSize);
        m_mark.shapeColor = m_styles.ColorOf(marker.style, Fills);
    }

    void Label(const ChartLabel& label) {
        if (!label.isSet || !m_styles.Flag(label.visible).value_or(false) || !m_mark.hasY ||
            (HasSlices(m_series) && m_row.look.labels == ChartLook::Labels::Disabled)) {
            return;
        }
        const std::string format = m_styles.Format(label.style);
        if (m_styles.Flag(label.useValue).value_or(false) || !label.text.IsSet()) {
            m_mark.label = ChartNumber(m_labelled.IsNull() ? m_mark.value : m_labelled, format, m_culture);
        } else {
            m_mark.label = ChartNumber(m_styles.Get(label.text), format, m_culture);
        }
        m_mark.labelPosition = m_styles.Text(label.position);
        m_mark.labelTurn = m_styles.Number(label.rotation).value_or(0);
        m_mark.labelStyle = m_styles.TextStyle(label.style);
        m_mark.ownLabelColor = label.style.Find(StyleProperty::Color) != nullptr;
        m_mark.labelBox = m_styles.Box(label.style);
    }

    const ChartRow& m_row;
    const ChartSeries& m_series;
    const ChartPoint& m_point;
    const PartStyles& m_styles;
    const Culture& m_culture;
    ChartMark m_mark;
    Value m_failure;   // of one of the point's values
    Value m_labelled;  // the value that LabelValueType names; Null: that of the mark
};

}  // namespace

bool IsStroked(const ChartSeries& series) {
    return series.kind == ChartKind::Line || series.joined || IsSpan(series) ||
           FrameOf(series) == ChartFrame::Circle;
}

Border StrokeOf(const Style& style, Color color, const PartStyles& styles) {
    Border line = styles.LineOf(style, color, LineWidth);
    line.color = color;
    if (line.style == LineStyle::None) {
        line.style = LineStyle::Solid;
    }
    return line;
}

ChartMark EvaluateMark(const ChartRow& row, const ChartPoint& point, std::size_t place,
                       const PartStyles& styles, const Culture& culture) {
    return MarkReader(row, point, styles, culture).Read(place);
}

}  // namespace rdl::layout
