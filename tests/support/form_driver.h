// Drives a form as a user does: its controls by name, by mouse and keys.
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

    // Raises where there is none of the name.
    template <typename Control>
    Control& The(const char* name) const {
        Control* control = Form()->findChild<Control*>(name);
        if (control == nullptr) {
            throw std::runtime_error(std::string("no ") + name);
        }
        return *control;
    }
    // On the mark of a box or an option: beside its caption a click does nothing.
    void Click(const char* name) const {
        auto& button = The<QAbstractButton>(name);
        const bool marked = qobject_cast<QPushButton*>(&button) == nullptr;
        QTest::mouseClick(&button, Qt::LeftButton, {},
                          marked ? QPoint(8, button.height() / 2) : button.rect().center());
    }
    // In the place of what stands there.
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
