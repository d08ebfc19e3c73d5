// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/map/map_reader.h"

#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

struct LayerName {
    std::string_view name;
    MapLayerKind kind;
};

constexpr LayerName LayerNames[] = {{"MapPolygonLayer", MapLayerKind::Polygon},
                                    {"MapLineLayer", MapLayerKind::Line},
                                    {"MapPointLayer", MapLayerKind::Point}};

class MapReader {
 public:
    MapReader(Context& context, const XmlElement& element, Map& map)
        : m_context(context), m_element(element), m_where(PlaceOf(element)), m_map(map) {}

    void Read() {
        Each("MapDataRegions", "MapDataRegion", [this](const XmlElement& child) { Region(child); });
        Viewport();
        Layers();
        Each("MapLegends", "MapLegend",
             [this](const XmlElement& child) { m_map.legends.push_back(Legend(child, "MapLegendTitle")); });
        Each("MapTitles", "MapTitle", [this](const XmlElement& child) {
            const std::string where = Within(child);
            m_map.titles.push_back(
                {Text(child, "Text", where), m_context.ChildExpr(child, "DockOutsideViewport", where)});
        });
        if (const XmlElement* scale = m_element.Child("MapColorScale")) {
            m_map.colorScale = Legend(*scale, "MapColorScaleTitle");
        }
        m_map.distanceScale = ReadMapChild(m_context, m_element, "MapDistanceScale", m_where);
    }

 private:
    std::string Within(const XmlElement& child) const { return m_where + ", " + PlaceOf(child); }

    void Each(std::string_view collection, std::string_view name,
              const std::function<void(const XmlElement&)>& read) {
        ForEachMapChild(m_context, m_element.Child(collection), name, m_where, read);
    }

    void Region(const XmlElement& element) {
        auto data = std::make_unique<Tablix>();
        data->name = m_context.NameOf(element);
        data->place = Within(element);
        data->line = element.line;
        data->dataSetName = element.ChildText("DataSetName");
        data->filters = ReadFilters(m_context, element, data->place);
        if (const XmlElement* member = element.Child("MapMember")) {
            data->rowMembers.push_back(ReadMember(m_context, *member, "MapMember", m_where));
        } else {
            data->rowMembers.emplace_back();
        }
        data->columnMembers.emplace_back();
        data->columnWidths.assign(1, 0);
        data->rows.resize(LeafCount(data->rowMembers));
        m_map.regions.push_back(std::move(data));
    }

    void Viewport() {
        const XmlElement* element = m_element.Child("MapViewport");
        if (!element) {
            return;
        }
        MapViewport& viewport = m_map.viewport;
        const std::string where = Within(*element);
        ReadMapPart(m_context, *element, where, viewport);
        viewport.limits = ReadMapChild(m_context, *element, "MapLimits", where);
        viewport.meridians = ReadMapChild(m_context, *element, "MapMeridians", where);
        viewport.parallels = ReadMapChild(m_context, *element, "MapParallels", where);
        viewport.location = ReadMapChild(m_context, *element, "MapLocation", where);
        viewport.size = ReadMapChild(m_context, *element, "MapSize", where);
        for (const auto& [name, kind] : {std::pair{"MapCustomView", MapView::Kind::Custom},
                                         {"MapDataBoundView", MapView::Kind::DataBound},
                                         {"MapElementView", MapView::Kind::Element}}) {
            if (const XmlElement* view = element->Child(name)) {
                viewport.view.kind = kind;
                ReadMapPart(m_context, *view, where + ", " + name, viewport.view);
                viewport.view.bindings = ReadMapBindings(m_context, *view, where + ", " + name);
            }
        }
    }

    void Layers() {
        constexpr std::size_t MostLayers = 50;
        const XmlElement* layers = m_element.Child("MapLayers");
        if (!layers) {
            return;
        }
        spatial::Allowance allowance;
        for (const XmlElement& child : layers->children) {
            for (const LayerName& row : LayerNames) {
                if (child.name == row.name) {
                    m_map.layers.push_back(
                        ReadMapLayer(m_context, child, row.kind, Within(child), allowance, m_map));
                }
            }
        }
        if (m_map.layers.size() > MostLayers) {
            m_context.Fail(*layers, m_where, "it has more than " + std::to_string(MostLayers) + " layers");
        }
    }

    ChartText Text(const XmlElement& element, std::string_view property, const std::string& where) {
        ChartText text;
        text.caption = m_context.ChildExpr(element, property, where);
        text.position = m_context.ChildExpr(element, "Position", where);
        text.hidden = m_context.ChildExpr(element, "Hidden", where);
        text.style = ReadStyle(m_context, element, where);
        return text;
    }

    MapLegend Legend(const XmlElement& element, std::string_view title) {
        MapLegend legend;
        const std::string where = Within(element);
        ReadMapPart(m_context, element, where, legend);
        if (const XmlElement* child = element.Child(title)) {
            legend.title = Text(*child, "Caption", PropertyOf(where, title));
        }
        return legend;
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    Map& m_map;
};

}  // namespace

void ReadMapPart(Context& context, const XmlElement& element, const std::string& where, MapPart& part) {
    part.isSet = true;
    part.name = element.AttributeOf("Name");
    for (const XmlElement& child : element.children) {
        if (child.IsLeaf() && child.name != "Style") {
            Expr value = context.MakeExpr(child, PropertyOf(where, child.name));
            if (value.IsSet()) {
                part.properties.emplace_back(child.name, std::move(value));
            }
        }
    }
    part.style = ReadStyle(context, element, where);
}

MapPart ReadMapChild(Context& context, const XmlElement& element, std::string_view name,
                     const std::string& where) {
    MapPart part;
    if (const XmlElement* child = element.Child(name)) {
        ReadMapPart(context, *child, PropertyOf(where, name), part);
    }
    return part;
}

std::vector<std::pair<std::string, Expr>> ReadMapBindings(Context& context, const XmlElement& element,
                                                          const std::string& where) {
    std::vector<std::pair<std::string, Expr>> bindings;
    ForEachMapChild(context, element.Child("MapBindingFieldPairs"), "MapBindingFieldPair", where,
                    [&](const XmlElement& pair) {
                        bindings.emplace_back(pair.ChildText("FieldName"),
                                              context.ChildExpr(pair, "BindingExpression", where));
                    });
    return bindings;
}

void ForEachMapChild(Context& context, const XmlElement* collection, std::string_view name,
                     const std::string& where, const std::function<void(const XmlElement&)>& read) {
    constexpr std::size_t Most = 200;
    if (!collection) {
        return;
    }
    std::size_t count = 0;
    for (const XmlElement& child : collection->children) {
        if (child.name == name) {
            if (++count > Most) {
                context.Fail(child, where,
                             "it has more than " + std::to_string(Most) + " elements " + std::string(name) +
                                 " in one place");
            }
            read(child);
        }
    }
}

ItemPtr ReadMap(Context& context, const XmlElement& element, Extent container) {
    auto map = std::make_unique<Map>();
    ReadBasics(context, element, *map, container);
    MapReader(context, element, *map).Read();
    return map;
}

}  // namespace rdl
