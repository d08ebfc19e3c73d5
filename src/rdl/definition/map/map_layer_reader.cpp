// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <charconv>

#include "rdl/definition/identifier.h"
#include "rdl/definition/map/map_reader.h"

namespace rdl {
namespace {

struct RuleName {
    std::string_view name;
    MapRule::Kind kind;
};

constexpr RuleName RuleNames[] = {{"MapColorRangeRule", MapRule::Kind::ColorRange},
                                  {"MapColorPaletteRule", MapRule::Kind::ColorPalette},
                                  {"MapCustomColorRule", MapRule::Kind::CustomColor},
                                  {"MapSizeRule", MapRule::Kind::Size},
                                  {"MapMarkerRule", MapRule::Kind::Marker}};

// The element names of one kind of layer.
struct LayerElements {
    std::string_view shapes, shape, shapeTemplate, usesOwn, rules;
};

LayerElements ElementsOf(MapLayerKind kind) {
    switch (kind) {
        case MapLayerKind::Line:
            return {"MapLines", "MapLine", "MapLineTemplate", "UseCustomLineTemplate", "MapLineRules"};
        case MapLayerKind::Point:
            return {"MapPoints", "MapPoint", "", "UseCustomPointTemplate", "MapPointRules"};
        case MapLayerKind::Polygon:
            break;
    }
    return {"MapPolygons", "MapPolygon", "MapPolygonTemplate", "UseCustomPolygonTemplate", "MapPolygonRules"};
}

class LayerReader {
 public:
    LayerReader(Context& context, const XmlElement& element, const std::string& where, MapLayerKind kind,
                spatial::Allowance& allowance, Map& map)
        : m_context(context),
          m_element(element),
          m_where(where),
          m_elements(ElementsOf(kind)),
          m_allowance(allowance),
          m_map(map) {
        m_layer.kind = kind;
    }

    MapLayer Read() {
        ReadMapPart(m_context, m_element, m_where, m_layer);
        Template(m_elements.shapeTemplate, m_element, m_layer.shapeTemplate);
        Markers(m_element, m_layer.markers);
        Rules(m_elements.rules, m_layer.kind == MapLayerKind::Point ? m_layer.markerRules : m_layer.rules);
        if (m_layer.kind == MapLayerKind::Polygon) {
            Rules("MapCenterPointRules", m_layer.markerRules);
        }
        m_layer.bindings = ReadMapBindings(m_context, m_element, m_where);
        m_layer.region = RegionNamed(m_element.ChildText("MapDataRegionName"));
        Shapes();
        return std::move(m_layer);
    }

 private:
    int RegionNamed(const std::string& name) {
        if (name.empty()) {
            return -1;
        }
        for (std::size_t i = 0; i < m_map.regions.size(); ++i) {
            if (m_map.regions[i]->name == name) {
                return static_cast<int>(i);
            }
        }
        m_context.Fail(m_element, m_where, "the map has no data region \"" + name + "\"");
    }

    void Template(std::string_view name, const XmlElement& owner, MapTemplate& made) {
        if (const XmlElement* element = owner.Child(name)) {
            const std::string where = PropertyOf(m_where, element->name);
            ReadMapPart(m_context, *element, where, made);
            made.marker = ReadMapChild(m_context, *element, "MapMarker", where);
        }
    }

    void Markers(const XmlElement& owner, MapTemplate& made) {
        for (const std::string_view name :
             {"MapCenterPointTemplate", "MapPointTemplate", "MapMarkerTemplate"}) {
            Template(name, owner, made);
        }
    }

    void Rules(std::string_view name, std::vector<MapRule>& rules) {
        const XmlElement* collection = m_element.Child(name);
        if (!collection) {
            return;
        }
        for (const XmlElement& child : collection->children) {
            for (const RuleName& row : RuleNames) {
                if (child.name == row.name) {
                    rules.push_back(Rule(child, row.kind));
                }
            }
        }
    }

    MapRule Rule(const XmlElement& element, MapRule::Kind kind) {
        MapRule rule;
        rule.kind = kind;
        const std::string where = PropertyOf(m_where, element.name);
        ReadMapPart(m_context, element, where, rule);
        ForEachMapChild(m_context, element.Child("MapCustomColors"), "MapCustomColor", where,
                        [&](const XmlElement& child) {
                            rule.colors.push_back(m_context.MakeExpr(child, where + ", MapCustomColor"));
                        });
        const auto parts = [&](std::string_view collection, std::string_view name,
                               std::vector<MapPart>& made) {
            ForEachMapChild(m_context, element.Child(collection), name, where, [&](const XmlElement& child) {
                ReadMapPart(m_context, child, PropertyOf(where, name), made.emplace_back());
            });
        };
        parts("MapBuckets", "MapBucket", rule.buckets);
        parts("MapMarkers", "MapMarker", rule.markers);
        return rule;
    }

    void Shapes() {
        if (const XmlElement* shapes = m_element.Child(m_elements.shapes)) {
            NumericFields();
            m_layer.embedded = std::make_shared<spatial::Shapes>();
            for (const XmlElement& child : shapes->children) {
                if (child.name == m_elements.shape) {
                    Shape(child);
                }
            }
        } else if (const XmlElement* file = m_element.Child("MapShapefile")) {
            m_layer.file = m_context.ChildExpr(*file, "Source", m_where + ", MapShapefile");
        } else if (const XmlElement* set = m_element.Child("MapSpatialDataSet")) {
            SpatialDataSet(*set);
        } else if (const XmlElement* region = m_element.Child("MapSpatialDataRegion")) {
            if (m_layer.region < 0) {
                m_context.Fail(*region, m_where, "it names no data region");
            }
            m_layer.source = m_layer.region;
            m_layer.vectorData =
                m_context.ChildExpr(*region, "VectorData", m_where + ", MapSpatialDataRegion");
        }
    }

    void NumericFields() {
        ForEachMapChild(m_context, m_element.Child("MapFieldDefinitions"), "MapFieldDefinition", m_where,
                        [this](const XmlElement& child) {
                            const std::string type = child.ChildText("DataType");
                            if (EqualNoCase(type, "Integer") || EqualNoCase(type, "Float") ||
                                EqualNoCase(type, "Decimal")) {
                                m_numeric.push_back(child.ChildText("Name"));
                            }
                        });
    }

    Value FieldValue(const std::string& name, const std::string& text) const {
        double number = 0;
        const char* const end = text.data() + text.size();
        for (const std::string& numeric : m_numeric) {
            if (numeric == name) {
                const auto [stop, failure] = std::from_chars(text.data(), end, number);
                return failure == std::errc() && stop == end ? Value::Real(number) : Value();
            }
        }
        return Value::Text(text);
    }

    void Shape(const XmlElement& element) {
        spatial::Shapes& all = *m_layer.embedded;
        spatial::Shapes::Shape shape;
        const std::string where =
            m_where + ", " + std::string(element.name) + " " + std::to_string(all.shapes.size() + 1);
        try {
            m_allowance.TakeShape();
            const XmlElement* data = element.Child("VectorData");
            shape.geometry = spatial::ReadText(data ? data->text : std::string_view(), m_allowance);
        } catch (const Error& error) {
            m_context.Fail(element, where + ", VectorData", error.what());
        }
        ForEachMapChild(m_context, element.Child("MapFields"), "MapField", where,
                        [&](const XmlElement& child) {
                            const std::string name = child.ChildText("Name");
                            const std::size_t place = FieldNamed(name);
                            shape.values.resize(std::max(shape.values.size(), place + 1));
                            shape.values[place] = FieldValue(name, child.ChildText("Value"));
                        });
        OwnLook(element, all.shapes.size(), where);
        all.shapes.push_back(std::move(shape));
    }

    std::size_t FieldNamed(const std::string& name) {
        std::vector<std::string>& names = m_layer.embedded->fieldNames;
        const auto found = std::find(names.begin(), names.end(), name);
        const auto place = static_cast<std::size_t>(found - names.begin());
        if (found == names.end()) {
            constexpr std::size_t Most = 200;
            if (names.size() == Most) {
                m_context.Fail(m_element, m_where,
                               "its shapes have more than " + std::to_string(Most) + " fields");
            }
            names.push_back(name);
        }
        return place;
    }

    void OwnLook(const XmlElement& element, std::size_t shape, const std::string& where) {
        const bool isPoint = m_layer.kind == MapLayerKind::Point;
        const bool own = m_context.Flag(element, m_elements.usesOwn, where);
        const bool ownCentre = m_layer.kind == MapLayerKind::Polygon &&
                               m_context.Flag(element, "UseCustomCenterPointTemplate", where);
        if (!own && !ownCentre) {
            return;
        }
        MapOwnLook& look = m_layer.looks.emplace_back();
        look.shape = shape;
        if (own && !isPoint) {
            Template(m_elements.shapeTemplate, element, look.shapeTemplate);
        }
        if (isPoint || ownCentre) {
            Markers(element, look.markers);
        }
    }

    // The value of a field of the spatial data set.
    Expr FieldOf(const XmlElement& element, std::string_view name, const std::string& where) {
        const std::string_view trimmed = Trimmed(name);
        if (!trimmed.starts_with('=') && !IsIdentifier(trimmed)) {
            m_context.Fail(element, where, "\"" + std::string(trimmed) + "\" is no name of a field");
        }
        const std::string source =
            trimmed.starts_with('=') ? std::string(trimmed) : "=Fields!" + std::string(trimmed) + ".Value";
        XmlElement made;
        made.text = source;
        made.line = element.line;
        return m_context.MakeExpr(made, where);
    }

    // The rows of the data set are the instances of a region with a detail group.
    void SpatialDataSet(const XmlElement& element) {
        const std::string where = m_where + ", MapSpatialDataSet";
        auto data = std::make_unique<Tablix>();
        data->place = where;
        data->line = element.line;
        data->dataSetName = element.ChildText("DataSetName");
        data->rowMembers.emplace_back().group.emplace();
        data->columnMembers.emplace_back();
        data->columnWidths.assign(1, 0);
        data->rows.resize(1);
        m_layer.source = static_cast<int>(m_map.regions.size());
        m_map.regions.push_back(std::move(data));
        m_layer.vectorData = FieldOf(element, element.ChildText("SpatialField"), where + ", SpatialField");
        ForEachMapChild(
            m_context, element.Child("MapFieldNames"), "MapFieldName", where, [&](const XmlElement& child) {
                const std::string name(Trimmed(child.text));
                m_layer.sourceFields.emplace_back(name, FieldOf(child, name, where + ", MapFieldName"));
            });
        // Fields that the layer is bound by need not be named twice.
        for (const auto& [name, expression] : m_layer.bindings) {
            bool isKnown = false;
            for (const auto& [known, value] : m_layer.sourceFields) {
                isKnown = isKnown || known == name;
            }
            if (!isKnown) {
                m_layer.sourceFields.emplace_back(name, FieldOf(element, name, where));
            }
        }
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    const LayerElements m_elements;
    spatial::Allowance& m_allowance;
    Map& m_map;
    MapLayer m_layer;
    std::vector<std::string> m_numeric;  // names of fields with numbers
};

}  // namespace

MapLayer ReadMapLayer(Context& context, const XmlElement& element, MapLayerKind kind,
                      const std::string& where, spatial::Allowance& allowance, Map& map) {
    return LayerReader(context, element, where, kind, allowance, map).Read();
}

}  // namespace rdl
