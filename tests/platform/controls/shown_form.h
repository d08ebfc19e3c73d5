// SPDX-License-Identifier: GPL-3.0-or-later
// A form with controls of several kinds, driven as a user does.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QTest>
#include <QVBoxLayout>
#include <string>
#include <vector>

// A window that has the focus. A fixture's members add controls: `form.Add(&box)`.
class ShownForm : public QWidget {
 public:
    ShownForm() : m_layout(this) {}

    template <typename... Controls>
    void Show(Controls*... controls) {
        (m_layout.addWidget(controls), ...);
        show();
        activateWindow();
        QApplication::processEvents();
    }

 private:
    QVBoxLayout m_layout;
};

// Types into the focused control.
inline void Type(const char* text) {
    QTest::keyClicks(QApplication::focusWidget(), text);
}
inline void Press(Qt::Key key, Qt::KeyboardModifiers with = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, with);
}
