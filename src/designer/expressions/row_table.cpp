// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/row_table.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyledItemDelegate>
#include <QTableWidget>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>

namespace designer {
namespace {

// A list where there is a choice.
class CellDelegate : public QStyledItemDelegate {
 public:
    CellDelegate(const std::vector<RowColumn>& columns, QObject* parent)
        : QStyledItemDelegate(parent), m_columns(columns) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override {
        const RowColumn& column = m_columns.at(static_cast<std::size_t>(index.column()));
        QWidget* editor = nullptr;
        if (column.choices.isEmpty()) {
            editor = QStyledItemDelegate::createEditor(parent, option, index);
        } else {
            auto* list = new QComboBox(parent);
            list->setAutoFillBackground(true);
            list->setEditable(!column.isClosed);
            list->addItems(column.choices);
            list->setCurrentIndex(list->findText(index.data(Qt::EditRole).toString()));
            editor = list;
        }
        editor->setAccessibleName(column.title);
        return editor;
    }
    // A value that the list does not have stays as long as nothing is picked.
    void setModelData(QWidget* editor, QAbstractItemModel* model, const QModelIndex& index) const override {
        const auto* list = qobject_cast<QComboBox*>(editor);
        if (!list) {
            QStyledItemDelegate::setModelData(editor, model, index);
        } else if (list->isEditable() || list->currentIndex() >= 0) {
            model->setData(index, list->currentText());
        }
    }

 private:
    const std::vector<RowColumn>& m_columns;
};

}  // namespace

RowTable::RowTable(const DesignModel& model, const char* name, const QString& title,
                   std::vector<RowColumn> columns, Write write, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_columns(std::move(columns)),
      m_write(std::move(write)),
      m_table(new QTableWidget(this)) {
    m_table->setObjectName(name);
    m_table->setAccessibleName(title);
    m_table->setTabKeyNavigation(false);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::EditKeyPressed |
                             QAbstractItemView::AnyKeyPressed);
    m_table->setItemDelegate(new CellDelegate(m_columns, m_table));
    m_table->verticalHeader()->setVisible(false);
    m_table->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 10);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->horizontalHeader()->setHighlightSections(false);
    m_table->setMinimumHeight(fontMetrics().height() * 5);
    m_table->setWordWrap(false);
    m_table->installEventFilter(this);
    setFocusProxy(m_table);
    BuildButtons();
    connect(m_table, &QTableWidget::cellChanged, this, &RowTable::TakeCell);
    connect(m_table, &QTableWidget::currentCellChanged, this, &RowTable::ShowButtons);
    Fill();
}

void RowTable::BuildButtons() {
    auto* buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addWidget(AddButton(tr("Add"), "Add", tr("Add a row (Insert)"), &RowTable::AddRow));
    m_remove = AddButton(tr("Remove"), "Remove", tr("Remove the row (Ctrl+Delete)"), &RowTable::RemoveRow);
    m_up = AddButton(tr("Up"), "Up", tr("Move the row up (Alt+Up)"), &RowTable::MoveUp);
    m_down = AddButton(tr("Down"), "Down", tr("Move the row down (Alt+Down)"), &RowTable::MoveDown);
    m_fx = AddButton(tr("fx"), "Fx", tr("An expression for the cell (Ctrl+E)"), &RowTable::AskForCell);
    for (QToolButton* button : {m_remove, m_up, m_down, m_fx}) {
        buttons->addWidget(button);
    }
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table, 1);
    layout->addLayout(buttons);
}

QToolButton* RowTable::AddButton(const QString& text, const char* name, const QString& tip,
                                 void (RowTable::*work)()) {
    auto* button = new QToolButton(this);
    button->setObjectName(m_table->objectName() + name);
    button->setText(text);
    button->setAccessibleName(m_table->accessibleName() + ": " + text);
    button->setToolTip(tip);
    button->setFocusPolicy(Qt::TabFocus);
    connect(button, &QToolButton::clicked, this, work);
    return button;
}

void RowTable::SetRows(std::vector<Row> rows) {
    m_rows = std::move(rows);
    Fill();
}

void RowTable::SetColumns(std::vector<RowColumn> columns) {
    m_columns = std::move(columns);
    Fill();
}

void RowTable::Fill() {
    m_isFilling = true;
    const int row = m_table->currentRow(), column = m_table->currentColumn();
    m_table->setRowCount(static_cast<int>(m_rows.size()));
    m_table->setColumnCount(static_cast<int>(m_columns.size()));
    for (std::size_t at = 0; at < m_columns.size(); ++at) {
        m_table->setHorizontalHeaderItem(static_cast<int>(at), new QTableWidgetItem(m_columns[at].title));
        for (std::size_t of = 0; of < m_rows.size(); ++of) {
            m_rows[of].cells.resize(std::max(m_rows[of].cells.size(), m_columns.size()));
            auto* cell = new QTableWidgetItem(QString::fromStdString(m_rows[of].cells[at]));
            cell->setFlags(m_columns[at].isReadOnly ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                                                    : cell->flags());
            m_table->setItem(static_cast<int>(of), static_cast<int>(at), cell);
        }
    }
    m_table->setCurrentCell(std::clamp(row, -1, m_table->rowCount() - 1),
                            std::clamp(column, -1, m_table->columnCount() - 1));
    m_isFilling = false;
    ShowButtons();
}

// An editor that loses the focus gives its value.
const std::vector<RowTable::Row>& RowTable::Rows() {
    const QWidget* focus = QApplication::focusWidget();
    if (focus && focus != m_table && m_table->isAncestorOf(focus)) {
        m_table->setFocus();
    }
    return m_rows;
}

void RowTable::TakeCell(int row, int column) {
    if (m_isFilling) {
        return;
    }
    m_rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)] =
        m_table->item(row, column)->text().toStdString();
    emit Edited();
}

void RowTable::AddRow() {
    Rows();
    Row row;
    for (const RowColumn& column : m_columns) {
        row.cells.push_back(column.initial);
    }
    const int at = m_table->currentRow() < 0 ? m_table->rowCount() : m_table->currentRow() + 1;
    m_rows.insert(m_rows.begin() + at, std::move(row));
    Fill();
    ShowCell(static_cast<std::size_t>(at), 0);
    emit Edited();
    m_table->editItem(m_table->currentItem());
}

void RowTable::RemoveRow() {
    Rows();
    const int row = m_table->currentRow();
    if (row >= 0) {
        m_rows.erase(m_rows.begin() + row);
        Fill();
        m_table->setFocus();
        emit Edited();
    }
}

void RowTable::MoveRow(int step) {
    Rows();
    const int row = m_table->currentRow(), to = row + step;
    if (row >= 0 && to >= 0 && to < m_table->rowCount()) {
        std::swap(m_rows[static_cast<std::size_t>(row)], m_rows[static_cast<std::size_t>(to)]);
        Fill();
        m_table->setCurrentCell(to, m_table->currentColumn());
        emit Edited();
    }
}

void RowTable::ShowCell(std::size_t row, std::size_t column) {
    m_table->setFocus();
    m_table->setCurrentCell(static_cast<int>(row), static_cast<int>(column));
}

void RowTable::AskForCell() {
    Rows();
    const int row = m_table->currentRow(), column = m_table->currentColumn();
    if (row < 0 || column < 0 || !m_columns[static_cast<std::size_t>(column)].takesExpressions) {
        return;
    }
    const auto cellOf = [row, column](std::vector<Row>& rows) -> std::string& {
        return rows[static_cast<std::size_t>(row)].cells[static_cast<std::size_t>(column)];
    };
    const ExpressionPlace place{m_columns[static_cast<std::size_t>(column)].title,
                                [&](Document& copy, const std::string& value) {
                                    std::vector<Row> rows = m_rows;
                                    cellOf(rows) = value;
                                    m_write(copy, rows);
                                }};
    if (const auto value = AskForExpression(m_model, place, cellOf(m_rows), this)) {
        m_table->item(row, column)->setText(QString::fromStdString(*value));
    }
    m_table->setFocus();
}

void RowTable::ShowButtons() {
    const int row = m_table->currentRow(), column = m_table->currentColumn();
    m_remove->setEnabled(row >= 0);
    m_up->setEnabled(row > 0);
    m_down->setEnabled(row >= 0 && row + 1 < m_table->rowCount());
    m_fx->setEnabled(row >= 0 && column >= 0 && m_columns[static_cast<std::size_t>(column)].takesExpressions);
    m_fx->setVisible(std::any_of(m_columns.begin(), m_columns.end(),
                                 [](const RowColumn& one) { return one.takesExpressions; }));
}

// The key is the table's: it must not close the dialog around it. In an editor it only ends the typing.
void RowTable::MoveToNextCell() {
    const int row = m_table->currentRow(), column = m_table->currentColumn();
    if (!m_table->hasFocus() || row < 0) {
        return;
    }
    if (column + 1 < m_table->columnCount()) {
        m_table->setCurrentCell(row, column + 1);
    } else if (row + 1 < m_table->rowCount()) {
        m_table->setCurrentCell(row + 1, 0);
    }
}

bool RowTable::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() != QEvent::KeyPress) {
        return QWidget::eventFilter(watched, event);
    }
    const auto& key = *static_cast<QKeyEvent*>(event);
    const struct {
        int key;
        Qt::KeyboardModifiers modifiers;
        void (RowTable::*work)();
    } keys[] = {{Qt::Key_Insert, Qt::NoModifier, &RowTable::AddRow},
                {Qt::Key_Delete, Qt::ControlModifier, &RowTable::RemoveRow},
                {Qt::Key_Up, Qt::AltModifier, &RowTable::MoveUp},
                {Qt::Key_Down, Qt::AltModifier, &RowTable::MoveDown},
                {Qt::Key_E, Qt::ControlModifier, &RowTable::AskForCell},
                {Qt::Key_Return, Qt::NoModifier, &RowTable::MoveToNextCell},
                {Qt::Key_Enter, Qt::NoModifier, &RowTable::MoveToNextCell}};
    for (const auto& one : keys) {
        if (key.key() == one.key && (key.modifiers() & ~Qt::KeypadModifier) == one.modifiers) {
            (this->*one.work)();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

}  // namespace designer
