// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/dialogs/rows_table.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <algorithm>

#include "designer/dialogs/row_text.h"

namespace designer {
namespace {

constexpr std::size_t MostText = 200;  // bytes of a cell
constexpr int MostWidth = 30;          // of a column, in characters

// Shortens between characters, and keeps one line.
QString CellText(const rdl::Value& value) {
    if (value.kind() == rdl::Kind::Bytes) {
        return QCoreApplication::translate("RowsTable", "(%1 bytes)").arg(value.AsText().size());
    }
    const std::string text = TextOf(value);
    QString shown = QString::fromUtf8(text.data(), static_cast<qsizetype>(std::min(text.size(), MostText)));
    shown.replace('\n', ' ').replace('\r', ' ');
    return text.size() > MostText ? shown + "..." : shown;
}

}  // namespace

RowsTable::RowsTable(QWidget* parent) : QTableWidget(parent) {
    setObjectName("rows");
    setAccessibleName(QCoreApplication::translate("RowsTable", "First rows"));
    setEditTriggers(NoEditTriggers);
    setWordWrap(false);
    setTabKeyNavigation(false);
    setAlternatingRowColors(true);
    verticalHeader()->setVisible(false);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 6);
}

void RowsTable::ShowRows(const rdl::QueryRows& rows) {
    clear();
    const auto columns = static_cast<int>(rows.columns.size());
    setColumnCount(columns);
    setRowCount(static_cast<int>(std::min(MostRows, rows.RowCount())));
    for (int column = 0; column < columns; ++column) {
        const auto index = static_cast<std::size_t>(column);
        const QString name = QString::fromStdString(rows.columns[index]);
        const QString type = QString::fromStdString(TypeOf(rows, index));
        setHorizontalHeaderItem(column, new QTableWidgetItem(type.isEmpty() ? name : name + "\n" + type));
        for (int row = 0; row < rowCount(); ++row) {
            const rdl::Value& value = rows.At(static_cast<std::size_t>(row), index);
            auto* cell = new QTableWidgetItem(CellText(value));
            cell->setTextAlignment(Qt::AlignVCenter | (value.IsNumber() ? Qt::AlignRight : Qt::AlignLeft));
            setItem(row, column, cell);
        }
    }
    resizeColumnsToContents();
    const int widest = fontMetrics().averageCharWidth() * MostWidth;
    for (int column = 0; column < columns; ++column) {
        setColumnWidth(column, std::min(columnWidth(column), widest));
    }
}

}  // namespace designer
