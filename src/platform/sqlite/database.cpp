// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/database.h"

#include <sqlite3.h>

#include <chrono>
#include <filesystem>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/base/paths.h"
#include "platform/data_provider/busy_wait.h"
#include "platform/data_provider/statement_text.h"
#include "platform/sqlite/dialect.h"
#include "platform/sqlite/failure.h"
#include "platform/sqlite/sql_functions.h"

namespace fs = std::filesystem;

namespace {

using namespace std::chrono_literals;

using SteadyClock = std::chrono::steady_clock;

// SQLite's own waits grow to 100 ms, so that two programs that write by turns can block each other for long.
constexpr auto Turn = 2ms;

// Waits one turn; the wait began at `since`. SQLite, which is C, calls it: it must not throw.
void WaitOneTurn(SteadyClock::time_point since) noexcept {
    std::this_thread::sleep_for(Turn);
    RepaintDuringWait(since);
}

// SQLite waits for locks itself, but not if it sees a race at the start or end of the write-ahead log: then
// it returns "busy" at once, and the call must be repeated.
template <typename Call>
int UntilNotBusy(Call call) {
    const auto start = SteadyClock::now();
    int code = call();
    while (IsBusyCode(code) && SteadyClock::now() - start < LongestBusyWait()) {
        WaitOneTurn(start);
        code = call();
    }
    return code;
}

}  // namespace

void Database::Closer::operator()(sqlite3* handle) const {
    sqlite3_close_v2(handle);
}

Database::Database(std::string file, Use use) : m_file(std::move(file)), m_path(FindFile()) {
    if (use == Use::ToRead && IsWriteProtected(m_path)) {
        OpenWriteProtected();
    } else {
        OpenFile(m_path, SQLITE_OPEN_READWRITE);
        UseWriteAheadLog();
    }
}

fs::path Database::FindFile() const {
    std::error_code error;
    fs::path path;
    try {
        path = fs::absolute(paths::ToMachine(m_file));
    } catch (const RuntimeError& notAPath) {
        throw RuntimeError(err::DataUnavailable, notAPath.Description());
    }
    if (!fs::exists(path, error)) {
        throw RuntimeError(err::DataUnavailable,
                           "Could not find the data file \"" + paths::ForUser(m_file) + "\"");
    }
    // SQLite reads an empty file as a database without tables; here it is the rest of a failed copy.
    if (fs::is_regular_file(path, error) && fs::file_size(path, error) == 0 && !error) {
        RaiseDataError(nullptr, SQLITE_NOTADB, m_file);
    }
    return path;
}

void Database::OpenFile(const std::string& name, int flags) {
    sqlite3* handle = nullptr;
    const int code = sqlite3_open_v2(name.c_str(), &handle, flags | SQLITE_OPEN_NOMUTEX, nullptr);
    m_handle.reset(handle);
    if (code != SQLITE_OK) {
        Raise(code);
    }
    Configure();
}

void Database::OpenWriteProtected() {
    const auto open = [this](ReadOnlyUse use) {
        OpenFile(ReadOnlyName(m_path, use), SQLITE_OPEN_READONLY | SQLITE_OPEN_URI);
        return UntilNotBusy([this] {
            return sqlite3_exec(Handle(), "select 1 from sqlite_schema limit 1", nullptr, nullptr, nullptr);
        });
    };
    const fs::path log = LogWithRows(m_path);
    int code = open(ReadOnlyUse::Shared);
    const int primary = code & 0xFF;
    if (primary == SQLITE_CANTOPEN || primary == SQLITE_READONLY) {  // it has to make a file
        if (!log.empty()) {
            RaiseUnfinished(m_file, log);
        }
        m_asItLay.emplace(m_path);
        code = open(ReadOnlyUse::AsItLies);
    }
    if (code != SQLITE_OK) {
        Raise(code);
    }
}

void Database::CheckUnchanged() const {
    if (m_asItLay && !(*m_asItLay == FileStamp(m_path))) {
        throw RuntimeError(err::DataTimeout, "The data file \"" + paths::ForUser(m_file) +
                                                 "\" was written by another program while it was read");
    }
}

void Database::Configure() {
    sqlite3* handle = Handle();
    sqlite3_extended_result_codes(handle, 1);
    sqlite3_busy_handler(handle, WaitWhileBusy, this);
    struct Setting {
        int name;
        int value;
    };
    for (const Setting& setting :
         {Setting{SQLITE_DBCONFIG_DQS_DML, 0}, Setting{SQLITE_DBCONFIG_DQS_DDL, 0},
          Setting{SQLITE_DBCONFIG_DEFENSIVE, 1}, Setting{SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
          Setting{SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0}}) {
        sqlite3_db_config(handle, setting.name, setting.value, nullptr);
    }
    sqlite3_limit(handle, SQLITE_LIMIT_ATTACHED, 0);
    const int code = RegisterDialect(handle, &m_functionError);
    if (code != SQLITE_OK) {
        Raise(code);
    }
}

void Database::UseWriteAheadLog() {
    const int code = UntilNotBusy([this] {
        return sqlite3_exec(Handle(), "pragma journal_mode=wal; pragma synchronous=full", nullptr, nullptr,
                            nullptr);
    });
    // A write-protected file can still be read.
    if (code != SQLITE_OK && (code & 0xFF) != SQLITE_READONLY) {
        Raise(code);
    }
}

int Database::WaitWhileBusy(void* database, int calls) {
    auto& busySince = static_cast<Database*>(database)->m_busySince;
    const auto now = SteadyClock::now();
    if (calls == 0) {
        busySince = now;
    }
    if (now - busySince >= LongestBusyWait()) {
        return 0;
    }
    WaitOneTurn(busySince);
    return 1;
}

void Database::Run(const char* statement) {
    const int code =
        UntilNotBusy([&] { return sqlite3_exec(Handle(), statement, nullptr, nullptr, nullptr); });
    if (code != SQLITE_OK) {
        Raise(code);
    }
}

void Database::Begin() {
    Run("begin immediate");
}

void Database::Commit() {
    Run("commit");
}

void Database::Rollback() {
    // A full disk and some other failures have already rolled it back.
    if (sqlite3_get_autocommit(Handle()) == 0) {
        Run("rollback");
    }
}

void Database::ProveWritable() {
    // With a tiny cache the rows of an open transaction go to the log at once. A rollback keeps the length of
    // the log: its space is there for the write that follows.
    Run("pragma cache_size=2");
    Begin();
    try {
        Run("create table \"room for a write\"(bytes)");
        Run("insert into \"room for a write\" values(zeroblob(262144))");
    } catch (...) {
        Rollback();
        throw;
    }
    Rollback();
    Run("pragma cache_size=-2000");
}

void Database::Raise(int code) {
    CheckUnchanged();
    if (m_functionError) {
        const RuntimeError error = *m_functionError;
        m_functionError.reset();
        throw error;
    }
    RaiseDataError(Handle(), code, m_file, LongestBusyWait().count());
}

void Statement::Finalizer::operator()(sqlite3_stmt* statement) const {
    sqlite3_finalize(statement);
}

Statement::Statement(Database& database, const std::string& text) : m_database(database) {
    RefuseZeroCharacter(text);
    const std::string translated = TranslateDialect(text);
    const char* tail = nullptr;
    const int code = UntilNotBusy([&] {
        sqlite3_stmt* statement = nullptr;
        const int result = sqlite3_prepare_v2(database.Handle(), translated.c_str(),
                                              static_cast<int>(translated.size()) + 1, &statement, &tail);
        m_statement.reset(statement);
        return result;
    });
    if (code != SQLITE_OK) {
        database.Raise(code);
    }
    if (m_statement == nullptr) {
        RaiseSyntaxError("it is empty");
    }
    if (!IsBlankStatement(tail)) {
        RaiseSyntaxError("there is more after its end");
    }
    if (sqlite3_bind_parameter_count(Handle()) > 0) {
        throw RuntimeError(err::DataColumnMissing, "No value given for one or more required parameters");
    }
}

bool Statement::HasColumns() const {
    return sqlite3_column_count(Handle()) > 0;
}

bool Statement::HasRow(int code) const {
    if (code == SQLITE_ROW) {
        return true;
    }
    if (code != SQLITE_DONE) {
        m_database.Raise(code);
    }
    m_database.CheckUnchanged();
    return false;
}

bool Statement::Step() {
    if (m_started) {
        return HasRow(sqlite3_step(Handle()));
    }
    const int code = UntilNotBusy([this] {
        const int result = sqlite3_step(Handle());
        if (IsBusyCode(result)) {
            sqlite3_reset(Handle());
        }
        return result;
    });
    const bool hasRow = HasRow(code);
    m_started = true;
    return hasRow;
}
