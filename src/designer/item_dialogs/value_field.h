// SPDX-License-Identifier: GPL-3.0-or-later
// One property of several elements in a dialog: a line with the values to choose from, a button for a colour
// and one for an expression where the property can have these. Empty is the default, or values that differ.
#pragma once

#include <QWidget>
#include <string>
#include <string_view>

#include "designer/item_dialogs/selection_values.h"

class QComboBox;
class QHBoxLayout;
class QToolButton;

namespace designer {

class ValueField : public QWidget {
    Q_OBJECT
 public:
    // Both must live as long as the field. It is disabled if no element has the property.
    ValueField(const DesignModel& model, const SelectionValues& values, std::string_view name,
               QWidget* parent = nullptr);

    const std::string& Name() const { return m_name; }
    std::string Text() const;  // trimmed
    // Returns the text, or the default if it is empty.
    std::string Effective() const;
    void SetText(const std::string& text);
    // Empties the line; the default holds again for all elements, also where their values differ.
    void Reset();
    // Whether it has another text than at first.
    bool IsChanged() const;
    // Writes the text if it is changed. An edit of the step that is open.
    void Write(Document& document) const;

 signals:
    void Edited();

 private:
    void AddChoices();
    void AddColourButton(QHBoxLayout& layout);
    void AddExpressionButton(QHBoxLayout& layout);
    void ShowColour();
    void AskForColour();
    void AskForValue();

    const DesignModel& m_model;
    const SelectionValues& m_values;
    const std::string m_name;
    const PropertyRow* m_row;
    QComboBox* m_list;
    QToolButton* m_colour = nullptr;
    std::string m_old;
    bool m_isSet = false;  // for one of the elements
    bool m_isReset = false;
};

// Returns what a colour of a report looks like; not valid for an expression and for what is no colour.
QColor ColourOf(const std::string& text);
// Returns the name of a colour in reports, or #rrggbb.
std::string NameOfColour(const QColor& colour);

}  // namespace designer
