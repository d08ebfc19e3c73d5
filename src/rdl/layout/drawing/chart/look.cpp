// SPDX-License-Identifier: GPL-3.0-or-later
// The custom attributes of series.
#include <algorithm>

#include "rdl/layout/drawing/chart/points.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

class LookReader {
 public:
    LookReader(const ChartSeries& series, const PartStyles& styles) : m_series(series), m_styles(styles) {}

    bool Is(std::string_view name, std::string_view word) const { return EqualNoCase(Text(name), word); }
    std::string Text(std::string_view name) const { return m_styles.Text(m_series.Attribute(name)); }
    bool Flag(std::string_view name) const { return m_styles.Flag(m_series.Attribute(name)).value_or(true); }
    double Number(std::string_view name, double usual, double least, double most) const {
        return std::clamp(m_styles.Number(m_series.Attribute(name)).value_or(usual), least, most);
    }
    // A percentage as a fraction.
    double Part(std::string_view name, double usual, double least, double most) const {
        return Number(name, usual, least, most) / 100;
    }
    Color ColorNamed(std::string_view name) const {
        Style style;
        style.properties.emplace_back(StyleProperty::Color, m_series.Attribute(name));
        return m_styles.ColorOf(style, {StyleProperty::Color});
    }

 private:
    const ChartSeries& m_series;
    const PartStyles& m_styles;
};

ChartLook::Labels LabelsOf(const LookReader& reader, std::string_view attribute) {
    const std::string word = reader.Text(attribute);
    if (EqualNoCase(word, "Disabled")) {
        return ChartLook::Labels::Disabled;
    }
    return EqualNoCase(word.substr(0, 7), "Outside") ? ChartLook::Labels::Outside : ChartLook::Labels::Usual;
}

ChartLook::Circle CircleOf(const LookReader& reader, bool radar) {
    using Circle = ChartLook::Circle;
    const std::string word = reader.Text(radar ? "RadarDrawingStyle" : "PolarDrawingStyle");
    return EqualNoCase(word, "Marker") ? Circle::Marker
           : EqualNoCase(word, "Line") ? Circle::Line
           : EqualNoCase(word, "Area") ? Circle::Area
           : radar                     ? Circle::Area
                                       : Circle::Line;
}

ChartLook::Prices PricesOf(const LookReader& reader, bool candlestick) {
    using Prices = ChartLook::Prices;
    return candlestick || reader.Is("OpenCloseStyle", "Candlestick") ? Prices::Candlestick
           : reader.Is("OpenCloseStyle", "Triangle")                 ? Prices::Triangle
                                                                     : Prices::Line;
}

}  // namespace

ChartLook EvaluateLook(const ChartSeries& series, const PartStyles& styles) {
    const LookReader reader(series, styles);
    ChartLook look;
    const bool funnel = series.kind == ChartKind::Funnel, pyramid = series.kind == ChartKind::Pyramid;
    look.labels = LabelsOf(reader, funnel    ? "FunnelLabelStyle"
                                   : pyramid ? "PyramidLabelStyle"
                                             : "PieLabelStyle");
    look.pointWidth = reader.Number("PointWidth", 0.8, 0.05, 2.0);
    look.hole = 1 - reader.Part("DoughnutRadius", 40, 5, 95);
    look.circle = CircleOf(reader, series.kind == ChartKind::Radar);
    look.polygon = reader.Is("AreaDrawingStyle", "Polygon");
    look.prices = PricesOf(reader, series.kind == ChartKind::Candlestick);
    look.showOpen = !reader.Is("ShowOpenClose", "Close");
    look.showClose = !reader.Is("ShowOpenClose", "Open");
    look.labelPrice = reader.Text("LabelValueType");
    look.upColor = reader.ColorNamed("PriceUpColor");
    look.downColor = reader.ColorNamed("PriceDownColor");
    look.upperError = !reader.Is("ErrorBarStyle", "LowerError");
    look.lowerError = !reader.Is("ErrorBarStyle", "UpperError");
    look.showMean = reader.Flag("BoxPlotShowAverage");
    look.showMedian = reader.Flag("BoxPlotShowMedian");
    look.byWidth = reader.Is("FunnelStyle", "YIsWidth");
    look.bySurface = reader.Is("PyramidValueType", "Surface");
    look.gap = reader.Part(pyramid ? "PyramidPointGap" : "FunnelPointGap", 0, 0, 100);
    look.leastHeight = reader.Part(pyramid ? "PyramidMinPointHeight" : "FunnelMinPointHeight", 0, 0, 100);
    look.neckWidth = reader.Part("FunnelNeckWidth", 5, 0, 100);
    look.neckHeight = reader.Part("FunnelNeckHeight", 5, 0, 100);
    return look;
}

}  // namespace rdl::layout
