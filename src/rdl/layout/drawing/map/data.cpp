// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/data.h"

#include <algorithm>

#include "rdl/layout/drawing/map/keywords.h"
#include "rdl/layout/drawing/map/layer.h"
#include "rdl/layout/model/colors.h"
#include "rdl/layout/region/grouping.h"
#include "rdl/layout/region/property_reader.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

class MapEvaluator {
 public:
    MapEvaluator(MapPlan& plan, PropertyReader& reader, double width, double height)
        : m_plan(plan),
          m_map(*plan.definition),
          m_reader(reader),
          m_around(reader.Place().Current()),
          m_styles(*plan.programs, reader),
          m_width(width),
          m_height(height) {}

    MapData Evaluate() {
        const Evaluator::Stay stay(m_reader.Place());
        m_data.name = m_map.name;
        m_data.culture = &m_reader.Place().CurrentCulture();
        Frame();
        Viewport();
        std::vector<MapRegion> regions;
        for (const auto& region : m_plan.regions) {
            m_reader.Place().Enter(m_around);
            regions.push_back({BuildRegion(*region, m_around, m_reader.Place()), {}});
            if (!regions.back().region->rows.empty()) {
                regions.back().leaves = LeavesOf(*regions.back().region, TableAxis::Rows);
            }
        }
        spatial::Allowance allowance(m_reader.Watch());
        for (std::size_t i = 0; i < m_map.layers.size(); ++i) {
            MapLayerResult result =
                EvaluateMapLayer(m_plan, i, regions, m_around, m_styles, m_reader, allowance);
            m_reader.Place().Enter(m_around);
            for (const MapRuleResult& rule : result.rules) {
                Explain(rule);
            }
            m_data.layers.push_back(std::move(result.data));
        }
        return std::move(m_data);
    }

 private:
    std::string Word(const MapPart& part, std::string_view name, const char* otherwise) const {
        const std::string word = m_styles.Text(part[name]);
        return word.empty() ? otherwise : word;
    }

    bool Flag(const MapPart& part, std::string_view name) const {
        return m_styles.Flag(part[name]).value_or(false);
    }

    MapLegendData Legend(const MapLegend& legend, const char* position) const {
        MapLegendData data;
        data.name = legend.name;
        data.position = Word(legend, "Position", position);
        data.isOutside = Flag(legend, "DockOutsideViewport");
        data.title = m_styles.Caption(legend.title, 8);
        data.style = m_styles.TextStyle(legend.style);
        data.box = m_styles.Box(legend.style);
        return data;
    }

    void Frame() {
        for (const MapTitle& title : m_map.titles) {
            MapTitleData data{m_styles.Caption(title.text, 12),
                              m_styles.Flag(title.isOutside).value_or(false)};
            if (data.caption.position.empty()) {
                data.caption.position = "TopCenter";
            }
            m_data.titles.push_back(std::move(data));
        }
        for (const MapLegend& legend : m_map.legends) {
            if (!Flag(legend, "Hidden")) {
                m_data.legends.push_back(Legend(legend, "RightTop"));
            }
        }
        if (m_map.colorScale.isSet && !Flag(m_map.colorScale, "Hidden")) {
            MapColorScaleData& scale = m_data.colorScale.emplace();
            scale.frame = Legend(m_map.colorScale, "BottomCenter");
            scale.format = Word(m_map.colorScale, "LabelFormat", "#,##0.##");
            ParseColor(m_styles.Text(m_map.colorScale["ColorBarBorderColor"]), scale.border);
        }
        if (m_map.distanceScale.isSet && !Flag(m_map.distanceScale, "Hidden")) {
            MapLegend part;
            static_cast<MapPart&>(part) = m_map.distanceScale;
            m_data.distanceScale = Legend(part, "BottomRight");
            ParseColor(m_styles.Text(part["ScaleColor"]), m_data.distanceColor);
        }
    }

    // A length in the unit of its part; percentages are of `whole`.
    std::optional<double> Length(const MapPart& part, std::string_view name, double whole) const {
        constexpr std::pair<std::string_view, double> Units[] = {
            {"Inch", 72}, {"Point", 1}, {"Centimeter", 72 / 2.54}, {"Millimeter", 72 / 25.4}, {"Pica", 12}};
        const std::optional<double> number = m_styles.Number(part[name]);
        if (!number) {
            return std::nullopt;
        }
        const std::string unit = m_styles.Text(part["Unit"]);
        for (const auto& [word, points] : Units) {
            if (EqualNoCase(word, unit)) {
                return *number * points;
            }
        }
        return *number * whole / 100;
    }

    MapGridData Grid(const MapPart& part) const {
        MapGridData grid;
        grid.isShown = part.isSet && !Flag(part, "Hidden");
        if (grid.isShown) {
            grid.hasLabels = m_styles.Flag(part["ShowLabels"]).value_or(true);
            grid.interval = m_styles.Number(part["Interval"]);
            constexpr Color Gray = 0xFFD3D3D3;
            grid.line = m_styles.LineOf(part.style, Gray, 0.5F);
            grid.textStyle = m_styles.TextStyle(part.style, 7);
        }
        return grid;
    }

    void Viewport() {
        const MapViewport& source = m_map.viewport;
        MapViewportData& view = m_data.viewport;
        const std::string system = m_styles.Text(source["MapCoordinateSystem"]);
        if (EqualNoCase(system, "Geographic")) {
            view.projection = ProjectionNamed(m_styles.Text(source["MapProjection"]));
        }
        view.centerX = m_styles.Number(source["ProjectionCenterX"]);
        view.centerY = m_styles.Number(source["ProjectionCenterY"]);
        if (!m_styles.Flag(source.limits["LimitToData"]).value_or(false)) {
            view.left = m_styles.Number(source.limits["MinimumX"]);
            view.right = m_styles.Number(source.limits["MaximumX"]);
            view.bottom = m_styles.Number(source.limits["MinimumY"]);
            view.top = m_styles.Number(source.limits["MaximumY"]);
        }
        view.margin = m_styles.Points(source["ContentMargin"], view.margin);
        view.view = source.view.kind;
        view.zoom = m_styles.Number(source.view["Zoom"]);
        view.viewX = m_styles.Number(source.view["CenterX"]).value_or(view.viewX);
        view.viewY = m_styles.Number(source.view["CenterY"]).value_or(view.viewY);
        view.box = m_styles.Box(source.style);
        view.meridians = Grid(source.meridians);
        view.parallels = Grid(source.parallels);
        const auto left = Length(source.location, "Left", m_width),
                   top = Length(source.location, "Top", m_height);
        const auto wide = Length(source.size, "Width", m_width),
                   high = Length(source.size, "Height", m_height);
        if (left && top && wide && high) {
            view.area = Rect{*left, *top, *wide, *high};
        }
    }

    // Adds a rule to its legend and to the colour scale.
    void Explain(const MapRuleResult& result) {
        constexpr std::size_t MostEntries = 1000;  // more than any page shows
        const MapRule& rule = *result.rule;
        const std::string name = m_styles.Text(rule["LegendName"]);
        for (MapLegendData& legend : m_data.legends) {
            if (!name.empty() && legend.name == name) {
                for (std::size_t i = 0; i < result.buckets.list.size() && legend.entries.size() < MostEntries;
                     ++i) {
                    legend.entries.push_back(Entry(result, i));
                }
            }
        }
        if (m_data.colorScale && result.buckets.isNumeric && Flag(rule, "ShowInColorScale")) {
            for (std::size_t i = 0; i < result.colors.size(); ++i) {
                const MapBucket& bucket = result.buckets.list[i];
                m_data.colorScale->bands.push_back({result.colors[i], bucket.from, bucket.to});
            }
        }
    }

    MapLegendEntry Entry(const MapRuleResult& result, std::size_t index) const {
        MapLegendEntry entry = result.sample;
        const MapBucket& bucket = result.buckets.list[index];
        const std::string text =
            result.legendText.empty() ? "#FROMVALUE{N0} - #TOVALUE{N0}" : result.legendText;
        entry.text = !result.buckets.isNumeric
                         ? bucket.text
                         : ReadableText(WithMapKeywords(
                               text,
                               [&](std::string_view word, Value& value) {
                                   const bool isFrom = word == "FROMVALUE";
                                   value = Value::Real(isFrom ? bucket.from : bucket.to);
                                   return isFrom || word == "TOVALUE";
                               },
                               *m_data.culture));
        if (index < result.colors.size()) {
            (entry.kind == MapLayerKind::Point  ? entry.mark.fill
             : entry.kind == MapLayerKind::Line ? entry.border.color
                                                : entry.color) = result.colors[index];
        }
        if (index < result.sizes.size()) {
            entry.mark.size = result.sizes[index];
            entry.border.width = entry.kind == MapLayerKind::Line ? static_cast<float>(result.sizes[index])
                                                                  : entry.border.width;
        }
        if (index < result.markers.size()) {
            entry.mark.shape = result.markers[index];
        }
        return entry;
    }

    MapPlan& m_plan;
    const Map& m_map;
    PropertyReader& m_reader;
    const Scope m_around;
    const PartStyles m_styles;
    const double m_width, m_height;
    MapData m_data;
};

}  // namespace

MapData EvaluateMap(MapPlan& plan, PropertyReader& reader, double width, double height) {
    return MapEvaluator(plan, reader, width, height).Evaluate();
}

}  // namespace rdl::layout
