// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/chart_lists.h"

#include <QDragEnterEvent>
#include <QGridLayout>
#include <QMimeData>
#include <QPushButton>
#include <QSignalBlocker>

#include "designer/tables/fields.h"
#include "platform/base/ascii.h"

namespace designer {

FieldList::FieldList(QWidget* parent) : QListWidget(parent) {
    setObjectName("fields");
    setAccessibleName(tr("Fields of the data set"));
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
}

void FieldList::ShowSet(const Document& document, const std::string& dataSet) {
    clear();
    m_set = dataSet;
    for (const ReportSet& set : SetsOf(document)) {
        if (SameAscii(set.name, dataSet)) {
            for (const ReportField& field : set.fields) {
                addItem(QString::fromStdString(field.name));
            }
        }
    }
    setCurrentRow(0);
}

std::optional<DraggedField> FieldList::Current() const {
    return currentItem() ? std::optional(DraggedField{m_set, currentItem()->text().toStdString()})
                         : std::nullopt;
}

QStringList FieldList::mimeTypes() const {
    return {FieldMimeType};
}

QMimeData* FieldList::mimeData(const QList<QListWidgetItem*>& items) const {
    return items.isEmpty() ? nullptr : MimeDataOf({m_set, items.front()->text().toStdString()});
}

ChartList::ChartList(const QString& title, const QString& name, int columns, QWidget* parent)
    : QGroupBox(title, parent),
      m_list(new QListWidget(this)),
      m_add(new QPushButton(tr("Add"), this)),
      m_remove(new QPushButton(tr("Remove"), this)),
      m_up(new QPushButton(tr("Up"), this)),
      m_down(new QPushButton(tr("Down"), this)) {
    const QString plain = QString(title).remove('&');
    m_list->setObjectName(name);
    m_list->setAccessibleName(plain);
    m_list->setMinimumHeight(fontMetrics().lineSpacing() * 3 + 8);
    m_list->viewport()->setAcceptDrops(true);
    m_list->viewport()->installEventFilter(this);
    m_list->installEventFilter(this);
    auto* layout = new QGridLayout(this);
    layout->addWidget(m_list, 0, 0, 1, columns);
    const std::pair<QPushButton*, const char*> buttons[] = {
        {m_add, "Add"}, {m_remove, "Remove"}, {m_up, "Up"}, {m_down, "Down"}};
    int place = 0;
    for (const auto& [button, word] : buttons) {
        button->setObjectName(name + word);
        button->setAutoDefault(false);
        button->setAccessibleName(button->text() + ": " + plain);
        layout->addWidget(button, 1 + place / columns, place % columns);
        ++place;
    }
    layout->setRowStretch(0, 1);
    connect(m_add, &QPushButton::clicked, this, &ChartList::AddRequested);
    connect(m_remove, &QPushButton::clicked, this, [this] { emit RemoveRequested(Current()); });
    connect(m_up, &QPushButton::clicked, this, [this] { emit MoveRequested(Current(), Current() - 1); });
    connect(m_down, &QPushButton::clicked, this, [this] { emit MoveRequested(Current(), Current() + 1); });
    connect(m_list, &QListWidget::currentRowChanged, this, [this] {
        ShowButtons();
        emit Chosen();
    });
    ShowButtons();
}

void ChartList::Show(const QStringList& entries, int current) {
    const QSignalBlocker quiet(m_list);
    m_list->clear();
    m_list->addItems(entries);
    m_list->setCurrentRow(current);
    ShowButtons();
}

void ChartList::SetAddText(const QString& text) {
    m_add->setToolTip(text);
}

void ChartList::ShowButtons() {
    const int row = Current();
    m_remove->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_list->count());
}

bool ChartList::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_list && event->type() == QEvent::FocusIn) {
        emit Chosen();
    }
    if (event->type() == QEvent::DragEnter || event->type() == QEvent::DragMove ||
        event->type() == QEvent::Drop) {
        auto* drop = static_cast<QDropEvent*>(event);
        const auto field = FieldIn(*drop->mimeData());
        drop->setAccepted(field.has_value());
        if (field && event->type() == QEvent::Drop) {
            emit Dropped(*field);
        }
        return true;
    }
    return QGroupBox::eventFilter(watched, event);
}

}  // namespace designer
