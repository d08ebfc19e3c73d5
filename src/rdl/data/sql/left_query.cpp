// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/left_query.h"

#include <QSqlQuery>
#include <exception>

#include "rdl/data/sql/connection_watch.h"
#include "rdl/data/sql/driver_handle.h"
#include "rdl/values/stop.h"

namespace rdl::data {

void LeftQuery::Note(const QSqlDatabase& connection) {
    if (!SignalOfThread()) {
        return;
    }
    QSqlQuery question(connection);
    if (question.exec(QStringLiteral("SELECT CONNECTION_ID(), @@hostname")) && question.next()) {
        m_id = question.value(0).toULongLong();
        m_server = question.value(1).toString();
        m_name = connection.connectionName() + QStringLiteral("-end");
        m_another = QSqlDatabase::cloneDatabase(connection, m_name);
    }
}

LeftQuery::~LeftQuery() {
    if (m_name.isEmpty()) {
        return;
    }
    if (IsStopped()) {
        try {
            End();
        } catch (const std::exception&) {  // no thread for the watch: the server ends the query in its time
        }
    }
    m_another = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void LeftQuery::End() {
    const StopsAt goesOn(nullptr);
    ConnectionWatch watch;
    const ConnectionWatch::Limit limit(watch, Patience);
    if (m_another.open() && RestrictMySql(*m_another.driver())) {
        watch.TakeConnection();
        QSqlQuery end(m_another);
        if (end.exec(QStringLiteral("SELECT @@hostname")) && end.next() &&
            end.value(0).toString() == m_server) {
            end.exec(QStringLiteral("KILL QUERY %1").arg(m_id));
        }
    }
    m_another.close();
}

}  // namespace rdl::data
