// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/postgresql_session.h"

#include <libpq-fe.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <deque>
#include <map>
#include <utility>

#include "platform/base/text.h"
#include "platform/postgresql/dialect.h"

namespace {

// Rows that are read before the first one is asked for. If these are all, the connection is free at once.
constexpr std::size_t RowsAtOnce = 500;

// Types of the server's catalogue pg_type.
constexpr Oid BoolType = 16, BigType = 20, SmallType = 21, IntType = 23, RealType = 700, DoubleType = 701,
              NumericType = 1700;

// The key of the row that this process inserted last into a table, until it is read. Another process may
// insert a row before the key is read by `select max(key)`.
std::map<std::pair<std::string, std::string>, std::string>& NewestKeys() {
    static std::map<std::pair<std::string, std::string>, std::string> keys;
    return keys;
}

std::pair<std::string, std::string> PlaceOf(const Link& link, const std::string& table) {
    return {TextOfLink(link), table};
}

template <typename Number>
Variant NumberOf(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

class PostgresqlRows : public DataRows {
 public:
    PostgresqlRows(std::shared_ptr<LeasedServer> server, bool showsRowOrder)
        : m_server(std::move(server)), m_showsRowOrder(showsRowOrder) {}

    // Reads the first rows. Returns false if the statement has no columns.
    bool Begin() {
        Fetch();
        const Result& first = m_fetched.empty() ? m_last : m_fetched.front();
        if (PQresultStatus(first.get()) == PGRES_COMMAND_OK) {
            return false;
        }
        for (int column = 0; column < PQnfields(first.get()); ++column) {
            if (m_showsRowOrder || std::strcmp(PQfname(first.get(), column), "rowid") != 0) {
                m_columns.push_back(column);
            }
        }
        m_names = Result(PQcopyResult(first.get(), PG_COPYRES_ATTRS));
        return true;
    }

    bool Next() override {
        if (m_fetched.empty() && m_last == nullptr) {
            Fetch();
        }
        if (m_fetched.empty()) {
            m_row.reset();
            return false;
        }
        m_row = std::move(m_fetched.front());
        m_fetched.pop_front();
        return true;
    }

    std::size_t ColumnCount() const override { return m_columns.size(); }
    std::string ColumnName(std::size_t column) const override {
        return PQfname(m_names.get(), m_columns[column]);
    }

    void Read(std::size_t column, Variant& value) const override {
        const int index = m_columns[column];
        if (PQgetisnull(m_row.get(), 0, index) != 0) {
            value = Variant();
            return;
        }
        const std::string_view text(PQgetvalue(m_row.get(), 0, index),
                                    static_cast<std::size_t>(PQgetlength(m_row.get(), 0, index)));
        switch (PQftype(m_row.get(), index)) {
            case BoolType:
                value = Variant(text == "t" ? 1 : 0);
                break;
            case BigType:
            case SmallType:
            case IntType:
                value = NumberOf<std::int64_t>(text);
                break;
            case RealType:
            case DoubleType:
            case NumericType:
                value = NumberOf<double>(text);
                break;
            default:
                value.SetText(text);
        }
    }

 private:
    void Fetch() {
        while (m_last == nullptr && m_fetched.size() < RowsAtOnce) {
            Result row = (*m_server)->NextRow();
            if (row != nullptr && PQresultStatus(row.get()) == PGRES_SINGLE_TUPLE) {
                m_fetched.push_back(std::move(row));
            } else {
                m_last = std::move(row);
                m_server->reset();
            }
        }
    }

    std::shared_ptr<LeasedServer> m_server;
    bool m_showsRowOrder;
    std::deque<Result> m_fetched;
    Result m_last;  // set after the last row
    Result m_row;
    Result m_names;
    std::vector<int> m_columns;
};

}  // namespace

PostgresqlSession::PostgresqlSession(Link link)
    : m_link(std::move(link)), m_server(std::make_shared<LeasedServer>(LeaseServer(m_link))) {}

Server& PostgresqlSession::Leased() {
    if (*m_server == nullptr) {
        m_server = std::make_shared<LeasedServer>(LeaseServer(m_link));
    }
    return **m_server;
}

void PostgresqlSession::Execute(const std::string& statement) {
    const Result result = Leased().RunOne(TranslateForServer(statement, InsertedKey::IsReturned));
    const int rows = PQntuples(result.get());
    const std::string table = rows > 0 ? TableOfInsert(statement) : std::string();
    if (!table.empty()) {
        NewestKeys()[PlaceOf(m_link, table)] = PQgetvalue(result.get(), rows - 1, 0);
    }
}

std::unique_ptr<DataRows> PostgresqlSession::Query(const std::string& statement) {
    std::string translated = TranslateForServer(statement);
    if (const std::string table = TableOfNewestKey(statement); !table.empty()) {
        if (const auto key = NewestKeys().extract(PlaceOf(m_link, table))) {
            translated.replace(translated.find('('), translated.find(')') - translated.find('('),
                               "(" + key.mapped() + "::bigint");
        }
    }
    Leased().Start(translated);
    auto rows = std::make_unique<PostgresqlRows>(m_server, MentionsRowOrder(statement));
    return rows->Begin() ? std::move(rows) : nullptr;
}

void PostgresqlSession::ProveWritable() {
    Server& server = Leased();
    try {
        server.Run(
            "begin; update ReportScheduler set NextRun = NextRun where false; "
            "update ReportBatch set NextRunDate = NextRunDate where false; "
            "insert into ReportHistory(ReportID) select 0 where false; "
            "select pg_logical_emit_message(true, 'room for a write', repeat('x', 262144))");
    } catch (...) {
        if (server.IsInTransaction()) {
            server.Run("rollback");
        }
        throw;
    }
    server.Run("rollback");
}

void PostgresqlSession::Begin() {
    Leased().Run("begin");
}

void PostgresqlSession::Commit() {
    const Result result = Leased().Run("commit");
    // The server answers so if a statement of the transaction has failed.
    if (std::strcmp(PQcmdStatus(result.get()), "COMMIT") != 0) {
        throw RuntimeError(err::DataSyntax, "The transaction has failed and is rolled back");
    }
}

void PostgresqlSession::Rollback() {
    if (*m_server != nullptr && Leased().IsInTransaction()) {
        Leased().Run("rollback");
    }
}
