// SPDX-License-Identifier: GPL-3.0-or-later
// The window of the mail profile, driven as a user does.
#pragma once

#include <gmock/gmock.h>

#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <memory>
#include <string>

#include "platform/regfile/registry_file.h"
#include "support/config_home.h"
#include "tools/oxc_mail/mail_dialog.h"
class MailWindow : public testing::Test {
 public:
    void SetUp() override { SetRegistry(&SettingsFile()); }
    void TearDown() override { SetRegistry(nullptr); }

    std::filesystem::path File() const { return m_folder.MailProfile(); }
    std::string Profile() const { return ReadBytes(File()); }
    void WriteProfile(const std::string& lines) {
        std::filesystem::create_directories(File().parent_path());
        WriteBytes(File(), "[Profile]\nFrom=Reports <r@example.com>\n" + lines);
        std::filesystem::permissions(File(), std::filesystem::perms(0600));
    }
    void Open() {
        m_dialog = std::make_unique<MailDialog>();
        m_dialog->show();
        m_dialog->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(m_dialog.get()));
    }
    template <typename Control>
    Control* Find(const char* name) const {
        auto* control = m_dialog->findChild<Control*>(name);
        EXPECT_NE(control, nullptr) << name;
        return control;
    }
    QLineEdit* Edit(const char* name) const { return Find<QLineEdit>(name); }
    void Type(const char* name, const char* text) const {
        Edit(name)->setFocus();
        Edit(name)->selectAll();
        QTest::keyClicks(Edit(name), text);
        QTest::keyClick(Edit(name), Qt::Key_Tab);
    }
    void Click(const char* name) const { QTest::mouseClick(Find<QPushButton>(name), Qt::LeftButton); }
    std::string Result() const { return Find<QPlainTextEdit>("txtResult")->toPlainText().toStdString(); }
    std::string ResultOfWork() const {
        auto* stop = Find<QPushButton>("cmdStop");
        auto* check = Find<QPushButton>("cmdCheck");
        EXPECT_TRUE(QTest::qWaitFor([&] { return check->isEnabled() && !stop->isEnabled(); }, 10000));
        return Result();
    }
    // Clicks a button of the box that the next step opens.
    void Answer(QMessageBox::StandardButton button) {
        QTimer::singleShot(0, m_dialog.get(), [this, button] {
            auto* box = m_dialog->findChild<QMessageBox*>();
            ASSERT_NE(box, nullptr);
            m_asked = box->text().toStdString();
            box->button(button)->click();
        });
    }

 protected:
    ConfigHome m_folder;
    std::unique_ptr<MailDialog> m_dialog;
    std::string m_asked;
};
