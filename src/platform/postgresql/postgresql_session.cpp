// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/postgresql_session.h"

#include <libpq-fe.h>

#include <array>
#include <charconv>
#include <cstdint>
#include <cstring>
#include <deque>
#include <optional>
#include <utility>

#include "platform/base/ascii.h"
#include "platform/base/digest.h"
#include "platform/base/text.h"
#include "platform/postgresql/dialect.h"

namespace {

// Rows that are read before the first one is asked for. If these are all, the connection is free at once.
constexpr std::size_t RowsAtOnce = 500;

// Types of the server's catalogue pg_type.
constexpr Oid BoolType = 16, BigType = 20, SmallType = 21, IntType = 23, RealType = 700, DoubleType = 701,
              NumericType = 1700;

// The key of the row that the last statement of this process inserted. `select max(key)` straight after it
// means this key: another process may have inserted a row in between.
struct NewestKey {
    Link link;
    std::string table, key;
};

std::optional<NewestKey>& LastInserted() {
    static std::optional<NewestKey> last;
    return last;
}

// The tables whose rows are claimed. The first number of an advisory lock is the table, the second the
// key.
constexpr std::int32_t FirstClaimClass = 0x6f786300;
constexpr std::array<const char*, 2> ClaimedTables{"ReportScheduler", "ReportBatch"};

std::string ClaimClass(const std::string& table) {
    for (std::size_t index = 0; index < ClaimedTables.size(); ++index) {
        if (SameText(table, ClaimedTables[index])) {
            return std::to_string(FirstClaimClass + static_cast<std::int32_t>(index));
        }
    }
    throw RuntimeError(err::DataTableMissing, "Rows of the table " + table + " are not claimed");
}

// Parts of the statements about claims, whose parameters are the key and the session's mark.
constexpr const char* ClaimedKey = "($1::bigint % 2147483648)::int";
constexpr const char* HasMark = "coalesce(current_setting('oxbow_courier.session', true), '') = $2";
constexpr const char* NotOwn =
    "another session of the server answers than the one that was opened, as a connection pooler does that is "
    "not in session mode";

template <typename Number>
Variant NumberOf(std::string_view text) {
    Number number{};
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

class PostgresqlRows : public DataRows {
 public:
    // With `givesBack` the connection is free after the last row.
    PostgresqlRows(std::shared_ptr<LeasedServer> server, bool showsRowOrder, bool givesBack)
        : m_server(std::move(server)), m_showsRowOrder(showsRowOrder), m_givesBack(givesBack) {}
    // A connection with rows that nobody has read is of no further use.
    ~PostgresqlRows() override {
        if (!m_ended) {
            m_server->reset();
        }
    }
    PostgresqlRows(const PostgresqlRows&) = delete;
    PostgresqlRows& operator=(const PostgresqlRows&) = delete;

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
        if (m_fetched.empty()) {
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
        while (!m_ended && m_fetched.size() < RowsAtOnce) {
            Result row = (*m_server)->NextRow();
            if (row != nullptr && PQresultStatus(row.get()) == PGRES_SINGLE_TUPLE) {
                m_fetched.push_back(std::move(row));
            } else {
                m_last = std::move(row);
                m_ended = true;
                if (m_givesBack) {
                    m_server->reset();
                }
            }
        }
    }

    std::shared_ptr<LeasedServer> m_server;
    bool m_showsRowOrder;
    bool m_givesBack;
    bool m_ended = false;  // the last row has been fetched
    std::deque<Result> m_fetched;
    Result m_last;  // what came after the last row
    Result m_row;
    Result m_names;
    std::vector<int> m_columns;
};

}  // namespace

PostgresqlSession::PostgresqlSession(Link link)
    : m_link(std::move(link)), m_server(std::make_shared<LeasedServer>(LeaseServer(m_link))) {}

Server& PostgresqlSession::Leased() {
    // A lost transaction is the error of its next statement. Any other operation gets a new connection.
    if (*m_server == nullptr || (!m_isInTransaction && !(*m_server)->IsAlive())) {
        m_hasClaims = false;
        m_server = std::make_shared<LeasedServer>(LeaseServer(m_link));
    }
    return **m_server;
}

void PostgresqlSession::Execute(const std::string& statement) {
    LastInserted().reset();
    const Result result = Leased().RunOne(TranslateForServer(statement, InsertedKey::IsReturned));
    const int rows = PQntuples(result.get());
    const std::string table = rows > 0 ? TableOfInsert(statement) : std::string();
    if (!table.empty()) {
        LastInserted() = {m_link, table, PQgetvalue(result.get(), rows - 1, 0)};
    }
}

std::unique_ptr<DataRows> PostgresqlSession::Query(const std::string& statement) {
    std::string translated = TranslateForServer(statement);
    const std::optional<NewestKey> inserted = std::exchange(LastInserted(), std::nullopt);
    if (inserted && inserted->link == m_link && TableOfNewestKey(statement) == inserted->table) {
        translated.replace(translated.find('('), translated.find(')') - translated.find('('),
                           "(" + inserted->key + "::bigint");
    }
    const bool givesBack = !m_hasClaims && !m_isInTransaction;
    Leased().Start(translated);
    auto rows = std::make_unique<PostgresqlRows>(m_server, MentionsRowOrder(statement), givesBack);
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

// The pool keeps no connection that began read-only: the next one asks again.
std::string PostgresqlSession::WhyReadOnly() {
    const std::string why = Leased().WhyReadOnly();
    if (why.empty()) {
        return {};
    }
    if (!m_isInTransaction && !m_hasClaims) {
        m_server->reset();
        CloseIdleServers();
    }
    return "The store is write-protected: " + m_link.Name() + "; " + why;
}

// An editor computes the keys of several rows before it inserts them: nobody else may insert meanwhile. A
// scheduler, which may not insert such rows, waits for nobody.
void PostgresqlSession::Begin() {
    Server& server = Leased();
    try {
        server.Run(
            "begin; do $$ begin if has_table_privilege('ReportScheduler', 'insert') then lock table "
            "ReportScheduler, ReportBatch, ReportBatchDtls, ReportBatchPar, Folders in share row exclusive "
            "mode; end if; end $$");
    } catch (...) {
        if (server.IsInTransaction()) {
            server.Run("rollback");
        }
        throw;
    }
    m_isInTransaction = true;
}

void PostgresqlSession::Commit() {
    const Result result = Leased().Run("commit");
    m_isInTransaction = false;
    // The server answers so if a statement of the transaction has failed.
    if (std::strcmp(PQcmdStatus(result.get()), "COMMIT") != 0) {
        throw RuntimeError(err::DataSyntax, "The transaction has failed and is rolled back");
    }
}

void PostgresqlSession::Rollback() {
    if (std::exchange(m_isInTransaction, false) && *m_server != nullptr && (*m_server)->IsInTransaction()) {
        (*m_server)->Run("rollback");
    }
}

// Bytes travel as hexadecimal digits, the text form of bytea (PostgreSQL 15, section 8.4.1).
void PostgresqlSession::KeepReport(const std::string& name, const std::string& bytes) {
    std::string digits = "\\x";
    digits.reserve(2 * bytes.size() + 2);
    for (const char byte : bytes) {
        AppendHexByte(static_cast<unsigned char>(byte), digits, SmallHexDigits);
    }
    Leased().RunOne(
        "insert into StoredReport(Name, Bytes, Digest) values($1, $2::bytea, encode(sha256($2::bytea), "
        "'hex')) on conflict(Name) do update set Bytes = excluded.Bytes, Digest = excluded.Digest, Changed = "
        "now()",
        {name, digits});
}

std::vector<std::string> PostgresqlSession::ReportNames() {
    const Result found = Leased().RunOne("select Name from StoredReport order by Name");
    std::vector<std::string> names;
    names.reserve(static_cast<std::size_t>(PQntuples(found.get())));
    for (int row = 0; row < PQntuples(found.get()); ++row) {
        names.emplace_back(PQgetvalue(found.get(), row, 0));
    }
    return names;
}

std::string PostgresqlSession::DigestOfReport(const std::string& name) {
    return Leased().OneValue("select Digest from StoredReport where Name = $1", {name});
}

std::string PostgresqlSession::BytesOfReport(const std::string& name) {
    const Result found = Leased().RunOne("select Bytes, Digest from StoredReport where Name = $1", {name});
    if (PQntuples(found.get()) == 0) {
        return {};
    }
    std::size_t length = 0;
    const std::unique_ptr<unsigned char, decltype(&PQfreemem)> bytes(
        PQunescapeBytea(reinterpret_cast<const unsigned char*>(PQgetvalue(found.get(), 0, 0)), &length),
        &PQfreemem);
    std::string report(reinterpret_cast<const char*>(bytes.get()), length);
    if (Sha256(report) != PQgetvalue(found.get(), 0, 1)) {
        throw RuntimeError(err::PathFileAccess,
                           "The report file \"" + name + "\" of the store " + m_link.Name() +
                               " is damaged: its bytes do not have the SHA-256 that is stored with them");
    }
    return report;
}

// A pooler that gives each transaction another session of the server would let two schedulers share the lock
// of one session: only the session with the own mark may take it.
bool PostgresqlSession::TakeClaim(const std::string& table, const std::string& key) {
    Server& server = Leased();
    const Result taken =
        server.RunOne(std::string("select case when ") + HasMark + " then pg_try_advisory_lock(" +
                          ClaimClass(table) + ", " + ClaimedKey + ") end",
                      {key, server.Mark()});
    if (PQgetisnull(taken.get(), 0, 0) != 0) {
        throw RuntimeError(err::DataUnavailable, "The store " + m_link.Name() + " cannot be used; " + NotOwn);
    }
    const bool isTaken = std::strcmp(PQgetvalue(taken.get(), 0, 0), "t") == 0;
    m_hasClaims = m_hasClaims || isTaken;
    return isTaken;
}

std::string PostgresqlSession::LossOfClaim(const std::string& table, const std::string& key) {
    try {
        if (!m_hasClaims || *m_server == nullptr) {
            return "the connection was closed";
        }
        Server& server = **m_server;
        const Result found = server.RunOne(
            std::string("select ") + HasMark +
                " and exists(select 1 from pg_locks where locktype = 'advisory' and objsubid = 2 and granted "
                "and pid = pg_backend_pid() and classid::bigint = " +
                ClaimClass(table) + " and objid::bigint = " + ClaimedKey + ")",
            {key, server.Mark()});
        return std::strcmp(PQgetvalue(found.get(), 0, 0), "t") == 0 ? "" : NotOwn;
    } catch (const RuntimeError& error) {
        return error.Description();
    }
}

void PostgresqlSession::ReleaseClaims() noexcept {
    if (!m_hasClaims) {
        return;
    }
    m_hasClaims = false;
    try {
        Leased().Run("select pg_advisory_unlock_all()");
    } catch (...) {
        m_server->reset();  // a connection that is closed holds nothing
    }
}

std::vector<ADODB::HeldClaim> PostgresqlSession::HeldClaims() {
    const Result found = Leased().RunOne(
        "select l.classid::bigint - $1::bigint, l.objid, a.application_name from pg_locks l join "
        "pg_stat_activity a on a.pid = l.pid where l.locktype = 'advisory' and l.objsubid = 2 and l.granted "
        "and l.database = (select oid from pg_database where datname = current_database()) and "
        "l.classid::bigint between $1::bigint and $1::bigint + $2::bigint order by 1, 2",
        {std::to_string(FirstClaimClass), std::to_string(ClaimedTables.size() - 1)});
    std::vector<ADODB::HeldClaim> claims;
    for (int row = 0; row < PQntuples(found.get()); ++row) {
        const auto table = NumberOf<std::int64_t>(PQgetvalue(found.get(), row, 0));
        claims.push_back({ClaimedTables.at(static_cast<std::size_t>(*table.Integer())),
                          PQgetvalue(found.get(), row, 1), PQgetvalue(found.get(), row, 2)});
    }
    return claims;
}

void PostgresqlSession::BeginReading() {
    Leased().Run("begin isolation level repeatable read read only");
    m_isInTransaction = true;
}

void PostgresqlSession::SetLastKey(const std::string& table, const std::string& column,
                                   const std::string& last) {
    Leased().RunOne(
        "select setval(pg_get_serial_sequence(lower($1), lower($2)), greatest($3::bigint, 1), $3::bigint > "
        "0)",
        {table, column, last});
}
