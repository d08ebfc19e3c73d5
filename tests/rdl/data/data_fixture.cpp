// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

#include <sqlite3.h>
#include <stdlib.h>
#include <sys/resource.h>

#include <fstream>
#include <iostream>

#include "rdl/format/format.h"

namespace rdl::data {

DataFixture::DataFixture() {
    std::string pattern = (std::filesystem::temp_directory_path() / "report-data-XXXXXX").string();
    folder = ::mkdtemp(pattern.data());
    definition.dataSets.reserve(8);
    definition.dataSources.reserve(8);
    request.definition = &definition;
    request.folder = folder.string();
    request.nowTicks = MakeTicks(2025, 6, 15, 12, 0, 0);
}

DataFixture::~DataFixture() {
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
}

void DataFixture::Execute(const std::string& sql) {
    sqlite3* database = nullptr;
    ASSERT_EQ(sqlite3_open((folder / "sales.db").c_str(), &database), SQLITE_OK);
    EXPECT_EQ(sqlite3_exec(database, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(database);
    sqlite3_close(database);
}

void DataFixture::Write(const std::string& name, const std::string& bytes) {
    std::ofstream(folder / name, std::ios::binary) << bytes;
}

Expr DataFixture::ExprOf(const std::string& text) {
    return {.source = text, .where = "here", .id = text.starts_with('=') ? 0 : -1};
}

DataSource& DataFixture::AddSource(const std::string& provider, const std::string& connectString) {
    definition.dataSources.push_back({"Main", provider, ExprOf(connectString), "", false});
    return definition.dataSources.back();
}

DataSet& DataFixture::AddSet(const std::string& command, const std::vector<std::string>& fields) {
    DataSet set;
    set.name = "Set" + std::to_string(definition.dataSets.size() + 1);
    set.dataSourceName = "Main";
    set.commandText = ExprOf(command);
    for (const std::string& field : fields) {
        const std::size_t colon = field.find(':');
        const std::string name = field.substr(0, colon);
        set.fields.push_back({name, name, {}, colon == std::string::npos ? "" : field.substr(colon + 1)});
    }
    definition.dataSets.push_back(std::move(set));
    return definition.dataSets.back();
}

void DataFixture::AddParameter(const std::string& name, Value value) {
    ReportParameter parameter;
    parameter.name = name;
    parameter.multiValue = value.kind() == Kind::List;
    definition.parameters.push_back(std::move(parameter));
    request.parameters.push_back({std::move(value), {}});
}

void DataFixture::AddCalculated(DataSet& set, const std::string& name, const std::string& expression) {
    set.fields.push_back({name, "", ExprOf(expression), ""});
}

void DataFixture::AddFilter(DataSet& set, const std::string& expression, const std::string& op,
                            const std::vector<std::string>& values) {
    Filter filter{ExprOf(expression), op, {}};
    for (const std::string& value : values) {
        filter.values.push_back(ExprOf(value));
    }
    set.filters.push_back(std::move(filter));
}

Table DataFixture::Load() {
    return LoadTables(request).at(definition.dataSets.front().name);
}

std::string DataFixture::Rows() {
    const Table table = Load();
    std::string text;
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        text += row ? " " : "";
        for (std::size_t field = 0; field < table.fieldNames.size(); ++field) {
            text += field ? "|" : "";
            text += ToText(table.At(row, field), FindCulture(""));
        }
    }
    return text;
}

std::string DataFixture::Failure() {
    try {
        LoadTables(request);
    } catch (const Error& error) {
        const std::string text = error.what();
        EXPECT_EQ(text.find('\''), std::string::npos) << text;
        return text;
    }
    return "no failure";
}

void DataFixture::FailWithoutFiles() {
    const rlimit none{3, 3};
    setrlimit(RLIMIT_NOFILE, &none);
    std::cerr << Failure();
    _Exit(0);
}

}  // namespace rdl::data
