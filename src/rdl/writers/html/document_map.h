// SPDX-License-Identifier: GPL-3.0-or-later
// The document map of an HTML file: links to labelled places.
#pragma once

#include <string>
#include <vector>

namespace rdl::writers {

class HtmlMap {
 public:
    // Returns a new element id.
    std::string NextId() { return "m" + std::to_string(++m_count); }
    // Adds a label, in document order; level 0 is the outermost.
    void Add(const std::string& label, int level, const std::string& id) {
        m_entries.push_back({label, level, id});
    }
    // Returns the map as a collapsed element; empty without labels.
    std::string Navigation() const;

 private:
    struct Entry {
        std::string label;
        int level;
        std::string id;
    };
    std::vector<Entry> m_entries;
    int m_count = 0;
};

}  // namespace rdl::writers
