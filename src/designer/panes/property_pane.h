// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of what is selected: of several items those that all of them have, with a value where it is
// the same for all. What the file does not say is grey. A value is changed in place; Delete gives a property
// its default again.
#pragma once

#include <QTreeWidget>
#include <vector>

#include "designer/model/design_model.h"
#include "designer/panes/property_rows.h"

namespace designer {

class PropertyPane : public QTreeWidget {
    Q_OBJECT
 public:
    explicit PropertyPane(DesignModel& model, QWidget* parent = nullptr);

    // Takes the value that is being typed, if there is one.
    void FinishEditing();
    // Gives the selected property its default again. Does nothing if it has it.
    void Reset();
    const Document& Source() const { return m_model.Source(); }
    // Returns the row that the user is at; null if there is none.
    const PropertyRow* CurrentRow() const;
    const PropertyRow& RowAt(std::size_t index) const { return m_rows.at(index); }

 protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

 private:
    PropertyValue CommonValue(const PropertyRow& property) const;
    void Show();
    void BuildRows();
    void ShowValue(QTreeWidgetItem& row, const PropertyRow& property) const;
    void TakeValue(QTreeWidgetItem& row, int column);

    DesignModel& m_model;
    std::vector<PropertyRow> m_rows;
    bool m_filling = false;
};

}  // namespace designer
