// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/gauge_parts.h"

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

struct Kind {
    std::string_view scale, pointer;  // paths from the panel and from the scale
    std::string_view ranges, range, colour;
};

constexpr Kind Kinds[] = {
    {"RadialGauges/RadialGauge/GaugeScales/RadialScale", "GaugePointers/RadialPointer", "ScaleRanges",
     "ScaleRange", "Style/BackgroundColor"},
    {"LinearGauges/LinearGauge/GaugeScales/LinearScale", "GaugePointers/LinearPointer", "ScaleRanges",
     "ScaleRange", "Style/BackgroundColor"},
    {"StateIndicators/StateIndicator", "", "IndicatorStates", "IndicatorState", "Color"},
};

const Kind* KindOf(const Document& document, ElementId panel) {
    const auto kind = std::find_if(std::begin(Kinds), std::end(Kinds), [&](const Kind& one) {
        const ElementId scale = document.Find(panel, one.scale);
        return scale != NoElement && document.Find(scale, one.pointer) != NoElement;
    });
    return kind == std::end(Kinds) ? nullptr : kind;
}

// Raises EditError for a text that the property at the path cannot have.
void CheckText(const Document& document, ElementId owner, std::string_view path, const std::string& text) {
    for (const Property* property : PropertiesOf(document.Name(owner), false)) {
        const std::string fault = property->path == path && !text.empty() ? FaultOf(*property, text) : "";
        if (!fault.empty()) {
            throw EditError(fault);
        }
    }
}

void PutText(Document& document, ElementId owner, std::string_view path, const std::string& old,
             const std::string& text) {
    if (old != text) {
        CheckText(document, owner, path, text);
        text.empty() ? RemoveAt(document, owner, path) : SetText(document, owner, path, text);
    }
}

// Limits are in an element of their own, which is nothing without its value.
void PutInput(Document& document, ElementId owner, const std::string& name, const std::string& old,
              const std::string& text) {
    if (old != text) {
        CheckText(document, owner, name + "/Value", text);
        text.empty() ? RemoveAt(document, owner, name) : SetText(document, owner, name + "/Value", text);
    }
}

GaugeRange ReadRange(const Document& document, ElementId id, int number, const Kind& kind) {
    return {number, TrimmedTextAt(document, id, "StartValue/Value"),
            TrimmedTextAt(document, id, "EndValue/Value"), TrimmedTextAt(document, id, kind.colour),
            TrimmedTextAt(document, id, "IndicatorStyle")};
}

void PutRange(Document& document, ElementId id, const Kind& kind, const GaugeRange& range) {
    const GaugeRange now = ReadRange(document, id, range.old, kind);
    PutInput(document, id, "StartValue", now.from, range.from);
    PutInput(document, id, "EndValue", now.to, range.to);
    PutText(document, id, kind.colour, now.colour, range.colour);
    PutText(document, id, "IndicatorStyle", now.icon, range.icon);
}

std::string NewRangeXml(const Kind& kind, const std::string& name, bool isState) {
    const std::string element(kind.range);
    const std::string look =
        isState ? ""
                : "<Style><Border><Style>None</Style></Border></Style><StartWidth>12</StartWidth>"
                  "<EndWidth>12</EndWidth>";
    return "<" + element + " Name=\"" + EscapedValue(name, '"') + "\">" + look + "</" + element + ">";
}

// Names are those of one scale.
std::string NameOfRange(const Document& document, const std::vector<ElementId>& there, const Kind& kind) {
    for (std::size_t number = there.size() + 1;; ++number) {
        std::string name = std::string(kind.range) + std::to_string(number);
        if (std::none_of(there.begin(), there.end(),
                         [&](ElementId id) { return document.Attribute(id, "Name") == name; })) {
            return name;
        }
    }
}

// New ranges come last; the order of the others stays.
void PutRanges(Document& document, ElementId scale, const Kind& kind, const GaugeDesign& design) {
    const std::vector<ElementId> old = ChildrenNamed(document, scale, kind.ranges, kind.range);
    for (std::size_t number = 0; number < old.size(); ++number) {
        const auto kept =
            std::find_if(design.ranges.begin(), design.ranges.end(),
                         [number](const GaugeRange& range) { return range.old == static_cast<int>(number); });
        if (kept == design.ranges.end()) {
            Remove(document, old[number]);
        } else {
            PutRange(document, old[number], kind, *kept);
        }
    }
    for (const GaugeRange& range : design.ranges) {
        if (range.old < 0) {
            const auto there = ChildrenNamed(document, scale, kind.ranges, kind.range);
            const ElementId made =
                InsertXml(document, EnsureChild(document, scale, kind.ranges),
                          NewRangeXml(kind, NameOfRange(document, there, kind), design.isIndicator));
            PutRange(document, made, kind, range);
        }
    }
}

}  // namespace

std::optional<GaugeDesign> ReadGaugeDesign(const Document& document, ElementId panel) {
    const Kind* kind = KindOf(document, panel);
    if (!kind) {
        return std::nullopt;
    }
    const ElementId scale = GaugeScaleOf(document, panel);
    GaugeDesign design;
    design.value = TrimmedTextAt(document, GaugePointerOf(document, panel), "GaugeInputValue/Value");
    design.least = TrimmedTextAt(document, scale, "MinimumValue/Value");
    design.most = TrimmedTextAt(document, scale, "MaximumValue/Value");
    design.isIndicator = kind->pointer.empty();
    for (const ElementId range : ChildrenNamed(document, scale, kind->ranges, kind->range)) {
        design.ranges.push_back(ReadRange(document, range, static_cast<int>(design.ranges.size()), *kind));
    }
    return design;
}

ElementId GaugePointerOf(const Document& document, ElementId panel) {
    const Kind* kind = KindOf(document, panel);
    return kind ? document.Find(GaugeScaleOf(document, panel), kind->pointer) : NoElement;
}

ElementId GaugeScaleOf(const Document& document, ElementId panel) {
    const Kind* kind = KindOf(document, panel);
    return kind ? document.Find(panel, kind->scale) : NoElement;
}

void PutGaugeDesign(Document& document, ElementId panel, const GaugeDesign& design) {
    const auto now = ReadGaugeDesign(document, panel);
    if (!now) {
        throw EditError("The gauge has no scale with a pointer");
    }
    const StepGroup group(document, "Change gauge");
    const ElementId scale = GaugeScaleOf(document, panel);
    PutInput(document, GaugePointerOf(document, panel), "GaugeInputValue", now->value, design.value);
    PutInput(document, scale, "MinimumValue", now->least, design.least);
    PutInput(document, scale, "MaximumValue", now->most, design.most);
    PutRanges(document, scale, *KindOf(document, panel), design);
}

}  // namespace designer
