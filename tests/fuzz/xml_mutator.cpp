// SPDX-License-Identifier: GPL-3.0-or-later
#include "fuzz/xml_mutator.h"

#include <utility>

namespace fuzz {
namespace {

std::string Replaced(std::string_view text, std::size_t begin, std::size_t end, std::string_view by) {
    return std::string(text.substr(0, begin)) + std::string(by) + std::string(text.substr(end));
}

std::string Escaped(std::string_view text) {
    std::string out;
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '<') {
            out += "&lt;";
        } else if (c == '&') {
            out += "&amp;";
        } else {
            out += byte < ' ' ? ' ' : byte >= 0x80 ? '~' : c;
        }
    }
    return out;
}

std::string Unescaped(std::string_view text) {
    std::string out(text);
    for (const auto& [from, to] : {std::pair{"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&amp;", "&"}}) {
        for (std::size_t at = 0; (at = out.find(from, at)) != std::string::npos; ++at) {
            out.replace(at, std::string_view(from).size(), to);
        }
    }
    return out;
}

}  // namespace

// Comments, declarations and CDATA are stepped over; a text that is no XML gives what there is before its
// fault.
std::vector<XmlMutator::Element> XmlMutator::ElementsOf(std::string_view xml) {
    std::vector<Element> found;
    std::vector<std::size_t> open;
    for (std::size_t at = 0; (at = xml.find('<', at)) != std::string_view::npos;) {
        const std::string_view rest = xml.substr(at);
        const std::string_view stop = rest.starts_with("<!--")  ? "-->"
                                      : rest.starts_with("<![") ? "]]>"
                                                                : ">";
        const std::size_t last = xml.find(stop, at);
        if (last == std::string_view::npos) {
            break;
        }
        const std::size_t next = last + stop.size();
        if (rest.starts_with("</") && !open.empty()) {
            found[open.back()].contentEnd = at;
            found[open.back()].end = next;
            open.pop_back();
        } else if (rest.size() > 1 && rest[1] != '!' && rest[1] != '?' && rest[1] != '/') {
            if (!open.empty()) {
                found[open.back()].leaf = false;
            }
            Element element{at, next, next, next, xml.find_first_of(" \t\r\n/>", at), true};
            if (xml[last - 1] != '/') {
                open.push_back(found.size());
            }
            found.push_back(element);
        }
        at = next;
    }
    std::erase_if(found, [](const Element& element) { return element.end < element.contentEnd; });
    return found;
}

const XmlMutator::Element& XmlMutator::Pick(const std::vector<Element>& elements) {
    return elements[Below(elements.size())];
}

std::string XmlMutator::WithText(std::string_view xml, const std::vector<Element>& elements) {
    for (int tries = 0; tries < 20; ++tries) {
        const Element& element = Pick(elements);
        if (element.leaf && element.contentEnd > element.content) {
            const std::string old =
                Unescaped(xml.substr(element.content, element.contentEnd - element.content));
            return Replaced(xml, element.content, element.contentEnd, Escaped(m_changeText(old)));
        }
    }
    return {};
}

std::string XmlMutator::Swapped(std::string_view xml, const std::vector<Element>& elements) {
    const Element* first = &Pick(elements);
    const Element* second = &Pick(elements);
    if (first->begin > second->begin) {
        std::swap(first, second);
    }
    if (first->end > second->begin) {
        return {};  // one within the other
    }
    const std::string_view moved = xml.substr(first->begin, first->end - first->begin);
    const std::string_view back = xml.substr(second->begin, second->end - second->begin);
    return Replaced(Replaced(xml, second->begin, second->end, moved), first->begin, first->end, back);
}

// With a name that another element has.
std::string XmlMutator::Renamed(std::string_view xml, const std::vector<Element>& elements) {
    const Element& element = Pick(elements);
    const Element& other = Pick(elements);
    const std::string_view name = xml.substr(other.begin + 1, other.nameEnd - other.begin - 1);
    std::string out(xml);
    if (element.end > element.content) {
        const std::size_t old = element.contentEnd + 2;
        out = Replaced(out, old, element.end - 1, name);
    }
    return Replaced(out, element.begin + 1, element.nameEnd, name);
}

std::string XmlMutator::Mutate(std::string_view xml) {
    const std::vector<Element> elements = ElementsOf(xml);
    if (elements.size() < 2) {
        return {};
    }
    const Element& element = Pick(elements);
    const Element& other = Pick(elements);
    const std::string_view whole = xml.substr(element.begin, element.end - element.begin);
    switch (Below(12)) {
        case 0:
            return Replaced(xml, element.begin, element.end, "");
        case 1:
            return Replaced(xml, element.end, element.end, whole);
        case 2:
            return Swapped(xml, elements);
        case 3:
            return Replaced(xml, other.content, other.content, whole);
        case 4:
            return Replaced(xml, other.begin, other.end, whole);
        case 5:
            return Renamed(xml, elements);
        case 6:
        case 7:
        case 8:
        case 9:
            return WithText(xml, elements);
        default:
            return {};
    }
}

std::string XmlMutator::Cross(std::string_view xml, std::string_view other) {
    const std::vector<Element> elements = ElementsOf(xml);
    const std::vector<Element> others = ElementsOf(other);
    if (elements.empty() || others.empty()) {
        return {};
    }
    const Element& place = Pick(elements);
    const Element& given = Pick(others);
    const std::string_view whole = other.substr(given.begin, given.end - given.begin);
    return Below(2) == 0 ? Replaced(xml, place.begin, place.end, whole)
                         : Replaced(xml, place.content, place.content, whole);
}

}  // namespace fuzz
