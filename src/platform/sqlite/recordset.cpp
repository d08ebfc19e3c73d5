// SPDX-License-Identifier: GPL-3.0-or-later
#include <sqlite3.h>

#include <cstdint>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "platform/sqlite/database.h"

namespace ADODB {

// A row is decoded on access and not when it is reached: a poll passes many rows and reads few of their
// fields. Each column stores the row that its value is from, and its text reuses its memory from row to row.
struct Recordset::Impl {
    struct Column {
        Field field;
        std::uint64_t decodedRow = 0;
    };
    // A name in a caller's spelling. Callers use the same few names on every row.
    struct Spelling {
        std::string name;
        std::size_t index;
    };

    Impl(const std::string& connectionString, const std::string& statement)
        : database(connectionString), running(database, statement) {
        atEnd = !running.Step();
        const int count = sqlite3_column_count(running.Handle());
        columns.resize(static_cast<std::size_t>(count));
        for (int index = 0; index < count; ++index) {
            const char* name = sqlite3_column_name(running.Handle(), index);
            columns[static_cast<std::size_t>(index)].field.Name = name != nullptr ? name : "";
        }
    }

    std::size_t IndexOf(const std::string& name) {
        for (const Spelling& spelling : spellings) {
            if (spelling.name == name) {
                return spelling.index;
            }
        }
        for (std::size_t index = 0; index < columns.size(); ++index) {
            if (SameText(columns[index].field.Name, name)) {
                spellings.push_back({name, index});
                return index;
            }
        }
        throw RuntimeError(err::ItemNotFound,
                           RuntimeError(err::ItemNotFound).Description() + " (\"" + name + "\")");
    }

    const Field& FieldAt(std::size_t index) {
        if (atEnd) {
            throw RuntimeError(err::NoCurrentRecord);
        }
        Column& column = columns[index];
        if (column.decodedRow != row) {
            Decode(static_cast<int>(index), column.field.Value);
            column.decodedRow = row;
        }
        return column.field;
    }

    void Decode(int index, Variant& value) const {
        sqlite3_stmt* handle = running.Handle();
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

    Database database;
    Statement running;
    std::vector<Column> columns;
    std::vector<Spelling> spellings;
    std::uint64_t row = 1;
    bool atEnd = false;
};

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;

void Recordset::Open(const std::string& statement, const std::string& activeConnection,
                     CursorTypeEnum /*cursorType*/, LockTypeEnum /*lockType*/) {
    if (IsOpen()) {
        throw RuntimeError(err::DataOpen);
    }
    TraceStatement(statement);
    auto opened = std::make_unique<Impl>(activeConnection, statement);
    if (opened->running.HasColumns()) {
        m_impl = std::move(opened);
    }
}

Recordset::Impl& Recordset::Opened() const {
    if (!IsOpen()) {
        throw RuntimeError(err::DataClosed);
    }
    return *m_impl;
}

bool Recordset::EOF_() const {
    return Opened().atEnd;
}

void Recordset::MoveNext() {
    Impl& impl = Opened();
    if (impl.atEnd) {
        throw RuntimeError(err::NoCurrentRecord);
    }
    ++impl.row;
    impl.atEnd = true;  // stays true if the step raises an error
    impl.atEnd = !impl.running.Step();
}

void Recordset::Close() {
    Opened();
    m_impl.reset();
}

bool Recordset::IsOpen() const {
    return m_impl != nullptr;
}

const Field& Recordset::Fields(const std::string& name) const {
    Impl& impl = Opened();
    return impl.FieldAt(impl.IndexOf(name));
}

const Field& Recordset::Fields(std::size_t index) const {
    Impl& impl = Opened();
    if (index >= impl.columns.size()) {
        throw RuntimeError(err::ItemNotFound);
    }
    return impl.FieldAt(index);
}

std::size_t Recordset::FieldCount() const {
    return Opened().columns.size();
}

}  // namespace ADODB
