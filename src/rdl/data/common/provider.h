// What the names of data providers mean.
#pragma once

#include <string>
#include <string_view>

namespace rdl::data {

enum class ProviderKind { Sqlite, PostgreSql, MySql, SqlServer, Odbc, EnterData, Xml, Json, Csv };

// OLE DB and its like say in the connect string (Provider=SQLOLEDB) which one is meant. Raises rdl::Error,
// naming the provider and those that are known, when it is none that can be used here.
ProviderKind FindProvider(std::string_view name, std::string_view connectString);

}  // namespace rdl::data
