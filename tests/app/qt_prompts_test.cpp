// SPDX-License-Identifier: GPL-3.0-or-later
// Boxes on the screen, and their lines on standard error.
#include "platform/qt/qt_prompts.h"

#include <gtest/gtest.h>

#include <QInputDialog>
#include <QMessageBox>
#include <QPushButton>
#include <sstream>

#include "platform/contracts/process.h"
#include "support/fakes.h"
#include "support/modal.h"

namespace {

class QtPromptsJournal : public testing::Test {
 protected:
    void SetUp() override { SetPrompts(&prompts); }
    void TearDown() override {
        SetPrompts(nullptr);
        SetCommand({});
    }
    // Returns the dated lines of one message box and one input box, both answered.
    std::string Lines() {
        testing::internal::CaptureStderr();
        fakes::WhileModal<QMessageBox>([] { MsgBox("Sending mail failed", vbExclamation); },
                                       [](QMessageBox& box) { box.button(QMessageBox::Ok)->click(); });
        fakes::WhileModal<QInputDialog>([] { InputBox("Name", ""); },
                                        [](QInputDialog& box) { box.accept(); });
        std::string dated;
        std::istringstream said(testing::internal::GetCapturedStderr());
        for (std::string line; std::getline(said, line);) {
            dated += line.rfind("2026-11-21", 0) == 0 ? line + "\n" : "";
        }
        return dated;
    }

    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 0, 0)};
    QtPrompts prompts;
};

}  // namespace

TEST_F(QtPromptsJournal, EveryBoxOfTheSchedulerIsALineAsWell) {
    SetCommand("-sched");
    EXPECT_EQ(
        Lines(),
        "2026-11-21 14:00:00 Oxbow Courier: Sending mail failed\n2026-11-21 14:00:00 Oxbow Courier: Name\n");
}

TEST_F(QtPromptsJournal, BoxesOfTheEditorAreBoxesOnly) {
    EXPECT_EQ(Lines(), "");
}
