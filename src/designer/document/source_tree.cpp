// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/source_tree.h"

#include <algorithm>

#include "designer/document/source_scanner.h"
#include "designer/document/xml_text.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr std::string_view CommentBegin = "<!--", CommentEnd = "-->";
constexpr std::string_view CDataBegin = "<![CDATA[", CDataEnd = "]]>";
constexpr std::string_view InstructionEnd = "?>";

}  // namespace

SourceTree::SourceTree(std::string text, const SourceLimits& limits) : m_text(std::move(text)) {
    SourceScanner(*this, limits).Scan();
}

std::string_view SourceTree::LocalName(int index) const {
    const std::string_view name = QualifiedName(index);
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

std::string_view SourceTree::Prefix(int index) const {
    const std::string_view name = QualifiedName(index);
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? std::string_view() : name.substr(0, colon);
}

int SourceTree::Child(int parent, std::string_view localName) const {
    for (int child = (*this)[parent].firstChild; child != NoIndex; child = (*this)[child].nextSibling) {
        if (IsOfReport(child) && LocalName(child) == localName) {
            return child;
        }
    }
    return NoIndex;
}

int SourceTree::Find(int start, std::string_view path) const {
    int found = start;
    while (!path.empty() && found != NoIndex) {
        const std::size_t slash = path.find('/');
        const std::string_view step = path.substr(0, slash);
        path = slash == std::string_view::npos ? std::string_view() : path.substr(slash + 1);
        const std::size_t colon = step.find(':');
        if (colon == std::string_view::npos) {
            found = Child(found, step);
            continue;
        }
        const std::vector<int> children = Children(found);
        const auto other = std::find_if(children.begin(), children.end(), [&](int child) {
            return !IsOfReport(child) && LocalName(child) == step.substr(colon + 1);
        });
        found = other == children.end() ? NoIndex : *other;
    }
    return found;
}

std::vector<int> SourceTree::Children(int parent) const {
    std::vector<int> children;
    for (int child = (*this)[parent].firstChild; child != NoIndex; child = (*this)[child].nextSibling) {
        children.push_back(child);
    }
    return children;
}

std::vector<TextPiece> SourceTree::TextPieces(int index) const {
    const SourceElement& element = (*this)[index];
    const std::string_view text = m_text;
    std::vector<TextPiece> pieces;
    int child = element.firstChild;
    std::uint32_t at = element.tagEnd;
    while (at < element.endTag) {
        if (child != NoIndex && (*this)[child].whole.begin == at) {
            at = (*this)[child].whole.end;
            child = (*this)[child].nextSibling;
            continue;
        }
        const std::string_view rest = text.substr(at, element.endTag - at);
        if (rest.starts_with(CDataBegin)) {
            const auto end = static_cast<std::uint32_t>(at + rest.find(CDataEnd));
            pieces.push_back({{static_cast<std::uint32_t>(at + CDataBegin.size()), end}, true});
            at = end + static_cast<std::uint32_t>(CDataEnd.size());
        } else if (rest.starts_with(CommentBegin)) {
            at += static_cast<std::uint32_t>(rest.find(CommentEnd, CommentBegin.size()) + CommentEnd.size());
        } else if (rest.starts_with("<?")) {
            at += static_cast<std::uint32_t>(rest.find(InstructionEnd) + InstructionEnd.size());
        } else {
            const std::size_t end = std::min(rest.find('<'), rest.size());
            pieces.push_back({{at, static_cast<std::uint32_t>(at + end)}, false});
            at += static_cast<std::uint32_t>(end);
        }
    }
    return pieces;
}

std::string SourceTree::TextOf(int index) const {
    std::string text;
    for (const TextPiece& piece : TextPieces(index)) {
        if (!piece.isCData) {
            text += Resolved(At(piece.range));
            continue;
        }
        for (std::size_t at = piece.range.begin; at < piece.range.end; ++at) {
            const bool isPair = m_text[at] == '\r' && at + 1 < piece.range.end && m_text[at + 1] == '\n';
            if (!isPair) {
                text += m_text[at] == '\r' ? '\n' : m_text[at];
            }
        }
    }
    return text;
}

const SourceAttribute* SourceTree::FindAttribute(int index, std::string_view qualifiedName) const {
    const SourceElement& element = (*this)[index];
    for (std::uint32_t i = 0; i < element.attributeCount; ++i) {
        const SourceAttribute& attribute = m_attributes[element.firstAttribute + i];
        if (At(attribute.name) == qualifiedName) {
            return &attribute;
        }
    }
    return nullptr;
}

std::optional<std::string> SourceTree::AttributeOf(int index, std::string_view qualifiedName) const {
    const SourceAttribute* const attribute = FindAttribute(index, qualifiedName);
    return attribute ? std::optional(ResolvedValue(At(attribute->value))) : std::nullopt;
}

int SourceTree::ElementAt(std::size_t offset) const {
    const auto after = std::upper_bound(
        m_elements.begin(), m_elements.end(), offset,
        [](std::size_t at, const SourceElement& element) { return at < element.whole.begin; });
    int index = static_cast<int>(after - m_elements.begin()) - 1;
    while (index != NoIndex && (*this)[index].whole.end <= offset) {
        index = (*this)[index].parent;
    }
    return index;
}

Position SourceTree::PositionOf(std::size_t offset) const {
    return PositionIn(m_text, offset);
}

Position PositionIn(std::string_view text, std::size_t offset) {
    Position position;
    std::size_t lineBegin = 0;
    offset = std::min(offset, text.size());
    for (std::size_t at = 0; at < offset; ++at) {
        const bool isEnd = text[at] == '\n' || (text[at] == '\r' && text.substr(at + 1, 1) != "\n");
        if (isEnd) {
            ++position.line;
            lineBegin = at + 1;
        }
    }
    position.column = 1 + CountCharacters(text.substr(lineBegin, offset - lineBegin));
    return position;
}

}  // namespace designer
