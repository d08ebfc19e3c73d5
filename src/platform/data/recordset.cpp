// SPDX-License-Identifier: GPL-3.0-or-later
#include <cstdint>
#include <utility>
#include <vector>

#include "platform/base/text.h"
#include "platform/contracts/adodb.h"
#include "platform/data/open_session.h"
#include "platform/data/table_snapshot.h"

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

    Impl(std::unique_ptr<DataSession> opened, std::unique_ptr<DataRows> found)
        : session(std::move(opened)), rows(std::move(found)) {
        atEnd = !rows->Next();
        columns.resize(rows->ColumnCount());
        for (std::size_t index = 0; index < columns.size(); ++index) {
            columns[index].field.Name = rows->ColumnName(index);
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
            rows->Read(index, column.field.Value);
            column.decodedRow = row;
        }
        return column.field;
    }

    std::unique_ptr<DataSession> session;  // null for rows in memory
    std::unique_ptr<DataRows> rows;        // of the session
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
    if (std::unique_ptr<DataRows> rows = RowsOfSnapshot(statement, activeConnection)) {
        m_impl = std::make_unique<Impl>(nullptr, std::move(rows));
        return;
    }
    std::unique_ptr<DataSession> session = OpenDataSession(activeConnection);
    if (std::unique_ptr<DataRows> rows = session->Query(statement)) {
        m_impl = std::make_unique<Impl>(std::move(session), std::move(rows));
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
    impl.atEnd = !impl.rows->Next();
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
