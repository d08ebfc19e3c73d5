// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog with properties of what is selected on pages. OK writes those that were changed, as one step.
#pragma once

#include <QDialog>
#include <string_view>
#include <vector>

#include "designer/item_dialogs/selection_values.h"
#include "designer/item_dialogs/value_field.h"

class QFormLayout;
class QTabWidget;
class QVBoxLayout;

namespace designer {

class Note;

class ValuesDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog.
    ValuesDialog(DesignModel& model, std::vector<ElementId> ids, const QString& title, const QString& step,
                 QWidget* parent = nullptr);
    // A value that a property cannot have, or that makes a report that worked one that the engine does not
    // open, is refused, and the dialog stays.
    void accept() override;
    void setVisible(bool visible) override;

 protected:
    // Returns a page of the tabs, with an empty layout.
    QVBoxLayout* AddPage(const QString& title);
    // Returns a field for the property, which the dialog checks and writes.
    ValueField* AddField(std::string_view name);
    ValueField* AddRow(QFormLayout& form, const QString& label, std::string_view name);
    // Returns a form at the end of the page.
    QFormLayout* AddForm(QVBoxLayout& page);
    ValueField& Field(std::string_view name) const;  // one that AddField has returned
    QVBoxLayout* BelowPages() { return m_below; }
    // Pages that items and groups have in common; without page breaks there is no page for them.
    void AddVisibilityPage();
    void AddPageBreakPage();
    // Brings the page of the control to the front.
    void ShowPageOf(const QWidget& control);
    // Shows the message and moves the focus to the control, on its page.
    void Refuse(QWidget& control, const QString& text);

    DesignModel& Model() { return m_model; }
    const Document& Source() const { return m_model.Source(); }
    const SelectionValues& Values() const { return m_values; }
    // For a dialog with more than fields. IsRestValid shows a message and returns false if what is in it
    // besides the fields is invalid; WriteRest writes that.
    virtual bool IsRestValid() { return true; }
    virtual void WriteRest(Document&) {}

 signals:
    void Edited();  // a field

 private:
    DesignModel& m_model;
    const SelectionValues m_values;
    const QString m_step;
    QTabWidget* m_pages;
    QVBoxLayout* m_below;
    Note* m_note;
    std::vector<ValueField*> m_fields;
};

}  // namespace designer
