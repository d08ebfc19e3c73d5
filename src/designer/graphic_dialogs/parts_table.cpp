// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/graphic_dialogs/parts_table.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>

namespace designer {
namespace {

constexpr int OldRole = Qt::UserRole;

}  // namespace

PartsTable::PartsTable(const QString& title, const QStringList& heads, QWidget* parent)
    : QWidget(parent),
      m_table(new QTableWidget(0, static_cast<int>(heads.size()), this)),
      m_add(new QPushButton(tr("&Add"), this)),
      m_remove(new QPushButton(tr("&Remove"), this)) {
    m_table->setObjectName("parts");
    m_table->setAccessibleName(QString(title).remove('&'));
    m_table->setHorizontalHeaderLabels(heads);
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setTabKeyNavigation(false);
    m_table->setSelectionMode(QAbstractItemView::SingleSelection);
    m_table->setMinimumHeight(fontMetrics().lineSpacing() * 8);
    m_add->setObjectName("partsAdd");
    m_remove->setObjectName("partsRemove");
    m_add->setAutoDefault(false);
    m_remove->setAutoDefault(false);
    auto* label = new QLabel(title, this);
    label->setBuddy(m_table);
    auto* buttons = new QHBoxLayout;
    buttons->setObjectName("buttons");
    buttons->addWidget(m_add);
    buttons->addWidget(m_remove);
    buttons->addStretch(1);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(label);
    layout->addWidget(m_table, 1);
    layout->addLayout(buttons);
    connect(m_add, &QPushButton::clicked, this, [this] {
        AddRow({});
        m_table->setCurrentCell(m_table->rowCount() - 1, 0);
        m_table->setFocus();
        m_table->editItem(m_table->item(m_table->rowCount() - 1, 0));
    });
    connect(m_remove, &QPushButton::clicked, this, [this] { m_table->removeRow(m_table->currentRow()); });
    connect(m_table, &QTableWidget::currentCellChanged, this,
            [this] { m_remove->setEnabled(m_table->currentRow() >= 0); });
    m_remove->setEnabled(false);
}

void PartsTable::SetRows(const std::vector<PartsRow>& rows) {
    m_table->setRowCount(0);
    for (const PartsRow& row : rows) {
        AddRow(row);
    }
}

void PartsTable::AddRow(const PartsRow& row) {
    const int number = m_table->rowCount();
    m_table->insertRow(number);
    for (int column = 0; column < m_table->columnCount(); ++column) {
        auto* cell = new QTableWidgetItem(row.texts.value(column));
        cell->setData(OldRole, row.old);
        m_table->setItem(number, column, cell);
    }
}

std::vector<PartsRow> PartsTable::Rows() const {
    std::vector<PartsRow> rows;
    for (int number = 0; number < m_table->rowCount(); ++number) {
        PartsRow& row = rows.emplace_back();
        row.old = m_table->item(number, 0)->data(OldRole).toInt();
        for (int column = 0; column < m_table->columnCount(); ++column) {
            row.texts.append(m_table->item(number, column)->text().trimmed());
        }
    }
    return rows;
}

QPushButton* PartsTable::AddButton(const QString& text) {
    auto* button = new QPushButton(text, this);
    button->setAutoDefault(false);
    auto* buttons = layout()->findChild<QHBoxLayout*>("buttons");
    buttons->insertWidget(buttons->count() - 1, button);
    return button;
}

}  // namespace designer
