// SPDX-License-Identifier: GPL-3.0-or-later
// The items of a list in their order, with the one selection that all its views share.
#pragma once

#include <QAbstractTableModel>
#include <QItemSelectionModel>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/controls/items/list_items.h"

class ImageList;

class ListModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    static constexpr int LargeIconRole = Qt::UserRole;  // the decoration role holds the small icon

    ListModel();

    ListItem& Add(const std::string& key, const std::string& text, int icon, int smallIcon);
    int Count() const { return static_cast<int>(m_items.size()); }
    ListItem& At(int row);  // from 0
    ListItem* Find(const std::string& key) const;
    void Remove(ListItem& item);
    void Clear();
    void SetCell(ListItem& item, int column, const std::string& text);
    int RowOf(const ListItem& item);

    const std::vector<std::string>& Columns() const { return m_columns; }
    void AddColumn(const std::string& text);
    void ClearColumns();
    // The cells of this column (from 0) are paths of the system and are shown as users write them.
    void ShowPathsIn(int column) { m_pathColumn = column; }

    void Icons(const ImageList* images);
    // If on, a click on any cell of a row selects the item.
    void WholeRows(bool on) { m_wholeRows = on; }

    int SortKey() const { return m_sortKey; }
    void SortKey(int column);
    bool Sorted() const { return m_sorted; }
    void Sorted(bool sorted);
    // Items are added and changed one by one; sorting waits until a view needs the order.
    void PutInOrder();

    QItemSelectionModel& Selection() { return m_selection; }
    ListItem* SelectedItem();  // null if no item is selected
    void Select(ListItem& item, bool selected);

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

 signals:
    void Cleared();  // empty or not before

 private:
    void OrderLost();
    void MoveFocusFrom(int row);
    void Renumber(std::size_t from);

    std::vector<std::unique_ptr<ListItem>> m_items;
    std::unordered_map<std::string, ListItem*> m_byKey;
    std::vector<std::string> m_columns;
    const ImageList* m_images = nullptr;
    bool m_wholeRows = true;
    int m_pathColumn = -1;
    int m_sortKey = 0;
    bool m_sorted = false, m_disordered = false;
    QItemSelectionModel m_selection;
};
