// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/copy.h"

#include <system_error>
#include <utility>

#include "platform/base/database_files.h"
#include "platform/base/marks.h"
#include "platform/base/paths.h"
#include "platform/posix/atomic_file.h"
#include "platform/sqlite/sqlite_session.h"
#include "tools/oxc_store/create.h"
#include "tools/oxc_store/report_files.h"
#include "tools/oxc_store/store_tables.h"

namespace tools {
namespace {

// A statement takes several rows, for servers that are far away.
constexpr std::size_t LargestStatement = 200'000;

std::string Text(std::string_view text) {
    return std::string(text);
}

std::unique_ptr<DataRows> RowsOf(DataSession& session, const StoreTable& table) {
    return session.Query("select " + Text(table.columns) + " from " + Text(table.name) + " order by rowid");
}

// A number is written as a text, too: the column decides what it becomes.
std::string Literal(const Variant& value) {
    return value.IsNull() ? "null" : SqlText(value.Text());
}

void InsertRows(DataSession& to, const std::string& statement, const std::string& what) {
    try {
        to.Execute(statement);
    } catch (const RuntimeError& error) {
        throw RuntimeError(error.Number(), "Not copied: " + what + "; " + error.Description());
    }
}

std::int64_t CopyRows(DataSession& from, DataSession& to, const StoreTable& table) {
    const std::unique_ptr<DataRows> rows = RowsOf(from, table);
    std::int64_t count = 0;
    std::int64_t first = 1;  // row of the statement
    std::string statement;
    Variant value;
    const auto flush = [&] {
        if (!statement.empty()) {
            InsertRows(to, statement,
                       "rows " + std::to_string(first) + " to " + std::to_string(count) + " of the table " +
                           Text(table.name));
            statement.clear();
            first = count + 1;
        }
    };
    while (rows->Next()) {
        ++count;
        statement += statement.empty()
                         ? "insert into " + Text(table.name) + "(" + Text(table.columns) + ") values("
                         : ",(";
        for (std::size_t column = 0; column < rows->ColumnCount(); ++column) {
            rows->Read(column, value);
            statement += (column > 0 ? "," : "") + Literal(value);
        }
        statement += ")";
        if (statement.size() > LargestStatement) {
            flush();
        }
    }
    flush();
    return count;
}

// Raises an error if the tables differ in a row or a column.
void CompareRows(DataSession& from, DataSession& to, const StoreTable& table, const std::string& target) {
    const std::unique_ptr<DataRows> rows = RowsOf(from, table);
    const std::unique_ptr<DataRows> copies = RowsOf(to, table);
    Variant value;
    Variant copy;
    for (std::int64_t row = 1;; ++row) {
        const bool more = rows->Next();
        if (more != copies->Next()) {
            RefuseStore("Not copied: the table " + Text(table.name) + " has another number of rows in " +
                        target);
        }
        if (!more) {
            return;
        }
        for (std::size_t column = 0; column < rows->ColumnCount(); ++column) {
            rows->Read(column, value);
            copies->Read(column, copy);
            if (value != copy) {
                RefuseStore("Not copied: row " + std::to_string(row) + " of the table " + Text(table.name) +
                            " has another " + rows->ColumnName(column) + " in " + target);
            }
        }
    }
}

void RefuseRows(DataSession& session, const std::string& target) {
    for (const StoreTable& table : StoreTables) {
        const std::unique_ptr<DataRows> rows = session.Query("select top 1 * from " + Text(table.name));
        if (rows->Next()) {
            RefuseStore("Not copied: " + target + " already has rows, in the table " + Text(table.name));
        }
    }
}

// A key that a deleted row had is not used again in the copy either.
void CopyLastKeys(DataSession& from, DataSession& to) {
    for (const StoreTable& table : StoreTables) {
        if (!table.hasKey) {
            continue;
        }
        const std::unique_ptr<DataRows> found =
            from.Query("select seq from sqlite_sequence where name = '" + Text(table.name) + "'");
        Variant last;
        if (found->Next()) {
            found->Read(0, last);
            to.SetLastKey(Text(table.name), Text(table.columns.substr(0, table.columns.find(','))),
                          last.Text());
        }
    }
}

// The transaction of `to` is open.
std::int64_t CopyAll(DataSession& from, DataSession& to, const std::string& target) {
    std::int64_t count = 0;
    from.BeginReading();
    RefuseRows(to, target);
    for (const StoreTable& table : StoreTables) {
        count += CopyRows(from, to, table);
    }
    for (const StoreTable& table : StoreTables) {
        CompareRows(from, to, table, target);
    }
    CopyLastKeys(from, to);
    return count;
}

// Puts a new database file in its place once it is whole.
class NewFile {
 public:
    explicit NewFile(std::filesystem::path target) : m_target(std::move(target)), m_made(m_target) {
        m_made += ".copying";
        std::error_code ignored;
        if (std::filesystem::exists(m_target, ignored)) {
            RefuseStore("Not copied: there is a file \"" + m_target.string() + "\"");
        }
        std::filesystem::remove(m_made, ignored);
        CopyFileWhole(paths::ToMachine(AppPath()) / BlankDatabaseFile, m_made);
    }
    ~NewFile() {
        std::error_code ignored;
        for (const char* end : {"", "-wal", "-shm"}) {
            std::filesystem::remove(m_made.string() + end, ignored);
        }
    }
    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    std::string Path() const { return paths::FromMachine(m_made); }
    void Finish() const {
        std::filesystem::permissions(
            m_made, std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
        std::filesystem::create_hard_link(m_made, m_target);  // never replaces a file
    }

 private:
    std::filesystem::path m_target, m_made;
};

}  // namespace

std::int64_t CopyStore(const StorePlace& from, const StorePlace& to) {
    const std::unique_ptr<DataSession> source = OpenPlace(from);
    const ReportFiles reports(from, *source);
    std::int64_t count = 0;
    if (to.link) {
        CreateStore(*to.link, {}, {});
        const std::unique_ptr<DataSession> target = OpenPlace(to);
        target->Begin();
        count = CopyAll(*source, *target, to.Name());
        SendReports(reports, *target);
        target->Commit();
        return count;
    }
    const NewFile file(to.file);
    {
        SqliteSession target(file.Path());
        target.Begin();
        count = CopyAll(*source, target, to.Name());
        target.Commit();
    }
    FetchedReports fetched(reports, to.file.parent_path() / "Cache");
    file.Finish();
    fetched.Keep();
    return count;
}

}  // namespace tools
