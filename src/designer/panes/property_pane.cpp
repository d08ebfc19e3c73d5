// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_pane.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>

namespace designer {
namespace {

constexpr int RowRole = Qt::UserRole;

// The value alone can be typed.
class ValueDelegate : public QStyledItemDelegate {
 public:
    using QStyledItemDelegate::QStyledItemDelegate;
    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != 1 || index.data(RowRole).isNull()) {
            return nullptr;
        }
        QWidget* editor = QStyledItemDelegate::createEditor(parent, option, index);
        if (editor) {
            editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
        }
        return editor;
    }
};

}  // namespace

PropertyPane::PropertyPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("properties");
    setAccessibleName(tr("Properties of the selection"));
    setColumnCount(2);
    setHeaderLabels({tr("Property"), tr("Value")});
    setItemDelegate(new ValueDelegate(this));
    setRootIsDecorated(true);
    setAlternatingRowColors(true);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::AnyKeyPressed | QAbstractItemView::SelectedClicked);
    header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    connect(&m_model, &DesignModel::Changed, this, &PropertyPane::Show);
    connect(&m_model, &DesignModel::SelectionChanged, this, &PropertyPane::Show);
    connect(this, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem* row, int column) { TakeValue(*row, column); });
    // A click on a name lets the value be typed.
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) { editItem(row, 1); });
    Show();
}

// The rows stay while they are the same, and with them what is current and what is open.
void PropertyPane::Show() {
    std::vector<PropertyRow> rows;
    const auto& selection = m_model.Selection();
    for (std::size_t index = 0; index < selection.size(); ++index) {
        std::vector<PropertyRow> own = PropertyRowsOf(m_model, selection[index]);
        if (index == 0) {
            rows = std::move(own);
            continue;
        }
        std::erase_if(rows, [&](const PropertyRow& row) {
            return row.kind == PropertyRow::Kind::Name || std::find(own.begin(), own.end(), row) == own.end();
        });
    }
    m_filling = true;
    if (rows != m_rows) {
        clear();
        m_rows = std::move(rows);
        for (std::size_t index = 0; index < m_rows.size(); ++index) {
            const QString category = QString::fromStdString(m_rows[index].category);
            const auto found = findItems(category, Qt::MatchExactly);
            auto* parent = found.isEmpty() ? new QTreeWidgetItem(this, {category}) : found.front();
            parent->setExpanded(true);
            auto* row = new QTreeWidgetItem(parent, {QString::fromStdString(m_rows[index].name)});
            row->setData(1, RowRole, static_cast<int>(index));
            row->setFlags(row->flags() | Qt::ItemIsEditable);
        }
    }
    for (QTreeWidgetItemIterator row(this); *row; ++row) {
        if (!(*row)->data(1, RowRole).isNull()) {
            ShowValue(**row, m_rows[(*row)->data(1, RowRole).toUInt()]);
        }
    }
    m_filling = false;
}

void PropertyPane::ShowValue(QTreeWidgetItem& row, const PropertyRow& property) const {
    std::optional<std::string> value;
    bool isSet = false, differs = false;
    for (const ElementId id : m_model.Selection()) {
        const auto own = PropertyValue(m_model.Source(), id, property);
        differs = differs || (id != m_model.Selection().front() && own != value);
        value = own;
        isSet = isSet || own;
    }
    const QString text = differs ? QString() : QString::fromStdString(value.value_or(property.initial));
    row.setText(1, text);
    row.setForeground(1, palette().brush(isSet ? QPalette::Active : QPalette::Disabled, QPalette::Text));
    QFont font = this->font();
    font.setBold(isSet && property.kind != PropertyRow::Kind::Name);
    row.setFont(1, font);
    row.setToolTip(1, differs ? tr("The items have different values") : text);
}

void PropertyPane::TakeValue(QTreeWidgetItem& row, int column) {
    if (m_filling || column != 1 || row.data(1, RowRole).isNull()) {
        return;
    }
    const PropertyRow property = m_rows[row.data(1, RowRole).toUInt()];
    const std::string value = row.text(1).toStdString();
    const std::vector<ElementId> ids = m_model.Selection();
    // An editor that is left as it was changes nothing, also where the items differ or have the default.
    bool differs = false;
    std::optional<std::string> shown;
    for (const ElementId id : ids) {
        const auto own = PropertyValue(m_model.Source(), id, property);
        differs = differs || (id != ids.front() && own != shown);
        shown = own;
    }
    if (value != (differs ? std::string() : shown.value_or(property.initial))) {
        m_model.Edit(StepName(m_model, tr("Change %1 of").arg(QString::fromStdString(property.name)), ids),
                     [&](Document& document) {
                         for (const ElementId id : ids) {
                             SetPropertyValue(document, id, property, value);
                         }
                     });
    }
    Show();
}

void PropertyPane::Reset() {
    if (!currentItem() || currentItem()->data(1, RowRole).isNull()) {
        return;
    }
    const PropertyRow property = m_rows[currentItem()->data(1, RowRole).toUInt()];
    const std::vector<ElementId> ids = m_model.Selection();
    m_model.Edit(StepName(m_model, tr("Reset %1 of").arg(QString::fromStdString(property.name)), ids),
                 [&](Document& document) {
                     for (const ElementId id : ids) {
                         ResetProperty(document, id, property);
                     }
                 });
}

void PropertyPane::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Delete && state() != QAbstractItemView::EditingState) {
        Reset();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem() &&
               state() != QAbstractItemView::EditingState) {
        editItem(currentItem(), 1);
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

}  // namespace designer
