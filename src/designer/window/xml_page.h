// SPDX-License-Identifier: GPL-3.0-or-later
// The XML text of the report, to read and to change: what is typed becomes one step of the document.
#pragma once

#include <QWidget>
#include <string>

#include "designer/model/design_model.h"

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace designer {

class XmlColours;

class XmlPage : public QWidget {
    Q_OBJECT
 public:
    explicit XmlPage(DesignModel& model, QWidget* parent = nullptr);

    // Shows the text as the document has it now, at the element that is selected.
    void Open();
    // Makes what was typed a step of the document. Returns false, shows why, and changes nothing if the text
    // is not well-formed.
    bool Apply();
    // Discards the text that is not applied.
    void Forget();
    // Selects the item at the cursor.
    void SelectAtCursor();
    // Whether something was typed that is not applied.
    bool IsModified() const;

 signals:
    void ModifiedChanged();

 protected:
    void changeEvent(QEvent* event) override;

 private:
    void BuildParts();
    void Find();
    void Revert();
    std::string Typed() const;
    void GoTo(std::size_t line, std::size_t column);
    void ShowCommands();

    DesignModel& m_model;
    QPlainTextEdit* m_text;
    XmlColours* m_colours;
    QLabel* m_message;
    QLineEdit* m_find;
    QPushButton *m_apply, *m_revert;
};

}  // namespace designer
