// An XML text as a tree of elements. Texts are views into what the document owns, so that a tree of a million
// elements costs little more than the text that it was read from.
#pragma once

#include <initializer_list>
#include <list>
#include <string>
#include <string_view>
#include <vector>

namespace rdl::xml {

// Positions in Document::spaces.
inline constexpr int NoSpace = 0;
inline constexpr int XmlSpace = 1;  // the prefix xml

struct Attribute {
    std::string_view name;  // without prefix
    std::string_view value;
    int space = NoSpace;  // of its prefix: the default namespace is none of an attribute's
};

struct Element {
    std::string_view name;              // without prefix
    std::string_view text;              // its own, that of its children left out
    std::vector<Attribute> attributes;  // without those that declare namespaces
    std::vector<Element> children;
    int line = 0;
    int space = NoSpace;

    // The value of the attribute of that name that has no prefix; empty when there is none.
    std::string_view AttributeOf(std::string_view attribute) const;
    // xsi:nil="true"
    bool IsNil() const;
    bool IsLeaf() const { return children.empty(); }
    // The first child of that name; null when there is none.
    const Element* Child(std::string_view childName) const;
    // Along a path of children: Find({"Query", "CommandText"}).
    const Element* Find(std::initializer_list<std::string_view> path) const;
    // The child's text without blanks around it; empty when there is none.
    std::string ChildText(std::string_view childName) const;
};

// Moved, never copied: the views would go on into the other document.
struct Document {
    Document() = default;
    Document(Document&&) = default;
    Document& operator=(Document&&) = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;

    Element root;
    std::vector<std::string_view> spaces;  // the addresses of the namespaces
    std::list<std::string> texts;          // what the views look at

    // Takes another document's texts and gives its root, which can then stand in this tree.
    Element Adopt(Document&& other);
};

// Without blanks and line ends around it.
std::string_view Trimmed(std::string_view text);

}  // namespace rdl::xml
