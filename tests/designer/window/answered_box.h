// SPDX-License-Identifier: GPL-3.0-or-later
// Answers message boxes as a hand does.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <functional>
#include <string>

namespace designer::test {

// Answers the box that comes up while `show` runs by the button with this text, and returns the text of the
// box.
inline std::string Answer(const std::function<void()>& show, const QString& button) {
    std::string text;
    bool met = false;
    QTimer poll;
    poll.setInterval(20);
    QObject::connect(&poll, &QTimer::timeout, [&] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box || met) {
            return;
        }
        met = true;
        text = box->text().toStdString();
        for (QAbstractButton* one : box->buttons()) {
            if (one->text().remove('&') == button) {
                QTest::mouseClick(one, Qt::LeftButton);
                return;
            }
        }
        ADD_FAILURE() << "no button " << button.toStdString();
        box->reject();
    });
    poll.start();
    show();
    EXPECT_TRUE(met) << "no box came up";
    return text;
}

}  // namespace designer::test
