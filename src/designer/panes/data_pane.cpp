// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/data_pane.h"

#include <QMimeData>

#include "designer/model/field_drag.h"
#include "designer/tables/cell_text.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr int DataSetRole = Qt::UserRole, FieldRole = Qt::UserRole + 1, ExpressionRole = Qt::UserRole + 2;

constexpr const char* BuiltIn[] = {"ExecutionTime", "PageNumber", "TotalPages",
                                   "ReportName",    "UserID",     "Language"};

bool IsField(const QTreeWidgetItem& row) {
    return !row.data(0, FieldRole).toString().isEmpty();
}

DraggedField FieldOf(const QTreeWidgetItem& row) {
    return {row.data(0, DataSetRole).toString().toStdString(),
            row.data(0, FieldRole).toString().toStdString()};
}

}  // namespace

DataPane::DataPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("reportData");
    setAccessibleName(tr("Data of the report"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    connect(&m_model, &DesignModel::Changed, this, &DataPane::Show);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) { Place(*row); });
    Show();
}

std::vector<DataPane::Entry> DataPane::Entries() const {
    const Document& document = m_model.Source();
    std::vector<Entry> entries;
    const auto named = [&](const char* title, const char* collection, const char* element,
                           const char* expression) {
        const auto found = ChildrenNamed(document, document.Root(), collection, element);
        if (!found.empty()) {
            entries.push_back({tr(title).toStdString(), {}, {}, {}, 0});
        }
        for (const ElementId id : found) {
            const std::string name = document.Attribute(id, "Name").value_or("");
            entries.push_back(
                {name, {}, {}, *expression ? "=" + std::string(expression) + name + ".Value" : "", 1});
        }
    };
    for (const DataSetFields& set : DataSetsOf(document)) {
        entries.push_back({set.name, {}, {}, {}, 0});
        for (const DataField& field : set.fields) {
            entries.push_back({field.name, set.name, field.name, {}, 1});
        }
    }
    named(QT_TR_NOOP("Parameters"), "ReportParameters", "ReportParameter", "Parameters!");
    entries.push_back({tr("Built-in fields").toStdString(), {}, {}, {}, 0});
    for (const char* name : BuiltIn) {
        const bool isUser = std::string_view(name) == "UserID" || std::string_view(name) == "Language";
        entries.push_back({name, {}, {}, std::string(isUser ? "=User!" : "=Globals!") + name, 1});
    }
    named(QT_TR_NOOP("Data sources"), "DataSources", "DataSource", "");
    named(QT_TR_NOOP("Embedded pictures"), "EmbeddedImages", "EmbeddedImage", "");
    return entries;
}

void DataPane::Show() {
    std::vector<Entry> entries = Entries();
    if (entries == m_shown) {
        return;
    }
    m_shown = std::move(entries);
    clear();
    QTreeWidgetItem* top = nullptr;
    for (const Entry& entry : m_shown) {
        auto* row = entry.depth == 0 ? new QTreeWidgetItem(this) : new QTreeWidgetItem(top);
        top = entry.depth == 0 ? row : top;
        row->setText(0, QString::fromStdString(entry.text));
        row->setData(0, DataSetRole, QString::fromStdString(entry.dataSet));
        row->setData(0, FieldRole, QString::fromStdString(entry.field));
        row->setData(0, ExpressionRole, QString::fromStdString(entry.expression));
        row->setFlags(entry.field.empty() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable
                                          : Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled);
        row->setExpanded(true);
    }
    expandAll();
}

QStringList DataPane::mimeTypes() const {
    return {FieldMimeType};
}

QMimeData* DataPane::mimeData(const QList<QTreeWidgetItem*>& items) const {
    return items.isEmpty() || !IsField(*items.front()) ? nullptr : MimeDataOf(FieldOf(*items.front()));
}

// A parameter or a built-in field becomes what the selected text box shows.
void DataPane::Place(const QTreeWidgetItem& row) {
    if (IsField(row)) {
        if (PlaceField(m_model, FieldOf(row), TargetOfSelection(m_model))) {
            emit Placed();
        }
        return;
    }
    const std::string expression = row.data(0, ExpressionRole).toString().toStdString();
    const ElementId leader = m_model.Leader();
    if (expression.empty() || !m_model.Item(leader)) {
        return;
    }
    if (m_model.Edit(StepName(m_model, tr("Edit"), {leader}),
                     [&](Document& document) { SetTextOfBox(document, leader, expression); })) {
        emit Placed();
    }
}

}  // namespace designer
