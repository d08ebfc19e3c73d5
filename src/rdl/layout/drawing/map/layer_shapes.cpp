// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/layer_shapes.h"

#include <algorithm>
#include <charconv>
#include <unordered_map>

#include "rdl/layout/region/property_reader.h"
#include "rdl/spatial/shapefile.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error_text.h"
#include "rdl/values/index.h"

namespace rdl::layout {
namespace {

class ShapeLoader {
 public:
    ShapeLoader(MapPlan& plan, std::size_t index, const std::vector<MapRegion>& regions, const Scope& around,
                const PartStyles& styles, PropertyReader& reader, spatial::Allowance& allowance)
        : m_plan(plan),
          m_index(index),
          m_layer(plan.definition->layers[index]),
          m_regions(regions),
          m_around(around),
          m_styles(styles),
          m_reader(reader),
          m_culture(reader.Place().CurrentCulture()),
          m_allowance(allowance) {}

    MapLayerShapes Load() {
        Enter(m_around);
        Shapes();
        Bind();
        return std::move(m_made);
    }

 private:
    [[noreturn]] void Fail(const std::string& what) const {
        throw Error("Map \"" + m_plan.definition->name + "\", layer \"" + WithoutMarks(m_layer.name) +
                    "\": " + what);
    }

    void Enter(const Scope& scope) { m_reader.Place().Enter(scope); }

    Scope ScopeOf(int region, const Leaf& leaf) const {
        return {m_regions[At(region)].region.get(), leaf.group, -1, leaf.instance, 0};
    }

    void Shapes() {
        MapPlan::Kept& kept = m_plan.kept[m_index];
        const std::string file = m_styles.Text(m_layer.file);
        try {
            if (m_layer.embedded) {
                m_made.source = m_layer.embedded;
            } else if (!file.empty()) {
                if (!kept.shapes || kept.file != file) {
                    kept.shapes = std::make_shared<spatial::Shapes>(FromFile(file));
                    kept.file = file;
                } else {
                    Count(*kept.shapes);
                }
                m_made.source = kept.shapes;
            } else if (m_layer.source >= 0) {
                m_made.source = std::make_shared<spatial::Shapes>(FromRegion());
            } else {
                m_made.source = std::make_shared<spatial::Shapes>();
            }
        } catch (const Error& error) {
            Fail(error.what());
        }
    }

    // Shapes that were read for an instance of the map before count for this one too.
    void Count(const spatial::Shapes& shapes) {
        for (const spatial::Shapes::Shape& shape : shapes.shapes) {
            std::size_t positions = shape.geometry.points.size();
            for (const auto* lists : {&shape.geometry.rings, &shape.geometry.lines}) {
                for (const spatial::Positions& list : *lists) {
                    positions += list.size();
                }
            }
            m_allowance.TakeShape();
            m_allowance.TakePositions(positions);
        }
    }

    // The table of fields is beside the shapes; without one they have none.
    spatial::Shapes FromFile(const std::string& file) {
        const std::string shapes = m_reader.FileNamed(file);
        std::string table;
        const std::size_t dot = file.rfind('.');
        try {
            table = m_reader.FileNamed((dot == std::string::npos ? file : file.substr(0, dot)) + ".dbf");
        } catch (const Error&) {
            table.clear();
        }
        try {
            return spatial::ReadShapefile(shapes, table, m_allowance);
        } catch (const Error& error) {
            throw Error("the file \"" + WithoutMarks(file) + "\": " + error.what());
        }
    }

    spatial::Geometry GeometryOf(const Value& value) const {
        if (value.kind() == Kind::Bytes) {
            return spatial::ReadBinary(value.AsText(), m_allowance);
        }
        if (value.IsText()) {
            return spatial::ReadText(value.AsText(), m_allowance);
        }
        if (value.IsError()) {
            throw Error(WithoutMarks(value.AsText()));
        }
        if (!value.IsNull()) {
            throw Error("the value " + WithoutMarks(ToText(value, m_culture)) + " is no shape");
        }
        return {};
    }

    // An error names the row of the region, from 1.
    spatial::Shapes FromRegion() {
        spatial::Shapes shapes;
        for (const auto& [name, value] : m_layer.sourceFields) {
            shapes.fieldNames.push_back(name);
        }
        for (const Leaf& leaf : m_regions[At(m_layer.source)].leaves) {
            Enter(ScopeOf(m_layer.source, leaf));
            m_allowance.TakeShape();
            spatial::Shapes::Shape shape;
            try {
                shape.geometry = GeometryOf(m_styles.Get(m_layer.vectorData));
            } catch (const Error& error) {
                throw Error("row " + std::to_string(shapes.shapes.size() + 1) + ": " + error.what());
            }
            for (const auto& [name, field] : m_layer.sourceFields) {
                shape.values.push_back(m_styles.Get(field));
            }
            shapes.shapes.push_back(std::move(shape));
        }
        return shapes;
    }

    // Finds the group instance of each shape.
    void Bind() {
        const std::size_t count = m_made.source->shapes.size();
        m_made.scopes.assign(count, m_around);
        m_made.isBound.assign(count, m_layer.region < 0 && m_layer.source >= 0);
        m_made.names.resize(count);
        const bool isOwn = m_layer.source >= 0 && (m_layer.region < 0 || m_layer.region == m_layer.source);
        if (isOwn) {
            const auto& leaves = m_regions[At(m_layer.source)].leaves;
            for (std::size_t i = 0; i < count; ++i) {
                m_made.scopes[i] = ScopeOf(m_layer.source, leaves[i]);
                m_made.isBound[i] = true;
            }
            return;
        }
        if (m_layer.region < 0 || m_layer.bindings.empty()) {
            return;
        }
        std::unordered_map<std::string, const Leaf*> leaves;
        for (const Leaf& leaf : m_regions[At(m_layer.region)].leaves) {
            Enter(ScopeOf(m_layer.region, leaf));
            std::string key;
            for (const auto& [name, expression] : m_layer.bindings) {
                key += MapBindingKey(m_styles.Get(expression), m_culture) + '\n';
            }
            leaves.emplace(std::move(key), &leaf);
        }
        for (std::size_t i = 0; i < count; ++i) {
            std::string key;
            for (const auto& [name, expression] : m_layer.bindings) {
                const Value value = m_made.FieldOf(i, name);
                key += MapBindingKey(value, m_culture) + '\n';
                m_made.names[i] += (m_made.names[i].empty() ? "" : ", ") + ToText(value, m_culture);
            }
            const auto found = leaves.find(key);
            if (found != leaves.end()) {
                m_made.scopes[i] = ScopeOf(m_layer.region, *found->second);
                m_made.isBound[i] = true;
            }
        }
    }

    MapPlan& m_plan;
    const std::size_t m_index;
    const MapLayer& m_layer;
    const std::vector<MapRegion>& m_regions;
    const Scope m_around;
    const PartStyles& m_styles;
    PropertyReader& m_reader;
    const Culture& m_culture;
    spatial::Allowance& m_allowance;
    MapLayerShapes m_made;
};

}  // namespace

Value MapLayerShapes::FieldOf(std::size_t shape, std::string_view name) const {
    const auto& values = source->shapes[shape].values;
    for (std::size_t i = 0; i < std::min(source->fieldNames.size(), values.size()); ++i) {
        if (EqualNoCase(source->fieldNames[i], name)) {
            return values[i];
        }
    }
    return {};
}

bool MapLayerShapes::HasField(std::string_view name) const {
    return std::any_of(source->fieldNames.begin(), source->fieldNames.end(),
                       [name](const std::string& known) { return EqualNoCase(known, name); });
}

std::string MapBindingKey(const Value& value, const Culture& culture) {
    if (!value.IsNumber()) {
        return std::string(Trimmed(ToText(value, culture)));
    }
    char digits[32];
    const auto [end, failure] = std::to_chars(digits, digits + sizeof digits, value.AsDouble());
    return {digits, end};
}

MapLayerShapes LoadMapShapes(MapPlan& plan, std::size_t layer, const std::vector<MapRegion>& regions,
                             const Scope& around, const PartStyles& styles, PropertyReader& reader,
                             spatial::Allowance& allowance) {
    return ShapeLoader(plan, layer, regions, around, styles, reader, allowance).Load();
}

}  // namespace rdl::layout
