// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/sqlite_session.h"

#include <sqlite3.h>

#include <string_view>

namespace {

class SqliteRows : public DataRows {
 public:
    SqliteRows(Database& database, const std::string& statement) : m_running(database, statement) {}

    bool HasColumns() const { return m_running.HasColumns(); }
    bool Next() override { return m_running.Step(); }
    std::size_t ColumnCount() const override {
        return static_cast<std::size_t>(sqlite3_column_count(m_running.Handle()));
    }
    std::string ColumnName(std::size_t column) const override {
        const char* name = sqlite3_column_name(m_running.Handle(), static_cast<int>(column));
        return name != nullptr ? name : "";
    }

    void Read(std::size_t column, Variant& value) const override {
        sqlite3_stmt* handle = m_running.Handle();
        const auto index = static_cast<int>(column);
        switch (sqlite3_column_type(handle, index)) {
            case SQLITE_NULL:
                value = Variant();
                break;
            case SQLITE_INTEGER:
                value = Variant(static_cast<std::int64_t>(sqlite3_column_int64(handle, index)));
                break;
            case SQLITE_FLOAT:
                value = Variant(sqlite3_column_double(handle, index));
                break;
            default: {
                const auto* bytes = static_cast<const char*>(sqlite3_column_blob(handle, index));
                const int length = sqlite3_column_bytes(handle, index);
                value.SetText(bytes == nullptr ? std::string_view()
                                               : std::string_view(bytes, static_cast<std::size_t>(length)));
            }
        }
    }

 private:
    Statement m_running;
};

}  // namespace

void SqliteSession::Execute(const std::string& statement) {
    Statement running(m_database, statement);
    while (running.Step()) {
    }
}

std::unique_ptr<DataRows> SqliteSession::Query(const std::string& statement) {
    auto rows = std::make_unique<SqliteRows>(m_database, statement);
    if (rows->HasColumns()) {
        return rows;
    }
    rows->Next();
    return nullptr;
}

void SqliteSession::BeginReading() {
    Execute("begin");
}

void SqliteSession::SetLastKey(const std::string& table, const std::string& /*column*/,
                               const std::string& last) {
    Execute("delete from sqlite_sequence where name = '" + table + "'");
    if (last != "0") {
        Execute("insert into sqlite_sequence(name, seq) values('" + table + "', " + last + ")");
    }
}
