// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/data_pane.h"

#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>

#include "designer/model/field_drag.h"
#include "designer/tables/fields.h"
#include "designer/tables/tablix_shape.h"

namespace designer {
namespace {

constexpr int DataSetRole = Qt::UserRole, FieldRole = Qt::UserRole + 1, ExpressionRole = Qt::UserRole + 2,
              PictureRole = Qt::UserRole + 3, EntryRole = Qt::UserRole + 4;

constexpr const char* BuiltIn[] = {"ExecutionTime", "PageNumber", "TotalPages",
                                   "ReportName",    "UserID",     "Language"};

bool IsField(const QTreeWidgetItem& row) {
    return !row.data(0, FieldRole).toString().isEmpty();
}

DraggedField FieldOf(const QTreeWidgetItem& row) {
    return {row.data(0, DataSetRole).toString().toStdString(),
            row.data(0, FieldRole).toString().toStdString()};
}

DraggedValue ValueOf(const QTreeWidgetItem& row) {
    return {row.data(0, ExpressionRole).toString().toStdString(),
            row.data(0, PictureRole).toBool() ? row.text(0).toStdString() : std::string()};
}

bool IsInTable(const FieldTarget& target) {
    return target.kind != FieldTarget::Kind::Page && target.kind != FieldTarget::Kind::Box;
}

}  // namespace

DataPane::DataPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("reportData");
    setAccessibleName(tr("Data of the report"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);  // it opens what it is on
    setDragEnabled(true);
    setDragDropMode(QAbstractItemView::DragOnly);
    connect(&m_model, &DesignModel::Changed, this, &DataPane::Show);
    connect(this, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem* row) { Activate(*row); });
    connect(this, &QTreeWidget::itemSelectionChanged, this, [this] {
        const auto selected = selectedItems();
        const Entry* entry = selected.isEmpty() ? nullptr : EntryOf(selected.front());
        emit Pointed(entry ? entry->id : NoElement);
    });
    Show();
}

std::vector<DataPane::Entry> DataPane::Entries() const {
    const Document& document = m_model.Source();
    std::vector<Entry> entries;
    const auto named = [&](const char* title, DataPart part, const char* collection, const char* element,
                           const char* expression) {
        const auto found = ChildrenNamed(document, document.Root(), collection, element);
        if (!found.empty()) {
            entries.push_back({tr(title).toStdString(), {}, {}, {}, 0, part});
        }
        for (const ElementId id : found) {
            const std::string name = document.Attribute(id, "Name").value_or("");
            entries.push_back({name,
                               {},
                               {},
                               *expression ? "=" + std::string(expression) + name + ".Value" : "",
                               1,
                               part,
                               name,
                               id,
                               std::string_view(element) == "EmbeddedImage"});
        }
    };
    for (const ReportSet& set : SetsOf(document)) {
        entries.push_back({set.name, {}, {}, {}, 0, DataPart::Set, set.name, set.id});
        for (const ReportField& field : set.fields) {
            entries.push_back({field.name, set.name, field.name, {}, 1, DataPart::Set, set.name, field.id});
        }
    }
    named(QT_TR_NOOP("Parameters"), DataPart::Parameter, "ReportParameters", "ReportParameter",
          "Parameters!");
    entries.push_back({tr("Built-in fields").toStdString(), {}, {}, {}, 0});
    for (const char* name : BuiltIn) {
        const bool isUser = std::string_view(name) == "UserID" || std::string_view(name) == "Language";
        entries.push_back({name, {}, {}, std::string(isUser ? "=User!" : "=Globals!") + name, 1});
    }
    named(QT_TR_NOOP("Data sources"), DataPart::Source, "DataSources", "DataSource", "");
    named(QT_TR_NOOP("Embedded pictures"), DataPart::Image, "EmbeddedImages", "EmbeddedImage", "");
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
        row->setData(0, EntryRole, static_cast<int>(&entry - m_shown.data()));
        row->setData(0, DataSetRole, QString::fromStdString(entry.dataSet));
        row->setData(0, FieldRole, QString::fromStdString(entry.field));
        row->setData(0, ExpressionRole, QString::fromStdString(entry.expression));
        row->setData(0, PictureRole, entry.isPicture);
        const bool isDragged = !entry.field.empty() || !entry.expression.empty() || entry.isPicture;
        row->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable |
                      (isDragged ? Qt::ItemIsDragEnabled : Qt::NoItemFlags));
        row->setExpanded(true);
    }
    expandAll();
}

QStringList DataPane::mimeTypes() const {
    return {FieldMimeType, ValueMimeType};
}

QMimeData* DataPane::mimeData(const QList<QTreeWidgetItem*>& items) const {
    if (items.isEmpty()) {
        return nullptr;
    }
    return IsField(*items.front()) ? MimeDataOf(FieldOf(*items.front()))
                                   : MimeDataOfValue(ValueOf(*items.front()));
}

const DataPane::Entry* DataPane::EntryOf(const QTreeWidgetItem* row) const {
    return row ? &m_shown.at(row->data(0, EntryRole).toUInt()) : nullptr;
}

// A heading, which has nothing to open, folds.
void DataPane::Activate(QTreeWidgetItem& row) {
    const Entry& entry = *EntryOf(&row);
    if (row.childCount() > 0 && entry.name.empty()) {
        row.setExpanded(!row.isExpanded());
    } else if (!Place(row) && entry.part && !IsField(row) && !entry.name.empty()) {
        emit OpenRequested(*entry.part, std::string(entry.name));
    }
}

// A parameter or a built-in field becomes what the selected text box shows, a picture that of the selected
// image. Without one a built-in field gets an item of its own below all others; what has a dialog is left to
// it.
bool DataPane::Place(const QTreeWidgetItem& row) {
    const std::string taken = row.data(0, ExpressionRole).toString().toStdString();
    if (m_taker && (IsField(row) || !taken.empty()) &&
        m_taker(IsField(row) ? std::optional(FieldOf(row)) : std::nullopt, taken)) {
        return true;
    }
    if (IsField(row)) {
        if (PlaceField(m_model, FieldOf(row), TargetOfSelection(m_model))) {
            emit Placed();
        }
        return true;
    }
    const DraggedValue value = ValueOf(row);
    if (value.expression.empty() && value.picture.empty()) {
        return false;
    }
    const ElementId leader = m_model.Leader();
    const FieldTarget target = TargetOfSelection(m_model);
    const bool isInItem = TakesValue(m_model, leader, value) || IsInTable(target);
    if (!isInItem && EntryOf(&row)->part) {
        return false;
    }
    if (isInItem ? m_model.Item(leader) && PlaceValue(m_model, value, leader)
                 : PlaceValue(m_model, value, target.band, target.place)) {
        emit Placed();
    }
    return true;
}

void DataPane::keyPressEvent(QKeyEvent* event) {
    const Entry* entry = EntryOf(currentItem());
    if (event->key() == Qt::Key_Delete && entry && entry->part && !entry->name.empty() &&
        !IsField(*currentItem())) {
        emit RemoveRequested(*entry->part, std::string(entry->name));
        return;
    }
    QTreeWidget::keyPressEvent(event);
}

void DataPane::contextMenuEvent(QContextMenuEvent* event) {
    const bool isKey = event->reason() == QContextMenuEvent::Keyboard;
    const QTreeWidgetItem* row = isKey ? currentItem() : itemAt(event->pos());
    QMenu menu(this);
    menu.setObjectName("dataMenu");
    if (const Entry* entry = EntryOf(row); entry && entry->part && !entry->name.empty()) {
        const auto work = [this, part = *entry->part, name = entry->name](auto wanted) {
            return [this, part, name, wanted] { emit(this->*wanted)(part, name); };
        };
        menu.addAction(tr("&Change..."), this, work(&DataPane::OpenRequested));
        menu.addAction(tr("&Remove"), this, work(&DataPane::RemoveRequested))->setEnabled(!IsField(*row));
        menu.addSeparator();
    }
    const std::pair<QString, DataPart> kinds[] = {{tr("Add Data &Source..."), DataPart::Source},
                                                  {tr("Add &Data Set..."), DataPart::Set},
                                                  {tr("Add &Parameter..."), DataPart::Parameter},
                                                  {tr("Embedded P&ictures..."), DataPart::Image}};
    for (const auto& [text, part] : kinds) {
        menu.addAction(text, this, [this, wanted = part] { emit OpenRequested(wanted, {}); });
    }
    menu.exec(isKey && row ? viewport()->mapToGlobal(visualItemRect(row).center()) : event->globalPos());
}

}  // namespace designer
