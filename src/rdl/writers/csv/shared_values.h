// SPDX-License-Identifier: GPL-3.0-or-later
// Values that several records of a text file share. A matrix has thousands of columns with a heading each, so
// those of one column are found without a look at the others.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace rdl::writers {

// A value for the records of a group; with a range only for those from columns of it.
struct CsvShared {
    std::uint32_t column = 0;
    std::int32_t from = -1, to = -1;  // columns of the report's table, `to` excluded; -1: all
    std::string text;
};

// The numbers of values, counted from 0, by the columns of the report's table.
class CsvPlaces {
 public:
    using Numbers = std::vector<std::uint32_t>;  // ascending

    // Enters the next value.
    void Add(const CsvShared& value);
    // Returns the values for all columns.
    const Numbers& Everywhere() const { return m_everywhere; }
    // Returns the values with a range that holds column `place`; none for a negative one.
    const Numbers& Only(std::int32_t place) const;
    // Returns both.
    Numbers Holding(std::int32_t place) const;

 private:
    std::uint32_t m_count = 0;
    Numbers m_everywhere;
    std::vector<Numbers> m_places;  // by column
};

}  // namespace rdl::writers
