// SPDX-License-Identifier: GPL-3.0-or-later
// Ends a query on a server of MySQL or MariaDB after its connection was stopped. Such a server notices a lost
// client only when it sends rows, and would run the query to its end. PostgreSQL checks for its client.
#pragma once

#include <QSqlDatabase>
#include <QString>

namespace rdl::data {

class LeftQuery {
 public:
    LeftQuery() = default;
    // If the thread is stopped, ends the query by another connection; that may take five seconds.
    ~LeftQuery();
    LeftQuery(const LeftQuery&) = delete;
    LeftQuery& operator=(const LeftQuery&) = delete;

    // Notes an open connection whose queries are ended. Does nothing if nothing can stop this thread.
    void Note(const QSqlDatabase& connection);

 private:
    void End();

    QString m_name;          // of the other connection, in Qt's list
    QSqlDatabase m_another;  // is not opened before the end
    QString m_server;        // its own name: one address may have several
    qulonglong m_id = 0;     // of the connection on the server
};

}  // namespace rdl::data
