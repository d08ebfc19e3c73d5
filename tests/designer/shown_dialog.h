// SPDX-License-Identifier: GPL-3.0-or-later
// A dialog of the designer on the screen, driven by mouse and keys.
#pragma once

#include <gtest/gtest.h>

#include <QComboBox>
#include <QDialog>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>
#include <memory>
#include <string>

#include "support/form_driver.h"

namespace designer::test {

// Presses OK.
inline void ClickOk(QDialog& dialog) {
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok), Qt::LeftButton);
}

// Replaces the text of the editor of a cell or a row, which has the focus, and takes it.
inline void TypeInEditor(const QString& text) {
    QWidget* editor = QApplication::focusWidget();
    QTest::keyClick(editor, Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Delete);
    QTest::keyClicks(editor, text);
    QTest::keyClick(editor, Qt::Key_Return);
    QApplication::processEvents();
}

// Opens a cell of the table and types its text.
inline void TypeInCell(QTableWidget& table, int row, int column, const QString& text) {
    table.setFocus();
    table.setCurrentCell(row, column);
    QTest::keyClick(&table, Qt::Key_F2);
    TypeInEditor(text);
}

class ShownDialogTest : public testing::Test, protected fakes::FormDriver {
 protected:
    // The dialog ends before what the members of a test own.
    void TearDown() override { m_dialog.reset(); }

    // Shows the dialog in place of the one before.
    void Show(std::unique_ptr<QDialog> dialog) {
        m_dialog = std::move(dialog);
        m_dialog->show();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    QWidget* Form() const override { return m_dialog.get(); }
    void Ok() const { ClickOk(*m_dialog); }
    // Picks an entry by its first characters.
    void Pick(const char* list, const char* entry) const {
        The<QComboBox>(list).setFocus();
        QTest::keyClicks(&The<QComboBox>(list), entry);
    }
    void TypeCell(const char* table, int row, int column, const char* text) const {
        TypeInCell(The<QTableWidget>(table), row, column, text);
    }
    std::string Line(const char* name) const { return The<QLineEdit>(name).text().toStdString(); }
    // What the dialog says of the control.
    std::string Note(const char* control) const {
        return The<QLabel>((std::string(control) + "Note").c_str()).text().toStdString();
    }

    std::unique_ptr<QDialog> m_dialog;
};

}  // namespace designer::test
