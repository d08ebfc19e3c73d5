// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog for what one item shows. OK tries the change in a copy of the report and makes it as one step.
#pragma once

#include <QDialog>

#include "designer/model/design_model.h"

class QFormLayout;
class QVBoxLayout;

namespace designer {

class ExpressionField;
class Note;

class ItemDialog : public QDialog {
    Q_OBJECT
 public:
    void accept() override;

 protected:
    // The model must live as long as the dialog.
    ItemDialog(DesignModel& model, ElementId item, const QString& title, QWidget* parent);

    // Writes what the dialog shows to the item, here `item` of the report or its copy. Raises EditError.
    virtual void Write(Document& document, ElementId item) const = 0;

    const Document& Source() const { return m_model.Source(); }
    DesignModel& Model() { return m_model; }
    ElementId Item() const { return m_item; }
    QFormLayout& Form() { return *m_form; }
    QVBoxLayout& Below() { return *m_below; }  // the form
    Note& Message() { return *m_note; }        // what is wrong with what the dialog shows
    // Adds a line for a value. Its expression is that at the path of the element that `owner` returns, in a
    // copy to which the dialog was written.
    ExpressionField* AddLine(const QString& label, const char* name, const std::string& value,
                             const std::function<ElementId(const Document&, ElementId item)>& owner,
                             const char* path);

 private:
    DesignModel& m_model;
    const ElementId m_item;
    QFormLayout* m_form;
    QVBoxLayout* m_below;
    Note* m_note;
};

}  // namespace designer
