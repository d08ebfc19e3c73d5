// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sql_cursor.h"

#include <QMetaType>
#include <QSqlError>
#include <QSqlField>
#include <QSqlQuery>
#include <QSqlRecord>
#include <chrono>
#include <optional>
#include <utility>

#include "rdl/data/common/message.h"
#include "rdl/data/sql/driver_handle.h"
#include "rdl/data/sql/reading_statement.h"
#include "rdl/data/sql/sql_connection.h"
#include "rdl/data/sql/sql_values.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/stop.h"

namespace rdl::data {
namespace {

using Clock = std::chrono::steady_clock;

bool HasWord(std::string_view text, std::initializer_list<std::string_view> words) {
    for (const std::string_view word : words) {
        if (text.find(word) != std::string_view::npos) {
            return true;
        }
    }
    return false;
}

FieldType FieldTypeOfMeta(QMetaType meta) {
    switch (meta.id()) {
        case QMetaType::Bool:
            return FieldType::Boolean;
        case QMetaType::Char:
        case QMetaType::SChar:
        case QMetaType::UChar:
        case QMetaType::Short:
        case QMetaType::UShort:
        case QMetaType::Int:
        case QMetaType::UInt:
        case QMetaType::Long:
        case QMetaType::ULong:
        case QMetaType::LongLong:
        case QMetaType::ULongLong:
            return FieldType::Integer;
        case QMetaType::Float:
        case QMetaType::Double:
            return FieldType::Real;
        case QMetaType::QDate:
        case QMetaType::QDateTime:
            return FieldType::DateTime;
        case QMetaType::QString:
            return FieldType::Text;
        case QMetaType::QByteArray:
            return FieldType::Bytes;
        default:
            return FieldType::Untyped;
    }
}

// A query of a connection. Ending a query, also a failed one, has its own time limit, because the driver may
// wait for the server. Unread rows are not fetched.
class TimedQuery {
 public:
    explicit TimedQuery(SqlConnection& connection)
        : m_connection(connection), m_query(std::in_place, connection.Database()) {}
    ~TimedQuery() {
        const ConnectionWatch::Limit limit(m_connection.Watch(), Patience);
        m_query.reset();
    }
    TimedQuery(const TimedQuery&) = delete;
    TimedQuery& operator=(const TimedQuery&) = delete;

    QSqlQuery* operator->() { return &*m_query; }
    const QSqlQuery* operator->() const { return &*m_query; }
    QSqlQuery& operator*() { return *m_query; }

 private:
    SqlConnection& m_connection;
    std::optional<QSqlQuery> m_query;
};

class SqlCursor : public Cursor {
 public:
    SqlCursor(const SqlSource& source, const BoundQuery& query)
        : m_provider(source.provider),
          m_seconds(source.querySeconds),
          m_connection(source),
          m_query(m_connection) {
        m_query->setForwardOnly(true);
        // SQL Server runs whole batches: variables are declared and set before the rows are asked for.
        const ProviderKind dialect = m_connection.Dialect();
        if (dialect != ProviderKind::SqlServer && !IsOneStatement(query.text, dialect)) {
            throw Error("the query is more than one statement");
        }
        CheckReads(query.text, dialect);
        const ConnectionWatch::Limit limit = Limit();
        Run(query);
        // What a procedure or a batch says before its rows.
        while (!m_query->isSelect() && m_query->nextResult()) {
        }
        ReadColumns();
    }

    FieldType DeclaredType(std::size_t column) const override { return m_declared[column]; }

    bool Next() override {
        const ConnectionWatch::Limit limit = Limit();
        if (m_query->next()) {
            return true;
        }
        if (m_query->lastError().isValid()) {
            Fail("the query broke off: ");
        }
        return false;
    }

    Value Cell(std::size_t column) override {
        // Only decimal columns may have more digits than a double.
        m_query->setNumericalPrecisionPolicy(m_isDecimal[column] ? QSql::HighPrecision
                                                                 : QSql::LowPrecisionDouble);
        return OfVariant(m_query->value(static_cast<int>(column)), m_isDecimal[column]);
    }

 private:
    ConnectionWatch::Limit Limit() {
        return {m_connection.Watch(), std::chrono::seconds(m_seconds) + Patience};
    }

    void Run(const BoundQuery& query) {
        const bool isOdbc = m_provider == ProviderKind::Odbc || m_provider == ProviderKind::SqlServer;
        if (query.binds.empty() && !isOdbc) {
            Execute(query.text);
        } else if (m_provider == ProviderKind::MySql && IsCall(query.text)) {
            for (std::size_t i = 0; i < query.binds.size(); ++i) {
                Prepare("SET " + std::string(VariableMark) + std::to_string(i + 1) + " = ?",
                        {query.binds[i]});
            }
            Execute(query.text);
        } else {
            Prepare(query.text, query.binds);
        }
    }

    void Execute(const std::string& text) {
        if (!m_query->exec(QString::fromStdString(text))) {
            Fail("the query is wrong: ");
        }
    }

    void Prepare(const std::string& text, const std::vector<Value>& binds) {
        if (!m_query->prepare(QString::fromStdString(text))) {
            Fail("the query is wrong: ");
        }
        LimitOdbcTime(*m_query, m_seconds);
        for (const Value& value : binds) {
            m_query->addBindValue(ToVariant(value, m_provider));
        }
        if (!m_query->exec()) {
            Fail("the query is wrong: ");
        }
    }

    void ReadColumns() {
        const QSqlRecord record = m_query->record();
        for (int column = 0; column < record.count(); ++column) {
            m_columns.push_back(record.fieldName(column).toStdString());
            m_isDecimal.push_back(IsDecimalColumn(record.field(column), m_provider));
            m_declared.push_back(m_isDecimal.back() ? FieldType::Decimal
                                                    : FieldTypeOfMeta(record.field(column).metaType()));
        }
        if (m_columns.empty()) {
            CheckConnection();
            throw Error("the query gives no rows");
        }
    }

    // MySQL's driver reports a lost connection as the end of the rows; raises an error instead.
    void CheckConnection() {
        if (m_provider != ProviderKind::MySql) {
            return;
        }
        QSqlQuery question(m_connection.Database());
        if (!question.exec(QStringLiteral("DO 0"))) {
            *m_query = std::move(question);
            Fail("the query broke off: ");
        }
    }

    [[noreturn]] void Fail(const std::string& what) const {
        CheckStop();
        if (m_connection.Watch().HasExpired()) {
            throw Error(TookTooLong(m_seconds));
        }
        const QSqlError error = m_query->lastError();
        const std::string text = CleanText(error.text().toStdString(), m_connection.Password());
        const std::string code = error.nativeErrorCode().toStdString();
        const std::string lower = LowerAscii(text);
        // The same codes stand for a query that somebody stopped.
        const bool isLate = Clock::now() - m_start >= std::chrono::seconds(m_seconds);
        if (isLate && (IsOneOf(code, {"57014", "1969", "3024", "2013"}) ||
                       HasWord(lower, {"timeout", "hyt0", "canceling statement"}))) {
            throw Error(TookTooLong(m_seconds));
        }
        if (IsOneOf(code, {"57P01", "57P02", "57P03", "1053", "1927", "2006", "2013"}) ||
            code.starts_with("08") ||
            HasWord(lower, {"server closed the connection", "communication link", "connection has been lost",
                            "terminating connection"})) {
            throw Error("the connection to the server was lost: " + text);
        }
        if (IsOneOf(code, {"42P01", "1146", "208"}) ||
            HasWord(lower, {"invalid object name", "no such table"}) ||
            (HasWord(lower, {"relation \""}) && HasWord(lower, {"does not exist"}))) {
            throw Error("a table is missing: " + text);
        }
        throw Error(what + text);
    }

    ProviderKind m_provider;
    int m_seconds;
    Clock::time_point m_start = Clock::now();
    SqlConnection m_connection;
    TimedQuery m_query;             // goes before the connection
    std::vector<bool> m_isDecimal;  // by column
    std::vector<FieldType> m_declared;
};

}  // namespace

std::unique_ptr<Cursor> OpenSql(const SqlSource& source, const BoundQuery& query) {
    return std::make_unique<SqlCursor>(source, query);
}

}  // namespace rdl::data
