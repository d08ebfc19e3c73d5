// SPDX-License-Identifier: GPL-3.0-or-later
// The first rows of a query with the types of its columns.
#pragma once

#include <QTableWidget>

#include "rdl/api/query_rows.h"

namespace designer {

class RowsTable : public QTableWidget {
 public:
    static constexpr std::size_t MostRows = 100;

    explicit RowsTable(QWidget* parent = nullptr);
    // Shows at most MostRows of the rows.
    void ShowRows(const rdl::QueryRows& rows);
};

}  // namespace designer
