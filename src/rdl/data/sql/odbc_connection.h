// The text that an ODBC driver is opened with.
#pragma once

#include <string>

#include "rdl/data/common/connect_string.h"
#include "rdl/data/common/provider.h"

namespace rdl::data {

struct OdbcTarget {
    std::string text;   // for the driver manager
    std::string place;  // for people: the server "db" by the ODBC driver "FreeTDS"
};

// ODBC: the report's own pairs, user and password replaced. SQL Server: what the pairs of SqlClient and OLE
// DB mean to the driver that is installed (or named by Driver=). Values are quoted, so none can add a pair.
// Raises rdl::Error when the driver is not installed, is given as a library's path, or would be told to load
// or write files.
OdbcTarget OdbcConnection(ProviderKind provider, const ConnectString& pairs, const ServerAddress& address);

}  // namespace rdl::data
