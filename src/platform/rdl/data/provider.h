// What the names of data providers mean.
#pragma once

#include <string>
#include <string_view>

namespace rdl::data {

enum class ProviderKind { Sqlite, PostgreSql, MySql, SqlServer, Odbc, EnterData, Xml, Json, Csv };

// Raises rdl::Error, naming the provider, when it is none that can be used here.
ProviderKind FindProvider(std::string_view name);

}  // namespace rdl::data
