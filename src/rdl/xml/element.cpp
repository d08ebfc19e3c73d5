// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/xml/element.h"

#include "rdl/values/ascii.h"

namespace rdl::xml {

std::string_view Element::AttributeOf(std::string_view attribute) const {
    for (const Attribute& candidate : attributes) {
        if (candidate.space == NoSpace && candidate.name == attribute) {
            return candidate.value;
        }
    }
    return {};
}

bool Element::IsNil() const {
    for (const Attribute& attribute : attributes) {
        if (attribute.name == "nil" && attribute.space != NoSpace) {
            return attribute.value == "true" || attribute.value == "1";
        }
    }
    return false;
}

const Element* Element::Child(std::string_view childName) const {
    for (const Element& child : children) {
        if (child.name == childName) {
            return &child;
        }
    }
    return nullptr;
}

const Element* Element::Find(std::initializer_list<std::string_view> path) const {
    const Element* element = this;
    for (const std::string_view step : path) {
        element = element->Child(step);
        if (!element) {
            return nullptr;
        }
    }
    return element;
}

std::string Element::ChildText(std::string_view childName) const {
    const Element* child = Child(childName);
    return child ? std::string(Trimmed(child->text)) : std::string();
}

Element Document::Adopt(Document&& other) {
    texts.splice(texts.end(), other.texts);
    return std::move(other.root);
}

}  // namespace rdl::xml
