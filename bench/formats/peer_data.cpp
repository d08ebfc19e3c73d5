// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/formats/peer_data.h"

#include <sqlite3.h>

#include <cstdlib>
#include <fstream>
#include <functional>
#include <string>

namespace bench {
namespace {

// The separators around and between the cells of a row.
struct RowForm {
    const char* begin;
    const char* between;
    const char* end;
};

using TextOfColumn = std::function<const char*(int)>;

void WriteRow(std::ofstream& out, const RowForm& form, int columns, const TextOfColumn& text) {
    out << form.begin;
    for (int column = 0; column < columns; ++column) {
        out << (column > 0 ? form.between : "") << text(column);
    }
    out << form.end;
}

// Writes the names of the columns and then the rows. No value needs escaping in either form.
void WriteRows(std::ofstream& out, const std::filesystem::path& database, const RowForm& form) {
    sqlite3* connection = nullptr;
    sqlite3_stmt* rows = nullptr;
    if (sqlite3_open(database.c_str(), &connection) != SQLITE_OK ||
        sqlite3_prepare_v2(connection, "select * from Orders", -1, &rows, nullptr) != SQLITE_OK) {
        std::abort();
    }
    const int columns = sqlite3_column_count(rows);
    WriteRow(out, form, columns, [&](int column) { return sqlite3_column_name(rows, column); });
    while (sqlite3_step(rows) == SQLITE_ROW) {
        WriteRow(out, form, columns, [&](int column) {
            return reinterpret_cast<const char*>(sqlite3_column_text(rows, column));
        });
    }
    sqlite3_finalize(rows);
    sqlite3_close(connection);
}

}  // namespace

void WriteCsv(const std::filesystem::path& database, const std::filesystem::path& csv) {
    std::ofstream out(csv);
    WriteRows(out, database, {"", ",", "\n"});
}

void WriteHtmlTable(const std::filesystem::path& database, const std::filesystem::path& html) {
    std::ofstream out(html);
    out << "<html><body><table border=\"1\">\n";
    WriteRows(out, database, {"<tr><td>", "</td><td>", "</td></tr>\n"});
    out << "</table></body></html>\n";
}

}  // namespace bench
