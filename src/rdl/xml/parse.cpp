// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/xml/parse.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <new>
#include <optional>
#include <pugixml.hpp>
#include <unordered_map>

#include "rdl/api/xml_encoding.h"
#include "rdl/values/ascii.h"
#include "rdl/values/utf8.h"
#include "rdl/xml/decode.h"

namespace rdl::xml {
namespace {

// References are resolved here: pugixml leaves those that it does not know as they stand, and puts in a NUL.
constexpr unsigned ParseFlags = pugi::parse_cdata | pugi::parse_eol | pugi::parse_wconv_attribute |
                                pugi::parse_declaration | pugi::parse_doctype | pugi::parse_ws_pcdata |
                                pugi::parse_fragment | pugi::parse_embed_pcdata;
constexpr std::string_view XmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::size_t LongestName = 80;  // of what a message shows
constexpr std::size_t LeastMemory = std::size_t{1} << 20;
constexpr std::size_t MemoryOfElement = 256;  // an element, the blanks around it and some attributes

// What pugixml may still take, of the parse that runs in this thread.
thread_local std::size_t memoryLeft = SIZE_MAX;
// Whether the machine has refused memory that the bound allowed. pugixml reports both alike.
thread_local bool isMachineOutOfMemory = false;

void* Allocate(std::size_t size) {
    if (size > memoryLeft) {
        return nullptr;
    }
    memoryLeft -= size;
    void* const memory = std::malloc(size);
    isMachineOutOfMemory = isMachineOutOfMemory || memory == nullptr;
    return memory;
}

class MemoryBound {
 public:
    explicit MemoryBound(std::size_t most) {
        static const bool isSet = [] {
            pugi::set_memory_management_functions(Allocate, std::free);
            return true;
        }();
        memoryLeft = isSet ? most : 0;
        isMachineOutOfMemory = false;
    }
    ~MemoryBound() { memoryLeft = SIZE_MAX; }
    MemoryBound(const MemoryBound&) = delete;
    MemoryBound& operator=(const MemoryBound&) = delete;
};

std::string Quoted(std::string_view name) {
    std::string text(WholeCharacters(name, LongestName));
    text += name.size() > LongestName ? "..." : "";
    std::replace(text.begin(), text.end(), '\'', '"');
    return "\"" + text + "\"";
}

const char* WhatIsWrong(pugi::xml_parse_status status) {
    switch (status) {
        case pugi::status_bad_attribute:
            return "an attribute has no value in quotes, or one that does not end";
        case pugi::status_bad_end_element:
            return "an end tag is damaged";
        case pugi::status_end_element_mismatch:
            return "an end tag is not that of the element that is open";
        case pugi::status_bad_pi:
            return "a processing instruction is damaged";
        case pugi::status_bad_comment:
            return "a comment is damaged";
        case pugi::status_bad_cdata:
            return "a CDATA section is damaged";
        default:
            return "a tag is damaged";
    }
}

// Returns the lines of ascending places, and reads the text once.
class LineCounter {
 public:
    explicit LineCounter(std::string_view text) : m_text(text) {}
    std::size_t At(std::size_t place) {
        place = std::min(place, m_text.size());
        if (place < m_place) {
            m_place = 0;
            m_line = 1;
        }
        const char* const begin = m_text.data();
        m_line += static_cast<std::size_t>(std::count(begin + m_place, begin + place, '\n'));
        m_place = place;
        return m_line;
    }

 private:
    std::string_view m_text;
    std::size_t m_place = 0, m_line = 1;
};

class TreeBuilder {
 public:
    TreeBuilder(std::string_view text, const Limits& limits)
        : m_text(text), m_limits(limits), m_lines(text) {}

    Document Build() {
        m_document.spaces = {{}, XmlUri};
        m_spaces = {{{}, NoSpace}, {XmlUri, XmlSpace}};
        m_prefixes["xml"] = {XmlSpace};
        m_buffer = m_document.texts.emplace_back(m_text).data();
        const MemoryBound bound(LeastMemory + MemoryOfElement * static_cast<std::size_t>(m_limits.elements));
        pugi::xml_document parsed;
        const pugi::xml_parse_result result =
            parsed.load_buffer_inplace(m_buffer, m_text.size() + 1, ParseFlags, pugi::encoding_utf8);
        RefuseDocumentType(parsed, result);
        if (!result) {
            Refuse(result, parsed);
        }
        BuildElement(RootOf(parsed), m_document.root, NoSpace, 1);
        return std::move(m_document);
    }

 private:
    using Declared = std::vector<std::string_view>;  // prefixes

    [[noreturn]] void Fail(std::size_t place, const std::string& what) {
        throw Flaw(m_lines.At(place), what);
    }
    [[noreturn]] void FailAsMalformed(std::size_t place, const std::string& what) {
        Fail(place, "this is not well-formed XML: " + what);
    }
    std::size_t PlaceOf(const char* text) const { return static_cast<std::size_t>(text - m_buffer); }

    void RefuseDocumentType(const pugi::xml_document& parsed, const pugi::xml_parse_result& result) {
        const pugi::xml_node type =
            parsed.find_child([](const pugi::xml_node& child) { return child.type() == pugi::node_doctype; });
        if (type || result.status == pugi::status_bad_doctype) {
            Fail(type && *type.value() ? PlaceOf(type.value()) : static_cast<std::size_t>(result.offset),
                 "a document type is not allowed: nothing that is read here needs one");
        }
    }

    [[noreturn]] void Refuse(const pugi::xml_parse_result& result, const pugi::xml_document& parsed) {
        if (result.status == pugi::status_out_of_memory && isMachineOutOfMemory) {
            throw std::bad_alloc();
        }
        const std::string_view last = LastElement(parsed);
        if (result.status == pugi::status_out_of_memory) {
            Fail(m_text.size(), "there are more elements, attributes and texts in it than " +
                                    std::to_string(m_limits.elements) + " elements have");
        }
        // What ends too soon is found at the last character, an open CDATA section at its beginning.
        const auto place = static_cast<std::size_t>(result.offset);
        if (place + 1 >= m_text.size() || result.status == pugi::status_bad_cdata) {
            RefuseAsCutOff(last);
        }
        FailAsMalformed(place, WhatIsWrong(result.status));
    }

    [[noreturn]] void RefuseAsCutOff(std::string_view last) {
        Fail(m_text.size(), last.empty()
                                ? "it is cut off before its first element"
                                : "it is cut off; the last element that it begins is " + Quoted(last));
    }

    // Returns the name of the last element that was read before an error; empty if there is none. Raises Flaw
    // if it is too deep.
    std::string_view LastElement(const pugi::xml_document& parsed) {
        std::string_view last;
        int depth = 0;
        pugi::xml_node node = parsed.last_child();
        while (node) {
            if (node.type() != pugi::node_element) {
                node = node.previous_sibling();
                continue;
            }
            last = node.name();
            CheckDepth(++depth, PlaceOf(node.name()));
            node = node.last_child();
        }
        return last;
    }

    pugi::xml_node RootOf(const pugi::xml_document& parsed) {
        pugi::xml_node root;
        for (const pugi::xml_node node : parsed.children()) {
            if (node.type() == pugi::node_element && !root) {
                root = node;
            } else if (node.type() == pugi::node_element) {
                FailAsMalformed(PlaceOf(node.name()), "there is more than one root element");
            } else if (node.type() == pugi::node_cdata ||
                       (node.type() == pugi::node_pcdata && !Trimmed(node.value()).empty())) {
                FailAsMalformed(PlaceOf(node.value()), "there is text outside of the root element");
            }
        }
        if (!root) {
            RefuseAsCutOff({});
        }
        return root;
    }

    void CheckDepth(int depth, std::size_t place) {
        if (depth > m_limits.depth) {
            Fail(place, "elements are nested more than " + std::to_string(m_limits.depth) + " deep");
        }
    }

    // Goes as deep as the limit allows.
    void BuildElement(const pugi::xml_node& from, Element& to, int defaultSpace, int depth) {
        const std::size_t place = PlaceOf(from.name());
        CheckDepth(depth, place);
        if (++m_count > m_limits.elements) {
            Fail(place, "there are more than " + std::to_string(m_limits.elements) + " elements");
        }
        to.line = static_cast<int>(m_lines.At(place));
        Declared declared;
        BuildAttributes(from, to, defaultSpace, declared);
        const std::string_view name = from.name();
        const std::size_t colon = name.find(':');
        to.name = LocalName(name, colon);
        to.space = colon == std::string_view::npos ? defaultSpace : SpaceOf(name.substr(0, colon), place);
        BuildContent(from, to, defaultSpace, depth);
        for (const std::string_view prefix : declared) {
            m_prefixes[prefix].pop_back();
        }
    }

    void BuildContent(const pugi::xml_node& from, Element& to, int defaultSpace, int depth) {
        std::size_t children = 0;
        for (const pugi::xml_node child : from.children()) {
            children += child.type() == pugi::node_element ? 1 : 0;
        }
        to.children.reserve(children);
        to.text = Resolved(from.value());
        std::string joined;  // empty while the text is one piece, which stays where it is
        for (const pugi::xml_node child : from.children()) {
            if (child.type() == pugi::node_element) {
                BuildElement(child, to.children.emplace_back(), defaultSpace, depth + 1);
                continue;
            }
            const std::string_view piece =
                child.type() == pugi::node_pcdata ? Resolved(child.value()) : child.value();
            if (to.text.empty()) {
                to.text = piece;
            } else {
                joined.append(joined.empty() ? to.text : std::string_view()).append(piece);
            }
        }
        if (!to.children.empty() && Trimmed(to.text).empty() && Trimmed(joined).empty()) {
            to.text = {};  // how the elements are indented
        } else if (!joined.empty()) {
            to.text = m_document.texts.emplace_back(std::move(joined));
        }
    }

    void BuildAttributes(const pugi::xml_node& from, Element& to, int& defaultSpace, Declared& declared) {
        std::size_t count = 0;
        for (const pugi::xml_attribute attribute : from.attributes()) {
            if (++count > m_limits.attributes) {
                Fail(PlaceOf(attribute.name()),
                     "an element has more than " + std::to_string(m_limits.attributes) + " attributes");
            }
            Declare(attribute, defaultSpace, declared);
        }
        to.attributes.reserve(count);  // rows of data may be nothing but attributes
        for (const pugi::xml_attribute attribute : from.attributes()) {
            const std::string_view name = attribute.name();
            if (name == "xmlns" || name.starts_with("xmlns:")) {
                continue;
            }
            const std::size_t colon = name.find(':');
            const std::size_t place = PlaceOf(attribute.name());
            to.attributes.push_back(
                {LocalName(name, colon), ResolvedValue(attribute),
                 colon == std::string_view::npos ? NoSpace : SpaceOf(name.substr(0, colon), place)});
        }
        RefuseTwice(to, PlaceOf(from.name()));
    }

    void RefuseTwice(const Element& element, std::size_t place) {
        if (element.attributes.size() < 2) {
            return;
        }
        std::vector<std::pair<std::string_view, int>> names;
        names.reserve(element.attributes.size());
        for (const Attribute& attribute : element.attributes) {
            names.emplace_back(attribute.name, attribute.space);
        }
        std::sort(names.begin(), names.end());
        const auto twice = std::adjacent_find(names.begin(), names.end());
        if (twice != names.end()) {
            FailAsMalformed(place, "an element has the attribute " + Quoted(twice->first) + " twice");
        }
    }

    void Declare(const pugi::xml_attribute& attribute, int& defaultSpace, Declared& declared) {
        const std::string_view name = attribute.name();
        if (name == "xmlns") {
            defaultSpace = SpaceNumber(ResolvedValue(attribute));
        } else if (name.starts_with("xmlns:")) {
            const std::string_view prefix = name.substr(std::strlen("xmlns:"));
            const std::string_view uri = ResolvedValue(attribute);
            if (prefix.empty() || uri.empty()) {
                FailAsMalformed(PlaceOf(attribute.name()), "a declaration of a namespace is damaged");
            }
            m_prefixes[prefix].push_back(SpaceNumber(uri));
            declared.push_back(prefix);
        }
    }

    int SpaceNumber(std::string_view uri) {
        const auto [entry, isNew] = m_spaces.emplace(uri, static_cast<int>(m_document.spaces.size()));
        if (isNew) {
            m_document.spaces.push_back(uri);
        }
        return entry->second;
    }

    int SpaceOf(std::string_view prefix, std::size_t place) {
        const auto found = m_prefixes.find(prefix);
        if (found == m_prefixes.end() || found->second.empty()) {
            FailAsMalformed(place, "the prefix " + Quoted(prefix) + " is declared nowhere");
        }
        return found->second.back();
    }

    std::string_view LocalName(std::string_view name, std::size_t colon) {
        if (colon == std::string_view::npos) {
            return name;
        }
        const std::string_view local = name.substr(colon + 1);
        if (local.empty() || local.find(':') != std::string_view::npos) {
            FailAsMalformed(PlaceOf(name.data()), Quoted(name) + " is no name");
        }
        return local;
    }

    // A < means that the end of a value is missing, and that what follows was taken for the value.
    std::string_view ResolvedValue(const pugi::xml_attribute& attribute) {
        const char* value = attribute.value();
        if (std::strchr(value, '<') != nullptr) {
            FailAsMalformed(PlaceOf(attribute.name()),
                            "the value of the attribute " + Quoted(attribute.name()) + " holds a <");
        }
        return Resolved(value);
    }

    // Resolves the references of a text where it stands: what they stand for is never longer.
    std::string_view Resolved(const char* value) {
        const std::size_t size = std::strlen(value);
        if (size == 0) {
            return {};
        }
        const char* const from = static_cast<const char*>(std::memchr(value, '&', size));
        if (from == nullptr) {
            return {value, size};
        }
        char* const begin = m_buffer + PlaceOf(value);
        char* const end = begin + size;
        char* to = m_buffer + PlaceOf(from);
        for (char* at = to; at < end;) {
            if (*at != '&') {
                *to++ = *at++;
                continue;
            }
            const std::string_view rest(at, std::min<std::size_t>(LongestReference, end - at));
            const std::size_t length = rest.find(';');
            const auto character = length == std::string_view::npos
                                       ? std::nullopt
                                       : ReferredCharacter(rest.substr(1, length - 1));
            if (!character) {
                FailAsMalformed(PlaceOf(at), "a & that begins no reference to a character");
            }
            to = PutUtf8(*character, to);
            at += length + 1;
        }
        *to = '\0';  // a second call finds it resolved
        return {begin, static_cast<std::size_t>(to - begin)};
    }

    std::string_view m_text;
    const Limits& m_limits;
    LineCounter m_lines;
    Document m_document;
    char* m_buffer = nullptr;  // the text in the document, which pugixml puts ends into
    std::unordered_map<std::string_view, int> m_spaces;
    std::unordered_map<std::string_view, std::vector<int>> m_prefixes;  // the innermost declaration last
    int m_count = 0;
};

}  // namespace

Document Parse(std::string_view bytes, const Limits& limits) {
    std::string storage;
    return ParseUtf8(Utf8Of(bytes, storage), limits);
}

Document ParseUtf8(std::string_view text, const Limits& limits) {
    return TreeBuilder(text, limits).Build();
}

}  // namespace rdl::xml
