#include "platform/rdl/data/provider.h"

#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

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
    {"microsoft.data.sqlite", ProviderKind::Sqlite},
    {"system.data.sqlite", ProviderKind::Sqlite},
    {"postgresql", ProviderKind::PostgreSql},
    {"postgres", ProviderKind::PostgreSql},
    {"npgsql", ProviderKind::PostgreSql},
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
    {"system.data.sqlclient", ProviderKind::SqlServer},
    {"microsoft.data.sqlclient", ProviderKind::SqlServer},
    {"odbc", ProviderKind::Odbc},
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

}  // namespace

ProviderKind FindProvider(std::string_view name) {
    const std::string wanted = LowerAscii(Trimmed(name));
    for (const Alias& alias : Aliases) {
        if (alias.name == wanted) {
            return alias.kind;
        }
    }
    if (wanted.empty()) {
        throw Error("the data source names no data provider");
    }
    throw Error("the data provider \"" + CleanText(name) +
                "\" cannot be used here; give another data source, for example by ODBC");
}

}  // namespace rdl::data
