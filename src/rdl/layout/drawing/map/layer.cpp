// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/layer.h"

#include <algorithm>
#include <cmath>

#include "rdl/layout/drawing/chart/data.h"
#include "rdl/layout/drawing/map/keywords.h"
#include "rdl/layout/model/colors.h"
#include "rdl/layout/region/property_reader.h"
#include "rdl/values/ascii.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

constexpr Color UsualOutline = 0xFF808080, UsualMark = 0xFFD3D3D3;
constexpr float UsualWidth = 0.5F;
constexpr double UsualLineWidth = 2, UsualMarkSize = 8.25;

Color Fainter(Color color, double transparency) {
    const double alpha = static_cast<double>(color >> 24) * (1 - transparency);
    return (color & 0xFFFFFF) | static_cast<Color>(std::lround(alpha)) << 24;
}

bool HasExpression(const MapPart& part) {
    const auto isExpression = [](const auto& named) { return named.second.IsExpression(); };
    return std::any_of(part.properties.begin(), part.properties.end(), isExpression) ||
           std::any_of(part.style.properties.begin(), part.style.properties.end(), isExpression);
}

// The part without its expressions: for a shape that has no data.
MapTemplate Constants(const MapTemplate& from) {
    MapTemplate constant = from;
    const auto isExpression = [](const auto& named) { return named.second.IsExpression(); };
    for (MapPart* part : {static_cast<MapPart*>(&constant), &constant.marker}) {
        std::erase_if(part->properties, isExpression);
        std::erase_if(part->style.properties, isExpression);
    }
    return constant;
}

class LayerEvaluator {
 public:
    LayerEvaluator(const MapLayer& layer, const MapView& view, MapLayerShapes shapes, const Scope& around,
                   const PartStyles& styles, PropertyReader& reader)
        : m_layer(layer),
          m_view(view),
          m_shapes(std::move(shapes)),
          m_around(around),
          m_styles(styles),
          m_reader(reader),
          m_culture(reader.Place().CurrentCulture()),
          m_plainShape(Constants(m_layer.shapeTemplate)),
          m_plainMarkers(Constants(m_layer.markers)),
          m_hasExpressions(HasExpression(layer.shapeTemplate) || HasExpression(layer.markers) ||
                           HasExpression(layer.shapeTemplate.marker) || HasExpression(layer.markers.marker)) {
    }

    MapLayerResult Evaluate() {
        MapLayerData& data = m_result.data;
        data.name = m_layer.name;
        data.kind = m_layer.kind;
        Enter(m_around);
        data.isHidden = EqualNoCase(m_styles.Text(m_layer["VisibilityMode"]), "Hidden");
        m_transparency = std::clamp(m_styles.Number(m_layer["Transparency"]).value_or(0), 0.0, 100.0) / 100;
        for (std::size_t i = 0; i < m_shapes.source->shapes.size(); ++i) {
            data.shapes.push_back(ShapeAt(i));
        }
        Viewed();
        for (const MapRule& rule : m_layer.rules) {
            Rule(rule, false);
        }
        for (const MapRule& rule : m_layer.markerRules) {
            Rule(rule, true);
        }
        data.source = m_shapes.source;
        return std::move(m_result);
    }

 private:
    void Enter(const Scope& scope) { m_reader.Place().Enter(scope); }

    // Expressions of a layer with a data region have a value only where there is data.
    bool IsPlain(std::size_t shape) const { return m_layer.region >= 0 && !m_shapes.isBound[shape]; }

    std::string Replaced(const std::string& text, std::size_t shape) const {
        return WithMapKeywords(
            text,
            [&](std::string_view word, Value& value) {
                value = m_shapes.HasField(word) ? m_shapes.FieldOf(shape, word) : Value();
                return m_shapes.HasField(word);
            },
            m_culture);
    }

    const MapOwnLook* OwnLook(std::size_t shape) const {
        const auto found =
            std::lower_bound(m_layer.looks.begin(), m_layer.looks.end(), shape,
                             [](const MapOwnLook& look, std::size_t at) { return look.shape < at; });
        return found != m_layer.looks.end() && found->shape == shape ? &*found : nullptr;
    }

    // Constant looks are computed once: a layer may have a hundred thousand shapes.
    MapShapeData ShapeAt(std::size_t index) {
        m_reader.Place().CheckBounds();
        Enter(m_shapes.scopes[index]);
        const MapOwnLook* own = OwnLook(index);
        const bool isPlain = IsPlain(index) || !m_hasExpressions;
        MapShapeData shape;
        if (own) {
            shape = Made(own->shapeTemplate.isSet ? own->shapeTemplate : m_layer.shapeTemplate,
                         own->markers.isSet ? own->markers : m_layer.markers);
        } else if (isPlain) {
            if (!m_plainLook) {
                m_plainLook = Made(m_plainShape, m_plainMarkers);
            }
            shape = *m_plainLook;
        } else {
            shape = Made(m_layer.shapeTemplate, m_layer.markers);
        }
        shape.label = ReadableText(Replaced(shape.label, index));
        shape.geometry = &m_shapes.source->shapes[index].geometry;
        shape.isBound = m_shapes.isBound[index];
        shape.name = m_shapes.names[index];
        return shape;
    }

    // The label keeps its keywords.
    MapShapeData Made(const MapTemplate& look, const MapTemplate& markers) {
        const bool isPoint = m_layer.kind == MapLayerKind::Point;
        MapShapeData shape;
        if (!isPoint) {
            shape = m_layer.kind == MapLayerKind::Line ? LineLook(look) : PolygonLook(look);
        }
        if (isPoint || markers.isSet || !m_layer.markerRules.empty()) {
            shape.mark = Mark(markers);
        }
        Label(isPoint ? markers : look, shape);
        if (isPoint) {
            shape.labelMode = MapLabelMode::Always;
            shape.isHidden = m_styles.Flag(markers["Hidden"]).value_or(false);
        }
        return shape;
    }

    MapShapeData PolygonLook(const MapTemplate& look) {
        MapShapeData shape;
        shape.isHidden = m_styles.Flag(look["Hidden"]).value_or(false);
        shape.fill = Fainter(m_styles.ColorOf(look.style, {StyleProperty::BackgroundColor}), m_transparency);
        shape.border = m_styles.LineOf(look.style, UsualOutline, UsualWidth);
        shape.border.color = Fainter(shape.border.color, m_transparency);
        return shape;
    }

    MapShapeData LineLook(const MapTemplate& look) {
        MapShapeData shape;
        shape.isHidden = m_styles.Flag(look["Hidden"]).value_or(false);
        shape.border = m_styles.LineOf(look.style, UsualOutline, UsualWidth);
        if (const Color color = m_styles.ColorOf(
                look.style,
                {StyleProperty::Color, StyleProperty::BackgroundColor, StyleProperty::BorderColor});
            IsVisible(color)) {
            shape.border.color = color;
        }
        shape.border.color = Fainter(shape.border.color, m_transparency);
        shape.border.width = static_cast<float>(m_styles.Points(look["Width"], UsualLineWidth));
        return shape;
    }

    MapMark Mark(const MapTemplate& look) {
        MapMark mark;
        mark.shape = m_styles.Text(look.marker["MapMarkerStyle"]);
        mark.size = m_styles.Points(look["Size"], UsualMarkSize);
        const Color fill = m_styles.ColorOf(look.style, {StyleProperty::BackgroundColor});
        mark.fill = Fainter(IsVisible(fill) ? fill : UsualMark, m_transparency);
        mark.border = m_styles.LineOf(look.style, UsualOutline, UsualWidth);
        mark.border.color = Fainter(mark.border.color, m_transparency);
        return mark;
    }

    void Label(const MapTemplate& look, MapShapeData& shape) {
        shape.label = m_styles.Text(look["Label"]);
        if (shape.label.empty()) {
            return;
        }
        shape.labelPlacement = m_styles.Text(look["LabelPlacement"]);
        const std::string mode = m_styles.Text(look["ShowLabel"]);
        shape.labelMode = EqualNoCase(mode, "True")    ? MapLabelMode::Always
                          : EqualNoCase(mode, "False") ? MapLabelMode::Never
                                                       : MapLabelMode::IfItFits;
        shape.textStyle = m_styles.TextStyle(look.style, 8);
        shape.ownLabelColor = look.style.Find(StyleProperty::Color) != nullptr;
    }

    // The shapes of this layer that the map's view is about.
    void Viewed() {
        Enter(m_around);
        if (m_view.kind != MapView::Kind::Element || m_styles.Text(m_view["LayerName"]) != m_layer.name) {
            return;
        }
        for (std::size_t i = 0; i < m_result.data.shapes.size(); ++i) {
            m_result.data.shapes[i].isViewed =
                std::all_of(m_view.bindings.begin(), m_view.bindings.end(), [&](const auto& binding) {
                    return MapBindingKey(m_shapes.FieldOf(i, binding.first), m_culture) ==
                           MapBindingKey(m_styles.Get(binding.second), m_culture);
                });
        }
    }

    // A constant that begins with # names a field of the shapes.
    Value RuleValue(const Expr& source, std::size_t shape) {
        if (!source.IsExpression() && source.source.starts_with('#')) {
            return m_shapes.FieldOf(shape, std::string_view(source.source).substr(1));
        }
        if (IsPlain(shape)) {
            return {};
        }
        Enter(m_shapes.scopes[shape]);
        return m_styles.Get(source);
    }

    MapDistribution DistributionOf(const MapRule& rule) {
        Enter(m_around);
        MapDistribution distribution;
        distribution.type = m_styles.Text(rule["DistributionType"]);
        distribution.count = static_cast<int>(
            std::clamp(m_styles.Number(rule["BucketCount"]).value_or(distribution.count), 1.0, 100.0));
        if (!EqualNoCase(distribution.type, "Custom")) {
            distribution.start = m_styles.Number(rule["StartValue"]);
            distribution.end = m_styles.Number(rule["EndValue"]);
        }
        for (const MapPart& bucket : rule.buckets) {
            distribution.custom.push_back(
                {m_styles.Get(bucket["StartValue"]), m_styles.Get(bucket["EndValue"])});
        }
        return distribution;
    }

    void Rule(const MapRule& rule, bool isOfMarks) {
        std::vector<MapShapeData>& shapes = m_result.data.shapes;
        MapRuleResult result;
        result.rule = &rule;
        const Expr& source = rule["DataValue"];
        if (source.IsSet()) {
            std::vector<Value> values;
            for (std::size_t i = 0; i < shapes.size(); ++i) {
                m_reader.Place().CheckBounds();
                values.push_back(RuleValue(source, i));
                if (shapes[i].value.IsNull()) {
                    shapes[i].value = values.back();
                }
            }
            result.buckets = SortIntoBuckets(values, DistributionOf(rule), m_culture);
        } else {  // each shape has its own
            result.buckets.isNumeric = false;
            for (std::size_t i = 0; i < shapes.size(); ++i) {
                result.buckets.list.push_back({});
                result.buckets.of.push_back(static_cast<int>(i));
            }
        }
        Enter(m_around);
        Looks(rule, result.buckets.list.size(), result);
        result.sample = Sample(isOfMarks);
        result.legendText = m_styles.Text(rule["LegendText"]);
        for (std::size_t i = 0; i < shapes.size(); ++i) {
            const MapOwnLook* own = OwnLook(i);
            const bool isOwn = own && (isOfMarks ? own->markers.isSet : own->shapeTemplate.isSet);
            if (result.buckets.of[i] >= 0 && !isOwn) {
                Apply(result, At(result.buckets.of[i]), isOfMarks, shapes[i]);
            }
        }
        if (!source.IsSet()) {
            result.buckets.list.clear();  // nothing to explain in a legend
        }
        m_result.rules.push_back(std::move(result));
    }

    Color NamedColor(const Expr& source, Color otherwise) {
        Color color = otherwise;
        ParseColor(m_styles.Text(source), color);
        return color;
    }

    void Looks(const MapRule& rule, std::size_t count, MapRuleResult& result) {
        constexpr Color Green = 0xFF008000, Yellow = 0xFFFFFF00, Red = 0xFFFF0000;
        switch (rule.kind) {
            case MapRule::Kind::ColorRange:
                result.colors = RangeColors(NamedColor(rule["StartColor"], Green),
                                            NamedColor(rule["MiddleColor"], Yellow),
                                            NamedColor(rule["EndColor"], Red), count);
                break;
            case MapRule::Kind::ColorPalette:
                result.colors = Repeated(PaletteOf(m_styles.Text(rule["Palette"])), count);
                break;
            case MapRule::Kind::CustomColor: {
                std::vector<Color> colors;
                for (const Expr& color : rule.colors) {
                    colors.push_back(NamedColor(color, Transparent));
                }
                result.colors = Repeated(colors, count);
                break;
            }
            case MapRule::Kind::Size:
                result.sizes = RangeSizes(m_styles.Points(rule["StartSize"], UsualMarkSize),
                                          m_styles.Points(rule["EndSize"], 3 * UsualMarkSize), count);
                break;
            case MapRule::Kind::Marker: {
                std::vector<std::string> markers;
                for (const MapPart& marker : rule.markers) {
                    markers.push_back(m_styles.Text(marker["MapMarkerStyle"]));
                }
                result.markers = Repeated(markers, count);
                break;
            }
        }
        for (Color& color : result.colors) {
            color = Fainter(color, m_transparency);
        }
    }

    template <typename One>
    static std::vector<One> Repeated(const std::vector<One>& list, std::size_t count) {
        std::vector<One> repeated;
        for (std::size_t i = 0; i < count && !list.empty(); ++i) {
            repeated.push_back(list[i % list.size()]);
        }
        return repeated;
    }

    MapLegendEntry Sample(bool isOfMarks) {
        MapLegendEntry entry;
        if (isOfMarks) {
            entry.kind = MapLayerKind::Point;
            entry.mark = Mark(m_plainMarkers);
        } else {
            entry.kind = m_layer.kind;
            const MapShapeData look =
                m_layer.kind == MapLayerKind::Line ? LineLook(m_plainShape) : PolygonLook(m_plainShape);
            entry.color = look.fill;
            entry.border = look.border;
        }
        return entry;
    }

    static void Apply(const MapRuleResult& result, std::size_t bucket, bool isOfMarks, MapShapeData& shape) {
        if (bucket < result.colors.size()) {
            if (isOfMarks) {
                shape.mark->fill = result.colors[bucket];
            } else if (result.sample.kind == MapLayerKind::Line) {
                shape.border.color = result.colors[bucket];
            } else {
                shape.fill = result.colors[bucket];
            }
        }
        if (bucket < result.sizes.size()) {
            if (isOfMarks) {
                shape.mark->size = result.sizes[bucket];
            } else {
                shape.border.width = static_cast<float>(result.sizes[bucket]);
            }
        }
        if (bucket < result.markers.size() && isOfMarks) {
            shape.mark->shape = result.markers[bucket];
        }
    }

    const MapLayer& m_layer;
    const MapView& m_view;
    const MapLayerShapes m_shapes;
    const Scope m_around;
    const PartStyles& m_styles;
    PropertyReader& m_reader;
    const Culture& m_culture;
    const MapTemplate m_plainShape, m_plainMarkers;
    double m_transparency = 0;  // 0 to 1
    const bool m_hasExpressions;
    std::optional<MapShapeData> m_plainLook;
    MapLayerResult m_result;
};

}  // namespace

MapLayerResult EvaluateMapLayer(MapPlan& plan, std::size_t layer, const std::vector<MapRegion>& regions,
                                const Scope& around, const PartStyles& styles, PropertyReader& reader,
                                spatial::Allowance& allowance) {
    MapLayerShapes shapes = LoadMapShapes(plan, layer, regions, around, styles, reader, allowance);
    const Map& map = *plan.definition;
    return LayerEvaluator(map.layers[layer], map.viewport.view, std::move(shapes), around, styles, reader)
        .Evaluate();
}

}  // namespace rdl::layout
