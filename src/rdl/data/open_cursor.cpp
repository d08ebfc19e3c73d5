// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/open_cursor.h"

#include <algorithm>
#include <filesystem>
#include <initializer_list>

#include "rdl/api/connect_string.h"
#include "rdl/data/common/field_type.h"
#include "rdl/data/common/message.h"
#include "rdl/data/files/csv_cursor.h"
#include "rdl/data/files/data_file.h"
#include "rdl/data/files/json_cursor.h"
#include "rdl/data/files/xml_cursor.h"
#include "rdl/data/files/xml_pieces.h"
#include "rdl/data/inline_rows_cursor.h"
#include "rdl/data/row_environment.h"
#include "rdl/data/shared_source.h"
#include "rdl/data/sql/query_text.h"
#include "rdl/data/sql/sql_cursor.h"
#include "rdl/data/sql/sqlite_cursor.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

std::string TextOf(const LoadRequest& request, const Expr& source, const char* what) {
    const Value value = EvaluateAlone(request, source);
    if (value.IsError()) {
        throw Error("the expression of the " + std::string(what) + " fails: " + CleanText(value.AsText()));
    }
    return ToText(value, FindCulture(request.definition->language));
}

std::string CommandOf(const LoadRequest& request, const DataSet& dataSet) {
    return dataSet.longCommand ? dataSet.longCommand->Text() : TextOf(request, dataSet.commandText, "query");
}

std::vector<NamedValue> ParameterValues(const LoadRequest& request, const DataSet& dataSet) {
    std::vector<NamedValue> values;
    for (const QueryParameter& parameter : dataSet.parameters) {
        values.push_back({parameter.name, EvaluateAlone(request, parameter.value)});
        if (values.back().value.IsError()) {
            throw Error("the query parameter \"" + CleanText(parameter.name) +
                        "\" fails: " + CleanText(values.back().value.AsText()));
        }
    }
    return values;
}

BoundQuery QueryOf(const LoadRequest& request, const DataSet& dataSet, ProviderKind provider) {
    const std::string command = CommandOf(request, dataSet);
    const std::vector<NamedValue> values = ParameterValues(request, dataSet);
    if (Trimmed(command).empty()) {
        throw Error("the query is empty");
    }
    switch (dataSet.commandType) {
        case QueryKind::StoredProcedure:
            return ProcedureCall(command, values, provider);
        case QueryKind::Table:
            return {TableQuery(command, provider), {}};
        default:
            return BindParameters(command, values, provider);
    }
}

// Adds to the error of a source that cannot be read here how its rows can be given.
OpenSource SourceOf(const LoadRequest& request, const DataSet& dataSet, const DataSource& source) {
    try {
        return ResolveSource(request, source);
    } catch (const ProviderError& error) {
        throw Error(std::string(error.what()) +
                    "; oxc-report takes the rows from elsewhere: --data-source \"" + CleanText(source.name) +
                    "=PROVIDER;CONNECT STRING\" or --rows \"" + CleanText(dataSet.name) + "=FILE.csv\"");
    }
}

// Returns the columns of the fields of these types.
std::vector<std::string> ColumnsOf(const DataSet& dataSet, std::initializer_list<FieldType> types) {
    std::vector<std::string> columns;
    for (const Field& field : dataSet.fields) {
        if (std::find(types.begin(), types.end(), FieldTypeOfName(field.typeName)) != types.end()) {
            columns.push_back(field.dataField.empty() ? field.name : field.dataField);
        }
    }
    return columns;
}

std::string FileOf(const ConnectString& pairs) {
    return pairs.Get({"data source", "file", "filename", "uri", "url", "database", "path", "directory"});
}

std::unique_ptr<Cursor> OpenSqliteSet(const LoadRequest& request, const DataSet& dataSet,
                                      const OpenSource& source, int seconds) {
    const BoundQuery query = QueryOf(request, dataSet, source.provider);
    const std::string file =
        ResolveDataPath(FileOf(ConnectString(source.connectString)), request.SearchFolders());
    return OpenSqlite({file, seconds}, query);
}

// `file` may be empty.
std::unique_ptr<Cursor> OpenXmlText(const LoadRequest& request, const DataSet& dataSet,
                                    const std::string& file) {
    if (dataSet.longCommand) {
        if (std::unique_ptr<Cursor> cursor = OpenLongXml(*dataSet.longCommand)) {
            return cursor;
        }
    }
    return OpenXml(CommandOf(request, dataSet), file);
}

std::unique_ptr<Cursor> OpenXmlSet(const LoadRequest& request, const DataSet& dataSet,
                                   const OpenSource& source) {
    const std::string file = FileOf(ConnectString(source.connectString));
    return OpenXmlText(request, dataSet, file.empty() ? "" : ResolveDataPath(file, request.SearchFolders()));
}

std::unique_ptr<Cursor> OpenJsonSet(const LoadRequest& request, const DataSet& dataSet,
                                    const OpenSource& source) {
    const std::string path = CommandOf(request, dataSet);
    const std::vector<std::string> decimals = ColumnsOf(dataSet, {FieldType::Decimal});
    const std::string_view text = Trimmed(source.connectString);
    if (text.starts_with('{') || text.starts_with('[')) {
        return OpenJson(text, path, decimals);
    }
    return OpenJson(ReadDataFile(ResolveDataPath(FileOf(ConnectString(text)), request.SearchFolders())), path,
                    decimals);
}

std::unique_ptr<Cursor> OpenCsvSet(const LoadRequest& request, const DataSet& dataSet,
                                   const OpenSource& source) {
    const ConnectString pairs(source.connectString);
    CsvForm form;
    const std::string separator = pairs.Get({"delimiter", "separator", "columndelimiter"});
    if (!separator.empty()) {
        form.separator = EqualNoCase(separator, "tab") || separator == "\\t" ? '\t' : separator.front();
    }
    const std::string header = LowerAscii(pairs.Get({"header", "hdr", "firstrowhascolumnnames"}));
    form.header = header != "false" && header != "no" && header != "0";
    const std::string charset = LowerAscii(pairs.Get({"charset", "encoding"}));
    form.texts = ColumnsReadAsTexts(dataSet);
    form.latin1 =
        charset == "latin1" || charset == "iso-8859-1" || charset == "windows-1252" || charset == "1252";
    const std::string named = FileOf(pairs);
    std::string path = ResolveDataPath(named.empty() ? "." : named, request.SearchFolders());
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        std::vector<std::string> folders{path};
        if (named.empty()) {
            folders = request.SearchFolders();
        }
        path = ResolveDataPath(CsvFileOfQuery(CommandOf(request, dataSet)), folders);
    }
    return OpenCsv(ReadDataFile(path), form);
}

}  // namespace

std::vector<std::string> ColumnsReadAsTexts(const DataSet& dataSet) {
    return ColumnsOf(dataSet, {FieldType::Decimal, FieldType::Text});
}

OpenSource ResolveSource(const LoadRequest& request, const DataSource& source) {
    SourceOverride used;
    bool isIntegrated = false;
    if (const auto found = request.overrides.find(source.name); found != request.overrides.end()) {
        used = found->second;
    }
    const LoadRequest& report = request.report ? *request.report : request;
    if (!source.reference.empty() && (used.provider.empty() || used.connectString.empty())) {
        const SharedSource shared = ReadSharedSource(source.reference, request.SearchFolders());
        isIntegrated = used.connectString.empty() && shared.integrated;
        used.provider = used.provider.empty() ? shared.provider : used.provider;
        used.connectString = used.connectString.empty()
                                 ? TextOf(report, shared.connectString, "connect string")
                                 : used.connectString;
    }
    OpenSource open;
    open.connectString = used.connectString.empty() ? TextOf(report, source.connectString, "connect string")
                                                    : used.connectString;
    open.provider = FindProvider(used.provider.empty() ? source.provider : used.provider, open.connectString);
    open.integrated = used.connectString.empty() ? source.integratedSecurity : isIntegrated;
    if (const auto found = request.logons.find(source.name); found != request.logons.end()) {
        open.logon = found->second;
    }
    return open;
}

std::unique_ptr<Cursor> OpenCursor(const LoadRequest& request, const DataSet& dataSet,
                                   const DataSource* source) {
    if (dataSet.inlineRows) {
        return OpenInlineRows(dataSet);
    }
    // An override replaces the inline rows.
    const bool isReplaced = source && dataSet.HasCommand() && request.overrides.contains(source->name);
    if (!dataSet.rowsFile.empty() && !isReplaced) {
        return OpenXmlRows(ResolveDataPath(dataSet.rowsFile, request.SearchFolders()));
    }
    if (!source) {
        throw Error("the report has no data source \"" + CleanText(dataSet.dataSourceName) + "\"");
    }
    const OpenSource open = SourceOf(request, dataSet, *source);
    const int seconds = dataSet.timeoutSeconds > 0 ? dataSet.timeoutSeconds : request.limits.querySeconds;
    switch (open.provider) {
        case ProviderKind::Sqlite:
            return OpenSqliteSet(request, dataSet, open, seconds);
        case ProviderKind::EnterData:
            return OpenXmlText(request, dataSet, "");
        case ProviderKind::Xml:
            return OpenXmlSet(request, dataSet, open);
        case ProviderKind::Json:
            return OpenJsonSet(request, dataSet, open);
        case ProviderKind::Csv:
            return OpenCsvSet(request, dataSet, open);
        default:
            return OpenSql({open.provider, open.connectString, open.logon.user, open.logon.password, seconds,
                            open.integrated},
                           QueryOf(request, dataSet, open.provider));
    }
}

}  // namespace rdl::data
