// SPDX-License-Identifier: GPL-3.0-or-later
// Finds the elements of a text (XML 1.0, section 2 and 3; Namespaces in XML 1.0). It goes through the text
// once and does not recurse, so that time and memory are linear in the text.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "designer/document/source_tree.h"

namespace designer {

class SourceScanner {
 public:
    // `tree` has its text and nothing else.
    SourceScanner(SourceTree& tree, const SourceLimits& limits);

    // Fills the tree. Raises SourceFlaw.
    void Scan();

 private:
    struct Declaration {
        std::string_view prefix;  // as written; empty: the default namespace
        int previous;             // the namespace that it hides
        int element;
    };

    [[noreturn]] void Fail(std::size_t offset, const std::string& what) const;
    [[noreturn]] void FailAsMalformed(std::size_t offset, const std::string& what) const;
    void CheckCharacters() const;
    bool Begins(std::string_view text) const { return m_text.substr(m_at).starts_with(text); }
    void SkipBlanks();
    void SkipPast(std::string_view end, std::size_t from, const char* what);
    void ScanDeclaration();
    void ScanMarkup();
    void ScanComment();
    void ScanInstruction();
    void ScanDocumentType();
    void ScanText();
    void CheckReferences(std::size_t begin, std::size_t end) const;
    void ScanStartTag();
    void ScanAttribute(SourceElement& element, int index);
    void ResolveSpaces(int index);
    void CheckNotTwice(const SourceElement& element) const;
    void ScanEndTag();
    void Close(std::size_t end);
    std::size_t ScanName(const char* what);
    int SpaceNumber(const std::string& uri);
    int SpaceOfPrefix(std::string_view prefix, std::size_t offset) const;

    SourceTree& m_tree;
    const SourceLimits m_limits;
    const std::string_view m_text;
    std::size_t m_at = 0;
    bool m_hasDocumentType = false;
    std::vector<int> m_open;       // elements whose end tag is still to come
    std::vector<int> m_lastChild;  // of each open element
    std::vector<Declaration> m_declarations;
    std::unordered_map<std::string_view, int> m_inScope;  // namespaces by prefix
    std::unordered_map<std::string, int> m_numbers;       // of namespaces
};

}  // namespace designer
