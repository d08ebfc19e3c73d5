// SPDX-License-Identifier: GPL-3.0-or-later
// Drives a form as a user does: controls by name, with mouse and keys.
#pragma once

#include <QAbstractButton>
#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <stdexcept>
#include <string>

namespace fakes {

class FormDriver {
 public:
    virtual ~FormDriver() = default;

 protected:
    virtual QWidget* Form() const = 0;

    // Raises an error if there is no control of the name.
    template <typename Control>
    Control& The(const char* name) const {
        Control* control = Form()->findChild<Control*>(name);
        if (control == nullptr) {
            throw std::runtime_error(std::string("no ") + name);
        }
        return *control;
    }
    // Clicks the mark of a check box or an option: a click next to its caption does nothing.
    void Click(const char* name) const {
        auto& button = The<QAbstractButton>(name);
        const bool marked = qobject_cast<QPushButton*>(&button) == nullptr;
        QTest::mouseClick(&button, Qt::LeftButton, {},
                          marked ? QPoint(8, button.height() / 2) : button.rect().center());
    }
    // Replaces the text of the control.
    void Type(const char* name, const char* text) const {
        auto& box = The<QWidget>(name);
        box.setFocus();
        QTest::keyClick(&box, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&box, Qt::Key_Delete);
        QTest::keyClicks(&box, text);
    }
    static void TabOut() { QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab); }
    std::string Caption(const char* name) const { return The<QAbstractButton>(name).text().toStdString(); }
};

}  // namespace fakes
