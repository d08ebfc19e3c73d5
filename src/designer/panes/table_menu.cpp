// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/panes/table_menu.h"

#include "designer/model/table_width.h"
#include "designer/panes/new_group_dialog.h"
#include "designer/panes/reasons.h"
#include "designer/tables/cells.h"
#include "designer/tables/fields.h"

namespace designer {
namespace {

QKeySequence Keys(int modifiers, Qt::Key key) {
    return QKeySequence(static_cast<int>(modifiers | key));
}

constexpr int ControlAlt = static_cast<int>(Qt::CTRL) | static_cast<int>(Qt::ALT);
constexpr int All = ControlAlt | static_cast<int>(Qt::SHIFT);

}  // namespace

QString ReasonAgainstGroup(const DesignModel& model) {
    const auto table = SelectedTable(model);
    if (table && GroupOf(model, *table)) {
        return {};
    }
    return table && table->cell != NoElement ? TableMenu::tr("The selected cell is in no group")
                                             : TableMenu::tr("Select a group, or a cell of one");
}

TableMenu::TableMenu(DesignModel& model, QWidget* parent) : QMenu(tr("Ta&ble"), parent), m_model(model) {
    setObjectName("menuTable");
    AddTrackCommands();
    addSeparator();
    AddCellCommands();
    addSeparator();
    AddGroupCommands();
}

QAction* TableMenu::Add(const char* name, const QString& text, const QKeySequence& keys, Needs needs,
                        const std::function<void()>& work) {
    QAction* action = addAction(text);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, [this, work] {
        emit Working();
        work();
    });
    m_entries.push_back({action, needs});
    return action;
}

void TableMenu::AddTrackCommands() {
    const auto track = [this](Axis axis, Side side, GroupSide groupSide) {
        return [this, axis, side, groupSide] { InsertTrack(axis, Towards(axis, side), groupSide); };
    };
    Add("tableColumnLeft", tr("Column to the &Left"), Keys(ControlAlt, Qt::Key_Left), Needs::Column,
        track(Axis::Columns, Side::Before, GroupSide::Inside));
    Add("tableColumnRight", tr("Column to the &Right"), Keys(ControlAlt, Qt::Key_Right), Needs::Column,
        track(Axis::Columns, Side::After, GroupSide::Inside));
    Add("tableRowAbove", tr("Row &Above"), Keys(ControlAlt, Qt::Key_Up), Needs::Row,
        track(Axis::Rows, Side::Before, GroupSide::Inside));
    Add("tableRowBelow", tr("Row &Below"), Keys(ControlAlt, Qt::Key_Down), Needs::Row,
        track(Axis::Rows, Side::After, GroupSide::Inside));
    Add("tableColumnLeftOfGroup", tr("Column Left of the Group"), Keys(ControlAlt, Qt::Key_Home),
        Needs::ColumnGroup, track(Axis::Columns, Side::Before, GroupSide::Outside));
    Add("tableColumnRightOfGroup", tr("Column Right of the Group"), Keys(ControlAlt, Qt::Key_End),
        Needs::ColumnGroup, track(Axis::Columns, Side::After, GroupSide::Outside));
    Add("tableRowAboveGroup", tr("Row Above the Group"), Keys(All, Qt::Key_Up), Needs::RowGroup,
        track(Axis::Rows, Side::Before, GroupSide::Outside));
    Add("tableRowBelowGroup", tr("Row Below the Group"), Keys(All, Qt::Key_Down), Needs::RowGroup,
        track(Axis::Rows, Side::After, GroupSide::Outside));
    addSeparator();
    Add("tableMoveLeft", tr("&Move Column Left"), Keys(All, Qt::Key_Left), Needs::Column,
        [this] { MoveTracks(Axis::Columns, -1); });
    Add("tableMoveRight", tr("Mo&ve Column Right"), Keys(All, Qt::Key_Right), Needs::Column,
        [this] { MoveTracks(Axis::Columns, 1); });
    Add("tableMoveUp", tr("Move Row &Up"), QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_Up), Needs::Row,
        [this] { MoveTracks(Axis::Rows, -1); });
    Add("tableMoveDown", tr("Move Row &Down"), QKeySequence(Qt::ALT | Qt::SHIFT | Qt::Key_Down), Needs::Row,
        [this] { MoveTracks(Axis::Rows, 1); });
    Add("tableDeleteColumn", tr("Delete &Columns"), {}, Needs::Column, [this] { Delete(Axis::Columns); });
    Add("tableDeleteRow", tr("Delete R&ows"), {}, Needs::Row, [this] { Delete(Axis::Rows); });
}

void TableMenu::AddCellCommands() {
    Add("tableMerge", tr("M&erge Cells"), {}, Needs::Cells, [this] { Merge(); });
    Add("tableSplit", tr("&Split Cell"), {}, Needs::MergedCell, [this] {
        Edit(tr("Split cell"), [](Document& document, const TableSelection& table) {
            SplitCell(document, table.region, table.rows->first, table.columns->first);
        });
    });
}

void TableMenu::AddGroupCommands() {
    const auto group = [this](GroupPlace place, const QString& title) {
        return [this, place, title] { AskForGroup(place, title); };
    };
    Add("groupParent", tr("Add &Parent Group..."), Keys(ControlAlt, Qt::Key_G), Needs::Group,
        group(GroupPlace::Parent, tr("Parent Group")));
    Add("groupChild", tr("Add C&hild Group..."), {}, Needs::Group,
        group(GroupPlace::Child, tr("Child Group")));
    Add("groupBefore", tr("Add Group Before..."), {}, Needs::Group,
        group(GroupPlace::Before, tr("Group Before")));
    Add("groupAfter", tr("Add Group After..."), {}, Needs::Group,
        group(GroupPlace::After, tr("Group After")));
    const auto remove = [this](OwnTracks tracks) {
        return [this, tracks] {
            Edit(tr("Delete group"), [this, tracks](Document& document, const TableSelection& table) {
                if (const auto found = GroupOf(m_model, table)) {
                    DeleteGroup(document, table.region, *table.groupAxis, found->member, tracks);
                }
            });
        };
    };
    Add("groupDelete", tr("Delete &Group"), {}, Needs::Group, remove(OwnTracks::Stay));
    Add("groupDeleteRows", tr("Delete Group and Its Cells"), {}, Needs::Group, remove(OwnTracks::Go));
    addSeparator();
    Add("totalBefore", tr("Add Total Before"), {}, Needs::Group, [this] { Total(Side::Before); });
    Add("totalAfter", tr("Add &Total After"), Keys(ControlAlt, Qt::Key_A), Needs::Group,
        [this] { Total(Side::After); });
}

void TableMenu::Edit(const QString& step, const Work& work) {
    if (const auto table = SelectedTable(m_model)) {
        const ReportItems items = m_model.Items();
        m_model.Edit(step, [&](Document& document) {
            work(document, *table);
            FitTable(document, items, table->region);
        });
    }
}

// Selects a cell of a new track, so that a command can be given again and a text typed.
void TableMenu::SelectCell(ElementId region, Axis axis, std::size_t track, std::size_t across) {
    const TrackRange one{track, 1}, other{across, 1};
    std::vector<ElementId> ids =
        ItemsOfCells(m_model, region, axis == Axis::Rows ? one : other, axis == Axis::Rows ? other : one);
    if (!ids.empty()) {
        m_model.Select({ids.front()});
    }
}

void TableMenu::InsertTrack(Axis axis, Side side, GroupSide groupSide) {
    const auto table = SelectedTable(m_model);
    const auto range = !table ? std::nullopt : axis == Axis::Columns ? table->columns : table->rows;
    if (!range) {
        return;
    }
    const std::size_t track = side == Side::Before ? range->first : range->first + range->count - 1;
    std::size_t added = 0;
    const ReportItems items = m_model.Items();
    if (m_model.Edit(axis == Axis::Columns ? tr("Add column") : tr("Add row"), [&](Document& document) {
            added = AddTrack(document, table->region, axis, track, side, groupSide);
            FitTable(document, items, table->region);
        })) {
        const auto& across = axis == Axis::Columns ? table->rows : table->columns;
        SelectCell(table->region, axis, added, across ? across->first : 0);
    }
}

void TableMenu::Delete(Axis axis) {
    Edit(axis == Axis::Columns ? tr("Delete column") : tr("Delete row"),
         [axis](Document& document, const TableSelection& table) {
             const TrackRange range = axis == Axis::Columns ? *table.columns : *table.rows;
             DeleteTracks(document, table.region, axis, range.first, range.count);
         });
}

// The column to the left is the next one in a table from right to left.
Side TableMenu::Towards(Axis axis, Side side) const {
    const auto table = SelectedTable(m_model);
    const bool isMirrored = axis == Axis::Columns && table && IsMirrored(m_model.Source(), table->region);
    return !isMirrored ? side : side == Side::Before ? Side::After : Side::Before;
}

// The track beside the selected ones goes to their other side.
void TableMenu::MoveTracks(Axis axis, int step) {
    const bool isColumn = axis == Axis::Columns;
    const Side side = Towards(axis, step < 0 ? Side::Before : Side::After);
    Edit(isColumn ? tr("Move column") : tr("Move row"), [&](Document& document, const TableSelection& table) {
        const TrackRange range = isColumn ? *table.columns : *table.rows;
        const std::size_t end = range.first + range.count;
        const TablixGrid grid = GridOf(document, table.region);
        if (side == Side::Before && range.first == 0) {
            throw EditError(isColumn ? "The column is the first one" : "The row is the first one");
        }
        if (side == Side::After && end >= (isColumn ? grid.columns : grid.rows).size()) {
            throw EditError(isColumn ? "The column is the last one" : "The row is the last one");
        }
        side == Side::Before ? MoveTrack(document, table.region, axis, range.first - 1, end - 1)
                             : MoveTrack(document, table.region, axis, end, range.first);
    });
}

void TableMenu::Merge() {
    Edit(tr("Merge cells"), [](Document& document, const TableSelection& table) {
        if (table.rows->count != 1) {
            throw EditError("A report has no cells that span rows of data; select cells of one row");
        }
        MergeCells(document, table.region, table.rows->first, table.columns->first, table.columns->count);
    });
}

void TableMenu::AskForGroup(GroupPlace place, const QString& title) {
    const auto table = SelectedTable(m_model);
    const auto group = table ? GroupOf(m_model, *table) : std::nullopt;
    if (!group) {
        return;
    }
    const bool isMatrix = m_model.Source().Name(table->region) == "Matrix";
    const bool hasBands = !isMatrix && (place == GroupPlace::Parent || place == GroupPlace::Child);
    const auto ask = [this, member = group->member](const std::string& value, QWidget* parent) {
        return m_ask(member, value, parent);
    };
    NewGroupDialog dialog(title, FieldNamesOfRegion(m_model.Source(), table->region), *table->groupAxis,
                          hasBands, m_ask ? NewGroupDialog::Ask(ask) : NewGroupDialog::Ask(), parentWidget());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    ElementId added = NoElement;
    const ReportItems items = m_model.Items();
    if (m_model.Edit(tr("Add group"), [&](Document& document) {
            added =
                AddGroup(document, table->region, *table->groupAxis, group->member, place, dialog.Group());
            FitTable(document, items, table->region);
        })) {
        m_model.Select({added});
    }
}

void TableMenu::Total(Side side) {
    Edit(tr("Add total"), [this, side](Document& document, const TableSelection& table) {
        if (const auto group = GroupOf(m_model, table)) {
            AddTotal(document, table.region, *table.groupAxis, group->member, side);
        }
    });
}

// Returns why the selection does not allow it; empty if it does.
QString TableMenu::ReasonAgainst(Needs needs, const std::optional<TableSelection>& table) const {
    const auto unless = [](bool isAllowed, const QString& reason) { return isAllowed ? QString() : reason; };
    switch (needs) {
        case Needs::Column:
            return unless(table && table->columns, tr("Select a cell, or a column of a table"));
        case Needs::Row:
            return unless(table && table->rows, tr("Select a cell, or a row of a table"));
        case Needs::ColumnGroup:
            return !table || !table->columns ? ReasonAgainst(Needs::Column, table)
                                             : unless(IsInGroup(m_model.Source(), table->region,
                                                                Axis::Columns, table->columns->first),
                                                      tr("The column is in no group"));
        case Needs::RowGroup:
            return !table || !table->rows
                       ? ReasonAgainst(Needs::Row, table)
                       : unless(IsInGroup(m_model.Source(), table->region, Axis::Rows, table->rows->first),
                                tr("The row is in no group"));
        case Needs::Cells:
            return unless(table && table->isBody && table->columns && table->columns->count > 1,
                          tr("Select two cells of a row or more, with Shift"));
        case Needs::MergedCell:
            return unless(table && table->isBody && table->columns && table->rows &&
                              ItemsOfCells(m_model, table->region, *table->rows, *table->columns).size() <
                                  table->columns->count * table->rows->count,
                          tr("Select a merged cell"));
        case Needs::Group:
            return ReasonAgainstGroup(m_model);
    }
    return {};
}

void TableMenu::ShowCommands(const QString& off) {
    const bool designs = off.isEmpty();
    const auto table = designs ? SelectedTable(m_model) : std::nullopt;
    for (const Entry& entry : m_entries) {
        ShowReason(*entry.action, designs ? ReasonAgainst(entry.needs, table) : off);
    }
    menuAction()->setEnabled(designs);
}

}  // namespace designer
