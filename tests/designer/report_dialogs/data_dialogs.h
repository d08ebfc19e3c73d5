// SPDX-License-Identifier: GPL-3.0-or-later
// A report with a database and two more data sources, and a dialog for them that is driven by mouse and keys.
#pragma once

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <QTabWidget>
#include <QTableWidget>

#include "../report_text.h"
#include "../shown_dialog.h"
#include "designer/model/design_model.h"
#include "support/temporary_folder.h"

namespace designer::test {

inline const std::string Sales =
    ReportText(SourceText("Sales", "SQLITE", "Data Source=sales.db") +
                   SourceText("Team", "PostgreSQL", "Host=db;Database=sales;SSL Mode=require") +
                   SharedSourceText("Far", "Far"),
               SetText("Orders", "Sales", CommandText("select id from orders"),
                       FieldText("Number", "id", "          <rd:TypeName>System.Int64</rd:TypeName>\n")));

class DataDialogsTest : public ShownDialogTest {
 protected:
    DataDialogsTest() : m_model(Document(Sales)) {
        m_model.SetFile(m_folder / "sales.rdl");
        sqlite3* database = nullptr;
        sqlite3_open((m_folder / "sales.db").c_str(), &database);
        sqlite3_exec(database,
                     "create table orders (id integer, day text, amount real);"
                     "insert into orders values (1, '2025-03-01', 2.5), (2, '2025-03-02', 4.25)",
                     nullptr, nullptr, nullptr);
        sqlite3_close(database);
    }
    template <typename Dialog>
    void Open() {
        Show(std::make_unique<Dialog>(m_model));
    }
    void Page(int index) const { The<QTabWidget>("setTabs").setCurrentIndex(index); }
    std::string Rows(const char* table) const {
        const auto& cells = The<QTableWidget>(table);
        QStringList rows;
        for (int row = 0; row < cells.rowCount(); ++row) {
            QStringList one;
            for (int column = 0; column < cells.columnCount(); ++column) {
                one += cells.item(row, column) ? cells.item(row, column)->text() : QString();
            }
            rows += one.join('|');
        }
        return rows.join(", ").toStdString();
    }
    void AddRow(const char* table, const std::vector<const char*>& cells) const {
        The<QTableWidget>(table).setFocus();
        QTest::keyClick(&The<QTableWidget>(table), Qt::Key_Insert);
        const int row = The<QTableWidget>(table).currentRow();
        TypeInEditor(cells[0]);
        for (int column = 1; column < static_cast<int>(cells.size()); ++column) {
            TypeCell(table, row, column, cells[static_cast<std::size_t>(column)]);
        }
    }
    // Picks a whole entry: characters that follow each other closely are one search of the list.
    void Pick(const char* list, const char* entry) const { The<QComboBox>(list).setCurrentText(entry); }
    const Document& Report() const { return m_model.Source(); }

    const TemporaryFolder m_folder;
    DesignModel m_model;
};

}  // namespace designer::test
