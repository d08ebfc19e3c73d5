// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/html/document_map.h"

#include "rdl/writers/html/text.h"

namespace rdl::writers {

std::string HtmlMap::Navigation() const {
    if (m_entries.empty()) {
        return {};
    }
    std::string html = "<nav><details>\n<summary>Contents</summary>\n";
    std::vector<int> open;  // levels of the lists within each other: levels may be left out on the way down
    for (const Entry& entry : m_entries) {
        if (open.empty() || entry.level > open.back()) {
            open.push_back(entry.level);
            html += "<ul>\n";
        } else {
            for (; open.size() > 1 && open[open.size() - 2] >= entry.level; open.pop_back()) {
                html += "</li></ul>\n";
            }
            html += "</li>\n";
        }
        html += "<li><a href=\"#" + entry.id + "\">";
        AppendHtml(entry.label, html);
        html += "</a>";
    }
    for (; open.size() > 1; open.pop_back()) {
        html += "</li></ul>\n";
    }
    return html + "</li></ul>\n</details></nav>\n";
}

}  // namespace rdl::writers
