// SPDX-License-Identifier: GPL-3.0-or-later
// A table of texts with rows that are added and removed.
#pragma once

#include <QTableWidget>
#include <vector>

class QPushButton;

namespace designer {

struct PartsRow {
    int old = -1;  // its number when it was shown; -1: the user has added it
    QStringList texts;
};

class PartsTable : public QWidget {
    Q_OBJECT
 public:
    PartsTable(const QString& title, const QStringList& heads, QWidget* parent = nullptr);
    void SetRows(const std::vector<PartsRow>& rows);
    std::vector<PartsRow> Rows() const;
    void AddRow(const PartsRow& row);
    QTableWidget& Table() { return *m_table; }
    // Adds a button after those for adding and removing.
    QPushButton* AddButton(const QString& text);

 private:
    QTableWidget* m_table;
    QPushButton *m_add, *m_remove;
};

}  // namespace designer
