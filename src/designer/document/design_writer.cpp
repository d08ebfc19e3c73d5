// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/design_writer.h"

#include <algorithm>

#include "designer/document/placeholder_text.h"
#include "designer/document/xml_text.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

bool Holds(std::initializer_list<std::string_view> names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

}  // namespace

DesignWriter::DesignWriter(const Document& document)
    : m_document(document),
      m_prefix(document.Tree().Prefix(0).empty() ? "" : std::string(document.Tree().Prefix(0)) + ":") {
    const SourceTree& tree = document.Tree();
    const int images = tree.Child(0, "EmbeddedImages");
    for (int image = images == NoIndex ? NoIndex : tree[images].firstChild; image != NoIndex;
         image = tree[image].nextSibling) {
        m_images.insert(tree.AttributeOf(image, "Name").value_or(""));
    }
}

void DesignWriter::Leaf(std::string_view name, std::string_view text) {
    Open(name);
    m_out += EscapedText(text, "\n");
    Close(name);
}

void DesignWriter::OpenNamed(std::string_view name, std::string_view value) {
    m_out.append("<").append(m_prefix).append(name).append(" Name=\"");
    m_out.append(EscapedValue(value, '"')).append("\">");
}

void DesignWriter::Around(int element, const std::function<void()>& content) {
    const SourceElement& source = Tree()[element];
    m_out += Tree().At({source.whole.begin, source.IsOneTag() ? source.tagEnd - 2 : source.tagEnd - 1});
    m_out += '>';
    content();
    m_out.append("</").append(Tree().QualifiedName(element)).append(">");
}

bool DesignWriter::IsLeftOut(int element) const {
    if (!Tree().IsOfReport(element) && Tree().LocalName(element) != "DefaultFontFamily") {
        return true;
    }
    return Tree()[element].firstChild == NoIndex
               ? IsExpression(Tree().TextOf(element))
               : Tree().LocalName(element) == "BackgroundImage" && !IsEmbedded(element);
}

void DesignWriter::Copy(int element, std::initializer_list<std::string_view> skipped) {
    if (!IsLeftOut(element)) {
        Around(element, [&] { CopyContent(element, skipped); });
    }
}

// Goes as deep as the elements do, which is bounded.
void DesignWriter::CopyContent(int element, std::initializer_list<std::string_view> skipped) {
    if (Tree()[element].firstChild == NoIndex) {
        const std::string_view content = Tree().At(Tree()[element].Content());
        // A reference may be one to an entity that the copy does not declare.
        if (content.find_first_of("&<") == std::string_view::npos) {
            m_out += content;
        } else {
            m_out += EscapedText(Tree().TextOf(element), "\n");
        }
        return;
    }
    for (const int child : Tree().Children(element)) {
        if (!Holds(skipped, Tree().LocalName(child))) {
            Copy(child, skipped);
        }
    }
}

void DesignWriter::CopyChildren(int element, std::initializer_list<std::string_view> names) {
    for (const int child : Tree().Children(element)) {
        if (Holds(names, Tree().LocalName(child))) {
            Copy(child);
        }
    }
}

std::string DesignWriter::ChildText(int element, std::string_view path) const {
    const int child = Tree().Find(element, path);
    return child == NoIndex ? std::string() : std::string(Trim(Tree().TextOf(child)));
}

bool DesignWriter::IsEmbedded(int element) const {
    return SameAscii(ChildText(element, "Source"), "Embedded") && HasImage(ChildText(element, "Value"));
}

}  // namespace designer
