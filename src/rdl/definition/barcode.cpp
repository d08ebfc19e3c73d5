// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/barcode.h"

#include <algorithm>

namespace rdl {
namespace {

std::string PlainName(std::string_view name) {
    std::string plain;
    for (const char c : name) {
        if (IsAsciiLetterOrDigit(c)) {
            plain += AsciiLower(c);
        }
    }
    return plain;
}

struct PropertyName {
    std::string_view name;  // plain
    Expr Barcode::*member;
};

// The names that several designers give the properties.
constexpr PropertyName Properties[] = {
    {"symbology", &Barcode::symbology},
    {"barcodetype", &Barcode::symbology},
    {"codetype", &Barcode::symbology},
    {"type", &Barcode::symbology},
    {"value", &Barcode::value},
    {"text", &Barcode::value},
    {"data", &Barcode::value},
    {"content", &Barcode::value},
    {"showtext", &Barcode::showText},
    {"displaytext", &Barcode::showText},
    {"showlabel", &Barcode::showText},
    {"humanreadable", &Barcode::showText},
    {"errorcorrection", &Barcode::errorCorrection},
    {"errorcorrectionlevel", &Barcode::errorCorrection},
};
static_assert(NamesDiffer(Properties));

// A designer writes its own name before that of the property: "Barcode:Symbology".
const PropertyName* FindProperty(std::string_view name) {
    const std::size_t mark = name.find_last_of(":.");
    return FindNamed(Properties, PlainName(mark == std::string_view::npos ? name : name.substr(mark + 1)));
}

// A value may be empty; without one the item is not finished.
void CheckSymbology(Context& context, const XmlElement& element, const Barcode& barcode, bool hasValue) {
    const Expr& name = barcode.symbology;
    if (name.IsSet() && !name.IsExpression() && !FindSymbology(name.source)) {
        context.Fail(element, PlaceOf(element) + ", Symbology", "\"" + name.source + "\" is not known");
    }
    if (!hasValue) {
        context.Fail(element, PlaceOf(element), "the bar code has no value");
    }
}

// What stands for an item that this program has no drawing for; it has the item's place and size.
ItemPtr ReadAlternative(Context& context, const XmlElement& element, Extent container,
                        const std::string& type) {
    const XmlElement* owner = element.Child("AltReportItem");
    if (owner && owner->Child("ReportItems")) {
        owner = owner->Child("ReportItems");
    }
    if (!owner || owner->children.empty()) {
        context.Fail(element, PlaceOf(element),
                     "an item of the type \"" + type + "\" cannot be drawn, and it has no AltReportItem");
    }
    auto rectangle = std::make_unique<Rectangle>();
    ReadBasics(context, element, *rectangle, container);
    rectangle->items.push_back(
        ReadItem(context, owner->children.front(), {rectangle->width, rectangle->height}));
    return rectangle;
}

bool IsBarcode(const std::string& type) {
    return PlainName(type).find("barcode") != std::string::npos || FindSymbology(type);
}

}  // namespace

const SymbologyRow* FindSymbology(std::string_view name) {
    const std::string plain = PlainName(name);
    const auto* const found =
        std::find_if(std::begin(Symbologies), std::end(Symbologies),
                     [&plain](const SymbologyRow& row) { return EqualNoCase(row.name, plain); });
    return found == std::end(Symbologies) ? nullptr : found;
}

ItemPtr ReadBarcode(Context& context, const XmlElement& element, Extent container) {
    auto barcode = std::make_unique<Barcode>();
    ReadBasics(context, element, *barcode, container);
    bool hasValue = false;
    for (const XmlElement& child : element.children) {
        if (const PropertyName* const property = FindProperty(child.name)) {
            hasValue = hasValue || property->member == &Barcode::value;
            (*barcode).*(property->member) =
                context.MakeExpr(child, PlaceOf(element) + ", " + std::string(child.name));
        }
    }
    CheckSymbology(context, element, *barcode, hasValue);
    return barcode;
}

ItemPtr ReadCustomItem(Context& context, const XmlElement& element, Extent container) {
    const std::string type = element.ChildText("Type");
    if (!IsBarcode(type)) {
        return ReadAlternative(context, element, container, type);
    }
    auto barcode = std::make_unique<Barcode>();
    ReadBasics(context, element, *barcode, container);
    bool hasValue = false;
    if (const XmlElement* const properties = element.Child("CustomProperties")) {
        for (const XmlElement& child : properties->children) {
            const std::string name = child.ChildText("Name");
            if (const PropertyName* const property = FindProperty(name)) {
                hasValue = hasValue || property->member == &Barcode::value;
                (*barcode).*(property->member) =
                    context.ChildExpr(child, "Value", PlaceOf(element) + ", " + name);
            }
        }
    }
    if (const SymbologyRow* const symbology = FindSymbology(type); symbology && !barcode->symbology.IsSet()) {
        barcode->symbology.source = symbology->name;
    }
    CheckSymbology(context, element, *barcode, hasValue);
    return barcode;
}

}  // namespace rdl
