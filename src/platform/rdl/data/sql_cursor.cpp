#include "platform/rdl/data/sql_cursor.h"

#include <QDateTime>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QSqlRecord>
#include <QUuid>
#include <QVariant>
#include <atomic>
#include <limits>
#include <optional>

#include "platform/rdl/data/message.h"
#include "platform/rdl/data/odbc_connection.h"
#include "platform/rdl/error.h"
#include "platform/rdl/format/format.h"

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

// One connection of Qt's list, taken out again when it goes.
class Connection {
 public:
    explicit Connection(const QString& driver) {
        static std::atomic<unsigned> count{0};
        m_name = QStringLiteral("report-data-%1").arg(++count);
        if (!QSqlDatabase::isDriverAvailable(driver)) {
            throw Error("the database driver " + driver.toStdString() + " is not installed");
        }
        m_database = QSqlDatabase::addDatabase(driver, m_name);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        m_database.close();
        m_database = QSqlDatabase();
        QSqlDatabase::removeDatabase(m_name);
    }
    QSqlDatabase& Database() { return m_database; }

 private:
    QString m_name;
    QSqlDatabase m_database;
};

QVariant ToVariant(const Value& value) {
    switch (value.kind()) {
        case Kind::Boolean:
            return value.AsBoolean();
        case Kind::Integer:
            return QVariant::fromValue<qlonglong>(value.AsInteger());
        case Kind::Real:
            return value.AsReal();
        case Kind::DateTime: {
            const DateTimeParts parts = SplitTicks(value.AsTicks());
            // A moment without a zone: what the server stores must not depend on where this runs.
            return QDateTime(QDate(parts.year, parts.month, parts.day),
                             QTime(parts.hour, parts.minute, parts.second, parts.fraction / 10'000));
        }
        case Kind::Text:
            return QString::fromUtf8(value.AsText().data(), static_cast<qsizetype>(value.AsText().size()));
        case Kind::Bytes:
            return QByteArray(value.AsText().data(), static_cast<qsizetype>(value.AsText().size()));
        default:
            return {};
    }
}

Value OfDateTime(const QDateTime& moment) {
    if (!moment.isValid() || moment.date().year() < 1 || moment.date().year() > 9999) {
        return {};
    }
    const QDate day = moment.date();
    const QTime time = moment.time();
    return Value::DateTime(
        MakeTicks(day.year(), day.month(), day.day(), time.hour(), time.minute(), time.second()) +
        time.msec() * (TicksPerSecond / 1000));
}

Value OfVariant(const QVariant& variant) {
    if (variant.isNull()) {
        return {};
    }
    switch (variant.typeId()) {
        case QMetaType::Bool:
            return Value::Boolean(variant.toBool());
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::LongLong:
            return Value::Integer(variant.toLongLong());
        case QMetaType::ULong:
        case QMetaType::ULongLong: {
            const qulonglong number = variant.toULongLong();
            return number <= static_cast<qulonglong>(std::numeric_limits<qlonglong>::max())
                       ? Value::Integer(static_cast<std::int64_t>(number))
                       : Value::Real(static_cast<double>(number));
        }
        case QMetaType::Float:
        case QMetaType::Double:
            return Value::Real(variant.toDouble());
        case QMetaType::QDate:
        case QMetaType::QDateTime:
            return OfDateTime(variant.toDateTime());
        case QMetaType::QTime:
            return Value::TimeSpan(static_cast<std::int64_t>(variant.toTime().msecsSinceStartOfDay()) *
                                   10'000);
        case QMetaType::QByteArray: {
            const QByteArray bytes = variant.toByteArray();
            return Value::Bytes({bytes.constData(), static_cast<std::size_t>(bytes.size())});
        }
        default:
            return Value::Text(variant.toString().toStdString());
    }
}

class SqlCursor : public Cursor {
 public:
    SqlCursor(const SqlSource& source, const BoundQuery& query) : m_connection(DriverName(source.provider)) {
        Open(source);
        m_query.emplace(m_connection.Database());
        m_query->setForwardOnly(true);
        m_query->setNumericalPrecisionPolicy(QSql::LowPrecisionDouble);
        Run(source, query);
        const QSqlRecord record = m_query->record();
        for (int column = 0; column < record.count(); ++column) {
            m_columns.push_back(record.fieldName(column).toStdString());
        }
        if (m_columns.empty()) {
            throw Error("the query gives no rows");
        }
    }

    bool Next() override {
        if (m_query->next()) {
            return true;
        }
        if (m_query->lastError().isValid()) {
            Fail("the query broke off: ");
        }
        return false;
    }

    Value Cell(std::size_t column) override { return OfVariant(m_query->value(static_cast<int>(column))); }

 private:
    void Open(const SqlSource& source) {
        const ConnectString pairs(source.connectString);
        ServerAddress address = ReadServerAddress(pairs);
        if (!source.user.empty()) {
            address.user = source.user;
            address.password = source.password;
        } else if (!source.password.empty()) {
            address.password = source.password;
        }
        m_secret = address.password;
        QSqlDatabase& database = m_connection.Database();
        if (source.provider == ProviderKind::PostgreSql || source.provider == ProviderKind::MySql) {
            database.setHostName(QString::fromStdString(address.host));
            database.setDatabaseName(QString::fromStdString(address.database));
            database.setUserName(QString::fromStdString(address.user));
            database.setPassword(QString::fromStdString(address.password));
            if (address.port) {
                database.setPort(address.port);
            }
        } else {
            database.setDatabaseName(QString::fromStdString(OdbcConnection(source.provider, pairs, address)));
        }
        database.setConnectOptions(ConnectOptions(source));
        if (!database.open()) {
            Refused(database.lastError(), address);
        }
    }

    static QString ConnectOptions(const SqlSource& source) {
        switch (source.provider) {
            case ProviderKind::PostgreSql:
                return QStringLiteral("connect_timeout=%1").arg(ConnectSeconds);
            case ProviderKind::MySql:
                return QStringLiteral("MYSQL_OPT_CONNECT_TIMEOUT=%1;MYSQL_OPT_READ_TIMEOUT=%2")
                    .arg(ConnectSeconds)
                    .arg(std::max(source.querySeconds, 1));
            default:
                return QStringLiteral("SQL_ATTR_LOGIN_TIMEOUT=%1;SQL_ATTR_ACCESS_MODE=SQL_MODE_READ_ONLY")
                    .arg(ConnectSeconds);
        }
    }

    // Drivers tell a wrong logon and a missing server by text only.
    [[noreturn]] void Refused(const QSqlError& error, const ServerAddress& address) const {
        const std::string text = CleanText(error.text().toStdString(), m_secret);
        const std::string lower = LowerAscii(text);
        for (const char* word :
             {"password", "authentication", "access denied", "login failed", "role \"", "28000"}) {
            if (lower.find(word) != std::string::npos) {
                throw Error("the logon of the user \"" + CleanText(address.user) + "\" was refused: " + text);
            }
        }
        throw Error("the server \"" + CleanText(address.host) +
                    "\" cannot be reached or has no such database: " + text);
    }

    void Run(const SqlSource& source, const BoundQuery& query) {
        if (source.provider == ProviderKind::PostgreSql) {
            QSqlQuery settings(m_connection.Database());
            // A report reads. A second statement could lift that, so there is none.
            if (!IsOneStatement(query.text, source.provider)) {
                throw Error("the query is more than one statement");
            }
            settings.exec(QStringLiteral("SET default_transaction_read_only = on"));
            settings.exec(QStringLiteral("SET statement_timeout = '%1s'").arg(source.querySeconds));
        }
        const QString text = QString::fromStdString(query.text);
        if (query.binds.empty()) {
            if (!m_query->exec(text)) {
                Fail("the query is wrong: ");
            }
            return;
        }
        if (!m_query->prepare(text)) {
            Fail("the query is wrong: ");
        }
        for (const Value& value : query.binds) {
            m_query->addBindValue(ToVariant(value));
        }
        if (!m_query->exec()) {
            Fail("the query is wrong: ");
        }
    }

    [[noreturn]] void Fail(const std::string& what) const {
        const QSqlError error = m_query->lastError();
        const std::string text = CleanText(error.text().toStdString(), m_secret);
        const std::string code = error.nativeErrorCode().toStdString();
        const std::string lower = LowerAscii(text);
        const bool noTable = code == "42P01" || code == "1146" || code == "208" ||
                             lower.find("invalid object name") != std::string::npos ||
                             lower.find("no such table") != std::string::npos;
        throw Error((noTable ? "a table is missing: " : what) + text);
    }

    Connection m_connection;
    std::optional<QSqlQuery> m_query;  // goes before the connection
    std::string m_secret;
};

}  // namespace

std::unique_ptr<Cursor> OpenSql(const SqlSource& source, const BoundQuery& query) {
    return std::make_unique<SqlCursor>(source, query);
}

}  // namespace rdl::data
