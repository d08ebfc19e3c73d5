// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/inline_rows_cursor.h"

#include "rdl/definition/tree/inline_rows.h"
#include "rdl/values/ascii.h"

namespace rdl::data {
namespace {

class InlineRowsCursor : public Cursor {
 public:
    explicit InlineRowsCursor(const DataSet& dataSet)
        : m_reader(*dataSet.inlineRows), m_count(dataSet.inlineRows->Count()) {
        for (const Field& field : dataSet.fields) {
            if (!field.dataField.empty()) {
                m_columns.push_back(field.dataField);
            }
        }
        m_columnsOf.resize(dataSet.inlineRows->Names().size());
        for (std::size_t name = 0; name < m_columnsOf.size(); ++name) {
            for (std::size_t column = 0; column < m_columns.size(); ++column) {
                if (EqualNoCase(dataSet.inlineRows->Names()[name], m_columns[column])) {
                    m_columnsOf[name].push_back(column);
                }
            }
        }
    }

    std::size_t RowCount() const override { return m_count; }
    bool Next() override {
        m_cells.assign(m_columns.size(), Value());
        if (m_columns.empty() || !m_reader.Next()) {
            return false;
        }
        for (const auto& [name, text] : m_reader.Row()) {
            for (const std::size_t column : m_columnsOf[name]) {
                if (m_cells[column].IsNull()) {  // the first of several counts
                    m_cells[column] = Value::Text(text);
                }
            }
        }
        return true;
    }
    Value Cell(std::size_t column) override { return m_cells[column]; }

 private:
    InlineRows::Reader m_reader;
    const std::size_t m_count;
    std::vector<std::vector<std::size_t>> m_columnsOf;  // of each name
    std::vector<Value> m_cells;                         // of the current row
};

}  // namespace

std::unique_ptr<Cursor> OpenInlineRows(const DataSet& dataSet) {
    return std::make_unique<InlineRowsCursor>(dataSet);
}

}  // namespace rdl::data
