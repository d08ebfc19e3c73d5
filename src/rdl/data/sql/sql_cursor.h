// SPDX-License-Identifier: GPL-3.0-or-later
// Rows from a database server through Qt SQL: PostgreSQL, MySQL, MariaDB, SQL Server and any ODBC source.
#pragma once

#include <memory>
#include <string>

#include "rdl/data/common/cursor.h"
#include "rdl/data/sql/query_text.h"

namespace rdl::data {

struct SqlSource {
    ProviderKind provider = ProviderKind::Odbc;
    std::string connectString;
    std::string user, password;  // replace those of the connect string unless empty
    int querySeconds = 0;        // timeout, if the driver supports one
    bool integrated = false;     // log on as the user of the operating system unless `user` is given
};

// Opens the connection and runs the query; the cursor owns both. Raises rdl::Error that distinguishes a
// missing driver, a refused logon, an unreachable server and a faulty query; it never contains the password.
std::unique_ptr<Cursor> OpenSql(const SqlSource& source, const BoundQuery& query);

}  // namespace rdl::data
