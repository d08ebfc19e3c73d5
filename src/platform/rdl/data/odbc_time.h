// How long a statement may run that is asked through ODBC.
#pragma once

#include <QSqlQuery>

namespace rdl::data {

// For a query that is prepared and not yet run. A driver that cannot keep to a time takes no notice.
void LimitOdbcTime(const QSqlQuery& query, int seconds);

}  // namespace rdl::data
