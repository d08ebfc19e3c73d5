// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sql_connection.h"

#include <QSqlDriver>
#include <QSqlError>
#include <QSqlQuery>
#include <algorithm>
#include <atomic>

#include "rdl/api/query_kinds.h"
#include "rdl/data/common/message.h"
#include "rdl/data/sql/driver_handle.h"
#include "rdl/data/sql/odbc_connection.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/stop.h"

namespace rdl::data {
namespace {

constexpr int ConnectSeconds = 20;

QString DriverName(ProviderKind provider) {
    switch (provider) {
        case ProviderKind::PostgreSql:
            return QStringLiteral("QPSQL");
        case ProviderKind::MySql:
            return QStringLiteral("QMYSQL");
        default:
            return QStringLiteral("QODBC");
    }
}

int SecondsOf(const SqlSource& source) {
    return std::clamp(source.querySeconds, 1, MostQuerySeconds);
}

// "Verify Full", "verify-full" and VerifyFull are one.
std::string SslMode(const ConnectString& pairs) {
    std::string mode;
    for (const char c : LowerAscii(pairs.Get({"ssl mode"}))) {
        mode.append(c == ' ' || c == '-' || c == '_' ? 0 : 1, c);
    }
    return mode;
}

[[noreturn]] void RefuseSslMode(const ConnectString& pairs) {
    throw Error("the SSL mode \"" + CleanText(pairs.Get({"ssl mode"})) + "\" cannot be used here");
}

bool IsRequired(const std::string& mode) {
    return mode == "required" || mode == "require";
}

QString PostgresSsl(const ConnectString& pairs) {
    const std::string mode = SslMode(pairs);
    if (mode.empty()) {
        return {};
    }
    if (mode == "verifyca" || mode == "verifyfull") {
        return QStringLiteral(";sslmode=verify-") + QString::fromStdString(mode.substr(6));
    }
    for (const char* known : {"disable", "allow", "prefer", "require"}) {
        if (mode == known) {
            return QStringLiteral(";sslmode=") + QLatin1String(known);
        }
    }
    RefuseSslMode(pairs);
}

// The driver cannot verify the server's certificate: a report that requires it must not connect without.
QString MySqlSsl(const ConnectString& pairs) {
    const std::string mode = SslMode(pairs);
    if (IsRequired(mode)) {
        return QStringLiteral(";CLIENT_SSL=1");
    }
    if (!mode.empty() && mode != "preferred" && mode != "prefer" && mode != "none" && mode != "disabled") {
        RefuseSslMode(pairs);
    }
    return {};
}

QString ConnectOptions(const SqlSource& source, const ConnectString& pairs) {
    switch (source.provider) {
        case ProviderKind::PostgreSql:
            return QStringLiteral("connect_timeout=%1").arg(ConnectSeconds) + PostgresSsl(pairs);
        case ProviderKind::MySql:
            return QStringLiteral("MYSQL_OPT_CONNECT_TIMEOUT=%1").arg(ConnectSeconds) + MySqlSsl(pairs);
        default:
            return QStringLiteral(
                       "SQL_ATTR_LOGIN_TIMEOUT=%1;SQL_ATTR_CONNECTION_TIMEOUT=%2;"
                       "SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY")
                .arg(ConnectSeconds)
                .arg(SecondsOf(source));
    }
}

}  // namespace

SqlConnection::SqlConnection(const SqlSource& source) {
    static std::atomic<unsigned> count{0};
    const QString driver = DriverName(source.provider);
    if (!QSqlDatabase::isDriverAvailable(driver)) {
        throw Error("the database driver " + driver.toStdString() + " is not installed");
    }
    m_name = QStringLiteral("report-data-%1").arg(++count);
    m_database = QSqlDatabase::addDatabase(driver, m_name);
    try {
        Open(source);
    } catch (...) {
        Close();
        throw;
    }
}

SqlConnection::~SqlConnection() {
    const ConnectionWatch::Limit limit(m_watch, Patience);
    Close();
}

void SqlConnection::Close() {
    m_database.close();
    m_database = QSqlDatabase();
    QSqlDatabase::removeDatabase(m_name);
}

void SqlConnection::Open(const SqlSource& source) {
    const ConnectString pairs(source.connectString);
    ServerAddress address = ReadServerAddress(pairs);
    if (!source.user.empty()) {
        address.user = source.user;
        address.password = source.password;
        address.integrated = false;
    } else if (!source.password.empty()) {
        address.password = source.password;
    }
    address.integrated = address.integrated || (source.integrated && source.user.empty());
    m_secret = {address.password, {address.user, address.database, address.host}};
    m_place = "the server \"" + CleanText(address.host) + "\"";
    if (source.provider == ProviderKind::PostgreSql || source.provider == ProviderKind::MySql) {
        m_database.setHostName(QString::fromStdString(address.host));
        m_database.setDatabaseName(QString::fromStdString(address.database));
        m_database.setUserName(QString::fromStdString(address.user));
        m_database.setPassword(QString::fromStdString(address.password));
        if (address.port) {
            m_database.setPort(address.port);
        }
    } else {
        const OdbcTarget target = OdbcConnection(source.provider, pairs, address, InstalledOdbcDrivers());
        m_place = target.place;
        m_database.setDatabaseName(QString::fromStdString(target.text));
    }
    Connect(source, pairs, address);
}

void SqlConnection::Connect(const SqlSource& source, const ConnectString& pairs,
                            const ServerAddress& address) {
    const ConnectionWatch::Limit limit(m_watch, std::chrono::seconds(ConnectSeconds) + Patience);
    m_database.setConnectOptions(ConnectOptions(source, pairs));
    if (!m_database.open()) {
        Refuse(address);
    }
    m_watch.TakeConnection();
    if (source.provider == ProviderKind::MySql && !RestrictMySql(*m_database.driver())) {
        throw Error(m_place +
                    " cannot be asked: the driver cannot be told to keep the files of this machine");
    }
    FindDialect(source.provider);
    ReadOnly(source, pairs);
    if (m_watch.HasExpired()) {
        throw Error(m_place + " does not answer any more");
    }
}

void SqlConnection::FindDialect(ProviderKind provider) {
    switch (m_database.driver()->dbmsType()) {
        case QSqlDriver::PostgreSQL:
            m_dialect = ProviderKind::PostgreSql;
            break;
        case QSqlDriver::MySqlServer:
            m_dialect = ProviderKind::MySql;
            break;
        case QSqlDriver::MSSqlServer:
        case QSqlDriver::Sybase:
            m_dialect = ProviderKind::SqlServer;
            break;
        default:
            m_dialect = provider;
    }
}

// Drivers report a wrong logon and a missing server by text only.
void SqlConnection::Refuse(const ServerAddress& address) const {
    CheckStop();
    if (m_watch.HasExpired()) {
        throw Error(m_place + " cannot be reached or has no such database: it does not answer");
    }
    const std::string text = CleanText(m_database.lastError().text().toStdString(), m_secret);
    const std::string lower = LowerAscii(text);
    for (const char* word :
         {"password", "authentication", "access denied", "login failed", "role \"", "28000"}) {
        if (lower.find(word) != std::string::npos) {
            throw Error("the logon of the user \"" + CleanText(address.user) + "\" was refused by " +
                        m_place + ": " + text);
        }
    }
    throw Error(m_place + " cannot be reached or has no such database: " + text);
}

// A report only reads, and within a time limit. An older server does without the settings that it does not
// know.
void SqlConnection::ReadOnly(const SqlSource& source, const ConnectString& pairs) {
    QSqlQuery settings(m_database);
    const int seconds = SecondsOf(source);
    if (source.provider == ProviderKind::MySql && IsRequired(SslMode(pairs))) {
        // The driver falls back to no encryption if the server has none.
        settings.exec(QStringLiteral("SHOW SESSION STATUS LIKE 'Ssl_cipher'"));
        if (!settings.next() || settings.value(1).toString().isEmpty()) {
            throw Error(m_place + " does not encrypt (SSL), which the connect string asks for");
        }
    }
    if (m_dialect == ProviderKind::Odbc) {
        settings.exec(QStringLiteral("PRAGMA query_only = 1"));  // Qt does not recognize SQLite through ODBC
    } else if (m_dialect == ProviderKind::MySql) {
        m_leftQuery.Note(m_database);
        settings.exec(QStringLiteral("SET SESSION TRANSACTION READ ONLY"));
        settings.exec(QStringLiteral("SET SESSION max_statement_time = %1").arg(seconds));
        settings.exec(QStringLiteral("SET SESSION max_execution_time = %1").arg(seconds * 1000LL));
    } else if (m_dialect == ProviderKind::PostgreSql) {
        settings.exec(QStringLiteral("SET default_transaction_read_only = on"));
        settings.exec(QStringLiteral("SET statement_timeout = '%1s'").arg(seconds));
        // A query whose client has gone ends soon.
        settings.exec(QStringLiteral("SET client_connection_check_interval = '1s'"));
        const std::string path = pairs.Get({"search path"});
        if (!path.empty()) {
            settings.prepare(QStringLiteral("SELECT set_config('search_path', ?, false)"));
            settings.addBindValue(QString::fromStdString(path));
            settings.exec();
        }
    }
}

}  // namespace rdl::data
