// SPDX-License-Identifier: GPL-3.0-or-later
// Settings of database client libraries without an equivalent in Qt. The libraries are those that Qt's
// drivers have loaded; linking them would require them on machines whose reports do not need them.
#pragma once

#include <QSqlDriver>
#include <QSqlQuery>

namespace rdl::data {

// Limits the run time of a prepared ODBC query before it runs. Drivers without this feature ignore it.
void LimitOdbcTime(const QSqlQuery& query, int seconds);

// For an open connection to MySQL or MariaDB: refuses the server's requests for local files and allows only
// one statement in a text. Returns false if the library lacks the function.
bool RestrictMySql(const QSqlDriver& driver);

}  // namespace rdl::data
