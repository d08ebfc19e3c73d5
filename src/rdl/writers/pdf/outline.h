// Places to lead to within a PDF document: named destinations and the outline (document map).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfOutline {
 public:
    // `page` is the page object's number, y counts upwards.
    void AddDestination(const std::string& name, int page, double x, double y);
    bool Knows(const std::string& name) const { return m_places.count(name) != 0; }
    void AddEntry(const std::string& label, int level, int page, double x, double y);
    // Entries for the catalog; writes the objects.
    std::string Write(PdfFile& file) const;

 private:
    struct Entry {
        std::string label, place;
        int level;
    };
    int WriteEntries(PdfFile& file) const;
    std::map<std::string, std::string>
        m_places;  // sorted, as a name tree has to be; the first of a name counts
    std::vector<Entry> m_entries;
};

}  // namespace rdl::writers
