// SPDX-License-Identifier: GPL-3.0-or-later
// The dialog for the report's own functions (MS-RDL, Code). The engine checks them while the user types. OK
// is one step of the document.
#pragma once

#include <QDialog>
#include <QTimer>
#include <string>

#include "designer/model/design_model.h"

namespace designer {

class CodeEditor;
class Note;

class CodeDialog : public QDialog {
    Q_OBJECT
 public:
    // The model must live as long as the dialog.
    explicit CodeDialog(DesignModel& model, QWidget* parent = nullptr);
    void accept() override;
    void reject() override;  // asks if the code is changed

 private:
    // Shows the fault of what is typed, and returns whether there is none.
    bool Check();
    std::string Text() const;
    static void Write(Document& document, const std::string& text);

    DesignModel& m_model;
    const std::string m_old;
    CodeEditor* m_editor;
    Note* m_note;
    QTimer m_pause;  // while the user types
};

}  // namespace designer
