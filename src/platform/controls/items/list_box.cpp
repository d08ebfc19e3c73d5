// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/items/list_box.h"

#include <QMimeData>
#include <QMouseEvent>
#include <QSignalBlocker>
#include <QUrl>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"

namespace {

constexpr std::int32_t InvalidCall = 5;

std::vector<std::string> FilesOf(const QMimeData& data) {
    std::vector<std::string> files;
    for (const QUrl& url : data.urls()) {
        if (url.isLocalFile()) {
            files.push_back(paths::FromMachine(url.toLocalFile().toStdString()));
        }
    }
    return files;
}

void TakeFiles(QDropEvent& event) {
    if (FilesOf(*event.mimeData()).empty()) {
        event.ignore();
    } else {
        event.setDropAction(Qt::CopyAction);
        event.accept();
    }
}

}  // namespace

ListBox::ListBox(QWidget* parent) : QListWidget(parent) {
    viewport()->setMouseTracking(true);
    connect(this, &QListWidget::itemSelectionChanged, this, [this] {
        m_told = true;
        if (ListIndex() >= 0) {
            emit Click();
        }
    });
    connect(this, &QListWidget::itemDoubleClicked, this, &ListBox::DblClick);
}

void ListBox::AddItem(const std::string& text) {
    addItem(QString::fromStdString(text));
}

void ListBox::RemoveItem(int index) {
    if (index < 0 || index >= count()) {
        throw RuntimeError(InvalidCall);
    }
    const int selected = ListIndex();
    const QSignalBlocker silent(this);
    delete takeItem(index);
    // Qt selects a neighbour of the removed line.
    Select(selected == index ? -1 : selected > index ? selected - 1 : selected);
}

std::string ListBox::List(int index) const {
    const QListWidgetItem* line = item(index);
    return line != nullptr ? line->text().toStdString() : std::string();
}

int ListBox::ListIndex() const {
    const QList<QListWidgetItem*> selected = selectedItems();
    return selected.isEmpty() ? -1 : row(selected.constFirst());
}

void ListBox::ListIndex(int index) {
    if (index < -1 || index >= count()) {
        throw RuntimeError(err::InvalidPropertyValue, "Invalid property value");
    }
    Select(index);
}

void ListBox::Select(int index) {
    if (index < 0) {
        clearSelection();
        selectionModel()->clearCurrentIndex();
    } else {
        setCurrentRow(index, QItemSelectionModel::ClearAndSelect);
    }
}

void ListBox::Clear() {
    const QSignalBlocker silent(this);
    clear();
}

void ListBox::AcceptFiles(bool accept) {
    viewport()->setAcceptDrops(accept);
}

void ListBox::mousePressEvent(QMouseEvent* event) {
    m_told = false;
    QListWidget::mousePressEvent(event);
}

void ListBox::mouseReleaseEvent(QMouseEvent* event) {
    QListWidget::mouseReleaseEvent(event);
    const QListWidgetItem* line = itemAt(event->pos());
    if (event->button() == Qt::LeftButton && !m_told && line != nullptr && line->isSelected()) {
        emit Click();
    }
}

void ListBox::mouseMoveEvent(QMouseEvent* event) {
    QListWidget::mouseMoveEvent(event);
    emit MouseMove();
}

void ListBox::dragEnterEvent(QDragEnterEvent* event) {
    TakeFiles(*event);
}

void ListBox::dragMoveEvent(QDragMoveEvent* event) {
    TakeFiles(*event);
}

void ListBox::dropEvent(QDropEvent* event) {
    TakeFiles(*event);
    if (event->isAccepted()) {
        emit OLEDragDrop(FilesOf(*event->mimeData()));
    }
}
