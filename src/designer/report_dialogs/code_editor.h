// SPDX-License-Identifier: GPL-3.0-or-later
// An editor of many lines for the functions of a report, with numbers and colours, and the mark of a fault.
#pragma once

#include <Qsci/qsciscintilla.h>

namespace designer {

class CodeEditor : public QsciScintilla {
    Q_OBJECT
 public:
    explicit CodeEditor(QWidget* parent = nullptr);
    // Marks a line, which is counted from 1; 0: none.
    void MarkLine(int line);
    // The line that has the mark; 0 if there is none.
    int MarkedLine() const;
    void GoToLine(int line);

 signals:
    void Done();  // Ctrl+Enter

 protected:
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

 private:
    void TakeColours();
};

}  // namespace designer
