// SPDX-License-Identifier: GPL-3.0-or-later
// What a report can show, as a tree: the fields of its data sets, its parameters, the built-in fields and the
// embedded pictures. A field is dragged to the canvas; Enter puts it where the selection is.
#pragma once

#include <QTreeWidget>
#include <string>
#include <vector>

#include "designer/model/design_model.h"

namespace designer {

class DataPane : public QTreeWidget {
    Q_OBJECT
 public:
    explicit DataPane(DesignModel& model, QWidget* parent = nullptr);

 signals:
    void Placed();  // a field was put into the report: the canvas gets the keys

 protected:
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
    QStringList mimeTypes() const override;

 private:
    // What the tree shows; while it is the same, the tree stays as it is.
    struct Entry {
        std::string text, dataSet, field, expression;  // `expression`: shown by a text box, without a field
        int depth = 0;
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> Entries() const;
    void Show();
    void Place(const QTreeWidgetItem& row);

    DesignModel& m_model;
    std::vector<Entry> m_shown;
};

}  // namespace designer
