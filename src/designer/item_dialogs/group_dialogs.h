// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for a group or the details of a table, and the one for what a table itself is sorted and
// filtered by (MS-RDL, TablixMember and Group; in the schemas before 2008 TableGroup, Details, DynamicRows
// and DynamicColumns).
#pragma once

#include <optional>
#include <string>

#include "designer/item_dialogs/lists_dialog.h"
#include "designer/tables/groups.h"

namespace designer {

class GroupPropertiesDialog : public ListsDialog {
    Q_OBJECT
 public:
    GroupPropertiesDialog(DesignModel& model, ElementId region, const RegionGroup& group,
                          QWidget* parent = nullptr);
};

class SortFilterDialog : public ListsDialog {
    Q_OBJECT
 public:
    SortFilterDialog(DesignModel& model, ElementId region, QWidget* parent = nullptr);
};

// Lets the user change the expression of a new group around, within or beside a member. Returns nullopt if
// the user cancels.
std::optional<std::string> AskForGroupExpression(const DesignModel& model, ElementId member,
                                                 const std::string& value, QWidget* parent);

}  // namespace designer
