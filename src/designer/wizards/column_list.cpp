// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/wizards/column_list.h"

#include <QDropEvent>
#include <QKeyEvent>
#include <algorithm>

namespace designer {
namespace {

constexpr int NameRole = Qt::UserRole;

std::string NameOf(const QListWidgetItem& item) {
    return item.data(NameRole).toString().toStdString();
}

bool Contains(const std::vector<std::string>& columns, const std::string& column) {
    return std::find(columns.begin(), columns.end(), column) != columns.end();
}

}  // namespace

ColumnList::ColumnList(Role role, QWidget* parent) : QListWidget(parent), m_role(role) {
    setSelectionMode(ExtendedSelection);
    setDragDropMode(DragDrop);
    setDropIndicatorShown(true);
    setDefaultDropAction(Qt::CopyAction);
}

std::vector<std::string> ColumnList::Columns() const {
    std::vector<std::string> columns;
    columns.reserve(static_cast<std::size_t>(count()));
    for (int row = 0; row < count(); ++row) {
        columns.push_back(NameOf(*item(row)));
    }
    return columns;
}

std::vector<std::string> ColumnList::SelectedColumns() const {
    std::vector<std::string> columns;
    for (int row = 0; row < count(); ++row) {
        if (item(row)->isSelected()) {
            columns.push_back(NameOf(*item(row)));
        }
    }
    return columns;
}

void ColumnList::Clear() {
    clear();
}

void ColumnList::Append(const std::string& column, const QString& type) {
    const QString name = QString::fromStdString(column);
    auto* own = new QListWidgetItem(type.isEmpty() ? name : name + "  (" + type + ")", this);
    own->setData(NameRole, name);
}

// What the list has already moves to the row.
void ColumnList::Insert(const std::vector<std::string>& columns, int row) {
    const std::vector<std::string> before = Columns();
    const auto end = row < 0 ? before.end() : before.begin() + std::min(row, count());
    std::vector<std::string> all;
    std::copy_if(before.begin(), end, std::back_inserter(all),
                 [&](const std::string& own) { return !Contains(columns, own); });
    all.insert(all.end(), columns.begin(), columns.end());
    std::copy_if(end, before.end(), std::back_inserter(all),
                 [&](const std::string& own) { return !Contains(columns, own); });
    clear();
    for (const std::string& column : all) {
        Append(column);
        item(count() - 1)->setSelected(Contains(columns, column));
        if (column == columns.back()) {
            setCurrentRow(count() - 1, QItemSelectionModel::NoUpdate);
        }
    }
}

void ColumnList::Remove(const std::vector<std::string>& columns) {
    for (int row = count() - 1; row >= 0; --row) {
        if (Contains(columns, NameOf(*item(row)))) {
            delete takeItem(row);
        }
    }
}

// An empty search ends the one before, and goes to the next row.
void ColumnList::EndSearch() {
    const QItemSelection selection = selectionModel()->selection();
    const QModelIndex current = currentIndex();
    keyboardSearch({});
    selectionModel()->setCurrentIndex(current, QItemSelectionModel::NoUpdate);
    selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect);
}

void ColumnList::MoveSelected(int by) {
    std::vector<std::string> all = Columns();
    const std::vector<std::string> chosen = SelectedColumns();
    if (chosen.empty() || Contains(chosen, by < 0 ? all.front() : all.back())) {
        return;
    }
    const auto first = std::find(all.begin(), all.end(), by < 0 ? chosen.front() : chosen.back());
    // The neighbour goes to the other side of the selected ones.
    const int row = static_cast<int>(first - all.begin()) + by;
    Insert(chosen, by < 0 ? row : row + 1);
}

bool ColumnList::MayDrop(const QDropEvent& event) const {
    const auto* from = qobject_cast<const ColumnList*>(event.source());
    return from && (from != this || m_role == Role::Takes) && from->window() == window();
}

void ColumnList::dragEnterEvent(QDragEnterEvent* event) {
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(MayDrop(*event));
}

void ColumnList::dragMoveEvent(QDragMoveEvent* event) {
    QListWidget::dragMoveEvent(event);  // shows where they would come
    event->setDropAction(Qt::CopyAction);
    event->setAccepted(MayDrop(*event));
}

void ColumnList::dropEvent(QDropEvent* event) {
    if (!MayDrop(*event)) {
        event->ignore();
        return;
    }
    auto* from = qobject_cast<ColumnList*>(event->source());
    const QModelIndex place = indexAt(event->position().toPoint());
    const int row = !place.isValid() ? -1 : place.row() + (dropIndicatorPosition() == BelowItem ? 1 : 0);
    event->setDropAction(Qt::CopyAction);  // else the view that they come from would remove them
    event->accept();
    emit Dropped(from, from->SelectedColumns(), row);
    setState(NoState);
}

void ColumnList::keyPressEvent(QKeyEvent* event) {
    const bool moves = event->modifiers() == Qt::ControlModifier && m_role == Role::Takes;
    if (event->key() == Qt::Key_Delete && m_role == Role::Takes) {
        emit RemoveRequested();
    } else if (moves && (event->key() == Qt::Key_Up || event->key() == Qt::Key_Down)) {
        emit MoveRequested(event->key() == Qt::Key_Up ? -1 : 1);
    } else {
        QListWidget::keyPressEvent(event);
    }
}

}  // namespace designer
