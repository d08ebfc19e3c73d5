// SPDX-License-Identifier: GPL-3.0-or-later
// Report Properties on a schedule of its own, before a Desktop window, driven as a user does.
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "dialogs/frmProp.h"
#include "platform/base/paths.h"
#include "platform/contracts/prompts.h"
#include "platform/controls/check_box.h"
#include "platform/controls/combo_box.h"
#include "platform/controls/items/list_view.h"
#include "platform/controls/masked_edit.h"
#include "platform/controls/multi_line_text_box.h"
#include "platform/controls/option_button.h"
#include "platform/controls/tab_strip.h"
#include "platform/controls/text_box.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/mdi_frame.h"
#include "support/modal.h"

// A Desktop window that is a real widget.
class DeskForm : public QWidget, public fakes::FakeDesk {
 public:
    void EnableForm(bool enabled) override {
        FakeDesk::EnableForm(enabled);
        setEnabled(enabled);
    }
};

class PropertiesTest : public testing::Test {
 protected:
    using Texts = std::vector<std::string>;
    using Boxes = std::vector<fakes::Box>;
    // Numbers of the tabs.
    enum Tab { General = 1, Schedule, Parameters, Formula, Logon, Email };

    void SetUp() override;
    void TearDown() override;

    // Adds a schedule with a logon and with values for the parameters Region and Year of its report.
    void AddSchedule(const fakes::ScheduleRow& row);
    static fakes::ScheduleRow UsualRow();
    void Set(const std::string& column, const std::string& value) const;
    std::string Stored(const std::string& columns) const;
    Texts StoredParameters() const;

    frmProp& Open(const std::string& reportID = "1");
    frmProp* Shown() const;  // null: not shown
    static void LetGo();     // destroys forms that were unloaded

    template <typename Control>
    Control& Get(const char* name) const {
        return *Shown()->findChild<Control*>(name);
    }
    std::string Text(const char* name) const;
    void Turn(Tab tab) const;  // clicks the tab
    void Click(const char* name) const;
    void Tick(const char* name) const;  // clicks an option or a check box
    // Moves the focus to the box and replaces its text.
    void Type(const char* name, const char* text) const;
    void TabOut() const;
    Texts Lines() const;  // "Key|Text|SubItem 1" of lsvPar
    std::string TickedOption() const;

    static fakes::Box ErrorBox(int number, const std::string& description);
    static fakes::Box EndBox(int number, const std::string& description);

    fakes::FakeClock clock{fakes::At(2026, 11, 21)};
    fakes::FakeLoop loop{clock};
    fakes::FakeEngine engine;
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::TestDatabase database;
    fakes::MdiFrame frame;
    DeskForm desk;
    std::string file;  // the user's own file, from which the schedule was made
};
