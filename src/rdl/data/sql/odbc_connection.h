// SPDX-License-Identifier: GPL-3.0-or-later
// Connection strings for ODBC drivers.
#pragma once

#include <string>

#include "rdl/data/common/provider.h"
#include "rdl/data/common/server_address.h"
#include "rdl/data/sql/odbc_drivers.h"

namespace rdl::data {

struct OdbcTarget {
    std::string text;   // the connection string
    std::string place;  // for error texts: the server "db" by the ODBC driver "FreeTDS"
};

// For ODBC: the report's own pairs with user and password replaced. For SQL Server: the pairs of SqlClient
// and OLE DB translated for the installed driver (or the one named by Driver=). Values are quoted, so that
// none can add a pair. Raises rdl::Error if the driver is not installed, is given as a library path, or could
// load or write files.
OdbcTarget OdbcConnection(ProviderKind provider, const ConnectString& pairs, const ServerAddress& address,
                          const OdbcDriverNames& installed);

}  // namespace rdl::data
