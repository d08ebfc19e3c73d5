// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of the selected table: those of its rows and those of its columns as two trees. An entry selects
// its group in the model, and the table shows the group's rows or columns.
#pragma once

#include <QTreeWidget>

#include "designer/model/table_selection.h"

namespace designer {

class GroupsPane : public QTreeWidget {
    Q_OBJECT
 public:
    explicit GroupsPane(DesignModel& model, QWidget* parent = nullptr);

 private:
    void Show();
    void AddGroups(const QString& title, ElementId region, Axis axis);
    void GiveSelection();

    DesignModel& m_model;
    ElementId m_region = NoElement;  // the last one that was selected
    bool m_following = false;
};

}  // namespace designer
