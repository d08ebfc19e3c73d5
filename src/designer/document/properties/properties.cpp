// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/properties/properties.h"

#include <algorithm>
#include <charconv>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/item_size.h"
#include "designer/document/names.h"
#include "designer/document/placeholder_text.h"
#include "designer/document/properties/property_table.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"
#include "rdl/api/style_values.h"

namespace designer {
namespace {

constexpr std::string_view NotThere = "-";

bool HasWord(std::string_view words, std::string_view word) {
    while (!words.empty()) {
        const std::size_t blank = std::min(words.find(' '), words.size());
        if (SameAscii(words.substr(0, blank), word)) {
            return true;
        }
        words.remove_prefix(std::min(blank + 1, words.size()));
    }
    return false;
}

template <typename Take>
void ForEachGroup(Take take) {
    for (const auto table :
         {ItemProperties(), StyleProperties(), DataProperties(), ChartProperties(), GaugeProperties()}) {
        for (const PropertyGroup& group : table) {
            take(group);
        }
    }
}

std::string_view PathIn(const Property& property, bool isOlder) {
    return isOlder && !property.olderPath.empty() ? property.olderPath : property.path;
}

// Files mix the forms: the one that is there counts, else that of the schema.
std::string_view PathFor(const Document& document, ElementId id, const Property& property) {
    const bool isOlder = IsOlderSchema(document);
    const std::string_view usual = PathIn(property, isOlder), other = PathIn(property, !isOlder);
    if (usual == NotThere || (other != NotThere && document.Find(id, usual) == NoElement &&
                              document.Find(id, other) != NoElement)) {
        return other;
    }
    return usual;
}

// Returns where the part of a path begins that an element has once: its style, else its last step.
std::size_t OwnPath(std::string_view path) {
    const std::size_t style = path.find("Style/");
    return style != std::string_view::npos ? style : path.rfind('/') + 1;
}

// Returns the elements that `path` leads to through all children of its names, without its own part, which is
// made when it does not exist.
std::vector<ElementId> OwnersOf(const Document& document, ElementId id, std::string_view path) {
    std::vector<ElementId> owners{id};
    std::string_view rest = path.substr(0, OwnPath(path));
    while (!rest.empty()) {
        const std::size_t slash = rest.find('/');
        const std::string_view step = rest.substr(0, slash);
        rest.remove_prefix(slash + 1);
        std::vector<ElementId> next;
        for (const ElementId owner : owners) {
            for (const ElementId child : document.Children(owner)) {
                if (document.Name(child) == step) {
                    next.push_back(child);
                }
            }
        }
        owners = std::move(next);
    }
    return owners;
}

std::string_view StylePath(std::string_view path) {
    return path.substr(OwnPath(path));
}

// Returns where the property of an element is written: at one place, or in each element of its path; if there
// is none of these, at the place that makes the first one.
std::vector<TextPlace> PlacesOf(const Document& document, ElementId id, const Property& property) {
    const std::string_view path = PathFor(document, id, property);
    std::vector<TextPlace> places;
    if (property.isOfEach && !path.starts_with("Style/")) {
        for (const ElementId owner : OwnersOf(document, id, path)) {
            places.push_back({owner, std::string(StylePath(path))});
        }
    }
    return places.empty() ? std::vector{TextPlace{id, std::string(path)}} : places;
}

std::string StepName(const Property& property) {
    return "Set " + std::string(property.name);
}

bool IsInteger(std::string_view text) {
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size();
}

// The least and the most of the sizes whose path ends so (MS-RDL, Style and ReportItem).
struct SizeBounds {
    std::string_view end;
    double least, most;  // points
    std::string_view text;
};
constexpr std::string_view PositiveSizes = "it is 0in to 455in";
constexpr SizeBounds BoundsOfSizes[] = {
    {"FontSize", 1, 200, "it is 1pt to 200pt"},
    {"LineHeight", 1, 1000, "it is 1pt to 1000pt"},
    {"PaddingLeft", 0, 1000, "it is 0pt to 1000pt"},
    {"PaddingRight", 0, 1000, "it is 0pt to 1000pt"},
    {"PaddingTop", 0, 1000, "it is 0pt to 1000pt"},
    {"PaddingBottom", 0, 1000, "it is 0pt to 1000pt"},
    {"Border/Width", 0, 20, "it is 0pt to 20pt"},
    {"HangingIndent", -rdl::MaxSize, rdl::MaxSize, "it is -455in to 455in"},
};
// A line may run to the left and to the top.
constexpr SizeBounds OfLines = {"", -rdl::MaxSize, rdl::MaxSize, "it is -455in to 455in"};

bool IsBetween(double points, const SizeBounds& bounds) {
    constexpr double Slack = 1e-6;
    return points >= bounds.least - Slack && points <= bounds.most + Slack;
}

// `element` has the property; empty: any.
std::string ExpectedSize(const Property& property, std::string_view value, std::string_view element) {
    const std::optional<double> points = PointsOf(value);
    if (!points) {
        return "a size is a number with in, cm, mm, pt or pc: 2.5cm";
    }
    const bool isExtent = property.path == "Width" || property.path == "Height";
    SizeBounds bounds = {"", 0, rdl::MaxSize, PositiveSizes};
    if (isExtent && (element.empty() || element == "Line")) {
        bounds = OfLines;
    }
    for (const SizeBounds& one : BoundsOfSizes) {
        bounds = property.path.ends_with(one.end) ? one : bounds;
    }
    return IsBetween(*points, bounds) ? std::string() : std::string(bounds.text);
}

// What a value of the kind is, for a message; empty if the value is one.
std::string Expected(const Property& property, std::string_view value, std::string_view element) {
    switch (property.kind) {
        case PropertyKind::Size:
            return ExpectedSize(property, value, element);
        case PropertyKind::Color:
            return rdl::ColorOf(value) ? "" : "a colour is a name or #RRGGBB";
        case PropertyKind::Words:
            return HasWord(property.words, value) ? "" : "it is one of " + std::string(property.words);
        case PropertyKind::Boolean:
            return HasWord("true false", value) ? "" : "it is true or false";
        case PropertyKind::Integer:
            return IsInteger(value) ? "" : "it is a whole number";
        case PropertyKind::Number:
            return PlainNumber(value) ? "" : "it is a number";
        case PropertyKind::Name:
            return rdl::IsIdentifier(value) ? "" : "a name is a letter or _, then letters, digits and _";
        default:
            return "";
    }
}

}  // namespace

std::vector<const Property*> PropertiesOf(std::string_view element, Schemas schemas) {
    std::vector<const Property*> properties;
    ForEachGroup([&](const PropertyGroup& group) {
        if (HasWord(group.elements, element)) {
            for (const Property& property : group.properties) {
                if (PathIn(property, schemas == Schemas::Older) != NotThere) {
                    properties.push_back(&property);
                }
            }
        }
    });
    return properties;
}

std::vector<const Property*> PropertiesOf(const Document& document, ElementId element) {
    return PropertiesOf(document.Name(element), IsOlderSchema(document) ? Schemas::Older : Schemas::Newer);
}

std::vector<std::string_view> ElementsWithProperties() {
    std::vector<std::string_view> elements;
    ForEachGroup([&](const PropertyGroup& group) {
        std::string_view names = group.elements;
        while (!names.empty()) {
            const std::size_t blank = std::min(names.find(' '), names.size());
            elements.push_back(names.substr(0, blank));
            names.remove_prefix(std::min(blank + 1, names.size()));
        }
    });
    std::sort(elements.begin(), elements.end());
    elements.erase(std::unique(elements.begin(), elements.end()), elements.end());
    return elements;
}

bool IsOlderSchema(const Document& document) {
    const std::string& space = document.Tree().SpaceOf(0);
    return space.find("/2003/") != std::string::npos || space.find("/2005/") != std::string::npos;
}

PropertyValue ValueOf(const Document& document, ElementId id, const Property& property) {
    PropertyValue value;
    if (property.path.starts_with('@')) {
        const std::optional<std::string> text = document.Attribute(id, property.path.substr(1));
        return {text.value_or(std::string(property.missing)), text.has_value(), false};
    }
    const std::string_view path = PathFor(document, id, property);
    if (!property.isOfEach || path.starts_with("Style/")) {
        const std::optional<std::string> text = document.TextAt(id, path);
        return {text.value_or(std::string(property.missing)), text.has_value(), false};
    }
    value.text = property.missing;
    bool isFirst = true;
    for (const ElementId owner : OwnersOf(document, id, path)) {
        const std::optional<std::string> text = document.TextAt(owner, StylePath(path));
        const std::string own = text.value_or(std::string(property.missing));
        value.isMixed = value.isMixed || (!isFirst && own != value.text);
        value.text = isFirst ? own : value.text;
        value.isSet = value.isSet || text;
        isFirst = false;
    }
    return value;
}

std::string FaultOf(const Property& property, std::string_view value, std::string_view element) {
    const bool isExpression = IsExpression(value);
    const std::string shown =
        "\"" + WithoutControls(CutText(value, 80)) + "\" is no value of " + std::string(property.name) + ": ";
    if (isExpression && property.expressions == Expressions::No && property.kind != PropertyKind::Text) {
        return shown + "it cannot be an expression";
    }
    if (!isExpression && property.expressions == Expressions::Only) {
        return shown + "it is an expression, which begins with =";
    }
    const std::string expected = isExpression ? "" : Expected(property, Trim(value), element);
    return expected.empty() ? expected : shown + expected;
}

void SetValue(Document& document, ElementId id, const Property& property, std::string_view value) {
    SetValueOfAll(document, {id}, property, value);
}

void SetValueOfAll(Document& document, const std::vector<ElementId>& ids, const Property& property,
                   std::string_view value) {
    for (const ElementId id : ids) {
        if (const std::string fault = FaultOf(property, value, document.Name(id)); !fault.empty()) {
            throw EditError(fault);
        }
    }
    const StepGroup group(document, StepName(property));
    std::vector<TextChange> changes;
    for (const ElementId id : ids) {
        if (property.kind == PropertyKind::Name) {
            Rename(document, id, std::string(Trim(value)));
        } else if (property.path.starts_with('@')) {
            SetAttribute(document, id, property.path.substr(1), value, StepName(property));
        } else {
            for (TextPlace& place : PlacesOf(document, id, property)) {
                changes.push_back({place.owner, std::move(place.path), std::string(value)});
            }
        }
    }
    SetTexts(document, changes, StepName(property));
}

void ResetValue(Document& document, ElementId id, const Property& property) {
    ResetValueOfAll(document, {id}, property);
}

void ResetValueOfAll(Document& document, const std::vector<ElementId>& ids, const Property& property) {
    const std::string step = "Reset " + std::string(property.name);
    const StepGroup group(document, step);
    std::vector<TextPlace> places;
    for (const ElementId id : ids) {
        if (!property.path.starts_with('@')) {
            const std::vector<TextPlace> own = PlacesOf(document, id, property);
            places.insert(places.end(), own.begin(), own.end());
        } else if (property.kind == PropertyKind::Name) {
            throw EditError("a name cannot be removed");
        } else {
            RemoveAttribute(document, id, property.path.substr(1), step);
        }
    }
    RemoveAllAt(document, places, step);
}

}  // namespace designer
