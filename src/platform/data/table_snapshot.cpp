// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data/table_snapshot.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/contracts/shared_store.h"
#include "platform/data/open_session.h"

namespace {

// "select COLUMNS from TABLE where COLUMN = NUMBER"
struct RowQuestion {
    std::string columns;
    std::int64_t number = 0;
};

std::optional<RowQuestion> QuestionIn(const std::string& statement, const std::string& table,
                                      const std::string& column) {
    constexpr std::string_view Start = "select ";
    const std::string words = ToLower(statement);
    const std::string middle = " from " + ToLower(table) + " where " + ToLower(column) + " = ";
    const std::size_t from = words.find(middle);
    if (!words.starts_with(Start) || from == std::string::npos) {
        return std::nullopt;
    }
    RowQuestion question;
    question.columns = words.substr(Start.size(), from - Start.size());
    const char* const end = words.data() + words.size();
    const auto read = std::from_chars(words.data() + from + middle.size(), end, question.number);
    return read.ec == std::errc() && read.ptr == end ? std::optional(question) : std::nullopt;
}

}  // namespace

struct TableSnapshot::Rows {
    std::string columns;             // as the first statement names them
    std::vector<std::string> names;  // of these columns
    std::vector<std::vector<Variant>> rows;
    std::vector<std::int64_t> numbers;  // of the column that the statements compare, by row
};

namespace {

// The rows of one answer.
class ChosenRows : public DataRows {
 public:
    ChosenRows(std::shared_ptr<const TableSnapshot::Rows> all, std::int64_t number)
        : m_all(std::move(all)), m_number(number) {}

    bool Next() override {
        do {
            ++m_next;
        } while (m_next <= m_all->rows.size() && m_all->numbers[m_next - 1] != m_number);
        return m_next <= m_all->rows.size();
    }
    std::size_t ColumnCount() const override { return m_all->names.size(); }
    std::string ColumnName(std::size_t column) const override { return m_all->names[column]; }
    void Read(std::size_t column, Variant& value) const override { value = m_all->rows[m_next - 1][column]; }

 private:
    std::shared_ptr<const TableSnapshot::Rows> m_all;
    std::int64_t m_number;
    std::size_t m_next = 0;  // the number of the current row, from 1
};

TableSnapshot*& Living() {
    static TableSnapshot* snapshot = nullptr;
    return snapshot;
}

}  // namespace

TableSnapshot::TableSnapshot(std::string connectionString, std::string table, std::string column)
    : m_connectionString(std::move(connectionString)),
      m_table(std::move(table)),
      m_column(std::move(column)),
      m_former(std::exchange(Living(), this)) {}

TableSnapshot::~TableSnapshot() {
    Living() = m_former;
}

// Rows without a number in the column are in no answer.
void TableSnapshot::Read(const std::string& columns) {
    const std::unique_ptr<DataSession> session = OpenDataSession(m_connectionString);
    const std::unique_ptr<DataRows> found =
        session->Query("select " + columns + ", " + m_column + " from " + m_table);
    auto all = std::make_shared<Rows>();
    all->columns = columns;
    const std::size_t last = found->ColumnCount() - 1;
    for (std::size_t column = 0; column < last; ++column) {
        all->names.push_back(found->ColumnName(column));
    }
    while (found->Next()) {
        Variant number;
        found->Read(last, number);
        if (!number.Integer()) {
            continue;
        }
        std::vector<Variant> row(last);
        for (std::size_t column = 0; column < last; ++column) {
            found->Read(column, row[column]);
        }
        all->rows.push_back(std::move(row));
        all->numbers.push_back(*number.Integer());
    }
    m_rows = std::move(all);
}

std::unique_ptr<DataRows> TableSnapshot::Answer(const std::string& statement,
                                                const std::string& connectionString) {
    if (connectionString != m_connectionString || !IsShared(connectionString)) {
        return nullptr;
    }
    const std::optional<RowQuestion> question = QuestionIn(statement, m_table, m_column);
    if (!question) {
        return nullptr;
    }
    if (m_rows == nullptr) {
        Read(question->columns);
    }
    return m_rows->columns == question->columns ? std::make_unique<ChosenRows>(m_rows, question->number)
                                                : nullptr;
}

std::unique_ptr<DataRows> RowsOfSnapshot(const std::string& statement, const std::string& connectionString) {
    return Living() != nullptr ? Living()->Answer(statement, connectionString) : nullptr;
}
