// SPDX-License-Identifier: GPL-3.0-or-later
// Flattens the items of a report to tables: each record has the values of the innermost level and repeats
// those around it, from outer groups and from the items that contain the table.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/model/instance.h"
#include "rdl/writers/csv/block.h"

namespace rdl::writers {

class CsvFlattener {
 public:
    // `language` is that of the report; it formats what has no format of its own.
    CsvFlattener(CsvBlock& block, bool unformatted, std::string language)
        : m_block(block), m_unformatted(unformatted), m_language(std::move(language)) {}

    // Adds the columns of a table. Table does so, too.
    void Columns(const layout::Instance& item);
    // Each adds one item as records. Raises rdl::Error naming an item that is nested too deeply.
    void Text(const layout::Instance& text, CsvCells& cells);
    void Table(const layout::Instance& item) { AddTable(item, {}); }
    void Chart(const layout::Instance& item) { AddChart(item, {}); }

 private:
    struct Field {
        std::uint32_t column;
        std::string text;
        int from, to;     // columns of the report's table
        bool isRepeated;  // the row has the same text box for several columns
    };
    struct Span {
        std::vector<Field> fields;
        int rowsLeft;
    };
    struct RowContent {
        std::vector<Field> fields;
        std::vector<const layout::Instance*> regions;  // tables and charts in the cells
    };
    struct Headers {
        std::vector<CsvShared> values;
        CsvPlaces places;  // of the values
    };
    // The place within a table while its rows are read.
    struct State {
        State(const CsvRecord& around, CsvGroups own) : outer(around), groups(std::move(own)), headers(1) {}
        const CsvRecord& outer;
        CsvGroups groups;              // of the row
        std::vector<Headers> headers;  // of the open groups, by depth; the table's first
        std::vector<Span> spans;       // cells that reach into rows below
        CsvRecord pending;             // a record that the next row may belong to
        bool hasPending = false;
        CsvGroups unrecorded;  // group that has a header and no record yet
        CsvCells unrecordedCells;
        CsvGroups lastRecorded;
        bool hasRecords = false;
    };

    bool AddTable(const layout::Instance& item, const CsvRecord& outer);
    bool AddChart(const layout::Instance& item, const CsvRecord& outer);
    RowContent Read(const layout::TableRow& row, State& state);
    void Collect(const layout::Instance& item, int from, int to, RowContent& content, int depth);
    void AddRow(const layout::TableRow& row, RowContent content, State& state);
    void AddHeader(const RowContent& content, State& state) const;
    void AddTotals(const RowContent& content, State& state);
    void AddDetail(const RowContent& content, State& state);
    void AddPlaces(const RowContent& content, const CsvRecord& base, State& state);
    void EnterGroups(CsvGroups groups, State& state);
    void Emit(const CsvRecord& record, State& state);
    static void Note(const CsvGroups& groups, State& state);
    void Flush(State& state);
    CsvRecord BaseOf(const State& state) const;
    Field FieldOf(const layout::Instance& item, int from, int to);
    std::string TextOf(const layout::Instance& item) const;
    std::string TextOf(const Value& value) const;

    CsvBlock& m_block;
    const bool m_unformatted;
    const std::string m_language;
    std::unordered_map<std::string, int> m_texts;  // how often a name was there
    std::uint64_t m_tables = 0;
    // The text that was the same in several cells, and its column.
    layout::SameText m_same;
    std::uint32_t m_sameColumn = 0;
    std::string m_sameText;
    std::vector<int> m_uses;  // of columns, in one row
    int m_depth = 0;
};

}  // namespace rdl::writers
