// The document map of a report as a tree: a click leads to the place.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "platform/contracts/report_view.h"

namespace viewer {

class DocumentMap : public QTreeWidget {
    Q_OBJECT
 public:
    explicit DocumentMap(QWidget* parent = nullptr);

    // Takes the entries that are new since the last call. Fewer than before: a map anew.
    void Show(const std::vector<report::MapEntry>& entries);
    bool IsEmpty() const { return m_shown == 0; }
    void Empty();

 signals:
    void Chosen(int page, double y);

 private:
    std::size_t m_shown = 0;
    std::vector<QTreeWidgetItem*> m_open;  // the last entry of each level that is still open
    std::vector<int> m_levels;
};

}  // namespace viewer
