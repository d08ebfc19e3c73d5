// SPDX-License-Identifier: GPL-3.0-or-later
// The report as a tree: its bands, and the items in them by their names. Selects in the model, and follows
// it.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "designer/model/design_model.h"

namespace designer {

class OutlinePane : public QTreeWidget {
    Q_OBJECT
 public:
    explicit OutlinePane(DesignModel& model, QWidget* parent = nullptr);

 protected:
    void keyPressEvent(QKeyEvent* event) override;

 signals:
    void Chosen();           // an entry was activated: the canvas gets the keys
    void DeleteRequested();  // of what is selected

 private:
    // What a built tree shows. While it is the same, the tree stays as it is.
    struct Entry {
        ElementId id, container;
        std::string text, kind;
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> Entries() const;
    void TakeChange();
    void TakeSelection();
    void GiveSelection();

    DesignModel& m_model;
    std::vector<Entry> m_shown;
    bool m_following = false;  // takes the selection from the model, and does not give it back
};

}  // namespace designer
