// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/definition/context.h"

#include <charconv>

#include "rdl/definition/identifier.h"
#include "rdl/definition/size.h"
#include "rdl/values/error_text.h"
#include "rdl/xml/flag.h"

namespace rdl {
std::string PlaceOf(const XmlElement& element) {
    const std::string_view name = element.AttributeOf("Name");
    return name.empty() ? std::string(element.name) : std::string(element.name) + " " + WithoutMarks(name);
}

std::string PropertyOf(const std::string& where, std::string_view name) {
    return where + ", " + std::string(name);
}

Context::Context(const std::string& fileName, const DefinitionLimits& limits)
    : m_fileName(WithoutMarks(fileName)), m_limits(limits) {}

std::string Context::NameOf(const XmlElement& element) const {
    const std::string_view name = element.AttributeOf("Name");
    if (!name.empty() && !IsIdentifier(name)) {
        throw Error(m_fileName + ", line " + std::to_string(element.line) + ": " +
                    NotAnIdentifier(element.name, name));
    }
    return std::string(name);
}

Expr Context::MakeExpr(const XmlElement& element, const std::string& where) {
    Expr expr;
    expr.where = where;
    expr.line = element.line;
    const std::string_view trimmed = Trimmed(element.text);
    if (trimmed.starts_with('=')) {
        expr.source = trimmed;
        expr.id = m_expressions++;
    } else {
        expr.source = element.text;
    }
    return expr;
}

Expr Context::ChildExpr(const XmlElement& parent, std::string_view name, const std::string& where) {
    const XmlElement* child = parent.Child(name);
    return child ? MakeExpr(*child, PropertyOf(where, name)) : Expr{};
}

Expr Context::ChildText(const XmlElement& parent, std::string_view name, const std::string& where) {
    return WithPlaceholders(ChildExpr(parent, name, where), &m_parameters);
}

Expr Context::ChildConnection(const XmlElement& parent, std::string_view name, const std::string& where) {
    return WithPlaceholders(ChildExpr(parent, name, where), nullptr);
}

Expr Context::WithPlaceholders(Expr text, const ParameterNames* parameters) {
    if (!text.IsExpression()) {
        if (std::optional<std::string> source = ExpressionOfText(text.source, parameters)) {
            text.source = std::move(*source);
            text.id = m_expressions++;
        }
    }
    return text;
}

void Context::AddParameter(const std::string& name, bool isMultiValue) {
    m_parameters.emplace(LowerAscii(name), isMultiValue);
}

double Context::Size(const XmlElement& parent, std::string_view name, const std::string& where,
                     double missing) const {
    return SizeFrom(0, parent, name, where).value_or(missing);
}

double Context::SignedSize(const XmlElement& parent, std::string_view name, const std::string& where) const {
    return SizeFrom(-MaxSize, parent, name, where).value_or(0);
}

// Returns nullopt if the element is absent.
std::optional<double> Context::SizeFrom(double least, const XmlElement& parent, std::string_view name,
                                        const std::string& where) const {
    const XmlElement* child = parent.Child(name);
    if (!child || Trimmed(child->text).empty()) {
        return std::nullopt;
    }
    const std::string text(Trimmed(child->text));
    const std::optional<double> points = ParseSize(text);
    if (!points) {
        Fail(*child, PropertyOf(where, name),
             "\"" + text + "\" is not a size (a number with in, cm, mm, pt or pc)");
    }
    if (*points > MaxSize || *points < least) {
        Fail(*child, PropertyOf(where, name), "\"" + text + "\" is out of range");
    }
    return points;
}

bool Context::Flag(const XmlElement& parent, std::string_view name, const std::string& where,
                   bool missing) const {
    const XmlElement* child = parent.Child(name);
    const std::string_view text = child ? Trimmed(child->text) : std::string_view();
    if (text.empty()) {
        return missing;
    }
    const std::optional<bool> flag = xml::FlagOf(text);
    if (!flag) {
        Fail(*child, PropertyOf(where, name), xml::NotAFlag(text));
    }
    return *flag;
}

int Context::Number(const XmlElement& parent, std::string_view name, const std::string& where, int least,
                    int most, int missing) const {
    const XmlElement* child = parent.Child(name);
    const std::string_view text = child ? Trimmed(child->text) : std::string_view();
    if (text.empty()) {
        return missing;
    }
    int number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size() || number < least || number > most) {
        Fail(*child, PropertyOf(where, name),
             "\"" + std::string(text) + "\" is not a whole number from " + std::to_string(least) + " to " +
                 std::to_string(most));
    }
    return number;
}

void Context::RequireImage(const XmlElement& element, const std::string& where, const Expr& name) const {
    if (name.IsSet() && !name.IsExpression() && !m_images.contains(name.source)) {
        Fail(element, where, "the report has no embedded image \"" + name.source + "\"");
    }
}

void Context::RefuseAddress(const XmlElement& element, const std::string& where, const Expr& source) const {
    const std::string& text = source.source;
    if (!source.IsExpression() && text.find("://") != std::string::npos && !text.starts_with("file://")) {
        Fail(element, where, "images are not fetched from the network: \"" + text + "\"");
    }
}

void Context::CountItem(const XmlElement& element) {
    if (++m_items > m_limits.items) {
        Fail(element, PlaceOf(element),
             "the report has more than " + std::to_string(m_limits.items) + " items");
    }
}

void Context::Fail(const XmlElement& element, const std::string& where, const std::string& what) const {
    throw Error(m_fileName + ", line " + std::to_string(element.line) + ": " + where + ": " +
                WithoutMarks(what));
}

}  // namespace rdl
