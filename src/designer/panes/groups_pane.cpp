// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/groups_pane.h"

#include <QKeyEvent>
#include <algorithm>

#include "designer/graphics/part_tree.h"

namespace designer {
namespace {

constexpr int GroupRole = Qt::UserRole;

QString Described(const std::string& name, const std::string& expression) {
    const QString text = QString::fromStdString(name);
    if (expression.empty()) {
        const bool saysMore = !text.isEmpty() && text != GroupsPane::tr("Details");
        return saysMore ? GroupsPane::tr("%1 (details)").arg(text) : GroupsPane::tr("Details");
    }
    return text + "  " + QString::fromStdString(expression);
}

ElementId MemberOf(const QTreeWidgetItem& row) {
    return row.data(0, GroupRole).toUInt();
}

}  // namespace

GroupsPane::GroupsPane(DesignModel& model, QWidget* parent) : QTreeWidget(parent), m_model(model) {
    setObjectName("groups");
    setAccessibleName(tr("Groups of the table or chart"));
    setHeaderHidden(true);
    setUniformRowHeights(true);
    setExpandsOnDoubleClick(false);  // it opens the group
    connect(&m_model, &DesignModel::Changed, this, &GroupsPane::Show);
    connect(&m_model, &DesignModel::SelectionChanged, this, &GroupsPane::Show);
    connect(this, &QTreeWidget::itemSelectionChanged, this, &GroupsPane::GiveSelection);
    // Not when it is activated: on some desktops a single click does that, and a click selects here.
    connect(this, &QTreeWidget::itemDoubleClicked, this, &GroupsPane::Open);
    Show();
}

// A heading has nothing to open: it folds.
void GroupsPane::Open(QTreeWidgetItem* row) {
    if (MemberOf(*row) != NoElement) {
        emit OpenRequested(MemberOf(*row));
    } else {
        row->setExpanded(!row->isExpanded());
    }
}

void GroupsPane::keyPressEvent(QKeyEvent* event) {
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && event->modifiers() == Qt::NoModifier && currentItem()) {
        Open(currentItem());
    } else {
        QTreeWidget::keyPressEvent(event);
    }
}

// When nothing is selected any more, as after a group is deleted, the last one stays.
ElementId GroupsPane::RegionToShow() const {
    if (const auto table = SelectedTable(m_model)) {
        return table->region;
    }
    const ReportItem* leader = m_model.Item(m_model.Leader());
    const ElementId graphic = leader ? leader->id : OwnerOfPart(m_model.Source(), m_model.Leader());
    if (graphic != NoElement && m_model.Source().Name(graphic) == "Chart") {
        return graphic;
    }
    return m_model.Selection().empty() && m_model.Item(m_region) ? m_region : NoElement;
}

void GroupsPane::Show() {
    if (m_following) {
        return;
    }
    m_following = true;
    clear();
    m_region = RegionToShow();
    if (m_region != NoElement && m_model.Source().Name(m_region) == "Chart") {
        AddGroups(tr("Categories"), GroupsOfChart(ChartGroups::Categories));
        AddGroups(tr("Series"), GroupsOfChart(ChartGroups::Series));
    } else if (m_region != NoElement) {
        AddGroups(tr("Rows"), GroupsOfTable(Axis::Rows));
        AddGroups(tr("Columns"), GroupsOfTable(Axis::Columns));
    }
    expandAll();
    m_following = false;
}

// A damaged table shows no groups.
std::vector<GroupsPane::Entry> GroupsPane::GroupsOfTable(Axis axis) const {
    std::vector<Entry> entries;
    try {
        for (const RegionGroup& group : GroupsOf(m_model.Source(), m_region, axis)) {
            entries.push_back({group.member, Described(group.name, group.expression), group.depth});
        }
    } catch (const EditError&) {
        entries.clear();
    }
    return entries;
}

std::vector<GroupsPane::Entry> GroupsPane::GroupsOfChart(ChartGroups kind) const {
    std::vector<Entry> entries;
    for (const ChartGroupPart& group : ChartGroupsOf(m_model.Source(), m_region)) {
        if (group.isCategory == (kind == ChartGroups::Categories)) {
            entries.push_back({group.member, Described(group.name, group.expression), group.depth});
        }
    }
    return entries;
}

void GroupsPane::AddGroups(const QString& title, const std::vector<Entry>& groups) {
    auto* top = new QTreeWidgetItem(this, {title});
    top->setFlags(Qt::ItemIsEnabled);
    std::vector<QTreeWidgetItem*> around{top};  // by depth
    for (const Entry& group : groups) {
        around.resize(std::min(around.size(), static_cast<std::size_t>(group.depth) + 1));
        auto* row = new QTreeWidgetItem(around.back(), {group.text});
        row->setData(0, GroupRole, group.member);
        row->setSelected(m_model.IsSelected(group.member));
        if (m_model.IsSelected(group.member)) {
            setCurrentItem(row);
        }
        around.push_back(row);
    }
}

void GroupsPane::GiveSelection() {
    if (m_following || selectedItems().isEmpty()) {
        return;
    }
    const ElementId member = MemberOf(*selectedItems().front());
    if (m_model.Source().Has(member)) {
        m_following = true;
        m_model.Select({member});
        m_following = false;
    }
}

}  // namespace designer
