// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/style_reader.h"

#include <algorithm>
#include <array>

#include "rdl/values/named.h"

namespace rdl {
namespace {

using P = StyleProperty;

struct Named {
    std::string_view name;
    P property;
};

constexpr Named Plain[] = {
    {"BackgroundColor", P::BackgroundColor},
    {"BackgroundGradientType", P::BackgroundGradientType},
    {"BackgroundGradientEndColor", P::BackgroundGradientEndColor},
    {"Color", P::Color},
    {"Direction", P::Direction},
    {"FontFamily", P::FontFamily},
    {"FontSize", P::FontSize},
    {"FontStyle", P::FontStyle},
    {"FontWeight", P::FontWeight},
    {"Format", P::Format},
    {"Language", P::Language},
    {"LineHeight", P::LineHeight},
    {"NumeralLanguage", P::NumeralLanguage},
    {"NumeralVariant", P::NumeralVariant},
    {"Calendar", P::Calendar},
    {"PaddingLeft", P::PaddingLeft},
    {"PaddingRight", P::PaddingRight},
    {"PaddingTop", P::PaddingTop},
    {"PaddingBottom", P::PaddingBottom},
    {"TextAlign", P::TextAlign},
    {"TextDecoration", P::TextDecoration},
    {"UnicodeBiDi", P::UnicodeBiDi},
    {"VerticalAlign", P::VerticalAlign},
    {"WritingMode", P::WritingMode},
};
static_assert(NamesDiffer(Plain));

constexpr Named PartsOfBackgroundImage[] = {
    {"Source", P::BackgroundImageSource}, {"Value", P::BackgroundImageValue},
    {"MIMEType", P::BackgroundImageType}, {"BackgroundRepeat", P::BackgroundRepeat},
    {"Position", P::BackgroundPosition},
};
static_assert(NamesDiffer(PartsOfBackgroundImage));

// One row for each side; the columns are colour, style and width.
struct BorderSide {
    std::string_view older, newer;
    std::array<P, 3> properties;
};

constexpr BorderSide BorderSides[] = {
    {"Default", "Border", {P::BorderColor, P::BorderStyle, P::BorderWidth}},
    {"Left", "LeftBorder", {P::BorderColorLeft, P::BorderStyleLeft, P::BorderWidthLeft}},
    {"Right", "RightBorder", {P::BorderColorRight, P::BorderStyleRight, P::BorderWidthRight}},
    {"Top", "TopBorder", {P::BorderColorTop, P::BorderStyleTop, P::BorderWidthTop}},
    {"Bottom", "BottomBorder", {P::BorderColorBottom, P::BorderStyleBottom, P::BorderWidthBottom}},
};
constexpr std::string_view OlderAspects[] = {"BorderColor", "BorderStyle", "BorderWidth"};
constexpr std::string_view NewerAspects[] = {"Color", "Style", "Width"};

constexpr P OfRuns[] = {P::Color,          P::FontFamily, P::FontSize,       P::FontStyle,
                        P::FontWeight,     P::Format,     P::Language,       P::NumeralLanguage,
                        P::NumeralVariant, P::Calendar,   P::TextDecoration, P::UnicodeBiDi};
constexpr P OfParagraphs[] = {P::TextAlign, P::LineHeight};

void Set(Style& style, P property, Expr value) {
    for (auto& [name, held] : style.properties) {
        if (name == property) {
            held = std::move(value);
            return;
        }
    }
    style.properties.emplace_back(property, std::move(value));
}

void Add(Context& context, Style& style, P property, const XmlElement& element, const std::string& where) {
    Expr value = context.MakeExpr(element, PropertyOf(where, element.name));
    if (value.IsSet()) {
        if (!value.IsExpression()) {
            context.PassStyle(property, value);
        }
        if (property == P::FontFamily && !value.IsExpression()) {
            context.AddFont(std::string(Trimmed(value.source)));
        }
        Set(style, property, std::move(value));
    }
}

const Named* FindPlain(std::string_view name) {
    const auto* const found =
        std::find_if(std::begin(Plain), std::end(Plain), [&](const Named& row) { return row.name == name; });
    return found == std::end(Plain) ? nullptr : found;
}

// BorderStyle with Default, Left, ...: `aspect` is its column.
void ReadOlderBorder(Context& context, Style& style, const XmlElement& element, std::size_t aspect,
                     const std::string& where) {
    for (const XmlElement& child : element.children) {
        for (const BorderSide& side : BorderSides) {
            if (child.name == side.older) {
                Add(context, style, side.properties[aspect], child, PropertyOf(where, element.name));
            }
        }
    }
}

void ReadNewerBorder(Context& context, Style& style, const XmlElement& element, const BorderSide& side,
                     const std::string& where) {
    for (const XmlElement& child : element.children) {
        for (std::size_t aspect = 0; aspect < std::size(NewerAspects); ++aspect) {
            if (child.name == NewerAspects[aspect]) {
                Add(context, style, side.properties[aspect], child, PropertyOf(where, element.name));
            }
        }
    }
}

// Without a value there is no image; its other properties are ignored.
void ReadBackgroundImage(Context& context, Style& style, const XmlElement& element,
                         const std::string& where) {
    const XmlElement* value = element.Child("Value");
    if (!value || element.ChildText("Value").empty()) {
        return;
    }
    for (const Named& part : PartsOfBackgroundImage) {
        if (const XmlElement* child = element.Child(part.name)) {
            Add(context, style, part.property, *child, where);
        }
    }
    const Expr* source = style.Find(P::BackgroundImageSource);
    const std::string word = source ? source->source : "External";
    const Expr& name = *style.Find(P::BackgroundImageValue);
    if (EqualNoCase(word, "Embedded")) {
        context.RequireImage(*value, where, name);
    } else if (EqualNoCase(word, "External")) {
        context.RefuseAddress(*value, where, name);
    } else if (!EqualNoCase(word, "Database")) {
        context.Fail(element, where + ", Source", "\"" + word + "\" is not known");
    }
}

void ReadProperty(Context& context, Style& style, const XmlElement& element, const std::string& where) {
    if (const Named* plain = FindPlain(element.name)) {
        Add(context, style, plain->property, element, where);
        return;
    }
    if (element.name == "BackgroundImage") {
        ReadBackgroundImage(context, style, element, where + ", BackgroundImage");
        return;
    }
    for (std::size_t aspect = 0; aspect < std::size(OlderAspects); ++aspect) {
        if (element.name == OlderAspects[aspect]) {
            ReadOlderBorder(context, style, element, aspect, where);
            return;
        }
    }
    for (const BorderSide& side : BorderSides) {
        if (element.name == side.newer) {
            ReadNewerBorder(context, style, element, side, where);
        }
    }
}

template <std::size_t Count>
Style Part(const Style& style, const P (&wanted)[Count]) {
    Style part;
    for (const auto& entry : style.properties) {
        if (std::find(std::begin(wanted), std::end(wanted), entry.first) != std::end(wanted)) {
            part.properties.push_back(entry);
        }
    }
    return part;
}

}  // namespace

Style ReadStyle(Context& context, const XmlElement& owner, const std::string& where) {
    Style style;
    if (const XmlElement* element = owner.Child("Style")) {
        for (const XmlElement& child : element->children) {
            ReadProperty(context, style, child, where);
        }
    }
    return style;
}

Style RunPart(const Style& style) {
    return Part(style, OfRuns);
}
Style ParagraphPart(const Style& style) {
    return Part(style, OfParagraphs);
}

void Override(Style& style, const Style& over) {
    for (const auto& [property, value] : over.properties) {
        Set(style, property, value);
    }
}

}  // namespace rdl
