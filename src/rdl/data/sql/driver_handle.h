// What a database's own library can be told and Qt has no word for. The libraries are loaded by Qt's drivers;
// to link them would ask for them on machines whose reports need none.
#pragma once

#include <QSqlDriver>
#include <QSqlQuery>

namespace rdl::data {

// How long a statement asked through ODBC may run; for a query that is prepared and not yet run. A driver
// that cannot keep to a time takes no notice.
void LimitOdbcTime(const QSqlQuery& query, int seconds);

// For an open connection of MySQL or MariaDB: a server's wish for a file of this machine is refused, whatever
// was asked, and a text is one statement. False when the library cannot be told.
bool RestrictMySql(const QSqlDriver& driver);

}  // namespace rdl::data
