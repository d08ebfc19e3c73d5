// SPDX-License-Identifier: GPL-3.0-or-later
// What the parts of a design copy share: writing elements of the document as they are, without expressions,
// or others in their place.
#pragma once

#include <functional>
#include <initializer_list>
#include <set>
#include <string>
#include <string_view>

#include "designer/document/document.h"

namespace designer {

// Names of the data sets of a copy: one row; rows for charts.
inline constexpr std::string_view DesignRowSet = "DesignRow", DesignChartSet = "DesignChart";

class DesignWriter {
 public:
    explicit DesignWriter(const Document& document);

    const SourceTree& Tree() const { return m_document.Tree(); }
    const std::string& Written() const { return m_out; }

    void Open(std::string_view name) { m_out.append("<").append(m_prefix).append(name).append(">"); }
    void Close(std::string_view name) { m_out.append("</").append(m_prefix).append(name).append(">"); }
    // An element of the report with this text.
    void Leaf(std::string_view name, std::string_view text);
    // The same in an element with the attribute Name.
    void OpenNamed(std::string_view name, std::string_view value);

    // Writes the element's start tag, what `content` writes, and its end tag.
    void Around(int element, const std::function<void()>& content);
    // Writes the element and all in it but expressions, elements of other namespaces and pictures of a style
    // that the report does not embed. `skipped` are names of children, at any depth, that are left out as
    // well.
    void Copy(int element, std::initializer_list<std::string_view> skipped = {});
    // Writes those children of the element that have one of these names.
    void CopyChildren(int element, std::initializer_list<std::string_view> names);

    // Returns the text of the child without blanks around it; empty if there is none.
    std::string ChildText(int element, std::string_view path) const;
    // Whether the report embeds a picture of this name.
    bool HasImage(const std::string& name) const { return m_images.contains(name); }
    // From now on the report embeds no picture of this name.
    void LeaveImageOut(const std::string& name) { m_images.erase(name); }
    // Whether an element with the children Source and Value shows a picture that the report embeds.
    bool IsEmbedded(int element) const;

 private:
    void CopyContent(int element, std::initializer_list<std::string_view> skipped);
    bool IsLeftOut(int element) const;

    const Document& m_document;
    const std::string m_prefix;  // with its colon
    std::set<std::string> m_images;
    std::string m_out;
};

}  // namespace designer
