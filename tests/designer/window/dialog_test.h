// SPDX-License-Identifier: GPL-3.0-or-later
// The dialogs of the designer's window with properties on pages, driven by mouse and keys.
#pragma once

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QToolButton>
#include <functional>

#include "window_fixture.h"

namespace designer::test {

class DialogTest : public WindowTest {
 protected:
    using WindowTest::WindowTest;
    // Runs the command whose dialog `work` drives; the dialog is closed if `work` does not.
    void InDialog(const char* command, const std::function<void(QDialog&)>& work) {
        bool isOpen = false;
        QTimer::singleShot(0, m_window, [&] {
            auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            isOpen = dialog != nullptr;
            if (dialog) {
                work(*dialog);
                dialog->reject();
            }
        });
        Run(command);
        EXPECT_TRUE(isOpen) << command;
    }
    static QComboBox& List(QDialog& dialog, const QString& name) {
        auto* list = dialog.findChild<QComboBox*>(name);
        EXPECT_NE(list, nullptr) << name.toStdString();
        return *list;
    }
    static void Type(QDialog& dialog, const QString& name, const QString& text) {
        QComboBox& list = List(dialog, name);
        auto& pages = *dialog.findChild<QTabWidget*>("pages");
        for (int page = 0; page < pages.count(); ++page) {
            if (pages.widget(page)->isAncestorOf(&list)) {
                pages.setCurrentIndex(page);
            }
        }
        list.setFocus();
        QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
        QTest::keyClick(&list, Qt::Key_Delete);
        QTest::keyClicks(&list, text);
    }
    static void Press(QDialog& dialog, QDialogButtonBox::StandardButton button) {
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
    }
    static std::string Message(QDialog& dialog) {
        return dialog.findChild<QLabel*>("note")->text().toStdString();
    }
    // The table of a list, in front.
    static QTableWidget& Table(QDialog& dialog, const QString& name) {
        auto* table = dialog.findChild<QTableWidget*>(name);
        EXPECT_NE(table, nullptr) << name.toStdString();
        auto& pages = *dialog.findChild<QTabWidget*>("pages");
        for (int page = 0; page < pages.count(); ++page) {
            if (pages.widget(page)->isAncestorOf(table)) {
                pages.setCurrentIndex(page);
            }
        }
        return *table;
    }
    // Puts a text into a cell.
    static void TypeCell(QTableWidget& table, int row, int column, const QString& text) {
        table.setCurrentCell(row, column);
        table.item(row, column)->setText(text);
    }
    static std::string Cells(const QTableWidget& table) {
        std::string text;
        for (int row = 0; row < table.rowCount(); ++row) {
            for (int column = 0; column < table.columnCount(); ++column) {
                text += (table.item(row, column) ? table.item(row, column)->text().toStdString() : "") + "|";
            }
        }
        return text;
    }
    static std::string Pages(QDialog& dialog) {
        std::string titles;
        auto& pages = *dialog.findChild<QTabWidget*>("pages");
        for (int page = 0; page < pages.count(); ++page) {
            titles += pages.tabText(page).toStdString() + "|";
        }
        return titles;
    }
};

}  // namespace designer::test
