// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_model.h"

#include <QCollator>
#include <QIcon>
#include <algorithm>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/controls/items/image_list.h"

ListModel::ListModel() : m_selection(this) {}

ListItem& ListModel::Add(const std::string& key, const std::string& text, int icon, int smallIcon) {
    if (Find(key) != nullptr) {
        throw RuntimeError(err::KeyNotUnique);
    }
    const int row = Count();
    beginInsertRows({}, row, row);
    m_items.push_back(std::make_unique<ListItem>(*this, key, text, icon, smallIcon));
    ListItem& item = *m_items.back();
    item.m_row = row;
    if (!key.empty()) {
        m_byKey[key] = &item;
    }
    endInsertRows();
    OrderLost();
    return item;
}

ListItem& ListModel::At(int row) {
    PutInOrder();
    return *m_items[static_cast<std::size_t>(row)];
}

ListItem* ListModel::Find(const std::string& key) const {
    const auto found = m_byKey.find(key);
    return found == m_byKey.end() ? nullptr : found->second;
}

int ListModel::RowOf(const ListItem& item) {
    PutInOrder();
    return item.m_row;
}

void ListModel::Remove(ListItem& item) {
    const int row = item.m_row;
    MoveFocusFrom(row);
    beginRemoveRows({}, row, row);
    m_byKey.erase(item.Key);
    m_items.erase(m_items.begin() + row);
    Renumber(static_cast<std::size_t>(row));
    endRemoveRows();
}

void ListModel::Clear() {
    if (!m_items.empty()) {
        m_selection.setCurrentIndex({}, QItemSelectionModel::Clear);
        beginRemoveRows({}, 0, Count() - 1);
        m_byKey.clear();
        m_items.clear();
        m_disordered = false;
        endRemoveRows();
    }
    emit Cleared();
}

// Views select a neighbour of a removed selected item; here the neighbour only gets the focus.
void ListModel::MoveFocusFrom(int row) {
    const auto selected = m_selection.selectedIndexes();
    if (!selected.isEmpty() && selected.first().row() == row) {
        m_selection.clearSelection();
    }
    if (m_selection.currentIndex().row() == row) {
        const int neighbour = row + 1 < Count() ? row + 1 : row - 1;
        m_selection.setCurrentIndex(index(neighbour, 0), QItemSelectionModel::NoUpdate);
    }
}

void ListModel::Renumber(std::size_t from) {
    for (std::size_t i = from; i < m_items.size(); ++i) {
        m_items[i]->m_row = static_cast<int>(i);
    }
}

void ListModel::SetCell(ListItem& item, int column, const std::string& text) {
    const auto place = static_cast<std::size_t>(column);
    if (place >= item.m_cells.size()) {
        item.m_cells.resize(place + 1);
    }
    item.m_cells[place] = text;
    if (column < columnCount()) {
        const QModelIndex cell = index(item.m_row, column);
        emit dataChanged(cell, cell);
    }
    if (column == m_sortKey) {
        OrderLost();
    }
}

void ListModel::AddColumn(const std::string& text) {
    const int column = static_cast<int>(m_columns.size());
    // The first header belongs to the column of the texts, which always exists.
    if (column > 0) {
        beginInsertColumns({}, column, column);
    }
    m_columns.push_back(text);
    if (column > 0) {
        endInsertColumns();
    } else {
        emit headerDataChanged(Qt::Horizontal, 0, 0);
    }
}

void ListModel::ClearColumns() {
    const int last = columnCount() - 1;
    if (last > 0) {
        beginRemoveColumns({}, 1, last);
    }
    m_columns.clear();
    m_pathColumn = -1;
    if (last > 0) {
        endRemoveColumns();
    }
    emit headerDataChanged(Qt::Horizontal, 0, 0);
}

void ListModel::Icons(const ImageList* images) {
    m_images = images;
    if (Count() > 0) {
        emit dataChanged(index(0, 0), index(Count() - 1, 0));
    }
}

void ListModel::SortKey(int column) {
    m_sortKey = column;
    OrderLost();
}

void ListModel::Sorted(bool sorted) {
    m_sorted = sorted;
    OrderLost();
}

void ListModel::OrderLost() {
    if (!m_sorted) {
        m_disordered = false;
        return;
    }
    if (!m_disordered) {
        m_disordered = true;
        QMetaObject::invokeMethod(this, &ListModel::PutInOrder, Qt::QueuedConnection);
    }
}

void ListModel::PutInOrder() {
    if (!m_disordered) {
        return;
    }
    m_disordered = false;
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    std::vector<std::pair<QString, ListItem*>> order;
    order.reserve(m_items.size());
    for (const auto& item : m_items) {
        order.emplace_back(QString::fromStdString(item->Cell(m_sortKey)), item.get());
    }
    const auto less = [&](const auto& a, const auto& b) { return collator.compare(a.first, b.first) < 0; };
    if (std::is_sorted(order.begin(), order.end(), less)) {
        return;
    }
    emit layoutAboutToBeChanged({}, VerticalSortHint);
    const QModelIndexList from = persistentIndexList();
    std::vector<const ListItem*> held;
    held.reserve(static_cast<std::size_t>(from.size()));
    for (const QModelIndex& index : from) {
        held.push_back(m_items[static_cast<std::size_t>(index.row())].get());
    }
    std::stable_sort(order.begin(), order.end(), less);
    for (std::size_t i = 0; i < order.size(); ++i) {
        order[i].second->m_row = static_cast<int>(i);
    }
    std::sort(m_items.begin(), m_items.end(),
              [](const auto& a, const auto& b) { return a->m_row < b->m_row; });
    QModelIndexList to;
    for (qsizetype i = 0; i < from.size(); ++i) {
        to.append(index(held[static_cast<std::size_t>(i)]->m_row, from[i].column()));
    }
    changePersistentIndexList(from, to);
    emit layoutChanged({}, VerticalSortHint);
}

ListItem* ListModel::SelectedItem() {
    const QModelIndexList selected = m_selection.selectedIndexes();
    return selected.isEmpty() ? nullptr : m_items[static_cast<std::size_t>(selected.first().row())].get();
}

void ListModel::Select(ListItem& item, bool selected) {
    if (selected) {
        m_selection.setCurrentIndex(index(item.m_row, 0),
                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    } else if (SelectedItem() == &item) {
        m_selection.clearSelection();
    }
}

int ListModel::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : Count();
}

int ListModel::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : std::max(1, static_cast<int>(m_columns.size()));
}

QVariant ListModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) {
        return {};
    }
    const ListItem& item = *m_items[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        const std::string& cell = item.Cell(index.column());
        return QString::fromStdString(index.column() == m_pathColumn ? paths::ForUser(cell) : cell);
    }
    const bool picture = role == Qt::DecorationRole || role == LargeIconRole;
    if (!picture || index.column() > 0 || m_images == nullptr) {
        return {};
    }
    const QIcon icon = m_images->Image(role == LargeIconRole ? item.Icon : item.SmallIcon);
    return icon.isNull() ? QVariant() : QVariant(icon);
}

QVariant ListModel::headerData(int section, Qt::Orientation orientation, int role) const {
    const auto place = static_cast<std::size_t>(section);
    if (orientation != Qt::Horizontal || place >= m_columns.size()) {
        return {};
    }
    if (role == Qt::DisplayRole) {
        return QString::fromStdString(m_columns[place]);
    }
    return role == Qt::TextAlignmentRole ? QVariant(Qt::AlignLeft | Qt::AlignVCenter) : QVariant();
}

Qt::ItemFlags ListModel::flags(const QModelIndex& index) const {
    if (!index.isValid()) {
        return Qt::NoItemFlags;
    }
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    flags.setFlag(Qt::ItemIsSelectable, index.column() == 0 || m_wholeRows);
    flags.setFlag(Qt::ItemIsEditable, index.column() == 0);
    return flags;
}
