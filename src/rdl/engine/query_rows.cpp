// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/api/query_rows.h"

#include <algorithm>
#include <memory>
#include <utility>

#include "rdl/api/host.h"
#include "rdl/data/common/field_type.h"
#include "rdl/data/load.h"
#include "rdl/data/open_cursor.h"
#include "rdl/data/shared_source.h"
#include "rdl/data/sql/query_names.h"
#include "rdl/engine/in_stage.h"
#include "rdl/values/run_watch.h"

namespace rdl {
namespace {

constexpr std::size_t MostBytes = std::size_t{64} << 20;  // of texts and pictures

std::string Absolute(const std::filesystem::path& folder) {
    return std::filesystem::absolute(folder.empty() ? "." : folder).string();
}

QueryRows FirstRows(const data::LoadRequest& request, const DataSet& dataSet, const DataSource& source,
                    std::size_t mostRows) {
    const std::unique_ptr<data::Cursor> cursor = data::OpenCursor(request, dataSet, &source);
    QueryRows rows{cursor->Columns(), {}};
    for (std::size_t column = 0; column < rows.columns.size(); ++column) {
        rows.types.emplace_back(data::NameOfFieldType(cursor->DeclaredType(column)));
    }
    std::size_t bytes = 0;
    while (rows.RowCount() < mostRows && bytes < MostBytes && cursor->Next()) {
        request.CheckBounds();
        CheckStop();
        for (std::size_t column = 0; column < rows.columns.size(); ++column) {
            const Value& cell = rows.cells.emplace_back(cursor->Cell(column));
            bytes += cell.IsText() || cell.kind() == Kind::Bytes ? cell.AsText().size() : 0;
        }
    }
    return rows;
}

QueryRows FirstOf(Table table, std::size_t mostRows) {
    QueryRows rows{std::move(table.fieldNames), std::move(table.cells)};
    rows.cells.resize(std::min(rows.cells.size(), mostRows * rows.columns.size()));
    return rows;
}

std::vector<std::string> FoldersOf(const std::filesystem::path& folder) {
    std::vector<std::string> folders = TheHost().DataFolders();
    folders.insert(folders.begin(), Absolute(folder));
    return folders;
}

}  // namespace

SharedSourceText ReadSharedSource(const std::string& reference, const std::filesystem::path& folder) {
    return engine::InStage(Stage::Data, [&] {
        const data::SharedSource source = data::ReadSharedSource(reference, FoldersOf(folder));
        return SharedSourceText{source.provider, source.connectString.source, source.file};
    });
}

SharedSetText ReadSharedSet(const std::string& reference, const std::filesystem::path& folder) {
    return engine::InStage(Stage::Data, [&] {
        const data::SharedDataSet shared = data::ReadSharedDataSet(reference, FoldersOf(folder));
        SharedSetText text{shared.source.name, shared.dataSet.commandText.source, {}, shared.file};
        for (const data::SharedParameter& parameter : shared.parameters) {
            if (!parameter.readOnly) {
                text.parameters.push_back({parameter.name, parameter.defaultValue.source});
            }
        }
        return text;
    });
}

std::vector<std::string> ParametersOfQuery(const std::string& provider, const std::string& connectString,
                                           std::string_view query) {
    try {
        const data::ProviderKind kind = data::FindProvider(provider, connectString);
        const bool isSql = kind == data::ProviderKind::Sqlite || kind == data::ProviderKind::PostgreSql ||
                           kind == data::ProviderKind::MySql || kind == data::ProviderKind::SqlServer ||
                           kind == data::ProviderKind::Odbc;
        return isSql ? data::NamesInQuery(query, kind) : std::vector<std::string>();
    } catch (const data::ProviderError&) {
        return {};
    }
}

QueryRows ReadQueryRows(const QueryRequest& request) {
    return engine::InStage(Stage::Data, [&] {
        const StopsAt stop(request.stop ? request.stop : SignalOfThread());
        Definition definition;
        DataSource source;
        source.provider = request.provider;
        source.connectString.source = request.connectString;
        DataSet dataSet;
        dataSet.commandText.source = request.query;
        dataSet.timeoutSeconds = request.seconds;
        dataSet.commandType = request.kind;
        for (const QueryValue& parameter : request.parameters) {
            const int id = parameter.value.starts_with('=') ? 0 : -1;
            dataSet.parameters.push_back(
                {parameter.name,
                 {.source = parameter.value, .where = "Parameter " + parameter.name, .line = 0, .id = id}});
        }
        data::LoadRequest load;
        load.definition = &definition;
        load.folder = Absolute(request.folder);
        load.folders = TheHost().DataFolders();
        load.nowTicks = TheHost().NowTicks();
        if (!request.user.empty()) {
            load.logons[request.source] = {request.user, request.password};
        }
        load.watch = std::make_shared<RunWatch>(RunBounds{});
        const RunWatch::Work work(load.watch);
        const RunWatch::Data waiting(load.watch);
        if (!request.sharedSet.empty()) {
            source.name = request.source;
            if (!source.name.empty()) {
                definition.dataSources.push_back(source);
            }
            dataSet.sharedDataSet = request.sharedSet;
            return FirstOf(data::LoadSharedTable(load, dataSet), request.mostRows);
        }
        // A provider that cannot be used is named here, without the advice for reports that have one.
        data::ResolveSource(load, source);
        return FirstRows(load, dataSet, source, request.mostRows);
    });
}

}  // namespace rdl
