// SPDX-License-Identifier: GPL-3.0-or-later
// The groups of what is selected: of a table those of its rows and those of its columns as two trees, of a
// chart those of its categories and of its series. An entry selects its group in the model, and a table shows
// the group's rows or columns.
#pragma once

#include <QTreeWidget>

#include <vector>

#include "designer/model/table_selection.h"

namespace designer {

class GroupsPane : public QTreeWidget {
    Q_OBJECT
 public:
    explicit GroupsPane(DesignModel& model, QWidget* parent = nullptr);

 signals:
    void OpenRequested(designer::ElementId member);  // the properties of this group, which is selected

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 private:
    // An entry of the tree, whatever it is a group of.
    struct Entry {
        ElementId member = NoElement;
        QString text;
        int depth = 0;
    };
    void Open(QTreeWidgetItem* row);
    void Show();
    ElementId RegionToShow() const;
    std::vector<Entry> GroupsOfTable(Axis axis) const;
    enum class ChartGroups { Categories, Series };
    std::vector<Entry> GroupsOfChart(ChartGroups kind) const;
    void AddGroups(const QString& title, const std::vector<Entry>& groups);
    void GiveSelection();

    DesignModel& m_model;
    ElementId m_region = NoElement;  // the table or chart that is shown
    bool m_following = false;
};

}  // namespace designer
