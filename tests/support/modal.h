// SPDX-License-Identifier: GPL-3.0-or-later
// Drives modal forms while they are shown.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

#include "platform/contracts/runtime.h"

namespace fakes {

// Runs `show`, which shows a modal form of the type, and `act` on the form as soon as it is shown. Closes the
// form after `act` if it is still shown. Returns false if no form appeared.
template <typename Form>
bool ComesUp(const std::function<void()>& show, const std::function<void(Form&)>& act) {
    bool met = false;
    QTimer::singleShot(0, qApp, [&met, &act] {
        auto* form = qobject_cast<Form*>(QApplication::activeModalWidget());
        if (form == nullptr) {
            return;
        }
        met = true;
        EXPECT_TRUE(QTest::qWaitForWindowActive(form));
        try {
            act(*form);
        } catch (const RuntimeError& error) {
            ADD_FAILURE() << error.Number() << " " << error.Description();
        }
        if (form->isVisible()) {
            form->done(QDialog::Rejected);
        }
    });
    show();
    // No form appeared: the timer must not outlive what it refers to.
    QCoreApplication::processEvents();
    return met;
}

// The same for a form that must appear.
template <typename Form>
void WhileModal(const std::function<void()>& show, const std::function<void(Form&)>& act) {
    EXPECT_TRUE(ComesUp<Form>(show, act)) << "the form did not come up";
}

}  // namespace fakes
