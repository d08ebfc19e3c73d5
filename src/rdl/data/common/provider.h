// SPDX-License-Identifier: GPL-3.0-or-later
// Names of data providers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

enum class ProviderKind { Sqlite, PostgreSql, MySql, SqlServer, Odbc, EnterData, Xml, Json, Csv };

// Returns the provider `name`; for OLE DB and similar the connect string decides (Provider=SQLOLEDB). Raises
// rdl::Error naming the provider and the supported ones if it is not supported.
ProviderKind FindProvider(std::string_view name, std::string_view connectString);

// Returns the names that FindProvider knows, in lower case.
std::vector<std::string_view> ProviderNames();

}  // namespace rdl::data
