// SPDX-License-Identifier: GPL-3.0-or-later
// A table whose rows the user adds, changes in place, removes and orders, by mouse or keys: Insert adds one,
// Ctrl+Delete removes one, Alt+Up and Alt+Down move it, Ctrl+E opens the dialog for expressions,
// Enter goes to the next cell.
#pragma once

#include <QStringList>
#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "designer/expressions/expression_dialog.h"
#include "designer/model/element_rows.h"

class QTableWidget;
class QToolButton;

namespace designer {

struct RowColumn {
    QString title;
    bool takesExpressions = false;
    QStringList choices = {};  // offered in a list
    bool isClosed = false;     // nothing but the choices can be taken
    std::string initial = {};  // of a new row
    bool isReadOnly = false;
};

class RowTable : public QWidget {
    Q_OBJECT
 public:
    struct Row {
        int place = NewRow;  // in the file, as PutRows has it
        std::vector<std::string> cells;
        bool operator==(const Row&) const = default;
    };
    // Writes all rows to where they are going to stand, in a copy of the report.
    using Write = std::function<void(Document&, const std::vector<Row>&)>;

    // `name` is the object name of the table, `title` says what it shows to those who do not see it. The
    // model must live as long as this.
    RowTable(const DesignModel& model, const char* name, const QString& title, std::vector<RowColumn> columns,
             Write write, QWidget* parent = nullptr);

    // Rows that are shorter than the columns are filled up with empty cells.
    void SetRows(std::vector<Row> rows);
    // Shows other columns; the cells stay.
    void SetColumns(std::vector<RowColumn> columns);
    // The rows; a value that is being typed is taken first.
    const std::vector<Row>& Rows();
    // The rows without what is being typed.
    const std::vector<Row>& Shown() const { return m_rows; }
    // Puts the focus on a cell, whose value is wrong.
    void ShowCell(std::size_t row, std::size_t column);
    QTableWidget& Table() { return *m_table; }

 signals:
    void Edited();  // by the user

 protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

 private:
    void BuildButtons();
    QToolButton* AddButton(const QString& text, const char* name, const QString& tip,
                           void (RowTable::*work)());
    void Fill();
    void TakeCell(int row, int column);
    void AddRow();
    void RemoveRow();
    void MoveUp() { MoveRow(-1); }
    void MoveDown() { MoveRow(1); }
    void MoveRow(int step);
    void AskForCell();
    void MoveToNextCell();
    void ShowButtons();

    const DesignModel& m_model;
    std::vector<RowColumn> m_columns;
    const Write m_write;
    std::vector<Row> m_rows;
    QTableWidget* m_table;
    QToolButton *m_remove = nullptr, *m_up = nullptr, *m_down = nullptr, *m_fx = nullptr;
    bool m_isFilling = false;
};

}  // namespace designer
