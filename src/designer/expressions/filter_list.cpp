// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/expressions/filter_list.h"

#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "designer/dialogs/note.h"
#include "designer/document/placeholder_text.h"
#include "designer/tables/fields.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"
#include "rdl/api/filter_operators.h"

namespace designer {
namespace {

constexpr std::size_t FirstValue = 2;     // column
constexpr std::size_t UsualValues = 2;    // columns
constexpr std::size_t MostValues = 1000;  // columns that are shown

}  // namespace

FilterList::FilterList(DesignModel& model, QWidget* parent)
    : QWidget(parent),
      m_model(model),
      m_table(new RowTable(
          model, "filters", tr("Filters"), {},
          [this](Document& copy, const std::vector<RowTable::Row>& rows) {
              std::vector<RowFilter> filters;
              std::transform(rows.begin(), rows.end(), std::back_inserter(filters), FilterOf);
              m_write(copy, filters);
          },
          this)),
      m_note(new Note(m_table->Table(), this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_table, 1);
    layout->addWidget(m_note);
    setFocusProxy(m_table);
    connect(m_table, &RowTable::Edited, this, [this] {
        m_note->Clear();
        ShowValueColumns();
        emit Edited();
    });
}

void FilterList::ShowFilters(ElementId owner, const std::vector<std::string>& fields) {
    ShowFilters(FiltersOf(m_model.Source(), owner), fields,
                [this, owner](Document& copy, const std::vector<RowFilter>& filters) {
                    PutFilters(copy, copy.IdAt(m_model.Source().IndexOf(owner)), filters);
                });
}

void FilterList::ShowFilters(const std::vector<RowFilter>& filters, const std::vector<std::string>& fields,
                             Write write) {
    m_write = std::move(write);
    m_fields = fields;
    m_old = filters;
    std::vector<RowTable::Row> rows;
    for (const RowFilter& filter : filters) {
        RowTable::Row& row = rows.emplace_back();
        row.place = filter.place;
        row.cells = {filter.expression, filter.comparison};
        row.cells.insert(row.cells.end(), filter.values.begin(), filter.values.end());
    }
    m_valueColumns = 0;
    m_note->Clear();
    m_table->SetRows(std::move(rows));
    ShowValueColumns();
}

// There is a free column while a filter can have one more value.
void FilterList::ShowValueColumns() {
    std::size_t wanted = UsualValues;
    for (const RowTable::Row& row : m_table->Shown()) {
        const RowFilter filter = FilterOf(row);
        wanted = std::max(wanted, filter.values.size() + (SameAscii(filter.comparison, "In") ? 1 : 0));
    }
    wanted = std::min(wanted, MostValues);
    if (wanted == m_valueColumns) {
        return;
    }
    m_valueColumns = wanted;
    QStringList values, words;
    for (const std::string& field : m_fields) {
        values.append(QString::fromStdString(FieldValue(field)));
    }
    for (const rdl::FilterOperatorRow& one : rdl::FilterOperators) {
        words.append(QString::fromUtf8(one.name));
    }
    std::vector<RowColumn> columns{
        {.title = tr("Expression"), .takesExpressions = true, .choices = values},
        {.title = tr("Comparison"), .choices = words, .isClosed = true, .initial = "Equal"}};
    for (std::size_t value = 1; value <= wanted; ++value) {
        columns.push_back(
            {.title = value == 1 ? tr("Value") : tr("Value %1").arg(value), .takesExpressions = true});
    }
    m_table->SetColumns(std::move(columns));
}

// Empty cells after the last value are none.
RowFilter FilterList::FilterOf(const RowTable::Row& row) {
    RowFilter filter{.place = row.place, .expression = row.cells[0], .comparison = row.cells[1]};
    std::size_t end = row.cells.size();
    while (end > FirstValue && row.cells[end - 1].empty()) {
        --end;
    }
    filter.values.assign(row.cells.begin() + FirstValue,
                         row.cells.begin() + static_cast<std::ptrdiff_t>(std::max(end, FirstValue)));
    return filter;
}

// The name of a field stands for its value.
std::vector<RowFilter> FilterList::Filters() {
    std::vector<RowFilter> filters;
    for (const RowTable::Row& row : m_table->Rows()) {
        RowFilter& filter = filters.emplace_back(FilterOf(row));
        for (const std::string& field : m_fields) {
            if (!field.empty() && SameText(field, Trim(filter.expression))) {
                filter.expression = FieldValue(field);
            }
        }
    }
    return filters;
}

bool FilterList::Complain(std::size_t row, std::size_t column, const QString& text) {
    m_table->ShowCell(row, column);
    m_note->ShowError(tr("Filter %1: %2").arg(row + 1).arg(text));
    return false;
}

bool FilterList::IsComplete() {
    const std::vector<RowFilter> filters = Filters();
    for (std::size_t row = 0; row < filters.size(); ++row) {
        const RowFilter& filter = filters[row];
        if (std::find(m_old.begin(), m_old.end(), filter) != m_old.end()) {
            continue;
        }
        const QString word = QString::fromStdString(filter.comparison);
        if (Trim(filter.expression).empty()) {
            return Complain(row, 0, tr("what is compared is missing: a field or an expression"));
        }
        if (!IsExpression(filter.expression)) {
            return Complain(row, 0,
                            tr("\"%1\" is no field of the data; an expression begins with =")
                                .arg(QString::fromStdString(std::string(CutText(filter.expression, 80)))));
        }
        const rdl::FilterOperatorRow* const known = rdl::FindFilterOperator(filter.comparison);
        if (!known) {
            return Complain(row, 1, tr("\"%1\" is no comparison").arg(word));
        }
        const std::size_t needed = rdl::FilterValuesNeeded(known->op);
        if (filter.values.size() < needed) {
            return Complain(row, FirstValue + filter.values.size(),
                            needed == 1 ? tr("the value is missing") : tr("%1 needs two values").arg(word));
        }
        if (filter.values.size() > needed && known->op != rdl::FilterOperator::In) {
            return Complain(
                row, FirstValue + needed,
                needed == 1 ? tr("%1 takes one value").arg(word) : tr("%1 takes two values").arg(word));
        }
    }
    return true;
}

}  // namespace designer
