// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/groups_pane.h"
#include "designer/panes/plain_tip.h"

#include <vector>

namespace designer {
namespace {

constexpr int GroupRole = Qt::UserRole;

QString TextOf(const RegionGroup& group) {
    const QString name = QString::fromStdString(group.name);
    if (group.expression.empty()) {
        const bool saysMore = !name.isEmpty() && name != GroupsPane::tr("Details");
        return saysMore ? GroupsPane::tr("%1 (details)").arg(name) : GroupsPane::tr("Details");
    }
    return name + "  " + QString::fromStdString(group.expression);
}

}  // namespace

GroupsPane::GroupsPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("groups");
    setAccessibleName(tr("Groups of the table"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    connect(&m_model, &DesignModel::Changed, this, &GroupsPane::Show);
    connect(&m_model, &DesignModel::SelectionChanged, this, &GroupsPane::Show);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &GroupsPane::GiveSelection);
    Show();
}

void GroupsPane::Show() {
    if (m_following) {
        return;
    }
    m_following = true;
    clear();
    const auto table = SelectedTable(m_model);
    m_region = table ? table->region : m_region;
    if (m_region != NoElement && m_model.Item(m_region)) {
        AddGroups(tr("Rows"), m_region, Axis::Rows);
        AddGroups(tr("Columns"), m_region, Axis::Columns);
        expandAll();
    }
    m_following = false;
}

void GroupsPane::AddGroups(const QString& title, ElementId region, Axis axis) {
    auto* top = new QTreeWidgetItem(this, {title});
    top->setFlags(Qt::ItemIsEnabled);
    std::vector<QTreeWidgetItem*> around{top};  // by depth
    try {
        for (const RegionGroup& group : GroupsOf(m_model.Source(), region, axis)) {
            around.resize(std::min(around.size(), static_cast<std::size_t>(group.depth) + 1));
            auto* row = new QTreeWidgetItem(around.back(), {TextOf(group)});
            row->setData(0, GroupRole, group.member);
            row->setSelected(m_model.IsSelected(group.member));
            if (m_model.IsSelected(group.member)) {
                setCurrentItem(row);
            }
            around.push_back(row);
        }
    } catch (const EditError& error) {
        top->setToolTip(0, PlainTip(QString::fromUtf8(error.what())));
    }
}

void GroupsPane::GiveSelection() {
    if (m_following || selectedItems().isEmpty()) {
        return;
    }
    const ElementId member = selectedItems().front()->data(0, GroupRole).toUInt();
    if (m_model.Source().Has(member)) {
        m_following = true;
        m_model.Select({member});
        m_following = false;
    }
}

}  // namespace designer
