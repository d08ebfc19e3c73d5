// The text that an ODBC driver is opened with.
#pragma once

#include <string>

#include "platform/rdl/data/connect_string.h"
#include "platform/rdl/data/provider.h"

namespace rdl::data {

// ODBC: the report's own pairs, user and password replaced. SQL Server: a text for the driver that is
// installed (or named by Driver=). Values are quoted, so none can add a pair. Raises rdl::Error when no
// driver for SQL Server is installed.
std::string OdbcConnection(ProviderKind provider, const ConnectString& pairs, const ServerAddress& address);

}  // namespace rdl::data
