// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/lists_dialog.h"

#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/document/names.h"
#include "designer/document/placeholder_text.h"
#include "designer/expressions/filter_list.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::size_t MostShown = 80;  // characters of a value in a message

QStringList ValuesOfFields(const std::vector<std::string>& fields) {
    QStringList values;
    for (const std::string& field : fields) {
        values.append(QString::fromStdString(FieldValue(field)));
    }
    return values;
}

}  // namespace

ListsDialog::ListsDialog(DesignModel& model, ElementId region, std::vector<ElementId> ids,
                         const QString& title, const QString& step, QWidget* parent)
    : ValuesDialog(model, std::move(ids), title, step, parent),
      m_fields(FieldNamesOfRegion(model.Source(), region)) {}

RowTable* ListsDialog::AddList(QVBoxLayout& page, const char* name, const QString& title, ElementId owner,
                               const ElementList& shape, const std::vector<RowColumn>& columns) {
    const int index = Source().IndexOf(owner);
    auto* table = new RowTable(
        Model(), name, title, columns,
        [index, shape](Document& copy, const std::vector<RowTable::Row>& rows) {
            PutRows(copy, copy.IdAt(index), shape, rows);
        },
        this);
    List list{owner, shape, table, 0, false, RowsOf(Source(), owner, shape)};
    table->SetRows(list.old);
    m_lists.push_back(std::move(list));
    page.addWidget(table, 1);
    return table;
}

void ListsDialog::AddSortPage(ElementId owner) {
    QVBoxLayout& page = *AddPage(tr("Sorting"));
    AddList(page, "sorts", tr("Sort by"), owner, SortList(Source()),
            {{.title = tr("Sort by"), .takesExpressions = true, .choices = ValuesOfFields(m_fields)},
             {.title = tr("Direction"),
              .choices = {"Ascending", "Descending"},
              .isClosed = true,
              .initial = "Ascending"}});
    auto* help =
        new QLabel(tr("The first row counts most; the next one orders what is the same in it."), this);
    help->setWordWrap(true);
    page.addWidget(help);
}

void ListsDialog::AddFilterPage(ElementId owner) {
    QVBoxLayout& page = *AddPage(tr("Filters"));
    auto* filters = new FilterList(Model(), this);
    filters->ShowFilters(owner, m_fields);
    m_filters.emplace_back(owner, filters);
    page.addWidget(filters, 1);
}

void ListsDialog::AddGroupExpressions(QVBoxLayout& page, ElementId group) {
    auto* label = new QLabel(tr("Group &on:"), this);
    page.addWidget(label);
    RowTable* table =
        AddList(page, "groupExpressions", tr("Group on"), group, GroupExpressionList(),
                {{.title = tr("Group on"), .takesExpressions = true, .choices = ValuesOfFields(m_fields)}});
    label->setBuddy(&table->Table());
    m_lists.back().isNeeded = true;
}

void ListsDialog::AddVariablePage(ElementId group) {
    QVBoxLayout& page = *AddPage(tr("Variables"));
    AddList(page, "variables", tr("Variables of the group"), group, VariableList(),
            {{.title = tr("Name")}, {.title = tr("Value"), .takesExpressions = true}});
    m_lists.back().expression = 1;
}

// The name of a field stands for its value.
std::vector<RowTable::Row> ListsDialog::RowsIn(const List& list) const {
    std::vector<RowTable::Row> rows = list.table->Rows();
    for (RowTable::Row& row : rows) {
        std::string& expression = row.cells.at(list.expression);
        for (const std::string& field : m_fields) {
            expression = SameText(field, Trim(expression)) ? FieldValue(field) : expression;
        }
    }
    return rows;
}

bool ListsDialog::Complain(RowTable& table, std::size_t row, std::size_t column, const QString& text) {
    Refuse(table, text);
    table.ShowCell(row, column);
    return false;
}

// What the file has already is not looked at.
bool ListsDialog::IsRight(const List& list) {
    const std::vector<RowTable::Row> rows = RowsIn(list);
    if (list.isNeeded && rows.empty()) {
        Refuse(*list.table, tr("A group needs an expression: =Fields!Region.Value"));
        return false;
    }
    for (std::size_t row = 0; row < rows.size(); ++row) {
        if (std::find(list.old.begin(), list.old.end(), rows[row]) != list.old.end()) {
            continue;
        }
        const std::string& expression = rows[row].cells.at(list.expression);
        const std::string& name = rows[row].cells.front();
        if (list.expression > 0 && !rdl::IsIdentifier(name)) {
            return Complain(*list.table, row, 0, QString::fromStdString(NotAName(name)));
        }
        if (list.expression == 0 && !IsExpression(expression)) {
            return Complain(*list.table, row, 0,
                            tr("\"%1\" is no field of the data; an expression begins with =")
                                .arg(QString::fromStdString(std::string(CutText(expression, MostShown)))));
        }
    }
    return true;
}

bool ListsDialog::IsRestValid() {
    for (const List& list : m_lists) {
        if (!IsRight(list)) {
            return false;
        }
    }
    return std::all_of(m_filters.begin(), m_filters.end(), [this](const auto& filters) {
        ShowPageOf(*filters.second);
        return filters.second->IsComplete();
    });
}

void ListsDialog::WriteRest(Document& document) {
    for (const List& list : m_lists) {
        PutRows(document, list.owner, list.shape, RowsIn(list));
    }
    for (const auto& [owner, filters] : m_filters) {
        PutFilters(document, owner, filters->Filters());
    }
}

}  // namespace designer
