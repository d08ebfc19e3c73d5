// SPDX-License-Identifier: GPL-3.0-or-later
// One table of a text file under construction (RFC 4180, section 2): a header row, then records of equal
// length. Columns may be added while records are; the totals of groups are added to the records of their
// groups when the table is written. A table that has neither is written while it is made.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "rdl/api/output.h"
#include "rdl/spool/spool.h"
#include "rdl/writers/csv/csv_lines.h"
#include "rdl/writers/csv/shared_values.h"

namespace rdl::writers {

using CsvCells = std::vector<std::pair<std::uint32_t, std::string>>;  // by column
using CsvGroups = std::vector<std::uint64_t>;                         // instances, outermost first

struct CsvRecord {
    CsvCells cells;
    CsvGroups groups;
    std::int32_t place = -1;  // column of the report's table from which the values come; -1: from all
};

class CsvBlock {
 public:
    // Returns the column of `key`, which is added with its title if there is none.
    std::uint32_t Column(const std::string& key, const std::string& title);
    // Adds a record; its columns are those that Column has returned. Raises the errors of Spool.
    void Add(const CsvRecord& record);
    // Adds a value to every record of the groups, those that were added before included. Raises nothing.
    void AddTotal(const CsvGroups& groups, CsvShared total);
    bool HasColumns() const { return !m_titles.empty(); }
    // Writes the header. Each record from now on is written when it is added; no column and no total may be
    // added any more. Call this before the first record, or not at all.
    void Begin(Output& output);
    bool IsBegun() const { return m_lines.has_value(); }
    // Writes what is not written yet. Call this once.
    void Write(Output& output);

 private:
    // The totals of the record's groups that were looked up last, by depth.
    struct Found {
        const std::vector<CsvShared>* totals = nullptr;
        CsvPlaces places;
    };
    void Join(const CsvRecord& record);
    void WriteRecords();

    std::vector<std::string> m_titles;
    std::unordered_map<std::string, std::uint32_t> m_columns;
    std::map<CsvGroups, std::vector<CsvShared>> m_totals;
    Spool m_records;
    CsvRecord m_last;     // the record that was added last
    std::string m_bytes;  // of a record

    std::optional<CsvLines> m_lines;
    std::vector<std::string_view> m_line;
    std::vector<Found> m_found;
};

}  // namespace rdl::writers
