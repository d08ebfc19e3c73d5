// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/provider.h"

#include <algorithm>
#include <iterator>

#include "rdl/data/common/message.h"
#include "rdl/data/common/server_address.h"
#include "rdl/values/ascii.h"
#include "rdl/values/named.h"

namespace rdl::data {
namespace {

struct Alias {
    std::string_view name;  // lower case
    ProviderKind kind;
};

constexpr Alias Aliases[] = {
    {"sqlite", ProviderKind::Sqlite},
    {"sqlite3", ProviderKind::Sqlite},
    {"qsqlite", ProviderKind::Sqlite},
    {"sqlite.net", ProviderKind::Sqlite},
    {"microsoft.data.sqlite", ProviderKind::Sqlite},
    {"system.data.sqlite", ProviderKind::Sqlite},
    {"postgresql", ProviderKind::PostgreSql},
    {"postgres", ProviderKind::PostgreSql},
    {"npgsql", ProviderKind::PostgreSql},
    {"npgsql.net", ProviderKind::PostgreSql},
    {"pgsql", ProviderKind::PostgreSql},
    {"qpsql", ProviderKind::PostgreSql},
    {"mysql", ProviderKind::MySql},
    {"mysql.net", ProviderKind::MySql},
    {"mysql.data.mysqlclient", ProviderKind::MySql},
    {"mysqlconnector", ProviderKind::MySql},
    {"mariadb", ProviderKind::MySql},
    {"qmysql", ProviderKind::MySql},
    {"qmariadb", ProviderKind::MySql},
    {"sql", ProviderKind::SqlServer},
    {"mssql", ProviderKind::SqlServer},
    {"sqlserver", ProviderKind::SqlServer},
    {"sqlazure", ProviderKind::SqlServer},
    {"sqlpdw", ProviderKind::SqlServer},
    {"microsoft sql server", ProviderKind::SqlServer},
    {"system.data.sqlclient", ProviderKind::SqlServer},
    {"microsoft.data.sqlclient", ProviderKind::SqlServer},
    {"odbc", ProviderKind::Odbc},
    {"odbc.net", ProviderKind::Odbc},
    {"qodbc", ProviderKind::Odbc},
    {"system.data.odbc", ProviderKind::Odbc},
    {"enterdata", ProviderKind::EnterData},
    {"xml", ProviderKind::Xml},
    {"json", ProviderKind::Json},
    {"csv", ProviderKind::Csv},
    {"txt", ProviderKind::Csv},
    {"text", ProviderKind::Csv},
    {"filedirectory", ProviderKind::Csv},
};
static_assert(NamesDiffer(Aliases));

// Those whose connect string says which one is meant.
constexpr std::string_view OleDbNames[] = {"oledb", "system.data.oledb"};

// What Provider= of an OLE DB connect string begins with.
constexpr Alias OleDbAliases[] = {
    {"sqloledb", ProviderKind::SqlServer},
    {"sqlncli", ProviderKind::SqlServer},
    {"msoledbsql", ProviderKind::SqlServer},
    {"msdasql", ProviderKind::Odbc},
};

// Providers whose sources are no tables.
struct OtherSource {
    std::string_view name;  // lower case
    std::string_view what;
};
constexpr OtherSource OtherSources[] = {
    {"oledb-md", "a cube, asked in MDX"},
    {"msolap", "a cube or semantic model, asked in MDX or DAX"},
    {"adomd", "a cube or semantic model, asked in MDX or DAX"},
    {"essbase", "a cube, asked in MDX"},
    {"sapbw", "a cube, asked in MDX"},
    {"dax", "a semantic model, asked in DAX"},
    {"pbidataset", "a semantic model, asked in DAX"},
    {"semanticmodel", "a semantic model, asked in DAX"},
    {"smdl", "a semantic model"},
    {"system.data.dataset", "tables in the memory of the program that had the report"},
    {"dataset", "tables in the memory of the program that had the report"},
    {"object", "objects in the memory of the program that had the report"},
};
static_assert(NamesDiffer(OtherSources));

// What `name` asks, in brackets with a blank before; empty if that is not known.
std::string WhatItAsks(std::string_view name) {
    for (const OtherSource& source : OtherSources) {
        // MSOLAP.8 is a version of MSOLAP.
        if (name == source.name || (source.name == "msolap" && name.starts_with("msolap."))) {
            return " (" + std::string(source.what) + ")";
        }
    }
    return {};
}

ProviderKind FindOleDb(std::string_view connectString) {
    const std::string provider = ConnectString(connectString).Get({"provider"});
    const std::string wanted = LowerAscii(provider);
    for (const Alias& alias : OleDbAliases) {
        if (wanted.starts_with(alias.name)) {
            return alias.kind;
        }
    }
    if (wanted.empty()) {
        throw ProviderError("the connect string names no OLE DB provider (Provider=)");
    }
    throw ProviderError("the OLE DB provider \"" + CleanText(provider) + "\"" + WhatItAsks(wanted) +
                        " cannot be used here; SQLOLEDB, SQLNCLI, MSOLEDBSQL and MSDASQL can");
}

}  // namespace

ProviderKind FindProvider(std::string_view name, std::string_view connectString) {
    const std::string wanted = LowerAscii(Trimmed(name));
    if (const Alias* alias = FindNamed(Aliases, wanted)) {
        return alias->kind;
    }
    if (std::find(std::begin(OleDbNames), std::end(OleDbNames), wanted) != std::end(OleDbNames)) {
        return FindOleDb(connectString);
    }
    if (wanted.empty()) {
        throw ProviderError("the data source names no data provider");
    }
    throw ProviderError(
        "the data provider \"" + CleanText(name) + "\"" + WhatItAsks(wanted) +
        " cannot be used here; known are SQLITE, PostgreSQL, MySQL, MariaDB, SQL, SQLAZURE, OLEDB, ODBC, "
        "XML, JSON, CSV and ENTERDATA");
}

std::vector<std::string_view> ProviderNames() {
    std::vector<std::string_view> names(std::begin(OleDbNames), std::end(OleDbNames));
    for (const Alias& alias : Aliases) {
        names.push_back(alias.name);
    }
    return names;
}

}  // namespace rdl::data
