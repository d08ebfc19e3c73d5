// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/property_pane.h"

#include <QApplication>
#include <QComboBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <algorithm>

namespace designer {
namespace {

constexpr int RowRole = Qt::UserRole;
constexpr int NameCharacters = 22;  // width of the names

// The value alone is edited, in a list where there is a choice.
class ValueDelegate : public QStyledItemDelegate {
 public:
    explicit ValueDelegate(PropertyPane* pane) : QStyledItemDelegate(pane), m_pane(*pane) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        if (index.column() != 1 || index.data(RowRole).isNull()) {
            return nullptr;
        }
        const Property& property = *m_pane.RowAt(index.data(RowRole).toUInt()).property;
        const std::vector<std::string> choices = ChoicesFor(m_pane.Source(), property);
        QWidget* editor = choices.empty() ? QStyledItemDelegate::createEditor(parent, option, index)
                                          : MakeList(parent, property, choices);
        editor->setAccessibleName(index.siblingAtColumn(0).data().toString());
        return editor;
    }

 private:
    QWidget* MakeList(QWidget* parent, const Property& property,
                      const std::vector<std::string>& choices) const {
        auto* list = new QComboBox(parent);
        list->setAutoFillBackground(true);
        const bool isClosed = property.kind == PropertyKind::Words || property.kind == PropertyKind::Boolean;
        list->setEditable(!isClosed || property.expressions != Expressions::No);
        for (const std::string& choice : choices) {
            list->addItem(QString::fromStdString(choice));
        }
        // A choice is taken at once.
        connect(list, &QComboBox::activated, this, [this, list] {
            emit const_cast<ValueDelegate*>(this)->commitData(list);
            emit const_cast<ValueDelegate*>(this)->closeEditor(list);
        });
        return list;
    }

    const PropertyPane& m_pane;
};

QString NameOf(const PropertyRow& row) {
    return QString::fromUtf8(row.property->name.data(), static_cast<qsizetype>(row.property->name.size()));
}

}  // namespace

PropertyPane::PropertyPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("properties");
    setAccessibleName(tr("Properties of the selection"));
    setColumnCount(2);
    setHeaderLabels({tr("Property"), tr("Value")});
    setItemDelegate(new ValueDelegate(this));
    setIndentation(fontMetrics().averageCharWidth() * 2);
    setAlternatingRowColors(true);
    setUniformRowHeights(true);
    setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                    QAbstractItemView::SelectedClicked);
    setColumnWidth(0, fontMetrics().averageCharWidth() * NameCharacters);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    connect(&m_model, &DesignModel::Changed, this, &PropertyPane::Show);
    connect(&m_model, &DesignModel::SelectionChanged, this, &PropertyPane::Show);
    connect(this, &QTreeWidget::itemChanged, this,
            [this](QTreeWidgetItem* row, int column) { TakeValue(*row, column); });
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
            return row.property->kind == PropertyKind::Name ||
                   std::find(own.begin(), own.end(), row) == own.end();
        });
    }
    m_filling = true;
    if (rows != m_rows) {
        m_rows = std::move(rows);
        BuildRows();
    }
    for (QTreeWidgetItemIterator row(this); *row; ++row) {
        if (!(*row)->data(1, RowRole).isNull()) {
            ShowValue(**row, m_rows[(*row)->data(1, RowRole).toUInt()]);
        }
    }
    m_filling = false;
}

void PropertyPane::BuildRows() {
    QStringList closed;
    for (int index = 0; index < topLevelItemCount(); ++index) {
        closed += topLevelItem(index)->isExpanded() ? QString() : topLevelItem(index)->text(0);
    }
    clear();
    for (std::size_t index = 0; index < m_rows.size(); ++index) {
        const std::string_view written = m_rows[index].property->category;
        const QString category = QString::fromUtf8(written.data(), static_cast<qsizetype>(written.size()));
        const auto found = findItems(category, Qt::MatchExactly);
        auto* parent = found.isEmpty() ? new QTreeWidgetItem(this, {category}) : found.front();
        parent->setExpanded(!closed.contains(category));
        parent->setFirstColumnSpanned(true);
        auto* row = new QTreeWidgetItem(parent, {NameOf(m_rows[index])});
        row->setData(1, RowRole, static_cast<uint>(index));
        row->setFlags(row->flags() | Qt::ItemIsEditable);
    }
}

// An editor gives its value when it loses the focus.
void PropertyPane::FinishEditing() {
    const QWidget* const typed = QApplication::focusWidget();
    if (state() == EditingState && typed && viewport()->isAncestorOf(typed)) {
        setFocus();
    }
}

// A value that is not the same for all is mixed, and its text empty.
PropertyValue PropertyPane::CommonValue(const PropertyRow& property) const {
    PropertyValue common;
    for (const ElementId id : m_model.Selection()) {
        const PropertyValue own = ValueOfRow(m_model.Source(), id, property);
        const bool isFirst = id == m_model.Selection().front();
        common.isMixed = common.isMixed || own.isMixed || (!isFirst && own.text != common.text);
        common.isSet = common.isSet || own.isSet;
        common.text = own.text;
    }
    if (common.isMixed) {
        common.text.clear();
    }
    return common;
}

void PropertyPane::ShowValue(QTreeWidgetItem& row, const PropertyRow& property) const {
    const PropertyValue value = CommonValue(property);
    const QString text = QString::fromStdString(value.text);
    row.setText(1, text);
    // What is set has the colour of all texts, whatever the palette is later.
    row.setData(1, Qt::ForegroundRole,
                value.isSet ? QVariant() : QVariant(palette().brush(QPalette::Disabled, QPalette::Text)));
    row.setToolTip(1, value.isMixed ? tr("There are different values") : text);
}

// An editor that is left as it was changes nothing, also where the values differ or none is set.
void PropertyPane::TakeValue(QTreeWidgetItem& row, int column) {
    if (m_filling || column != 1 || row.data(1, RowRole).isNull()) {
        return;
    }
    const PropertyRow property = m_rows[row.data(1, RowRole).toUInt()];
    const std::string value = row.text(1).toStdString();
    const std::vector<ElementId> ids = m_model.Selection();
    if (value != CommonValue(property).text) {
        m_model.Edit(StepName(m_model, tr("Change %1 of").arg(NameOf(property)), ids),
                     [&](Document& document) {
                         for (const ElementId id : ids) {
                             SetRow(document, id, property, value);
                         }
                     });
    }
    Show();
}

const PropertyRow* PropertyPane::CurrentRow() const {
    const QTreeWidgetItem* row = currentItem();
    return !row || row->data(1, RowRole).isNull() ? nullptr : &m_rows[row->data(1, RowRole).toUInt()];
}

void PropertyPane::Reset() {
    if (!CurrentRow()) {
        return;
    }
    const PropertyRow property = *CurrentRow();
    const std::vector<ElementId> ids = m_model.Selection();
    m_model.Edit(StepName(m_model, tr("Reset %1 of").arg(NameOf(property)), ids), [&](Document& document) {
        for (const ElementId id : ids) {
            ResetRow(document, id, property);
        }
    });
}

void PropertyPane::changeEvent(QEvent* event) {
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::PaletteChange) {
        Show();
    } else if (event->type() == QEvent::FontChange) {
        setColumnWidth(0, fontMetrics().averageCharWidth() * NameCharacters);
    }
}

void PropertyPane::keyPressEvent(QKeyEvent* event) {
    const bool isEditing = state() == QAbstractItemView::EditingState;
    if (event->key() == Qt::Key_Delete && !isEditing) {
        Reset();
    } else if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && currentItem() &&
               !isEditing) {
        editItem(currentItem(), 1);
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

}  // namespace designer
