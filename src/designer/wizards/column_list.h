// SPDX-License-Identifier: GPL-3.0-or-later
// A list of columns of a query. Columns are dragged from one list into another; the list that offers all of
// them keeps its own.
#pragma once

#include <QListWidget>
#include <string>
#include <vector>

namespace designer {

class ColumnList : public QListWidget {
    Q_OBJECT
 public:
    enum class Role { Offers, Takes };
    explicit ColumnList(Role role, QWidget* parent = nullptr);

    std::vector<std::string> Columns() const;
    std::vector<std::string> SelectedColumns() const;
    void Clear();
    // The list must not have the column yet.
    void Append(const std::string& column, const QString& type = {});
    // Puts the columns before the row, or at the end if `row` is -1, and selects them.
    void Insert(const std::vector<std::string>& columns, int row);
    void Remove(const std::vector<std::string>& columns);
    // The next character that is typed begins another name.
    void EndSearch();
    // Moves the selected columns up (-1) or down (1).
    void MoveSelected(int by);

 signals:
    // Columns are to come from another list, before the row.
    void Dropped(ColumnList* from, const std::vector<std::string>& columns, int row);
    void RemoveRequested();
    void MoveRequested(int by);

 protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    bool MayDrop(const QDropEvent& event) const;
    const Role m_role;
};

}  // namespace designer
