// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphics/gauge_parts.h"

#include <algorithm>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/properties/properties.h"
#include "designer/document/xml_text.h"
#include "designer/graphics/part_text.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

struct Kind {
    GaugeKind kind;
    std::string_view collection, gauge;
    std::string_view scale, pointer;  // paths from the gauge and from the scale
    std::string_view ranges, range, colour;
};

constexpr Kind Kinds[] = {
    {GaugeKind::Dial, "RadialGauges", "RadialGauge", "GaugeScales/RadialScale", "GaugePointers/RadialPointer",
     "ScaleRanges", "ScaleRange", "Style/BackgroundColor"},
    {GaugeKind::Linear, "LinearGauges", "LinearGauge", "GaugeScales/LinearScale",
     "GaugePointers/LinearPointer", "ScaleRanges", "ScaleRange", "Style/BackgroundColor"},
    {GaugeKind::Indicator, "StateIndicators", "StateIndicator", "", "", "IndicatorStates", "IndicatorState",
     "Color"},
};

const Kind& KindOf(GaugeKind kind) {
    return *std::find_if(std::begin(Kinds), std::end(Kinds),
                         [kind](const Kind& one) { return one.kind == kind; });
}

// Null for an element that is no gauge.
const Kind* KindOf(const Document& document, ElementId gauge) {
    const std::string name = document.Name(gauge);
    const auto* const found =
        std::find_if(std::begin(Kinds), std::end(Kinds), [&](const Kind& one) { return one.gauge == name; });
    return found == std::end(Kinds) ? nullptr : found;
}

// Raises EditError for a text that the property at the path cannot have.
void CheckText(const Document& document, ElementId owner, std::string_view path, const std::string& text) {
    for (const Property* property : PropertiesOf(document.Name(owner), Schemas::Newer)) {
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
        SetOrRemove(document, owner, path, text);
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
void PutRanges(Document& document, ElementId scale, const Kind& kind, const std::vector<GaugeRange>& ranges) {
    const std::vector<ElementId> old = ChildrenNamed(document, scale, kind.ranges, kind.range);
    for (std::size_t number = 0; number < old.size(); ++number) {
        const auto kept = std::find_if(ranges.begin(), ranges.end(), [number](const GaugeRange& range) {
            return range.old == static_cast<int>(number);
        });
        if (kept == ranges.end()) {
            Remove(document, old[number]);
        } else {
            PutRange(document, old[number], kind, *kept);
        }
    }
    for (const GaugeRange& range : ranges) {
        if (range.old < 0) {
            const auto there = ChildrenNamed(document, scale, kind.ranges, kind.range);
            const ElementId made = InsertXml(
                document, EnsureChild(document, scale, kind.ranges),
                NewRangeXml(kind, NameOfRange(document, there, kind), kind.kind == GaugeKind::Indicator));
            PutRange(document, made, kind, range);
        }
    }
}

std::string Input(std::string_view name, std::string_view value) {
    return value.empty() ? std::string() : ElementXml(name, LeafOf("Value", value));
}

std::string ScaleXml(const GaugeDesign& design, bool isDial) {
    const std::string word = isDial ? "Radial" : "Linear";
    const std::string pointer =
        isDial ? "<PointerCap><Style><BackgroundColor>DimGray</BackgroundColor></Style></PointerCap><Style>"
                 "<BackgroundColor>DarkRed</BackgroundColor></Style>"
               : "<Style><BackgroundColor>DarkRed</BackgroundColor></Style>";
    return "<GaugeScales><" + word + "Scale Name=\"" + word + "Scale1\"><GaugePointers><" + word +
           "Pointer Name=\"" + word + "Pointer1\">" + pointer + Input("GaugeInputValue", design.value) +
           "</" + word +
           "Pointer></GaugePointers><Style><FontSize>8pt</FontSize><Format>N0</Format></Style>" +
           Input("MaximumValue", design.most) + Input("MinimumValue", design.least) +
           "<GaugeMajorTickMarks><Style /></GaugeMajorTickMarks><ScaleLabels><Style><FontSize>8pt</FontSize>"
           "<Format>N0</Format></Style></ScaleLabels></" +
           word + "Scale></GaugeScales>";
}

std::string State(std::string_view name, int from, int to, std::string_view colour, std::string_view icon) {
    return "<IndicatorState Name=\"" + std::string(name) + "\">" + Input("StartValue", std::to_string(from)) +
           Input("EndValue", std::to_string(to)) + LeafOf("Color", colour) + LeafOf("IndicatorStyle", icon) +
           "</IndicatorState>";
}

std::string NewGaugeXml(const GaugeDesign& design) {
    const Kind& kind = KindOf(design.kind);
    const std::string element(kind.gauge);
    const std::string content =
        design.kind != GaugeKind::Indicator
            ? ScaleXml(design, design.kind == GaugeKind::Dial)
            : Input("GaugeInputValue", design.value) + "<TransformationType>Percentage</TransformationType>" +
                  Input("MinimumValue", design.least) + Input("MaximumValue", design.most) +
                  "<IndicatorStyle>ArrowUp</IndicatorStyle><IndicatorStates>" +
                  State("RedState", 0, 33, "#e8582b", "ArrowDown") +
                  State("YellowState", 33, 66, "#f2c100", "ArrowSide") +
                  State("GreenState", 66, 100, "#4f9d4f", "ArrowUp") + "</IndicatorStates>";
    return "<" + element + " Name=\"" + EscapedValue(design.name, '"') + "\">" + content + "</" + element +
           ">";
}

// What one kind of gauges alone has.
constexpr std::string_view OwnOfKinds[] = {
    "PivotX",      "PivotY",      "StartAngle", "SweepAngle",  "Radius",   "PointerCap",        "NeedleStyle",
    "Orientation", "StartMargin", "EndMargin",  "Thermometer", "Position", "DistanceFromScale", "BackFrame"};

// Names of the gauges of a panel differ.
std::string NameOfGauge(const Document& document, ElementId panel, GaugeKind kind) {
    std::vector<std::string> taken;
    for (const Kind& one : Kinds) {
        for (const ElementId gauge : ChildrenNamed(document, panel, one.collection, one.gauge)) {
            taken.push_back(document.Attribute(gauge, "Name").value_or(""));
        }
    }
    for (int number = 1;; ++number) {
        std::string name = std::string(KindOf(kind).gauge) + std::to_string(number);
        if (std::find(taken.begin(), taken.end(), name) == taken.end()) {
            return name;
        }
    }
}

// Removes what only the old kind has: of the gauge itself, its scales and their pointers.
void DropOwn(Document& document, const Kind& kind, ElementId gauge) {
    std::vector<ElementId> owners{gauge};
    const std::size_t slash = kind.scale.find('/');
    for (const ElementId scale :
         ChildrenNamed(document, gauge, kind.scale.substr(0, slash), kind.scale.substr(slash + 1))) {
        owners.push_back(scale);
        const std::size_t at = kind.pointer.find('/');
        for (const ElementId pointer :
             ChildrenNamed(document, scale, kind.pointer.substr(0, at), kind.pointer.substr(at + 1))) {
            owners.push_back(pointer);
            RemoveAt(document, pointer, "Type");  // a needle, a thermometer
        }
    }
    for (const ElementId owner : owners) {
        for (const std::string_view name : OwnOfKinds) {
            RemoveAt(document, owner, name);
        }
    }
}

std::string Replaced(std::string text, const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size()) {
        text.replace(at, from.size(), to);
    }
    return text;
}

// Returns the gauge as one of the other kind.
ElementId Converted(Document& document, ElementId panel, ElementId gauge, GaugeKind kind) {
    const Kind& old = *KindOf(document, gauge);
    const Kind& made = KindOf(kind);
    DropOwn(document, old, gauge);
    std::string xml = XmlOf(document, gauge);
    const std::string from(old.gauge.substr(0, old.gauge.find("Gauge"))),
        to(made.gauge.substr(0, made.gauge.find("Gauge")));
    for (const char* part : {"Gauge", "Scale", "Pointer"}) {
        for (const char* bracket : {"<", "</"}) {
            for (const char* end : {" ", ">", "/"}) {
                const auto tag = [&](const std::string& name) {
                    return std::string(bracket).append(name).append(part).append(end);
                };
                xml = Replaced(std::move(xml), tag(from), tag(to));
            }
        }
    }
    Remove(document, gauge);
    return InsertXml(document, EnsureChild(document, panel, made.collection), xml);
}

void PutGauge(Document& document, ElementId gauge, const GaugeDesign& now, const GaugeDesign& design) {
    const Kind& kind = *KindOf(document, gauge);
    const ElementId scale = GaugeScaleOf(document, gauge);
    PutInput(document, GaugePointerOf(document, gauge), "GaugeInputValue", now.value, design.value);
    PutInput(document, scale, "MinimumValue", now.least, design.least);
    PutInput(document, scale, "MaximumValue", now.most, design.most);
    PutRanges(document, scale, kind, design.ranges);
}

GaugeDesign ReadGauge(const Document& document, ElementId gauge, const Kind& kind) {
    const ElementId scale = GaugeScaleOf(document, gauge);
    GaugeDesign design{gauge, kind.kind, document.Attribute(gauge, "Name").value_or("")};
    design.value = TrimmedTextAt(document, GaugePointerOf(document, gauge), "GaugeInputValue/Value");
    design.least = TrimmedTextAt(document, scale, "MinimumValue/Value");
    design.most = TrimmedTextAt(document, scale, "MaximumValue/Value");
    for (const ElementId range : ChildrenNamed(document, scale, kind.ranges, kind.range)) {
        design.ranges.push_back(ReadRange(document, range, static_cast<int>(design.ranges.size()), kind));
    }
    return design;
}

// A scale goes from 0 to 100 where nothing else is set; an indicator has no limits of its own.
void CheckLimits(const GaugeDesign& design) {
    const bool isScale = design.kind != GaugeKind::Indicator;
    const std::string least = isScale && design.least.empty() ? "0" : design.least,
                      most = isScale && design.most.empty() ? "100" : design.most;
    const auto from = PlainNumber(least), to = PlainNumber(most);
    if (from && to && *from >= *to) {
        throw EditError("The minimum " + least + " is not below the maximum " + most);
    }
}

void CheckRange(const GaugeRange& range, const std::string& what) {
    if (range.from.empty() != range.to.empty()) {
        throw EditError(what + (range.to.empty() ? " has a From and no To" : " has a To and no From"));
    }
    const auto from = PlainNumber(range.from), to = PlainNumber(range.to);
    if (from && to && *from > *to) {
        throw EditError(what + " goes from " + range.from + " down to " + range.to);
    }
}

// Refuses what is new and contradicts itself. What the report has already stays; expressions are not known.
void CheckDesign(const GaugeDesign& now, const GaugeDesign& design) {
    if (design.least != now.least || design.most != now.most) {
        CheckLimits(design);
    }
    const std::string word = design.kind == GaugeKind::Indicator ? "State " : "Range ";
    for (std::size_t row = 0; row < design.ranges.size(); ++row) {
        const GaugeRange& range = design.ranges[row];
        const auto old = std::find_if(now.ranges.begin(), now.ranges.end(), [&](const GaugeRange& one) {
            return range.old >= 0 && one.old == range.old;
        });
        if (old == now.ranges.end() || old->from != range.from || old->to != range.to) {
            CheckRange(range, word + std::to_string(row + 1));
        }
    }
}

}  // namespace

std::vector<GaugeDesign> ReadGauges(const Document& document, ElementId panel) {
    std::vector<GaugeDesign> designs;
    for (const Kind& kind : Kinds) {
        for (const ElementId gauge : ChildrenNamed(document, panel, kind.collection, kind.gauge)) {
            if (GaugePointerOf(document, gauge) != NoElement) {
                designs.push_back(ReadGauge(document, gauge, kind));
            }
        }
    }
    return designs;
}

ElementId GaugePointerOf(const Document& document, ElementId gauge) {
    const ElementId scale = GaugeScaleOf(document, gauge);
    return scale == NoElement ? NoElement : document.Find(scale, KindOf(document, gauge)->pointer);
}

ElementId GaugeScaleOf(const Document& document, ElementId gauge) {
    const Kind* kind = KindOf(document, gauge);
    return kind ? document.Find(gauge, kind->scale) : NoElement;
}

void PutGauges(Document& document, ElementId panel, const std::vector<GaugeDesign>& designs) {
    const StepGroup group(document, "Change gauge");
    for (const GaugeDesign& now : ReadGauges(document, panel)) {
        const auto design = std::find_if(designs.begin(), designs.end(),
                                         [&](const GaugeDesign& one) { return one.gauge == now.gauge; });
        if (design == designs.end()) {
            Remove(document, now.gauge);
            continue;
        }
        CheckDesign(now, *design);
        const bool isOther = design->kind != now.kind;
        if (isOther && (design->kind == GaugeKind::Indicator || now.kind == GaugeKind::Indicator)) {
            throw EditError("A gauge does not become an indicator; add one and remove the gauge");
        }
        PutGauge(document, isOther ? Converted(document, panel, now.gauge, design->kind) : now.gauge, now,
                 *design);
    }
    for (const GaugeDesign& design : designs) {
        if (design.gauge == NoElement) {
            CheckDesign({}, design);
            GaugeDesign named = design;
            named.name = NameOfGauge(document, panel, design.kind);
            const Kind& kind = KindOf(design.kind);
            const ElementId made =
                InsertXml(document, EnsureChild(document, panel, kind.collection), NewGaugeXml(named));
            std::vector<GaugeRange> ranges = design.ranges;
            if (design.kind != GaugeKind::Indicator || !ranges.empty()) {
                PutRanges(document, GaugeScaleOf(document, made), kind, ranges);
            }
        }
    }
}

std::string NewGaugesXml(const GaugeDesign& design) {
    return ElementXml(KindOf(design.kind).collection, NewGaugeXml(design));
}

}  // namespace designer
