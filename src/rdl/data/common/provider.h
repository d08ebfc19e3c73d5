// SPDX-License-Identifier: GPL-3.0-or-later
// Names of data providers.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/values/error.h"

namespace rdl::data {

enum class ProviderKind { Sqlite, PostgreSql, MySql, SqlServer, Odbc, EnterData, Xml, Json, Csv };

// The provider of a data source cannot be used here: its rows must come from elsewhere.
class ProviderError : public Error {
 public:
    using Error::Error;
};

// Returns the provider `name`; for OLE DB and similar the connect string decides (Provider=SQLOLEDB). Raises
// ProviderError naming the provider, what it asks if that is known, and the supported ones.
ProviderKind FindProvider(std::string_view name, std::string_view connectString);

// Returns the names that FindProvider knows, in lower case.
std::vector<std::string_view> ProviderNames();

}  // namespace rdl::data
