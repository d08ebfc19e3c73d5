// A connection to a database server through Qt Sql, for as long as a query of a report runs.
#pragma once

#include <QSqlDatabase>
#include <string>

#include "rdl/data/common/connect_string.h"
#include "rdl/data/common/masking.h"
#include "rdl/data/sql/connection_watch.h"
#include "rdl/data/sql/sql_cursor.h"

namespace rdl::data {

class SqlConnection {
 public:
    // Raises rdl::Error, telling a missing driver, a refused logon and an unreachable server apart; never
    // with the password.
    explicit SqlConnection(const SqlSource& source);
    SqlConnection(const SqlConnection&) = delete;
    SqlConnection& operator=(const SqlConnection&) = delete;
    ~SqlConnection();

    QSqlDatabase& Database() { return m_database; }
    // What the server speaks, which behind ODBC only it can tell; Odbc when it is none that is known.
    ProviderKind Dialect() const { return m_dialect; }
    // For the calls that follow; those of the constructor and the destructor are bounded already.
    ConnectionWatch& Watch() { return m_watch; }
    const ConnectionWatch& Watch() const { return m_watch; }
    // To be struck out of every text.
    const Secret& Password() const { return m_secret; }

 private:
    void Open(const SqlSource& source);
    void Connect(const SqlSource& source, const ConnectString& pairs, const ServerAddress& address);
    void Close();
    [[noreturn]] void Refuse(const ServerAddress& address) const;
    void FindDialect(ProviderKind provider);
    void ReadOnly(const SqlSource& source, const ConnectString& pairs);

    ConnectionWatch m_watch;  // from before the connection is made until after it is closed
    QString m_name;           // in Qt's list of connections
    QSqlDatabase m_database;
    ProviderKind m_dialect = ProviderKind::Odbc;
    Secret m_secret;
    std::string m_place;  // for people
};

}  // namespace rdl::data
