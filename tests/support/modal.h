// Modal forms, driven while they are up.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTest>
#include <QTimer>
#include <functional>

#include "platform/contracts/runtime.h"

namespace fakes {

// Runs `show`, which shows a modal form of the kind, and `act` on the form as soon as it is up. A form that
// `act` leaves on the screen is taken away behind it. False when none came up.
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
    // None came up: the timer must not outlive what it holds.
    QCoreApplication::processEvents();
    return met;
}

// The same for a form that must come up.
template <typename Form>
void WhileModal(const std::function<void()>& show, const std::function<void(Form&)>& act) {
    EXPECT_TRUE(ComesUp<Form>(show, act)) << "the form did not come up";
}

}  // namespace fakes
