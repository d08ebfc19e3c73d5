// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/csv/flatten.h"

#include <algorithm>
#include <utility>

#include "rdl/format/format.h"
#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/csv/csv_lines.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using layout::TableCell;
using layout::TableInstance;
using layout::TableRow;

bool BeginsWith(const CsvGroups& groups, const CsvGroups& outer) {
    return outer.size() <= groups.size() && std::equal(outer.begin(), outer.end(), groups.begin());
}

}  // namespace

std::string CsvFlattener::TextOf(const Instance& item) const {
    const bool isTyped = m_unformatted && !item.value.IsNull() && !item.value.IsText();
    return isTyped ? PlainText(item.value) : WithoutPageMarks(item.PlainText());
}

std::string CsvFlattener::TextOf(const Value& value) const {
    return m_unformatted ? PlainText(value) : ToText(value, FindCulture(m_language));
}

void CsvFlattener::Text(const Instance& text, CsvCells& cells) {
    if (text.column.empty()) {
        return;
    }
    // The text boxes of several subreports may have the same names.
    const std::string key = text.name + '\n' + std::to_string(m_texts[text.name]++);
    cells.emplace_back(m_block.Column(key, text.column), TextOf(text));
}

bool CsvFlattener::AddChart(const Instance& item, const CsvRecord& outer) {
    const layout::DrawingData& data = item.drawing->data;
    std::vector<std::uint32_t> columns;
    for (const std::string& title : data.columns) {
        columns.push_back(m_block.Column(item.name + '\n' + title, title));
    }
    for (const std::vector<Value>& row : data.rows) {
        CsvRecord record = outer;
        for (std::size_t i = 0; i < row.size(); ++i) {
            record.cells.emplace_back(columns[i], TextOf(row[i]));
        }
        m_block.Add(record);
    }
    return !data.rows.empty();
}

void CsvFlattener::Columns(const Instance& item) {
    for (const layout::DataColumn& column : item.table->DataColumns()) {
        m_block.Column(column.item, column.title);
    }
}

// Returns whether it added records.
bool CsvFlattener::AddTable(const Instance& item, const CsvRecord& outer) {
    if (++m_depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    TableInstance& table = *item.table;
    Columns(item);
    m_same = {};
    CsvGroups around = outer.groups;
    around.push_back(++m_tables);
    State state(outer, around);
    const std::size_t count = table.noRowsMessage.empty() ? table.RowCount() : 0;
    TableRow row;
    for (std::size_t i = 0; i < count; ++i) {
        table.hidesDuplicates ? table.RowOnTop(i, row) : table.Row(i, row);
        CsvGroups groups = around;
        for (const std::uint64_t group : table.GroupsAround(i)) {
            groups.push_back(group);
        }
        EnterGroups(std::move(groups), state);
        AddRow(row, Read(row, state), state);
    }
    EnterGroups(outer.groups, state);
    Flush(state);
    m_same = {};  // the next table may be another report's
    --m_depth;
    return state.hasRecords;
}

// What is known of groups that have ended is dropped; one that has a header and no rows becomes a record.
void CsvFlattener::EnterGroups(CsvGroups groups, State& state) {
    if (!state.unrecorded.empty() && !BeginsWith(groups, state.unrecorded)) {
        CsvRecord record = state.outer;
        record.cells = std::exchange(state.unrecordedCells, {});
        record.groups = std::exchange(state.unrecorded, {});
        Emit(record, state);
    }
    const std::size_t tableDepth = state.outer.groups.size() + 1;
    std::size_t same = 0;
    while (same < groups.size() && same < state.groups.size() && groups[same] == state.groups[same]) {
        ++same;
    }
    state.headers.resize(std::max<std::size_t>(same + 1, tableDepth + 1) - tableDepth);
    state.headers.resize(std::max(groups.size(), tableDepth) - tableDepth + 1);
    state.groups = std::move(groups);
}

CsvFlattener::Field CsvFlattener::FieldOf(const Instance& item, int from, int to) {
    if (item.same.IsSameAs(m_same)) {
        return {m_sameColumn, m_sameText, from, to, false};
    }
    Field field{m_block.Column(item.name, item.column), TextOf(item), from, to, false};
    if (item.same.IsSet()) {
        m_same = item.same;
        m_sameColumn = field.column;
        m_sameText = field.text;
    }
    return field;
}

void CsvFlattener::Collect(const Instance& item, int from, int to, RowContent& content, int depth) {
    if (depth > MaxNesting) {
        throw Error("Item \"" + item.name + "\" is nested too deeply");
    }
    if (item.noOutput) {
        return;
    }
    if (item.kind == InstanceKind::Text && !item.column.empty()) {
        content.fields.push_back(FieldOf(item, from, to));
    } else if (item.kind == InstanceKind::Table || item.kind == InstanceKind::Drawing) {
        content.regions.push_back(&item);
    }
    for (const Instance& child : item.children) {
        Collect(child, from, to, content, depth + 1);
    }
}

// The values of a row with those that reach into it from above.
CsvFlattener::RowContent CsvFlattener::Read(const TableRow& row, State& state) {
    RowContent content;
    std::vector<Span> begun;
    for (const TableCell& cell : row.cells) {
        const std::size_t first = content.fields.size();
        Collect(cell.content, cell.column, cell.column + std::max(cell.columnSpan, 1), content, 0);
        if (cell.rowSpan > 1 && content.fields.size() > first) {
            begun.push_back(
                {{content.fields.begin() + static_cast<std::ptrdiff_t>(first), content.fields.end()},
                 cell.rowSpan});
        }
    }
    for (Span& span : state.spans) {
        content.fields.insert(content.fields.begin(), span.fields.begin(), span.fields.end());
    }
    state.spans.insert(state.spans.end(), begun.begin(), begun.end());
    std::erase_if(state.spans, [](Span& span) { return --span.rowsLeft <= 0; });
    for (const Field& field : content.fields) {
        m_uses.resize(std::max<std::size_t>(m_uses.size(), field.column + 1));
        ++m_uses[field.column];
    }
    for (Field& field : content.fields) {
        field.isRepeated = m_uses[field.column] > 1;
    }
    for (const Field& field : content.fields) {
        m_uses[field.column] = 0;
    }
    return content;
}

void CsvFlattener::AddRow(const TableRow& row, RowContent content, State& state) {
    if (row.columnHeader || row.groupHeader) {
        Flush(state);
        AddHeader(content, state);
    } else if (row.groupFooter) {
        Flush(state);
        AddTotals(content, state);
    } else {
        AddDetail(content, state);
    }
}

// A text box that occurs once in the row applies to all records; one that repeats applies to the records of
// its own columns.
void CsvFlattener::AddHeader(const RowContent& content, State& state) const {
    for (const Field& field : content.fields) {
        Headers& headers = state.headers.back();
        headers.values.push_back(
            {field.column, field.isRepeated ? field.from : -1, field.isRepeated ? field.to : -1, field.text});
        headers.places.Add(headers.values.back());
    }
    if (state.headers.size() > 1) {
        state.unrecorded = state.groups;
        state.unrecordedCells = BaseOf(state).cells;
    }
}

void CsvFlattener::AddTotals(const RowContent& content, State& state) {
    const bool isOfGroup = state.headers.size() > 1;
    const bool hasRecord = state.hasRecords && BeginsWith(state.lastRecorded, state.groups);
    if (isOfGroup && !hasRecord && state.unrecorded.empty() && !content.fields.empty()) {
        state.unrecorded = state.groups;
        state.unrecordedCells = BaseOf(state).cells;
    }
    for (const Field& field : content.fields) {
        m_block.AddTotal(state.groups, {field.column, field.isRepeated ? field.from : -1,
                                        field.isRepeated ? field.to : -1, field.text});
    }
}

CsvRecord CsvFlattener::BaseOf(const State& state) const {
    CsvRecord base = state.outer;
    base.groups = state.groups;
    for (const Headers& level : state.headers) {
        for (const std::uint32_t number : level.places.Everywhere()) {
            base.cells.emplace_back(level.values[number].column, level.values[number].text);
        }
    }
    return base;
}

void CsvFlattener::AddDetail(const RowContent& content, State& state) {
    CsvCells own;
    bool isRepeated = false;
    for (const Field& field : content.fields) {
        isRepeated = isRepeated || field.isRepeated;
        if (!field.isRepeated) {
            own.emplace_back(field.column, field.text);
        }
    }
    // Several rows of one group instance are one record.
    const bool joins =
        state.hasPending && !isRepeated && content.regions.empty() && state.pending.groups == state.groups;
    if (joins) {
        state.pending.cells.insert(state.pending.cells.end(), own.begin(), own.end());
        return;
    }
    Flush(state);
    CsvRecord base = BaseOf(state);
    base.cells.insert(base.cells.end(), own.begin(), own.end());
    if (isRepeated) {
        AddPlaces(content, base, state);
        return;
    }
    bool hasInner = false;
    for (const Instance* region : content.regions) {
        hasInner =
            (region->kind == InstanceKind::Table ? AddTable(*region, base) : AddChart(*region, base)) ||
            hasInner;
    }
    if (hasInner) {
        Note(base.groups, state);
    } else if (!own.empty()) {
        Note(base.groups, state);
        state.pending = std::move(base);
        state.hasPending = true;
    }
}

// A record for each instance of the columns: it ends where a text box comes again.
void CsvFlattener::AddPlaces(const RowContent& content, const CsvRecord& base, State& state) {
    CsvRecord record = base;  // its memory serves again
    std::vector<std::uint32_t> seen;
    const auto end = [&] {
        if (seen.empty()) {
            return;
        }
        for (const Headers& level : state.headers) {
            for (const std::uint32_t number : level.places.Only(record.place)) {
                record.cells.emplace_back(level.values[number].column, level.values[number].text);
            }
        }
        Emit(record, state);
        record.cells.resize(base.cells.size());
        record.place = base.place;
        seen.clear();
    };
    for (const Field& field : content.fields) {
        if (!field.isRepeated) {
            continue;
        }
        if (std::find(seen.begin(), seen.end(), field.column) != seen.end()) {
            end();
        }
        if (seen.empty()) {
            record.place = field.from;
        }
        seen.push_back(field.column);
        record.cells.emplace_back(field.column, field.text);
    }
    end();
}

void CsvFlattener::Emit(const CsvRecord& record, State& state) {
    m_block.Add(record);
    Note(record.groups, state);
}

// The group has a record.
void CsvFlattener::Note(const CsvGroups& groups, State& state) {
    state.unrecorded.clear();
    state.lastRecorded = groups;
    state.hasRecords = true;
}

void CsvFlattener::Flush(State& state) {
    if (std::exchange(state.hasPending, false)) {
        m_block.Add(state.pending);
    }
}

}  // namespace rdl::writers
