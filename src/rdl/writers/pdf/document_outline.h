// SPDX-License-Identifier: GPL-3.0-or-later
// Named destinations and the outline (document map) of a PDF document (ISO 32000-1, 12.3.2.3 and 12.3.3).
#pragma once

#include <map>
#include <string>
#include <vector>

#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

class PdfOutline {
 public:
    // `page` is the object number of the page; x and y are points, y upwards.
    void AddDestination(const std::string& name, int page, double x, double y);
    bool Knows(const std::string& name) const { return m_places.count(name) != 0; }
    void AddEntry(const std::string& label, int level, int page, double x, double y);
    // Writes the objects and returns the entries of the catalog.
    std::string Write(PdfFile& file) const;

 private:
    struct Entry {
        std::string label, place;
        int level;
    };
    int WriteEntries(PdfFile& file) const;
    std::map<std::string, std::string>
        m_places;  // sorted, as a name tree (7.9.6) requires; the first destination of a name counts
    std::vector<Entry> m_entries;
};

}  // namespace rdl::writers
