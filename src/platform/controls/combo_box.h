// SPDX-License-Identifier: GPL-3.0-or-later
// A text with a list to choose from. If it is editable, it holds any text, unchanged: no completion and no
// replacement by a similar entry. Otherwise it holds an entry or is empty.
//
// Entries count from 0. AddItem adds them, not the form's design: there the first entry would also become the
// text.
#pragma once

#include <QComboBox>

#include "platform/controls/editable_text.h"

class ComboBox : public QComboBox, public EditableText {
    Q_OBJECT
 public:
    explicit ComboBox(QWidget* parent = nullptr);

    std::string Text() const override { return currentText().toStdString(); }
    // If the box is not editable, chooses the entry with exactly this text; raises 383 if there is none.
    void Text(const std::string& text) override;

    void AddItem(const std::string& text);  // does not change the text
    std::string List(int index) const;      // empty for an unknown index
    int ListCount() const { return count(); }
    void Clear();               // removes the entries and the text
    int ListIndex() const;      // -1 if the text is not the entry chosen last
    void ListIndex(int index);  // -1 clears the choice; raises 380 for an unknown index

    // Hides Qt's setEditable, which turns completion on.
    void setEditable(bool editable);
    void showPopup() override;

 signals:
    void DropDown();  // emitted before the list opens: the last chance to fill it
    // An entry was chosen, by the user (also the same entry again) or by ListIndex, not by typing.
    void Click();
    void LostFocus();  // see FocusHasLeft

 protected:
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
