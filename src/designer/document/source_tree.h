// SPDX-License-Identifier: GPL-3.0-or-later
// The text of a report file and where its elements lie in it. Nothing of the text is lost or changed:
// comments, CDATA sections, processing instructions, a document type, blanks and the form of quotes stay as
// they are (XML 1.0 and Namespaces in XML 1.0). References are resolved for the reader only; no entity is
// ever expanded but the predefined ones and those of characters.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace designer {

// Bytes of a text, from `begin` up to but without `end`.
struct Range {
    std::uint32_t begin = 0, end = 0;
    std::uint32_t Size() const { return end - begin; }
    bool IsEmpty() const { return begin == end; }
};

// Where something is in a text, both counted from 1. A column is a character.
struct Position {
    std::size_t line = 1, column = 1;
};

// A text that is not well-formed, or past a limit. what() does not name the file and has no '.
class SourceFlaw : public std::runtime_error {
 public:
    SourceFlaw(Position position, const std::string& what) : std::runtime_error(what), m_position(position) {}
    Position Place() const { return m_position; }

 private:
    Position m_position;
};

// Limits on files, which bound memory: those of the engine.
struct SourceLimits {
    std::size_t bytes = std::size_t{64} << 20;
    std::size_t depth = 200;
    std::size_t elements = 1'000'000;
    std::size_t attributes = 256;  // of one element
};

inline constexpr int NoIndex = -1;

struct SourceAttribute {
    Range name;   // with its prefix
    Range value;  // without the quotes, which stand on both sides of it
    int space = 0;
};

// The indexes are those of SourceTree::Elements(); NoIndex: there is none.
struct SourceElement {
    Range whole;
    std::uint32_t nameEnd = 0;
    std::uint32_t tagEnd = 0;  // of the start tag
    std::uint32_t endTag = 0;  // where the end tag begins; whole.end if the element is one empty-element tag
    int space = 0;             // index of its namespace
    int parent = NoIndex, firstChild = NoIndex, nextSibling = NoIndex;
    std::uint32_t firstAttribute = 0, attributeCount = 0;

    bool IsOneTag() const { return endTag == whole.end; }
    Range StartTag() const { return {whole.begin, tagEnd}; }
    Range Name() const { return {whole.begin + 1, nameEnd}; }  // with its prefix
    Range Content() const { return {tagEnd, endTag}; }
    Range EndTag() const { return {endTag, whole.end}; }
};

// A piece of an element's own character data: all of it that no element, comment or instruction interrupts.
struct TextPiece {
    Range range;  // of a CDATA section without its marks
    bool isCData = false;
};

class SourceTree {
 public:
    // Takes a text in UTF-8 without a byte order mark. Raises SourceFlaw.
    explicit SourceTree(std::string text, const SourceLimits& limits = {});

    const std::string& Text() const { return m_text; }
    std::string_view At(Range range) const {
        return std::string_view(m_text).substr(range.begin, range.Size());
    }

    // In document order; the first one is the root.
    const std::vector<SourceElement>& Elements() const { return m_elements; }
    const SourceElement& operator[](int index) const { return m_elements[static_cast<std::size_t>(index)]; }
    int Count() const { return static_cast<int>(m_elements.size()); }

    std::string_view QualifiedName(int index) const { return At((*this)[index].Name()); }
    std::string_view LocalName(int index) const;
    std::string_view Prefix(int index) const;  // empty if the name has none
    // Returns the URI of the element's namespace; empty if it has none.
    const std::string& SpaceOf(int index) const { return SpaceUri((*this)[index].space); }
    const std::string& SpaceUri(int space) const { return m_spaces[static_cast<std::size_t>(space)]; }
    // Whether the element is in the namespace of the root.
    bool IsOfReport(int index) const { return (*this)[index].space == m_elements.front().space; }

    // Returns the first child of this name in the namespace of the report, or NoIndex.
    int Child(int parent, std::string_view localName) const;
    // Follows a path of such names, "Style/Border/Color"; a step "rd:TypeName" is a child in any namespace
    // but the report's. Returns the start for an empty path, NoIndex if a step is missing.
    int Find(int start, std::string_view path) const;
    // Returns the elements within, of every namespace, in the order of the text.
    std::vector<int> Children(int parent) const;

    // Returns the element's own character data: references resolved, line ends as line feeds.
    std::string TextOf(int index) const;
    std::vector<TextPiece> TextPieces(int index) const;
    // Returns the value of the attribute with this name as it is written, prefix included.
    std::optional<std::string> AttributeOf(int index, std::string_view qualifiedName) const;
    const SourceAttribute& Attribute(std::size_t index) const { return m_attributes[index]; }
    // Returns the attribute with this name as it is written; null if there is none. The tree owns it.
    const SourceAttribute* FindAttribute(int index, std::string_view qualifiedName) const;

    // Returns the innermost element around the byte, or NoIndex.
    int ElementAt(std::size_t offset) const;
    // Returns the place of a byte. A line ends at LF, CR LF or CR.
    Position PositionOf(std::size_t offset) const;

 private:
    friend class SourceScanner;
    std::string m_text;
    std::vector<SourceElement> m_elements;
    std::vector<SourceAttribute> m_attributes;
    std::vector<std::string> m_spaces{{}};  // URIs; the first one is that of no namespace
};

// Returns the place of a byte of a text.
Position PositionIn(std::string_view text, std::size_t offset);

}  // namespace designer
