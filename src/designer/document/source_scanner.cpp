// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/source_scanner.h"

#include <algorithm>

#include "designer/document/xml_text.h"
#include "platform/base/text.h"
#include "rdl/api/xml_encoding.h"

namespace designer {
namespace {

constexpr std::size_t LongestName = 80;  // of what a message shows
constexpr std::string_view XmlUri = "http://www.w3.org/XML/1998/namespace";
constexpr std::string_view XmlnsPrefix = "xmlns:";

std::string QuotedName(std::string_view name) {
    std::string text(CutText(name, LongestName));
    text += name.size() > LongestName ? "..." : "";
    std::replace(text.begin(), text.end(), '\'', '"');
    return "\"" + text + "\"";
}

bool IsBlankByte(char c) {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

}  // namespace

SourceScanner::SourceScanner(SourceTree& tree, const SourceLimits& limits)
    : m_tree(tree), m_limits(limits), m_text(tree.m_text) {
    m_inScope[{}] = 0;
    m_inScope["xml"] = SpaceNumber(std::string(XmlUri));
    m_numbers[{}] = 0;
}

void SourceScanner::Scan() {
    if (m_text.size() > m_limits.bytes) {
        Fail(0, "it is larger than a report may be (" + std::to_string(m_limits.bytes >> 20) + " MB)");
    }
    CheckCharacters();
    // Some programs write an empty line before it.
    SkipBlanks();
    if (Begins("<?xml") && m_text.size() > m_at + 5 && IsBlankByte(m_text[m_at + 5])) {
        ScanDeclaration();
    }
    while (m_at < m_text.size()) {
        if (m_text[m_at] == '<') {
            ScanMarkup();
        } else {
            ScanText();
        }
    }
    if (!m_open.empty()) {
        const int open = m_open.back();
        FailAsMalformed(m_text.size(), "the file ends within the element " +
                                           QuotedName(m_tree.QualifiedName(open)) + " that begins in line " +
                                           std::to_string(m_tree.PositionOf(m_tree[open].whole.begin).line));
    }
    if (m_tree.m_elements.empty()) {
        FailAsMalformed(m_text.size(), "there is no element");
    }
}

void SourceScanner::ScanDeclaration() {
    constexpr const char* Damaged = "the declaration is damaged";
    m_at += 5;  // <?xml
    while (true) {
        const std::size_t before = m_at;
        SkipBlanks();
        if (Begins("?>")) {
            m_at += 2;
            return;
        }
        if (m_at == before) {
            FailAsMalformed(0, Damaged);
        }
        m_at += NameLength(m_text.substr(m_at));
        SkipBlanks();
        const bool hasValue = Begins("=");
        m_at += hasValue ? 1 : 0;
        SkipBlanks();
        const char quote = hasValue && m_at < m_text.size() ? m_text[m_at] : '\0';
        if (quote != '"' && quote != '\'') {
            FailAsMalformed(0, Damaged);
        }
        SkipPast(std::string_view(&quote, 1), m_at + 1, Damaged);
    }
}

void SourceScanner::Fail(std::size_t offset, const std::string& what) const {
    throw SourceFlaw(PositionIn(m_text, offset), what);
}

void SourceScanner::FailAsMalformed(std::size_t offset, const std::string& what) const {
    Fail(offset, "this is not well-formed XML: " + what);
}

void SourceScanner::CheckCharacters() const {
    for (std::size_t at = 0; at < m_text.size();) {
        const char c = m_text[at];
        if (c >= ' ' && c < 0x7F) {
            ++at;
            continue;
        }
        const Character character = CharacterAt(m_text, at);
        if (character.code >= NoCharacter) {
            FailAsMalformed(at, "bytes that are no text in UTF-8");
        }
        if (!rdl::xml::IsXmlCharacter(character.code)) {
            FailAsMalformed(at, "a character that XML does not have");
        }
        at += character.length;
    }
}

void SourceScanner::SkipBlanks() {
    while (m_at < m_text.size() && IsBlankByte(m_text[m_at])) {
        ++m_at;
    }
}

void SourceScanner::SkipPast(std::string_view end, std::size_t from, const char* what) {
    const std::size_t found = m_text.find(end, from);
    if (found == std::string_view::npos) {
        FailAsMalformed(m_at, what);
    }
    m_at = found + end.size();
}

void SourceScanner::ScanMarkup() {
    if (Begins("<!--")) {
        ScanComment();
    } else if (Begins("<![CDATA[")) {
        if (m_open.empty()) {
            FailAsMalformed(m_at, "there is text outside of the root element");
        }
        SkipPast("]]>", m_at, "a CDATA section does not end");
    } else if (Begins("<?")) {
        ScanInstruction();
    } else if (Begins("<!DOCTYPE")) {
        ScanDocumentType();
    } else if (Begins("</")) {
        ScanEndTag();
    } else {
        ScanStartTag();
    }
}

// It may hold --, as the engine reads it.
void SourceScanner::ScanComment() {
    SkipPast("-->", m_at + 4, "a comment does not end");
}

void SourceScanner::ScanInstruction() {
    const std::size_t length = NameLength(m_text.substr(m_at + 2));
    const std::string_view target = m_text.substr(m_at + 2, length);
    if (length == 0 || target == "xml") {
        FailAsMalformed(m_at, length == 0 ? "a processing instruction has no name"
                                          : "a declaration that is not at the beginning of the file");
    }
    SkipPast("?>", m_at, "a processing instruction does not end");
}

// Its declarations are passed over: no entity that it declares is ever expanded.
void SourceScanner::ScanDocumentType() {
    const std::size_t begin = m_at;
    if (m_hasDocumentType || !m_tree.m_elements.empty()) {
        FailAsMalformed(begin, "a document type that does not stand before the root element");
    }
    m_hasDocumentType = true;
    m_at += 2;
    for (int depth = 0; m_at < m_text.size();) {
        const char c = m_text[m_at];
        if (c == '"' || c == '\'') {
            SkipPast(std::string_view(&c, 1), m_at + 1, "a document type does not end");
        } else if (Begins("<!--")) {
            ScanComment();
        } else if (Begins("<?")) {
            ScanInstruction();
        } else {
            depth += c == '[' ? 1 : c == ']' ? -1 : 0;
            ++m_at;
            if (c == '>' && depth == 0) {
                return;
            }
        }
    }
    FailAsMalformed(begin, "a document type does not end");
}

void SourceScanner::ScanText() {
    const std::size_t begin = m_at;
    m_at = std::min(m_text.find('<', m_at), m_text.size());
    const std::string_view text = m_text.substr(begin, m_at - begin);
    if (m_open.empty() && !IsBlank(text)) {
        FailAsMalformed(begin + text.find_first_not_of(" \t\r\n"),
                        "there is text outside of the root element");
    }
    if (const std::size_t end = text.find("]]>"); end != std::string_view::npos) {
        FailAsMalformed(begin + end, "a text holds ]]>");
    }
    CheckReferences(begin, m_at);
}

// With a document type a name may be that of an entity, which stays as it is written.
void SourceScanner::CheckReferences(std::size_t begin, std::size_t end) const {
    const std::string_view text = m_text.substr(0, end);  // what follows is not searched
    for (std::size_t at = text.find('&', begin); at != std::string_view::npos; at = text.find('&', at + 1)) {
        const std::string_view rest = text.substr(at + 1);
        const std::string_view reference = rest.substr(0, std::min(rest.find(';'), rest.size()));
        const bool isEntity =
            m_hasDocumentType && !reference.empty() && NameLength(reference) == reference.size();
        if (reference.size() == rest.size() || (!isEntity && !rdl::xml::ReferredCharacter(reference))) {
            FailAsMalformed(at, "a & that begins no reference to a character");
        }
    }
}

std::size_t SourceScanner::ScanName(const char* what) {
    const std::size_t length = NameLength(m_text.substr(m_at));
    const std::string_view name = m_text.substr(m_at, length);
    if (length == 0) {
        FailAsMalformed(m_at, what);
    }
    const std::size_t colon = name.find(':');
    const bool isPlain = colon == std::string_view::npos;
    if (!isPlain &&
        (colon == 0 || colon + 1 == name.size() || name.find(':', colon + 1) != std::string_view::npos)) {
        FailAsMalformed(m_at, QuotedName(name) + " is no name");
    }
    m_at += length;
    return length;
}

void SourceScanner::ScanStartTag() {
    const int index = m_tree.Count();
    if (m_open.empty() && index != 0) {
        FailAsMalformed(m_at, "there is more than one root element");
    }
    if (m_open.size() >= m_limits.depth) {
        Fail(m_at, "elements are nested more than " + std::to_string(m_limits.depth) + " deep");
    }
    if (m_tree.m_elements.size() >= m_limits.elements) {
        Fail(m_at, "there are more than " + std::to_string(m_limits.elements) + " elements");
    }
    SourceElement element;
    element.whole.begin = static_cast<std::uint32_t>(m_at++);
    ScanName("a < that begins no tag");
    element.nameEnd = static_cast<std::uint32_t>(m_at);
    element.firstAttribute = static_cast<std::uint32_t>(m_tree.m_attributes.size());
    while (true) {
        const std::size_t before = m_at;
        SkipBlanks();
        if (Begins(">") || Begins("/>")) {
            break;
        }
        if (m_at == before || m_at == m_text.size()) {
            FailAsMalformed(element.whole.begin, "a tag is damaged");
        }
        ScanAttribute(element, index);
    }
    const bool isOneTag = Begins("/");
    m_at += isOneTag ? 2 : 1;
    element.tagEnd = element.endTag = element.whole.end = static_cast<std::uint32_t>(m_at);
    element.parent = m_open.empty() ? NoIndex : m_open.back();
    m_tree.m_elements.push_back(element);
    ResolveSpaces(index);
    if (!m_open.empty()) {
        int& last = m_lastChild.back();
        (last == NoIndex ? m_tree.m_elements[static_cast<std::size_t>(m_open.back())].firstChild
                         : m_tree.m_elements[static_cast<std::size_t>(last)].nextSibling) = index;
        last = index;
    }
    m_open.push_back(index);
    m_lastChild.push_back(NoIndex);
    if (isOneTag) {
        Close(m_at);
    }
}

void SourceScanner::ScanAttribute(SourceElement& element, int index) {
    const std::size_t begin = m_at;
    if (++element.attributeCount > m_limits.attributes) {
        Fail(begin, "an element has more than " + std::to_string(m_limits.attributes) + " attributes");
    }
    ScanName("a tag is damaged");
    SourceAttribute attribute;
    attribute.name = {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(m_at)};
    SkipBlanks();
    if (!Begins("=")) {
        FailAsMalformed(begin, "an attribute has no value in quotes, or one that does not end");
    }
    ++m_at;
    SkipBlanks();
    const char quote = m_at < m_text.size() ? m_text[m_at] : '\0';
    const std::size_t end =
        quote == '"' || quote == '\'' ? m_text.find(quote, m_at + 1) : std::string_view::npos;
    if (end == std::string_view::npos) {
        FailAsMalformed(begin, "an attribute has no value in quotes, or one that does not end");
    }
    attribute.value = {static_cast<std::uint32_t>(m_at + 1), static_cast<std::uint32_t>(end)};
    const std::string_view value = m_tree.At(attribute.value);
    const std::string_view name = m_tree.At(attribute.name);
    if (value.find('<') != std::string_view::npos) {
        FailAsMalformed(begin, "the value of the attribute " + QuotedName(name) + " holds a <");
    }
    CheckReferences(attribute.value.begin, attribute.value.end);
    m_at = end + 1;
    if (name == "xmlns" || name.starts_with(XmlnsPrefix)) {
        const std::string_view prefix =
            name == "xmlns" ? std::string_view() : name.substr(XmlnsPrefix.size());
        const std::string uri = ResolvedValue(value);
        if (!prefix.empty() && uri.empty()) {
            FailAsMalformed(begin, "a declaration of a namespace is damaged");
        }
        const auto known = m_inScope.find(prefix);
        m_declarations.push_back({prefix, known == m_inScope.end() ? NoIndex : known->second, index});
        m_inScope[prefix] = SpaceNumber(uri);
    }
    m_tree.m_attributes.push_back(attribute);
}

void SourceScanner::ResolveSpaces(int index) {
    SourceElement& element = m_tree.m_elements[static_cast<std::size_t>(index)];
    element.space = SpaceOfPrefix(m_tree.Prefix(index), element.whole.begin);
    for (std::uint32_t i = 0; i < element.attributeCount; ++i) {
        SourceAttribute& attribute = m_tree.m_attributes[element.firstAttribute + i];
        const std::string_view name = m_tree.At(attribute.name);
        const std::size_t colon = name.find(':');
        const bool isDeclaration = name.starts_with(XmlnsPrefix);
        // The default namespace does not apply to attributes.
        if (colon != std::string_view::npos && !isDeclaration) {
            attribute.space = SpaceOfPrefix(name.substr(0, colon), attribute.name.begin);
        }
    }
    CheckNotTwice(element);
}

void SourceScanner::CheckNotTwice(const SourceElement& element) const {
    std::vector<std::pair<std::string_view, int>> names;
    for (std::uint32_t i = 0; i < element.attributeCount; ++i) {
        const SourceAttribute& attribute = m_tree.m_attributes[element.firstAttribute + i];
        const std::string_view name = m_tree.At(attribute.name);
        const std::size_t colon = attribute.space == 0 ? std::string_view::npos : name.find(':');
        names.emplace_back(colon == std::string_view::npos ? name : name.substr(colon + 1), attribute.space);
    }
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice != names.end()) {
        FailAsMalformed(element.whole.begin,
                        "an element has the attribute " + QuotedName(twice->first) + " twice");
    }
}

void SourceScanner::ScanEndTag() {
    const std::size_t begin = m_at;
    m_at += 2;
    const std::size_t length = ScanName("an end tag is damaged");
    const std::string_view name = m_text.substr(begin + 2, length);
    SkipBlanks();
    if (!Begins(">")) {
        FailAsMalformed(begin, "an end tag is damaged");
    }
    ++m_at;
    if (m_open.empty()) {
        FailAsMalformed(begin, "an end tag without an element: " + QuotedName(name));
    }
    const int index = m_open.back();
    if (m_tree.QualifiedName(index) != name) {
        FailAsMalformed(begin, "the end tag " + QuotedName(name) + " is not that of the element " +
                                   QuotedName(m_tree.QualifiedName(index)) + " of line " +
                                   std::to_string(PositionIn(m_text, m_tree[index].whole.begin).line));
    }
    m_tree.m_elements[static_cast<std::size_t>(index)].endTag = static_cast<std::uint32_t>(begin);
    Close(m_at);
}

void SourceScanner::Close(std::size_t end) {
    const int index = m_open.back();
    SourceElement& element = m_tree.m_elements[static_cast<std::size_t>(index)];
    element.whole.end = static_cast<std::uint32_t>(end);
    m_open.pop_back();
    m_lastChild.pop_back();
    while (!m_declarations.empty() && m_declarations.back().element == index) {
        const Declaration& last = m_declarations.back();
        if (last.previous == NoIndex) {
            m_inScope.erase(last.prefix);
        } else {
            m_inScope[last.prefix] = last.previous;
        }
        m_declarations.pop_back();
    }
}

int SourceScanner::SpaceNumber(const std::string& uri) {
    const auto [entry, isNew] = m_numbers.emplace(uri, static_cast<int>(m_tree.m_spaces.size()));
    if (isNew) {
        m_tree.m_spaces.push_back(uri);
    }
    return entry->second;
}

int SourceScanner::SpaceOfPrefix(std::string_view prefix, std::size_t offset) const {
    const auto found = m_inScope.find(prefix);
    if (found == m_inScope.end()) {
        FailAsMalformed(offset, "the prefix " + QuotedName(prefix) + " is declared nowhere");
    }
    return found->second;
}

}  // namespace designer
