// SPDX-License-Identifier: GPL-3.0-or-later
// What a report can show, as a tree: the fields of its data sets, its parameters, the built-in fields and the
// embedded pictures. A field is dragged to the canvas; Enter puts it where the selection is, and opens
// an entry that cannot be put there. The context menu adds, opens and removes; Delete removes.
#pragma once

#include <QTreeWidget>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/model/field_drag.h"
#include "designer/model/report_data.h"

namespace designer {

class DataPane : public QTreeWidget {
    Q_OBJECT
    using OptionalPart = std::optional<DataPart>;

 public:
    explicit DataPane(DesignModel& model, QWidget* parent = nullptr);

    // Is offered what is activated first: a field, or the expression of a parameter or built-in field. It
    // returns whether it has taken it.
    using Taker =
        std::function<bool(const std::optional<DraggedField>& field, const std::string& expression)>;
    void SetTaker(Taker taker) { m_taker = std::move(taker); }

 signals:
    void Pointed(designer::ElementId part);  // the user went to a part of the report; NoElement: to no part
    void Placed();                           // a field was put into the report: the canvas gets the keys
    void OpenRequested(designer::DataPart part, const std::string& name);  // without a name: a new one
    void RemoveRequested(designer::DataPart part, const std::string& name);

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
    QStringList mimeTypes() const override;

 private:
    // What the tree shows; while it is the same, the tree stays as it is.
    struct Entry {
        std::string text, dataSet, field, expression;  // `expression`: shown by a text box, without a field
        int depth = 0;
        OptionalPart part = {};  // that a dialog opens: of a field its data set
        std::string name = {};   // of the part; empty for a heading
        ElementId id = NoElement;
        bool isPicture = false;
        bool operator==(const Entry&) const = default;
    };
    std::vector<Entry> Entries() const;
    void Show();
    void Activate(QTreeWidgetItem& row);
    bool Place(const QTreeWidgetItem& row);
    const Entry* EntryOf(const QTreeWidgetItem* row) const;  // null if there is no row

    DesignModel& m_model;
    Taker m_taker;
    std::vector<Entry> m_shown;
};

}  // namespace designer
