// SPDX-License-Identifier: GPL-3.0-or-later
// A line below a control that says what is wrong with what is typed there, or what came of it.
#pragma once

#include <QLabel>

namespace designer {

class Note : public QLabel {
 public:
    // `control` is described by the note for those who do not see it. It must live as long as the note.
    explicit Note(QWidget& control, QWidget* parent = nullptr);

    void ShowError(const QString& text);  // also moves the focus to the control
    void ShowFault(const QString& text);  // leaves the focus where it is
    void ShowText(const QString& text);
    void Clear();

 private:
    void Show(const QString& text, const QColor& colour);
    QWidget& m_control;
};

}  // namespace designer
