// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "rdl/values/error.h"
#include "rdl/writers/common/content.h"
#include "rdl/writers/common/writers.h"
#include "rdl/writers/csv/csv_lines.h"
#include "rdl/writers/csv/flatten.h"

namespace rdl::writers {
namespace {

using layout::Instance;
using layout::InstanceKind;
using Items = std::vector<const Instance*>;

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";  // by which spreadsheets know UTF-8

// The items outside of tables as they are read: from top to bottom, then from left to right.
void Gather(const std::vector<Instance>& items, int depth, Items& found) {
    Items sorted;
    for (const Instance& item : items) {
        sorted.push_back(&item);
    }
    std::stable_sort(sorted.begin(), sorted.end(), [](const Instance* a, const Instance* b) {
        return a->y != b->y ? a->y < b->y : a->x < b->x;
    });
    for (const Instance* item : sorted) {
        if (depth > MaxNesting) {
            throw Error("Item \"" + item->name + "\" is nested too deeply");
        }
        if (!item->noOutput) {
            found.push_back(item);
            Gather(item->children, depth + 1, found);
        }
    }
}

// Writes tables with an empty line between them.
class Tables {
 public:
    explicit Tables(Output& output) : m_output(output) { m_output.Write(ByteOrderMark); }
    // Begins a table whose records are written as they are added.
    void Begin(CsvBlock& block) {
        if (block.HasColumns()) {
            Separate();
            block.Begin(m_output);
        }
    }
    void Add(CsvBlock& block) {
        if (block.HasColumns()) {
            if (!block.IsBegun()) {
                Separate();
            }
            block.Write(m_output);
        }
    }

 private:
    void Separate() {
        m_output.Write(m_isFirst ? "" : "\r\n");
        m_isFirst = false;
    }

    Output& m_output;
    bool m_isFirst = true;
};

}  // namespace

void WriteCsv(layout::ReportInstance& report, Output& output, const Options& options) {
    Items items;
    for (const auto& section : report.sections) {
        Gather(section->items, 0, items);
    }
    Tables tables(output);
    CsvBlock texts;
    CsvFlattener flattener(texts, options.choices.unformatted, report.language);
    CsvRecord record;
    for (const Instance* item : items) {
        if (item->kind == InstanceKind::Text) {
            flattener.Text(*item, record.cells);
        }
    }
    if (texts.HasColumns()) {
        texts.Add(record);
    }
    tables.Add(texts);
    for (const Instance* item : items) {
        if (item->kind != InstanceKind::Table && item->kind != InstanceKind::Drawing) {
            continue;
        }
        CsvBlock block;
        CsvFlattener region(block, options.choices.unformatted, report.language);
        if (item->kind == InstanceKind::Table) {
            region.Columns(*item);
            if (item->table->IsFlat()) {
                tables.Begin(block);
            }
            region.Table(*item);
        } else {
            region.Chart(*item);
        }
        tables.Add(block);
    }
}

void WriteCsv(const Table& table, Output& output) {
    output.Write(ByteOrderMark);
    CsvLines lines(output);
    lines.Add(table.fieldNames);
    std::vector<std::string> fields(table.fieldNames.size());
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            fields[i] = PlainText(table.At(row, i));
        }
        lines.Add(fields);
    }
    lines.Flush();
}

}  // namespace rdl::writers
