// Rows as a data source gives them, one after the other, forwards only.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/values/value.h"

namespace rdl::data {

// Raises rdl::Error with what the driver says; who reads adds the names of data set and data source.
class Cursor {
 public:
    virtual ~Cursor() = default;
    const std::vector<std::string>& Columns() const { return m_columns; }
    virtual bool Next() = 0;                     // false behind the last row
    virtual Value Cell(std::size_t column) = 0;  // of the current row

 protected:
    std::vector<std::string> m_columns;
};

// Rows that were read in one go: out of a report, a document or a file.
class MemoryCursor : public Cursor {
 public:
    MemoryCursor(std::vector<std::string> columns, std::vector<Value> cells) : m_cells(std::move(cells)) {
        m_columns = std::move(columns);
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
