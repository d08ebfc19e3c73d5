// The document map of an HTML file: links to the places that the report has labelled.
#pragma once

#include <string>
#include <vector>

namespace rdl::writers {

class HtmlMap {
 public:
    // An id for a place that has none yet.
    std::string NextId() { return "m" + std::to_string(++m_count); }
    // Labels in the order of the document; level 0 is the outermost.
    void Add(const std::string& label, int level, const std::string& id) {
        m_entries.push_back({label, level, id});
    }
    // Closed until the reader opens it. Empty without labels.
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
