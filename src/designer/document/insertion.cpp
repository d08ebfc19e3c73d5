// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/insertion.h"

#include <map>
#include <optional>
#include <utility>

#include "designer/document/child_order.h"
#include "designer/document/xml_text.h"

namespace designer {
namespace {

constexpr std::string_view Blanks = " \t\r\n";

// Returns the line end and the blanks before the element; nullopt if something else is on its line before it.
std::optional<std::string_view> LineBefore(std::string_view text, std::size_t at) {
    const std::string_view before = text.substr(0, at);
    const std::size_t end = before.find_last_not_of(" \t");
    if (end == std::string_view::npos || (before[end] != '\n' && before[end] != '\r')) {
        return std::nullopt;
    }
    const bool isPair = before[end] == '\n' && end > 0 && before[end - 1] == '\r';
    return before.substr(isPair ? end - 1 : end);
}

// Returns the declarations of prefixes that hold within the element, as attributes.
std::string DeclarationsIn(const SourceTree& tree, int index) {
    std::map<std::string_view, std::string_view> declared;
    for (; index != NoIndex; index = tree[index].parent) {
        for (std::uint32_t i = 0; i < tree[index].attributeCount; ++i) {
            const SourceAttribute& attribute = tree.Attribute(tree[index].firstAttribute + i);
            const std::string_view name = tree.At(attribute.name);
            if (name == "xmlns" || name.starts_with("xmlns:")) {
                // With its quotes. The innermost declaration comes first and stays.
                declared.emplace(name, tree.At({attribute.value.begin - 1, attribute.value.end + 1}));
            }
        }
    }
    std::string attributes;
    for (const auto& [name, value] : declared) {
        attributes.append(" ").append(name).append("=").append(value);
    }
    return attributes;
}

// Writes an element, laid out for its new place. Only blanks between elements change.
class FragmentWriter {
 public:
    // `line` is the line end and the indent of the element; nothing: no line ends are put in.
    FragmentWriter(const Document& document, const SourceTree& tree, std::string_view prefix,
                   std::optional<std::string> line)
        : m_document(document), m_tree(tree), m_prefix(prefix), m_line(std::move(line)) {}

    std::string Write(int index) {
        WriteElement(index, 0);
        return std::move(m_out);
    }

 private:
    void WriteElement(int index, std::size_t level) {
        const SourceElement& element = m_tree[index];
        m_out += '<';
        WriteName(index);
        m_out += m_tree.At({element.nameEnd, element.tagEnd});
        if (element.IsOneTag()) {
            return;
        }
        IsLaidOut(index) ? WriteLines(index, level) : WriteAsIs(index, level);
        m_out += "</";
        WriteName(index);
        m_out += '>';
    }

    // A name without prefix is one of the report, unless the element declares a namespace of its own.
    void WriteName(int index) {
        const bool isPlain = m_tree.Prefix(index).empty() && !m_prefix.empty();
        if (isPlain && m_tree[index].space == m_tree[0].space) {
            m_out.append(m_prefix).append(":");
        }
        m_out += m_tree.QualifiedName(index);
    }

    bool IsLaidOut(int index) const {
        if (!m_line || m_tree[index].firstChild == NoIndex || m_tree.AttributeOf(index, "xml:space")) {
            return false;
        }
        for (const TextPiece& piece : m_tree.TextPieces(index)) {
            if (piece.isCData || !IsBlank(m_tree.At(piece.range))) {
                return false;
            }
        }
        return true;
    }

    void NewLine(std::size_t level) {
        m_out += *m_line;
        for (std::size_t i = 0; i < level; ++i) {
            m_out += m_document.Indent();
        }
    }

    // Comments and instructions keep their text and get a line of their own.
    void WriteLines(int index, std::size_t level) {
        std::size_t at = m_tree[index].tagEnd;
        const auto others = [&](std::size_t end) {
            const std::string_view between = std::string_view(m_tree.Text()).substr(at, end - at);
            if (!IsBlank(between)) {
                NewLine(level + 1);
                const std::size_t begin = between.find_first_not_of(Blanks);
                m_out += between.substr(begin, between.find_last_not_of(Blanks) - begin + 1);
            }
        };
        for (const int child : m_tree.Children(index)) {
            others(m_tree[child].whole.begin);
            NewLine(level + 1);
            WriteElement(child, level + 1);
            at = m_tree[child].whole.end;
        }
        others(m_tree[index].endTag);
        NewLine(level);
    }

    void WriteAsIs(int index, std::size_t level) {
        std::uint32_t at = m_tree[index].tagEnd;
        for (const int child : m_tree.Children(index)) {
            m_out += m_tree.At({at, m_tree[child].whole.begin});
            WriteElement(child, level + 1);
            at = m_tree[child].whole.end;
        }
        m_out += m_tree.At({at, m_tree[index].endTag});
    }

    const Document& m_document;
    const SourceTree& m_tree;
    const std::string_view m_prefix;
    const std::optional<std::string> m_line;
    std::string m_out;
};

std::string Laid(const Document& document, int parent, std::string_view xml,
                 std::optional<std::string> line) {
    const SourceTree& tree = document.Tree();
    // The element around it has the declarations of the new place. Its name has none of the prefixes.
    const std::string around =
        "<around" + DeclarationsIn(tree, parent) + ">" + WithLineEnds(xml, document.LineEnd()) + "</around>";
    try {
        const SourceTree fragment(around);
        const int root = fragment[0].firstChild;
        if (root == NoIndex || fragment[root].nextSibling != NoIndex || !IsBlank(fragment.TextOf(0))) {
            throw EditError("an inserted text is not one element");
        }
        return FragmentWriter(document, fragment, tree.Prefix(parent), std::move(line)).Write(root);
    } catch (const SourceFlaw& flaw) {
        throw EditError(std::string("an inserted element is damaged: ") + flaw.what());
    }
}

// The parent has no element yet: it is opened if it is one tag, and gets the new element on a line of its own
// unless the whole file is one line.
Splice FirstChild(const Document& document, int parent, std::string_view xml) {
    const SourceTree& tree = document.Tree();
    const SourceElement& element = tree[parent];
    std::optional<std::string> outer, line;
    if (!document.LineEnd().empty()) {
        const auto before = LineBefore(tree.Text(), element.whole.begin);
        outer = before        ? std::string(*before)
                : parent == 0 ? document.LineEnd()
                              : std::optional<std::string>();
        line = outer ? std::optional(*outer + document.Indent()) : std::nullopt;
    }
    const std::string written = line.value_or("") + Laid(document, parent, xml, line) + outer.value_or("");
    if (element.IsOneTag()) {
        std::size_t end = element.whole.end - 2;  // before />
        while (end > element.nameEnd && Blanks.find(tree.Text()[end - 1]) != std::string_view::npos) {
            --end;
        }
        const std::string name(tree.QualifiedName(parent));
        return {end, element.whole.end - end, ">" + written + "</" + name + ">", {}};
    }
    const std::string_view content = tree.At(element.Content());
    const std::size_t last = content.find_last_not_of(Blanks);
    const std::size_t kept = last == std::string_view::npos ? 0 : last + 1;
    return {element.tagEnd + kept, content.size() - kept, written, {}};
}

}  // namespace

ElementId FollowingSibling(const Document& document, ElementId parent, std::string_view name) {
    const SourceTree& tree = document.Tree();
    const int index = document.IndexOf(parent);
    const std::string_view parentName = tree.LocalName(index);
    const int place = PlaceInOrder(parentName, name);
    if (place < 0) {
        return NoElement;
    }
    int following = NoIndex;
    // After the last one that is not later; before the first one if all known ones are later.
    for (const int child : tree.Children(index)) {
        const int other = tree.IsOfReport(child) ? PlaceInOrder(parentName, tree.LocalName(child)) : -1;
        if (other > place && following == NoIndex) {
            following = child;
        } else if (other >= 0 && other <= place) {
            following = NoIndex;
        }
    }
    return document.IdAt(following);
}

Splice InsertionOf(const Document& document, ElementId parent, ElementId before, std::string_view xml) {
    const SourceTree& tree = document.Tree();
    const int index = document.IndexOf(parent);
    const std::vector<int> children = tree.Children(index);
    if (children.empty()) {
        return FirstChild(document, index, xml);
    }
    const int next = before == NoElement ? NoIndex : document.IndexOf(before);
    int previous = NoIndex;
    for (const int child : children) {
        if (child == next) {
            break;
        }
        previous = child;
    }
    const std::size_t neighbour = tree[previous == NoIndex ? next : previous].whole.begin;
    const auto view = LineBefore(tree.Text(), neighbour);
    const std::optional<std::string> line = view ? std::optional(std::string(*view)) : std::nullopt;
    const std::string written = Laid(document, index, xml, line);
    if (previous == NoIndex) {
        return {neighbour, 0, written + line.value_or(""), {}};
    }
    return {tree[previous].whole.end, 0, line.value_or("") + written, {}};
}

Splice RemovalOf(const Document& document, ElementId id) {
    const SourceTree& tree = document.Tree();
    const Range whole = tree[document.IndexOf(id)].whole;
    const std::string_view text = tree.Text();
    const std::string_view after = text.substr(whole.end);
    const std::size_t rest = after.find_first_not_of(" \t");
    const bool endsLine = rest == std::string_view::npos || after[rest] == '\n' || after[rest] == '\r';
    const auto line = LineBefore(text, whole.begin);
    const std::size_t begin = line && endsLine ? whole.begin - line->size() : whole.begin;
    return {begin, whole.end - begin, {}, {}};
}

}  // namespace designer
