// A text with a list to choose from. Editable, any text may stand in it, and it stays as it was typed: it is
// neither completed nor exchanged for an entry that is like it. Not editable, it holds an entry or nothing.
//
// Entries count from 0. They are added by AddItem, not in the form's design: there the first entry would put
// itself in the text.
#pragma once

#include <QComboBox>

#include "platform/controls/editable_text.h"

class ComboBox : public QComboBox, public EditableText {
    Q_OBJECT
 public:
    explicit ComboBox(QWidget* parent = nullptr);

    std::string Text() const override { return currentText().toStdString(); }
    // Not editable: the entry of exactly this text is chosen; 383 when there is none.
    void Text(const std::string& text) override;

    void AddItem(const std::string& text);  // leaves the text as it is
    std::string List(int index) const;      // empty when there is none of that number
    int ListCount() const { return count(); }
    void Clear();               // the entries and the text
    int ListIndex() const;      // -1: what stands in the text is not the entry chosen last
    void ListIndex(int index);  // -1 takes the choice away; 380 when there is none of that number

    // Instead of the one of Qt, which brings completion with it.
    void setEditable(bool editable);
    void showPopup() override;

 signals:
    void DropDown();  // before the list opens: the last moment to fill it
    void
    Click();  // an entry has been chosen, by a person (the same again, too) or by ListIndex; not by typing
    void LostFocus();  // see FocusHasLeft

 protected:
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};
