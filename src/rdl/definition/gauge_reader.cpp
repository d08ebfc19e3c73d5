// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/gauge_reader.h"

#include <optional>

#include "rdl/definition/gauge.h"
#include "rdl/definition/group_reader.h"
#include "rdl/definition/regions.h"
#include "rdl/definition/style_reader.h"

namespace rdl {
namespace {

constexpr std::size_t MostItems = 100, MostParts = 200;  // of a panel; of one kind in a scale

struct Collection {
    std::string_view name, item;
    GaugeItemKind kind;
};

constexpr Collection Collections[] = {
    {"RadialGauges", "RadialGauge", GaugeItemKind::Radial},
    {"LinearGauges", "LinearGauge", GaugeItemKind::Linear},
    {"StateIndicators", "StateIndicator", GaugeItemKind::StateIndicator},
    {"NumericIndicators", "NumericIndicator", GaugeItemKind::NumericIndicator},
    {"GaugeImages", "GaugeImage", GaugeItemKind::Image},
    {"GaugeLabels", "GaugeLabel", GaugeItemKind::Label},
};

constexpr std::pair<std::string_view, GaugeFormula> Formulas[] = {
    {"None", GaugeFormula::None},        {"Average", GaugeFormula::Average}, {"Linear", GaugeFormula::Linear},
    {"Max", GaugeFormula::Max},          {"Min", GaugeFormula::Min},         {"Median", GaugeFormula::Median},
    {"Variance", GaugeFormula::Variance}};

constexpr std::pair<std::string_view, Image::Source> PictureSources[] = {
    {"External", Image::Source::External},
    {"Embedded", Image::Source::Embedded},
    {"Database", Image::Source::Database}};

class GaugeReader {
 public:
    GaugeReader(Context& context, const XmlElement& element, GaugePanel& panel)
        : m_context(context), m_element(element), m_where(PlaceOf(element)), m_panel(panel) {}

    void Read() {
        Tablix& data = m_panel.data;
        data.name = m_panel.name;
        data.place = m_panel.place;
        data.dataSetName = m_element.ChildText("DataSetName");
        data.filters = ReadFilters(m_context, m_element, m_where);
        data.sorts = ReadSorts(m_context, m_element, m_where);
        if (const XmlElement* member = m_element.Child("GaugeMember")) {
            data.rowMembers.push_back(ReadMember(m_context, *member, "GaugeMember", m_where));
        } else {
            data.rowMembers.emplace_back();
        }
        data.columnMembers.emplace_back();
        data.columnWidths.assign(1, 0);
        data.rows.resize(LeafCount(data.rowMembers));
        m_panel.panel.properties.emplace_back("AutoLayout",
                                              m_context.ChildExpr(m_element, "AutoLayout", m_where));
        m_panel.frame = Frame(m_element, m_where);
        for (const Collection& collection : Collections) {
            Items(collection);
        }
        for (std::size_t i = 0; i < m_panel.items.size(); ++i) {
            FindParent(i);
        }
    }

 private:
    template <typename Made, typename Read>
    std::vector<Made> Each(const XmlElement* collection, std::string_view name, Read read) {
        std::vector<Made> made;
        if (!collection) {
            return made;
        }
        for (const XmlElement& child : collection->children) {
            if (child.name != name) {
                continue;
            }
            if (made.size() == MostParts) {
                m_context.Fail(child, m_where,
                               "it has more than " + std::to_string(MostParts) + " elements " +
                                   std::string(child.name) + " in one place");
            }
            made.push_back(read(child));
        }
        return made;
    }

    void Items(const Collection& collection) {
        const XmlElement* element = m_element.Child(collection.name);
        for (GaugeItem& item : Each<GaugeItem>(element, collection.item, [&](const XmlElement& child) {
                 return Item(child, collection.kind);
             })) {
            if (m_panel.items.size() == MostItems) {
                m_context.Fail(m_element, m_where,
                               "it has more than " + std::to_string(MostItems) + " gauges");
            }
            m_parents.push_back(std::string());
            for (const auto& [name, value] : item.properties) {
                if (name == "ParentItem") {
                    m_parents.back() = value.source;
                }
            }
            m_paths.push_back(std::string(collection.name) + "." + item.name);
            m_panel.items.push_back(std::move(item));
        }
    }

    // A parent is named as RadialGauges.Name, or by its name alone. One that is not there is the panel; items
    // that lie in each other in a circle are an error.
    void FindParent(std::size_t index) {
        const std::string& wanted = m_parents[index];
        for (std::size_t i = 0; i < m_paths.size() && !wanted.empty(); ++i) {
            if (i != index && (m_paths[i] == wanted || m_panel.items[i].name == wanted)) {
                m_panel.items[index].parent = static_cast<int>(i);
                break;
            }
        }
        int outer = m_panel.items[index].parent;
        for (std::size_t steps = 0; outer >= 0; ++steps) {
            if (steps > m_paths.size()) {
                m_context.Fail(m_element, m_where, "its item \"" + m_paths[index] + "\" lies within itself");
            }
            outer = m_panel.items[static_cast<std::size_t>(outer)].parent;
        }
    }

    // Every child that is nothing but a text, and the style.
    void Part(const XmlElement& element, const std::string& where, GaugePart& part) {
        part.isSet = true;
        part.name = element.AttributeOf("Name");
        for (const XmlElement& child : element.children) {
            if (child.children.empty() && child.name != "Style") {
                Expr value = m_context.MakeExpr(child, PropertyOf(where, child.name));
                if (value.IsSet()) {
                    part.properties.emplace_back(child.name, std::move(value));
                }
            }
        }
        part.style = ReadStyle(m_context, element, where);
    }

    GaugePart Child(const XmlElement& element, std::string_view name, const std::string& where) {
        GaugePart part;
        if (const XmlElement* child = element.Child(name)) {
            Part(*child, PropertyOf(where, child->name), part);
        }
        return part;
    }

    std::string Within(const std::string& where, const XmlElement& element) {
        return where + ", " + PlaceOf(element);
    }

    GaugeValue Number(const XmlElement& element, std::string_view name, const std::string& where) {
        GaugeValue number;
        const XmlElement* child = element.Child(name);
        if (!child) {
            return number;
        }
        const std::string place = PropertyOf(where, child->name);
        number.value = m_context.ChildExpr(*child, "Value", place);
        number.multiplier = m_context.ChildExpr(*child, "Multiplier", place);
        number.addConstant = m_context.ChildExpr(*child, "AddConstant", place);
        if (const XmlElement* formula = child->Child("Formula")) {
            const std::string word(Trimmed(formula->text));
            bool known = word.empty();
            for (const auto& [candidate, meaning] : Formulas) {
                if (EqualNoCase(candidate, word)) {
                    number.formula = meaning;
                    known = true;
                }
            }
            if (!known) {
                m_context.Fail(*formula, place + ", Formula",
                               "the formula \"" + word + "\" cannot be computed");
            }
        }
        return number;
    }

    GaugeImage Picture(const XmlElement* element, const std::string& where) {
        GaugeImage image;
        if (!element) {
            return image;
        }
        const std::string source = element->ChildText("Source");
        for (const auto& [word, meaning] : PictureSources) {
            if (EqualNoCase(word, source)) {
                image.source = meaning;
            }
        }
        image.value = m_context.ChildExpr(*element, "Value", where);
        image.mimeType = m_context.ChildExpr(*element, "MIMEType", where);
        return image;
    }

    GaugeFrame Frame(const XmlElement& owner, const std::string& where) {
        GaugeFrame frame;
        if (const XmlElement* element = owner.Child("BackFrame")) {
            const std::string place = where + ", BackFrame";
            Part(*element, place, frame);
            if (const XmlElement* background = element->Child("FrameBackground")) {
                frame.background = ReadStyle(m_context, *background, place + ", FrameBackground");
            }
        }
        return frame;
    }

    GaugeItem Item(const XmlElement& element, GaugeItemKind kind) {
        const std::string where = Within(m_where, element);
        GaugeItem item;
        item.kind = kind;
        Part(element, where, item);
        item.action = ReadAction(m_context, element, where);
        item.frame = Frame(element, where);
        item.scales = Each<GaugeScale>(
            element.Child("GaugeScales"), kind == GaugeItemKind::Radial ? "RadialScale" : "LinearScale",
            [&](const XmlElement& child) { return Scale(child, Within(where, child)); });
        item.value = Number(element, "GaugeInputValue", where);
        item.minimum = Number(element, "MinimumValue", where);
        item.maximum = Number(element, "MaximumValue", where);
        item.transformationScope = element.ChildText("TransformationScope");
        const bool numeric = kind == GaugeItemKind::NumericIndicator;
        item.states =
            Each<GaugeState>(element.Child(numeric ? "NumericIndicatorRanges" : "IndicatorStates"),
                             numeric ? "NumericIndicatorRange" : "IndicatorState",
                             [&](const XmlElement& child) { return State(child, Within(where, child)); });
        item.image =
            Picture(kind == GaugeItemKind::Image ? &element : element.Child("IndicatorImage"), where);
        return item;
    }

    GaugeState State(const XmlElement& element, const std::string& where) {
        GaugeState state;
        Part(element, where, state);
        state.start = Number(element, "StartValue", where);
        state.end = Number(element, "EndValue", where);
        state.image = Picture(element.Child("IndicatorImage"), where + ", IndicatorImage");
        return state;
    }

    GaugeScale Scale(const XmlElement& element, const std::string& where) {
        GaugeScale scale;
        Part(element, where, scale);
        scale.minimum = Number(element, "MinimumValue", where);
        scale.maximum = Number(element, "MaximumValue", where);
        scale.labels = Child(element, "ScaleLabels", where);
        scale.majorTicks = Child(element, "GaugeMajorTickMarks", where);
        scale.minorTicks = Child(element, "GaugeMinorTickMarks", where);
        scale.customLabels =
            Each<GaugePart>(element.Child("CustomLabels"), "CustomLabel", [&](const XmlElement& child) {
                GaugePart label;
                Part(child, Within(where, child), label);
                return label;
            });
        scale.ranges =
            Each<GaugeRange>(element.Child("ScaleRanges"), "ScaleRange", [&](const XmlElement& child) {
                const std::string place = Within(where, child);
                GaugeRange range;
                Part(child, place, range);
                range.start = Number(child, "StartValue", place);
                range.end = Number(child, "EndValue", place);
                return range;
            });
        const bool radial = element.name == "RadialScale";
        scale.pointers =
            Each<GaugePointer>(element.Child("GaugePointers"), radial ? "RadialPointer" : "LinearPointer",
                               [&](const XmlElement& child) { return Pointer(child, Within(where, child)); });
        return scale;
    }

    GaugePointer Pointer(const XmlElement& element, const std::string& where) {
        GaugePointer pointer;
        Part(element, where, pointer);
        pointer.value = Number(element, "GaugeInputValue", where);
        pointer.cap = Child(element, "PointerCap", where);
        pointer.thermometer = Child(element, "Thermometer", where);
        return pointer;
    }

    Context& m_context;
    const XmlElement& m_element;
    const std::string m_where;
    GaugePanel& m_panel;
    std::vector<std::string> m_parents, m_paths;  // beside the items
};

}  // namespace

ItemPtr ReadGaugePanel(Context& context, const XmlElement& element, Extent container) {
    auto panel = std::make_unique<GaugePanel>();
    ReadBasics(context, element, *panel, container);
    GaugeReader(context, element, *panel).Read();
    return panel;
}

}  // namespace rdl
