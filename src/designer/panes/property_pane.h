// SPDX-License-Identifier: GPL-3.0-or-later
// The properties of what is selected: of several items those that all of them have, with a value where it is
// the same for all; of cells also those of their columns and rows. What the file does not say is grey. A
// value is changed in place; Delete gives a property its default again.
#pragma once

#include <QTreeWidget>
#include <functional>
#include <map>
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
    // Returns the elements that the property is of.
    std::vector<ElementId> OwnersOf(const PropertyRow& row) const;
    // Shows this part of the report, such as a data set, in place of the selection; NoElement: the selection
    // again. Another selection ends it too.
    void ShowPart(ElementId id);

    // Shows only rows with the text in their name or value; an empty text shows all.
    void SetFilter(const QString& text);
    // Gives the rows the focus, at the first one that is shown if the current one is not.
    void GoToMatch();
    // Opens the value of the current row; does nothing without one.
    void EditCurrent();
    // Orders the rows by their names, or by categories.
    void SetAlphabetical(bool isAlphabetical);
    // The width of the names as the user has pulled it, in average characters: it grows with the font. 0: it
    // fits the names.
    double NameWidth() const { return m_nameWidth; }
    void SetNameWidth(double width);
    void scrollTo(const QModelIndex& index, ScrollHint hint = EnsureVisible) override;

 protected:
    void changeEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

 private:
    PropertyValue CommonValue(const PropertyRow& property) const;
    std::vector<PropertyRow> RowsToShow() const;
    void Show();
    void BuildRows();
    QTreeWidgetItem* CategoryRow(const QString& category, const QStringList& closed);
    void ShowValue(QTreeWidgetItem& row, const PropertyRow& property) const;
    void ShowMatches();
    void FitNames();
    void SetNamePixels(int width);
    void TakeValue(QTreeWidgetItem& row, int column);
    void Change(const QString& verb, const PropertyRow& property,
                const std::function<void(Document&, const std::vector<ElementId>&)>& work);

    DesignModel& m_model;
    std::vector<PropertyRow> m_rows;
    std::map<PropertyPlace, std::vector<ElementId>> m_places;  // whose properties the rows are
    ElementId m_part = NoElement;
    QString m_filter;
    bool m_isAlphabetical = false;
    bool m_filling = false;
    bool m_fitting = false;
    double m_nameWidth = 0;  // as NameWidth
};

}  // namespace designer
