// SPDX-License-Identifier: GPL-3.0-or-later
// A forward-only sequence of rows from a data source.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/data/common/field_type.h"
#include "rdl/values/value.h"

namespace rdl::data {

// Functions raise rdl::Error with the driver's message; the caller adds the names of data set and data
// source.
class Cursor {
 public:
    virtual ~Cursor() = default;
    const std::vector<std::string>& Columns() const { return m_columns; }
    // The type that the source declares for a column; Untyped if it declares none, as for an expression.
    virtual FieldType DeclaredType(std::size_t) const { return FieldType::Untyped; }
    // How many rows there are at most, where that is known before they are read; else 0.
    virtual std::size_t RowCount() const { return 0; }
    virtual bool Next() = 0;                     // moves to the next row; false after the last one
    virtual Value Cell(std::size_t column) = 0;  // value in the current row; valid after Next() returned true

 protected:
    std::vector<std::string> m_columns;
};

// Rows that were read at once, from a report, a document or a file.
class MemoryCursor : public Cursor {
 public:
    MemoryCursor(std::vector<std::string> columns, std::vector<Value> cells) : m_cells(std::move(cells)) {
        m_columns = std::move(columns);
    }
    std::size_t RowCount() const override {
        return m_columns.empty() ? 0 : m_cells.size() / m_columns.size();
    }
    bool Next() override {
        m_row = m_started ? m_row + 1 : 0;
        m_started = true;
        return !m_columns.empty() && (m_row + 1) * m_columns.size() <= m_cells.size();
    }
    Value Cell(std::size_t column) override { return m_cells[m_row * m_columns.size() + column]; }

 private:
    std::vector<Value> m_cells;  // row after row
    std::size_t m_row = 0;
    bool m_started = false;
};

}  // namespace rdl::data
