// Rows of a database server through Qt Sql: PostgreSQL, MySQL and MariaDB, SQL Server and anything by ODBC.
#pragma once

#include <memory>
#include <string>

#include "rdl/data/common/connect_string.h"
#include "rdl/data/common/cursor.h"
#include "rdl/data/sql/query_text.h"

namespace rdl::data {

struct SqlSource {
    ProviderKind provider = ProviderKind::Odbc;
    std::string connectString;
    std::string user, password;  // instead of those in the connect string; empty: those
    int querySeconds = 0;        // asked of the server where the driver can
    bool integrated = false;     // as the operating system's user, unless one is given
};

// Opens the connection, runs the query and keeps both until the cursor goes. Raises rdl::Error, telling a
// missing driver, a refused logon, an unreachable server and a faulty query apart; never with the password.
std::unique_ptr<Cursor> OpenSql(const SqlSource& source, const BoundQuery& query);

}  // namespace rdl::data
