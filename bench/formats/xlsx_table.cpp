// SPDX-License-Identifier: GPL-3.0-or-later
// The least work for a workbook of the rows: each cell is written to a known place in one format, without
// evaluation or layout.
//
// usage: bench_xlsx_table DATABASE OUT
#include <sqlite3.h>
#include <xlsxwriter.h>

#include <cstdio>

namespace {

void WriteCell(lxw_worksheet* sheet, lxw_row_t row, int column, sqlite3_stmt* rows, lxw_format* format) {
    const auto place = static_cast<lxw_col_t>(column);
    const int type = sqlite3_column_type(rows, column);
    if (type == SQLITE_INTEGER || type == SQLITE_FLOAT) {
        worksheet_write_number(sheet, row, place, sqlite3_column_double(rows, column), format);
    } else {
        worksheet_write_string(sheet, row, place,
                               reinterpret_cast<const char*>(sqlite3_column_text(rows, column)), format);
    }
}

}  // namespace

int main(int argc, char** argv) {
    sqlite3* connection = nullptr;
    sqlite3_stmt* rows = nullptr;
    if (argc != 3 || sqlite3_open(argv[1], &connection) != SQLITE_OK ||
        sqlite3_prepare_v2(connection, "select * from Orders", -1, &rows, nullptr) != SQLITE_OK) {
        std::fputs("usage: bench_xlsx_table DATABASE OUT\n", stderr);
        return 2;
    }
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    lxw_workbook* const book = workbook_new_opt(argv[2], &options);
    lxw_worksheet* const sheet = workbook_add_worksheet(book, nullptr);
    lxw_format* const format = workbook_add_format(book);
    format_set_border(format, LXW_BORDER_THIN);
    const int columns = sqlite3_column_count(rows);
    for (int column = 0; column < columns; ++column) {
        worksheet_write_string(sheet, 0, static_cast<lxw_col_t>(column), sqlite3_column_name(rows, column),
                               format);
    }
    for (lxw_row_t row = 1; sqlite3_step(rows) == SQLITE_ROW; ++row) {
        for (int column = 0; column < columns; ++column) {
            WriteCell(sheet, row, column, rows, format);
        }
    }
    const bool isSaved = workbook_close(book) == LXW_NO_ERROR;
    sqlite3_finalize(rows);
    sqlite3_close(connection);
    return isSaved ? 0 : 1;
}
