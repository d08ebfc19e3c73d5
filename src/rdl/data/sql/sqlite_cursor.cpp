// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sqlite_cursor.h"

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <system_error>

#include "rdl/data/common/field_type.h"
#include "rdl/data/common/message.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/stop.h"

namespace rdl::data {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int LongestValue = 256 << 20;
constexpr int StepsBetweenLooks = 20'000;
constexpr const char* NoMemory = "there is not enough memory for the query";

// A report's query reads; it neither reaches for other files nor changes how the connection behaves.
int Authorize(void*, int action, const char*, const char*, const char*, const char*) {
    switch (action) {
        case SQLITE_SELECT:
        case SQLITE_READ:
        case SQLITE_FUNCTION:
        case SQLITE_RECURSIVE:
            return SQLITE_OK;
        default:
            return SQLITE_DENY;
    }
}

// Returns true for a database with a write-ahead log (SQLite file format, 1.3.3: both version numbers are 2)
// that is empty or missing.
bool HasNoLog(const std::string& file) {
    constexpr std::streamoff Versions = 18;
    std::ifstream stream(file, std::ios::binary);
    stream.seekg(Versions);
    std::error_code missing;
    const bool keepsLog = stream.get() == 2 && stream.get() == 2;
    const auto size = std::filesystem::file_size(file + "-wal", missing);
    return keepsLog && (missing || size == 0);
}

// Returns the file's name as a URI by which SQLite takes no lock and needs no log.
std::string UnchangingName(const std::string& file) {
    const auto isPlain = [](char c) { return c != '%' && c != '?' && c != '#'; };
    return "file:" + PercentEncoded(file, isPlain) + "?immutable=1";
}

struct CloseDatabase {
    void operator()(sqlite3* database) const { sqlite3_close(database); }
};
struct Finalize {
    void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};

class SqliteCursor : public Cursor {
 public:
    SqliteCursor(const SqliteSource& source, const BoundQuery& query)
        : m_file(source.file),
          m_seconds(source.querySeconds),
          m_deadline(Clock::now() + std::chrono::seconds(source.querySeconds)) {
        Open(m_file, 0);
        ReadSchema();
        sqlite3_progress_handler(m_database.get(), StepsBetweenLooks, &SqliteCursor::TimeIsUp, this);
        Prepare(query.text);
        Bind(query.binds);
        const int count = sqlite3_column_count(m_statement.get());
        if (count == 0) {
            throw Error("the query gives no rows");
        }
        for (int column = 0; column < count; ++column) {
            const char* name = sqlite3_column_name(m_statement.get(), column);
            const char* type = sqlite3_column_decltype(m_statement.get(), column);
            m_columns.emplace_back(name ? name : "");
            m_types.push_back(FieldTypeOfColumn(type ? type : ""));
            m_declared.push_back(FieldTypeOfDeclaration(type ? type : ""));
        }
    }

    FieldType DeclaredType(std::size_t column) const override { return m_declared[column]; }

    bool Next() override {
        const int state = sqlite3_step(m_statement.get());
        if (state == SQLITE_ROW) {
            return true;
        }
        if (state != SQLITE_DONE) {
            Fail(state);
        }
        return false;
    }

    Value Cell(std::size_t column) override {
        Value value = Stored(static_cast<int>(column));
        return m_types[column] == FieldType::Untyped ? value : ConvertStored(value, m_types[column]);
    }

 private:
    Value Stored(int column) {
        sqlite3_stmt* row = m_statement.get();
        switch (sqlite3_column_type(row, column)) {
            case SQLITE_INTEGER:
                return Value::Integer(sqlite3_column_int64(row, column));
            case SQLITE_FLOAT:
                return Value::Real(sqlite3_column_double(row, column));
            case SQLITE_TEXT: {
                const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
                if (text == nullptr) {
                    Fail(SQLITE_NOMEM);
                }
                return Value::Text({text, static_cast<std::size_t>(sqlite3_column_bytes(row, column))});
            }
            case SQLITE_BLOB: {
                const auto* bytes = static_cast<const char*>(sqlite3_column_blob(row, column));
                return Value::Bytes(
                    {bytes ? bytes : "", static_cast<std::size_t>(sqlite3_column_bytes(row, column))});
            }
            default:
                return {};
        }
    }

    void Open(const std::string& name, int flags) {
        std::error_code ignored;
        if (!std::filesystem::is_regular_file(m_file, ignored)) {
            throw Error("the database file \"" + CleanText(m_file) + "\" does not exist");
        }
        sqlite3* database = nullptr;
        const int state = sqlite3_open_v2(name.c_str(), &database,
                                          SQLITE_OPEN_READONLY | SQLITE_OPEN_NOMUTEX | flags, nullptr);
        m_database.reset(database);
        if (state != SQLITE_OK) {
            Fail(state);
        }
        sqlite3_busy_timeout(database, 10'000);
        sqlite3_limit(database, SQLITE_LIMIT_LENGTH, LongestValue);
        sqlite3_db_config(database, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
        sqlite3_db_config(database, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    }

    // The schema is read by statements of SQLite's own, which the guard must not meet.
    int TrySchema() {
        return sqlite3_exec(m_database.get(), "select count(*) from sqlite_master", nullptr, nullptr,
                            nullptr);
    }

    // The last program that closes a database with a write-ahead log deletes the log. Where this process may
    // not make another one, it reads the file as it stands: others write to a log first.
    void ReadSchema() {
        int state = TrySchema();
        const int kind = state & 0xFF;
        if ((kind == SQLITE_CANTOPEN || kind == SQLITE_READONLY) && HasNoLog(m_file)) {
            Open(UnchangingName(m_file), SQLITE_OPEN_URI);
            state = TrySchema();
        }
        if (state != SQLITE_OK) {
            Fail(state);
        }
    }

    void Prepare(const std::string& text) {
        sqlite3_set_authorizer(m_database.get(), &Authorize, nullptr);
        sqlite3_stmt* statement = nullptr;
        const char* tail = nullptr;
        const int state = sqlite3_prepare_v2(m_database.get(), text.data(), static_cast<int>(text.size()),
                                             &statement, &tail);
        m_statement.reset(statement);
        if (state != SQLITE_OK) {
            Fail(state);
        }
        if (!statement) {
            throw Error("the query is empty");
        }
        const std::string_view rest(tail, static_cast<std::size_t>(text.data() + text.size() - tail));
        if (HoldsStatement(rest)) {
            throw Error("the query is more than one statement, near \"" + CleanText(rest.substr(0, 40)) +
                        "\"");
        }
    }

    // Comments and further semicolons are no statements.
    bool HoldsStatement(std::string_view text) const {
        while (text.find_first_not_of(" \t\r\n;") != std::string_view::npos) {
            sqlite3_stmt* statement = nullptr;
            const char* tail = nullptr;
            const int state = sqlite3_prepare_v2(m_database.get(), text.data(), static_cast<int>(text.size()),
                                                 &statement, &tail);
            sqlite3_finalize(statement);
            // The library stops at a NUL, whatever follows it.
            if (state != SQLITE_OK || statement || tail == text.data()) {
                return true;
            }
            text.remove_prefix(static_cast<std::size_t>(tail - text.data()));
        }
        return false;
    }

    void Bind(const std::vector<Value>& binds) {
        sqlite3_stmt* statement = m_statement.get();
        const int wanted = sqlite3_bind_parameter_count(statement);
        if (wanted != static_cast<int>(binds.size())) {
            const char* name = sqlite3_bind_parameter_name(statement, wanted);
            throw Error("the query uses the parameter \"" + CleanText(name ? name : "?") +
                        "\", which the data set does not have");
        }
        for (int i = 0; i < wanted; ++i) {
            BindOne(i + 1, binds[static_cast<std::size_t>(i)]);
        }
    }

    // A value that is not bound is null for the query, without an error.
    void BindOne(int index, const Value& value) {
        const int state = StateOfBinding(index, value);
        if (state != SQLITE_OK) {
            Fail(state);
        }
    }

    int StateOfBinding(int index, const Value& value) {
        sqlite3_stmt* statement = m_statement.get();
        switch (value.kind()) {
            case Kind::Boolean:
                return sqlite3_bind_int(statement, index, value.AsBoolean() ? 1 : 0);
            case Kind::Integer:
                return sqlite3_bind_int64(statement, index, value.AsInteger());
            case Kind::Real:
            case Kind::Decimal:
                return sqlite3_bind_double(statement, index, value.AsDouble());
            case Kind::Text:
                return BindText(index, value.AsText());
            case Kind::DateTime:
                return BindText(index, IsoText(value.AsTicks()));
            case Kind::Bytes:
                return sqlite3_bind_blob64(statement, index, value.AsText().data(), value.AsText().size(),
                                           SQLITE_TRANSIENT);
            default:
                return sqlite3_bind_null(statement, index);
        }
    }

    int BindText(int index, std::string_view text) {
        return sqlite3_bind_text64(m_statement.get(), index, text.data(), text.size(), SQLITE_TRANSIENT,
                                   SQLITE_UTF8);
    }

    // The database is only read, so that what cannot be written is a temporary file.
    [[noreturn]] void FailOfFile(int state) const {
        const int code = sqlite3_system_errno(m_database.get());
        const std::string text = code != 0 ? CleanText(std::generic_category().message(code))
                                           : CleanText(sqlite3_errmsg(m_database.get()));
        switch (state) {
            case SQLITE_IOERR_NOMEM:
                throw Error(NoMemory);
            case SQLITE_IOERR_WRITE:
            case SQLITE_IOERR_GETTEMPPATH:
                throw Error("the temporary file of the query cannot be written: " + text);
            default:
                throw Error("the database file \"" + CleanText(m_file) + "\" cannot be read: " + text);
        }
    }

    [[noreturn]] void Fail(int state) const {
        const std::string text = CleanText(sqlite3_errmsg(m_database.get()));
        switch (state & 0xFF) {
            case SQLITE_NOTADB:
            case SQLITE_CORRUPT:
                throw Error("the file \"" + CleanText(m_file) + "\" is no database or is damaged: " + text);
            case SQLITE_CANTOPEN:
            case SQLITE_PERM: {
                const int code = sqlite3_system_errno(m_database.get());
                throw Error("the database file \"" + CleanText(m_file) + "\" cannot be opened: " +
                            (code != 0 ? CleanText(std::generic_category().message(code)) : text));
            }
            case SQLITE_INTERRUPT:
                CheckStop();
                throw Error(TookTooLong(m_seconds));
            case SQLITE_AUTH:
                throw Error("the query does more than read, which a report may not (" + text + ")");
            case SQLITE_NOMEM:
                throw Error(NoMemory);
            case SQLITE_FULL:
                throw Error("the temporary file of the query cannot be written: the disk is full");
            case SQLITE_IOERR:
                FailOfFile(sqlite3_extended_errcode(m_database.get()));
            case SQLITE_BUSY:
                throw Error("the database file \"" + CleanText(m_file) + "\" stayed locked: " + text);
            default:
                break;
        }
        if (text.starts_with("no such table")) {
            throw Error("a table is missing: " + text);
        }
        throw Error("the query is wrong: " + text);
    }

    static int TimeIsUp(void* self) {
        return IsStopped() || Clock::now() > static_cast<SqliteCursor*>(self)->m_deadline ? 1 : 0;
    }

    std::string m_file;
    int m_seconds;
    Clock::time_point m_deadline;
    std::unique_ptr<sqlite3, CloseDatabase> m_database;
    std::unique_ptr<sqlite3_stmt, Finalize> m_statement;  // after the database, so that it is destroyed first
    std::vector<FieldType> m_types;                       // to which stored values are converted
    std::vector<FieldType> m_declared;
};

}  // namespace

std::unique_ptr<Cursor> OpenSqlite(const SqliteSource& source, const BoundQuery& query) {
    return std::make_unique<SqliteCursor>(source, query);
}

}  // namespace rdl::data
