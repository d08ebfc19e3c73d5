// SPDX-License-Identifier: GPL-3.0-or-later
// The document map of a report as a tree. A click goes to the place of an entry.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "platform/contracts/report_view.h"

namespace viewer {

class DocumentMap : public QTreeWidget {
    Q_OBJECT
 public:
    explicit DocumentMap(QWidget* parent = nullptr);

    // Adds the entries that are new since the last call. If there are fewer than before, builds the tree
    // again.
    void Show(const std::vector<report::MapEntry>& entries);
    bool IsEmpty() const { return m_shown == 0; }
    void Empty();

 signals:
    void Chosen(int page, double y);  // page from 1, y in points

 private:
    std::size_t m_shown = 0;
    std::vector<QTreeWidgetItem*> m_open;  // the last entry on each level that can get children
    std::vector<int> m_levels;
};

}  // namespace viewer
