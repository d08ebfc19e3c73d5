// SPDX-License-Identifier: GPL-3.0-or-later
// The filters of a data set, a region or a group, as a table: an expression, how it is compared, and with
// what. For a page or tab of a dialog:
//
//     auto* filters = new FilterList(model, this);
//     filters->ShowFilters(element, fields);                 // in the constructor
//     if (!filters->IsComplete()) return;                    // in accept()
//     model.Edit(step, [&](Document& document) { PutFilters(document, element, filters->Filters()); });
#pragma once

#include <QWidget>
#include <functional>
#include <string>
#include <vector>

#include "designer/expressions/row_table.h"
#include "designer/model/filters.h"

namespace designer {

class Note;

class FilterList : public QWidget {
    Q_OBJECT
 public:
    // Writes the filters to where they are going to stand, in a copy of the report.
    using Write = std::function<void(Document&, const std::vector<RowFilter>&)>;

    // The model must live as long as this.
    explicit FilterList(DesignModel& model, QWidget* parent = nullptr);

    // Shows the filters of an element of the report that can have some. `fields` are the names of the fields
    // that are offered.
    void ShowFilters(ElementId owner, const std::vector<std::string>& fields);
    // The same for an element that the report may not have yet: `write` is asked when an expression is
    // checked.
    void ShowFilters(const std::vector<RowFilter>& filters, const std::vector<std::string>& fields,
                     Write write);
    // Looks whether each filter has an expression, a comparison and its values; shows what is missing below
    // the table and puts the focus there.
    bool IsComplete();
    std::vector<RowFilter> Filters();

 signals:
    void Edited();  // by the user

 private:
    void ShowValueColumns();
    bool Complain(std::size_t row, std::size_t column, const QString& text);
    static RowFilter FilterOf(const RowTable::Row& row);

    const DesignModel& m_model;
    Write m_write;
    std::vector<std::string> m_fields;
    std::vector<RowFilter> m_old;  // as they were shown
    std::size_t m_valueColumns = 0;
    RowTable* m_table;
    Note* m_note;
};

}  // namespace designer
