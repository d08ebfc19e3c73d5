// SPDX-License-Identifier: GPL-3.0-or-later
// A connection to a database server through Qt SQL, open while a query of a report runs.
#pragma once

#include <QSqlDatabase>
#include <string>

#include "rdl/data/common/masking.h"
#include "rdl/data/common/server_address.h"
#include "rdl/data/sql/connection_watch.h"
#include "rdl/data/sql/left_query.h"
#include "rdl/data/sql/sql_cursor.h"

namespace rdl::data {

class SqlConnection {
 public:
    // Opens the connection. Raises rdl::Error that distinguishes a missing driver, a refused logon and an
    // unreachable server; it never contains the password.
    explicit SqlConnection(const SqlSource& source);
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;
    ~SqlConnection();

    QSqlDatabase& Database() { return m_database; }
    // The SQL dialect of the server. Through ODBC the server is asked for it; Odbc if it is unknown.
    ProviderKind Dialect() const { return m_dialect; }
    // For later calls; those of the constructor and the destructor are limited already.
    ConnectionWatch& Watch() { return m_watch; }
    const ConnectionWatch& Watch() const { return m_watch; }
    // The password, to be removed from every text.
    const Secret& Password() const { return m_secret; }

 private:
    void Open(const SqlSource& source);
    void Connect(const SqlSource& source, const ConnectString& pairs, const ServerAddress& address);
    void Close();
    [[noreturn]] void Refuse(const ServerAddress& address) const;
    void FindDialect(ProviderKind provider);
    void ReadOnly(const SqlSource& source, const ConnectString& pairs);

    LeftQuery m_leftQuery;    // is ended after the connection
    ConnectionWatch m_watch;  // lives longer than the connection
    QString m_name;           // name in Qt's list of connections
    QSqlDatabase m_database;
    ProviderKind m_dialect = ProviderKind::Odbc;
    Secret m_secret;
    std::string m_place;  // for error texts
};

}  // namespace rdl::data
