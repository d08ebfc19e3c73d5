// SPDX-License-Identifier: GPL-3.0-or-later
// Columns and rows of elements that an element path selects.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "rdl/data/files/element_path.h"
#include "rdl/values/value.h"
#include "rdl/xml/element.h"

namespace rdl::data {

// Returns the path to the first elements that hold nothing but leaves.
std::vector<PathLevel> DefaultPath(const xml::Element& root);

// The columns of all elements must be known before the first row. A root whose children come in pieces may be
// given several times, with some of them each time.
class XmlRows {
 public:
    explicit XmlRows(std::vector<PathLevel> levels)
        : m_levels(std::move(levels)), m_current(m_levels.size()) {}

    // Raises rdl::Error unless the path begins with the root.
    void CheckRoot(const xml::Element& root) const;
    void CollectColumns(const xml::Element& root);
    // Raises rdl::Error if there are too many.
    void CheckColumns() const;
    std::vector<std::string> ColumnNames() const;
    // Whether a column is the text of the root or of one of its children: then it needs the whole root.
    bool NeedsWholeRoot() const;
    // How many rows CollectColumns has seen.
    std::size_t Count() const { return m_count; }
    // Appends the cells of all rows. Raises rdl::Error if there are too many in total.
    void CollectRows(const xml::Element& root, std::vector<Value>& cells);

 private:
    struct Column {
        std::size_t level;
        PathField field;
    };
    enum class Pass { Columns, Rows };

    void Visit(const xml::Element& node, std::size_t level, Pass pass, std::vector<Value>* cells);
    void AddColumn(std::size_t level, const PathField& field);
    void CollectColumnsOf(std::size_t level);
    void CollectRow(std::vector<Value>& cells);

    std::vector<PathLevel> m_levels;
    std::vector<const xml::Element*> m_current;
    std::vector<Column> m_columns;
    std::size_t m_count = 0, m_cells = 0;
};

}  // namespace rdl::data
