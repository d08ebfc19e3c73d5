// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/item_dialogs/group_dialogs.h"

#include <QFormLayout>
#include <QTabWidget>

#include "designer/document/properties/properties.h"
#include "designer/expressions/expression_dialog.h"

namespace designer {
namespace {

QString NameOfGroup(const RegionGroup& group) {
    return group.name.empty() ? GroupPropertiesDialog::tr("Details") : QString::fromStdString(group.name);
}

QString NameOfRegion(const DesignModel& model, ElementId region) {
    return QString::fromStdString(
        model.Source().Attribute(region, "Name").value_or(model.Source().Name(region)));
}

}  // namespace

GroupPropertiesDialog::GroupPropertiesDialog(DesignModel& model, ElementId region, const RegionGroup& group,
                                             QWidget* parent)
    : ListsDialog(model, region, {group.member}, tr("Group: %1").arg(NameOfGroup(group)),
                  tr("Change group %1").arg(NameOfGroup(group)), parent) {
    setObjectName("groupPropertiesDialog");
    if (group.group != NoElement) {
        QVBoxLayout& page = *AddPage(tr("General"));
        QFormLayout& form = *AddForm(page);
        AddRow(form, tr("&Name:"), "Name");
        if (!group.expression.empty()) {
            AddGroupExpressions(page, group.group);
        }
        QFormLayout& more = *AddForm(page);
        AddRow(more, tr("&Document map label:"), "Document map label");
        AddRow(more, tr("&Parent:"), "Parent");
    }
    AddSortPage(group.member);
    if (group.group != NoElement) {
        AddFilterPage(group.group);
    }
    AddPageBreakPage();
    AddVisibilityPage();
    if (group.group != NoElement && !IsOlderSchema(Source())) {
        AddVariablePage(group.group);
    }
}

// A Table of an older schema sorts its details, a Matrix its groups.
SortFilterDialog::SortFilterDialog(DesignModel& model, ElementId region, QWidget* parent)
    : ListsDialog(model, region, {region}, tr("Sort and Filter: %1").arg(NameOfRegion(model, region)),
                  tr("Sort and filter %1").arg(NameOfRegion(model, region)), parent) {
    setObjectName("sortFilterDialog");
    const std::string kind = Source().Name(region);
    const ElementId owner = kind == "Table"    ? Source().Find(region, "Details")
                            : kind == "Matrix" ? NoElement
                                               : region;
    if (owner != NoElement) {
        AddSortPage(owner);
    }
    AddFilterPage(region);
}

// The engine checks it where the member is sorted: there the same names can be used.
std::optional<std::string> AskForGroupExpression(const DesignModel& model, ElementId member,
                                                 const std::string& value, QWidget* parent) {
    const auto write = [index = model.Source().IndexOf(member)](Document& copy, const std::string& text) {
        const ElementList list = SortList(copy);
        PutRows(copy, copy.IdAt(index), list, {{NewRow, {text, "Ascending"}}});
    };
    return AskForExpression(model, {GroupPropertiesDialog::tr("Group on"), write}, value, parent);
}

}  // namespace designer
