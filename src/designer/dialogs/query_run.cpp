// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/query_run.h"

#include "designer/dialogs/row_text.h"
#include "platform/reports/failure.h"
#include "platform/reports/machine_host.h"

namespace designer {
namespace {

constexpr std::size_t MostTables = 5000;
constexpr int MostSeconds = 120;  // that the window waits for a query

}  // namespace

rdl::QueryRows RunQuery(rdl::QueryRequest request) {
    request.seconds = MostSeconds;
    reports::UseMachineHost();
    return reports::Translated([&] { return rdl::ReadQueryRows(request); });
}

std::vector<TableName> TablesOf(const SourceKind& kind, rdl::QueryRequest request) {
    request.query = kind.tables;
    request.mostRows = MostTables;
    const rdl::QueryRows rows = RunQuery(request);
    std::vector<TableName> tables;
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        tables.push_back({TextOf(rows.At(row, 0)), TextOf(rows.At(row, 1))});
    }
    return tables;
}

}  // namespace designer
