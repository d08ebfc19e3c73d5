// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog with properties and, on further pages, what a region or group is sorted by, its filters and other
// lists of expressions.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "designer/item_dialogs/element_list.h"
#include "designer/item_dialogs/values_dialog.h"

namespace designer {

class FilterList;

class ListsDialog : public ValuesDialog {
    Q_OBJECT
 public:
    // The lists offer the fields of the region's data set.
    ListsDialog(DesignModel& model, ElementId region, std::vector<ElementId> ids, const QString& title,
                const QString& step, QWidget* parent = nullptr);

 protected:
    // `owner` has the collection, or gets it.
    void AddSortPage(ElementId owner);
    void AddFilterPage(ElementId owner);
    void AddGroupExpressions(QVBoxLayout& page, ElementId group);
    void AddVariablePage(ElementId group);

    bool IsRestValid() override;
    void WriteRest(Document& document) override;

 private:
    struct List {
        ElementId owner = NoElement;
        ElementList shape;
        RowTable* table = nullptr;
        std::size_t expression = 0;  // the column that has to have one
        bool isNeeded = false;       // at least one row
        std::vector<RowTable::Row> old;
    };
    RowTable* AddList(QVBoxLayout& page, const char* name, const QString& title, ElementId owner,
                      const ElementList& shape, const std::vector<RowColumn>& columns);
    std::vector<RowTable::Row> RowsIn(const List& list) const;
    bool IsRight(const List& list);
    bool Complain(RowTable& table, std::size_t row, std::size_t column, const QString& text);

    const std::vector<std::string> m_fields;
    std::vector<List> m_lists;
    std::vector<std::pair<ElementId, FilterList*>> m_filters;
};

}  // namespace designer
