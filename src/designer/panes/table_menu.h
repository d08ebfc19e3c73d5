// SPDX-License-Identifier: GPL-3.0-or-later
// The commands on the selected table, matrix or Tablix: its columns, rows, cells, groups and totals.
#pragma once

#include <QMenu>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "designer/model/table_selection.h"

namespace designer {

// Returns why no command on a group is possible, for users; empty if one is.
QString ReasonAgainstGroup(const DesignModel& model);

class TableMenu : public QMenu {
    Q_OBJECT
 public:
    explicit TableMenu(DesignModel& model, QWidget* parent = nullptr);

    // Asks for an expression for a group beside this member.
    using Ask = std::function<std::optional<std::string>(ElementId member, const std::string& value,
                                                         QWidget* parent)>;
    void SetAsk(Ask ask) { m_ask = std::move(ask); }

    // Enables what the selection allows, and nothing if `off` says why the canvas is not there.
    void ShowCommands(const QString& off);

 signals:
    void Working();  // before a command: what is being typed is taken

 private:
    enum class Needs { Column, Row, ColumnGroup, RowGroup, Cells, MergedCell, Group };
    struct Entry {
        QAction* action;
        Needs needs;
    };
    using Work = std::function<void(Document&, const TableSelection&)>;
    QAction* Add(const char* name, const QString& text, const QKeySequence& keys, Needs needs,
                 const std::function<void()>& work);
    void AddTrackCommands();
    void AddCellCommands();
    void AddGroupCommands();
    void Edit(const QString& step, const Work& work);
    void InsertTrack(Axis axis, Side side, GroupSide groupSide);
    void Delete(Axis axis);
    Side Towards(Axis axis, Side side) const;
    void MoveTracks(Axis axis, int step);
    void Merge();
    void AskForGroup(GroupPlace place, const QString& title);
    void Total(Side side);
    QString ReasonAgainst(Needs needs, const std::optional<TableSelection>& table) const;
    void SelectCell(ElementId region, Axis axis, std::size_t track, std::size_t across);

    DesignModel& m_model;
    std::vector<Entry> m_entries;
    Ask m_ask;
};

}  // namespace designer
