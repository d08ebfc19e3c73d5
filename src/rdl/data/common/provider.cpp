// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/provider.h"

#include <algorithm>
#include <iterator>

#include "rdl/data/common/connect_string.h"
#include "rdl/data/common/message.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
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

ProviderKind FindOleDb(std::string_view connectString) {
    const std::string provider = ConnectString(connectString).Get({"provider"});
    const std::string wanted = LowerAscii(provider);
    for (const Alias& alias : OleDbAliases) {
        if (wanted.starts_with(alias.name)) {
            return alias.kind;
        }
    }
    if (wanted.empty()) {
        throw Error("the connect string names no OLE DB provider (Provider=)");
    }
    throw Error("the OLE DB provider \"" + CleanText(provider) +
                "\" cannot be used here; SQLOLEDB, SQLNCLI, MSOLEDBSQL and MSDASQL can, or give another data "
                "source, for example by ODBC");
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
        throw Error("the data source names no data provider");
    }
    throw Error(
        "the data provider \"" + CleanText(name) +
        "\" cannot be used here; known are SQLITE, PostgreSQL, MySQL, MariaDB, SQL, SQLAZURE, OLEDB, ODBC, "
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
