// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog for files that is answered by a name.
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <string>

namespace designer::test {

// Types a name into the dialog that comes up while `show` runs, and answers the boxes after it by Yes, or by
// OK where there is no Yes. Returns the texts of the boxes, each with | after it.
inline std::string NameFile(const std::filesystem::path& name, const std::function<void()>& show) {
    std::string said;
    bool isTyped = false;
    QTimer look, boxes;  // a box comes up while the key is pressed
    QObject::connect(&look, &QTimer::timeout, [&] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        if (dialog && !isTyped) {
            isTyped = true;
            auto* line = dialog->findChild<QLineEdit*>("fileNameEdit");
            line->setText(QString::fromStdString(name.string()));
            QTest::keyClick(line, Qt::Key_Return);
        }
    });
    QObject::connect(&boxes, &QTimer::timeout, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            said += box->text().toStdString() + "|";
            QAbstractButton* yes = box->button(QMessageBox::Yes);
            QTest::mouseClick(yes ? yes : box->button(QMessageBox::Ok), Qt::LeftButton);
        }
    });
    boxes.start(20);
    look.start(20);
    show();
    EXPECT_TRUE(isTyped) << "no dialog came up";
    return said;
}

}  // namespace designer::test
