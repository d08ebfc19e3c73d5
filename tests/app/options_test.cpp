// SPDX-License-Identifier: GPL-3.0-or-later
// The Options dialog, driven as a user does.
#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <optional>

#include "app/frmConfig.h"
#include "app/frmMain.h"
#include "platform/controls/folders/common_dialog.h"
#include "platform/controls/text_box.h"
#include "shared/Global.h"
#include "shared/ShellMod.h"
#include "support/fakes.h"
#include "support/shown_forms.h"

namespace {

using Texts = std::vector<std::string>;

class Options : public testing::Test {
 protected:
    void SetUp() override {
        Global::PollSeconds = 20;
        Global::PollCountdown = 7;
        Global::DesignerPath = "Z:\\opt\\designer";
        Global::AlertWho = "boss@example.com";
        Global::ConnectionString = "Provider=Test;Data Source=Z:\\data.dat";
        Global::DefPath = "Z:\\srv\\reports";
        Setting("Poll", "30");
    }
    void TearDown() override {
        SetFileChooser({});
        if (frmConfig* form = Shown()) {
            form->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        frame.cd()->FileName.clear();
    }

    void Setting(const char* name, const std::string& value) {
        registry.keys[ShellMod::SettingsKey][name] = {REG_SZ, value};
    }
    std::string Stored(const char* name) { return registry.keys[ShellMod::SettingsKey][name].bytes; }

    frmConfig& Open() {
        frame.Entry("mnuPollInt")->trigger();
        return *Shown();
    }
    // Returns null if no Options dialog is shown.
    static frmConfig* Shown() { return fakes::ShownForm<frmConfig>(); }
    static TextBox& Box(const char* name) { return *Shown()->findChild<TextBox*>(name); }
    static void Click(const char* name) {
        QTest::mouseClick(Shown()->findChild<QPushButton*>(name), Qt::LeftButton);
    }
    static void Type(const char* name, const char* text) {
        Box(name).setFocus();
        Box(name).selectAll();
        QTest::keyClick(&Box(name), Qt::Key_Delete);
        QTest::keyClicks(&Box(name), text);
    }

    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    fakes::FakeProcess process;
    fakes::FakeRegistry registry;
    frmMain& frame = frmMain::Instance();
    const std::string key = std::string(ShellMod::SettingsKey) + "\\";
};

}  // namespace

TEST_F(Options, MenuShowsItWithoutModality) {
    const frmConfig& form = Open();
    EXPECT_EQ(form.windowTitle().toStdString(), "Options");
    EXPECT_FALSE(form.isModal());
}

TEST_F(Options, BoxesAreLoadedFromTheVariablesAndTheIntervalAgainFromTheSettings) {
    Open();
    EXPECT_EQ(Box("txtPolling").Text(), "30");
    EXPECT_EQ(Box("txtcrwpath").Text(), "Z:\\opt\\designer");
    EXPECT_EQ(Box("txtAl").Text(), "boss@example.com");
    EXPECT_EQ(Box("txtDSN").Text(), "Provider=Test;Data Source=Z:\\data.dat");
}

TEST_F(Options, LoadTakesTheIntervalOfThisProcess) {
    const frmConfig form;
    EXPECT_EQ(form.findChild<TextBox*>("txtPolling")->Text(), "20");
}

TEST_F(Options, IntervalThatIsNotStoredIsShownAsFifteen) {
    registry.keys.clear();
    Open();
    EXPECT_EQ(Box("txtPolling").Text(), "15");
}

TEST_F(Options, IntervalOfAnotherTypeIsShownAsFifteen) {
    registry.keys[ShellMod::SettingsKey]["Poll"] = {4, std::string("\x1e\0\0\0", 4)};
    Open();
    EXPECT_EQ(Box("txtPolling").Text(), "15");
}

TEST_F(Options, LabelsTipsAndCommandsReadAsTold) {
    const frmConfig& form = Open();
    const struct {
        const char *box, *label, *tip;
    } rows[] = {
        {"txtPolling", "Polling Interval (Secs)", "Time between report polling"},
        {"txtcrwpath", "Crystal Reports Designer Location", "Path to where the crw32.exe is located"},
        {"txtAl", "On error alert", "The person to send an alert to when a report fails"},
        {"txtDSN", "Change data source", "Select a new data source"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(Box(row.box).toolTip().toStdString(), row.tip);
        const auto labels = form.findChildren<QLabel*>();
        const auto label = std::find_if(labels.begin(), labels.end(), [&row](const QLabel* candidate) {
            return candidate->buddy() == &Box(row.box);
        });
        ASSERT_NE(label, labels.end()) << row.box;
        EXPECT_EQ((*label)->text().toStdString(), row.label);
    }
    const std::pair<const char*, const char*> commands[] = {
        {"Command1", "Browse..."}, {"cmdDSN", "Set..."}, {"cmdSave", "&Save"}, {"cmdCancel", "&Cancel"}};
    for (const auto& [name, caption] : commands) {
        EXPECT_EQ(form.findChild<QPushButton*>(name)->text().toStdString(), caption);
    }
}

TEST_F(Options, SaveWritesSettingsAndVariablesInThisOrderAndUnloads) {
    Open();
    Type("txtPolling", "45");
    Type("txtcrwpath", "Z:\\opt\\crw32.exe");
    Type("txtAl", "ann@example.com");
    Click("cmdSave");
    EXPECT_EQ(registry.writes,
              (Texts{key + "Poll=45", key + "CRWPath=Z:\\opt\\crw32.exe", key + "AlertWho=ann@example.com"}));
    EXPECT_EQ(Global::PollSeconds, 45);
    EXPECT_EQ(Global::DesignerPath, "Z:\\opt\\crw32.exe");
    EXPECT_EQ(Global::AlertWho, "ann@example.com");
    EXPECT_EQ(Global::PollCountdown, 7);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(Options, EnterSaves) {
    Open();
    Type("txtPolling", "45");
    QTest::keyClick(&Box("txtPolling"), Qt::Key_Return);
    EXPECT_EQ(Stored("Poll"), "45");
    EXPECT_EQ(Shown(), nullptr);
}

TEST_F(Options, CancelEscAndEnterOnCancelUnloadAndWriteNothing) {
    Open();
    Type("txtPolling", "45");
    Click("cmdCancel");
    EXPECT_EQ(Shown(), nullptr);
    Open();
    Type("txtAl", "somebody");
    QTest::keyClick(&Box("txtAl"), Qt::Key_Escape);
    EXPECT_EQ(Shown(), nullptr);
    Open();
    Type("txtAl", "somebody");
    QTest::keyClick(Shown()->findChild<QPushButton*>("cmdCancel"), Qt::Key_Return);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(registry.writes.empty());
    EXPECT_EQ(Global::PollSeconds, 20);
    EXPECT_EQ(Global::AlertWho, "boss@example.com");
}

TEST_F(Options, UnloadedDialogIsLoadedAgain) {
    Open();
    Type("txtAl", "somebody");
    Click("cmdCancel");
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    Open();
    EXPECT_EQ(Box("txtAl").Text(), "boss@example.com");
}

TEST_F(Options, SecondClickShowsTheSameDialogAndReadsTheIntervalAgain) {
    const frmConfig& first = Open();
    Type("txtPolling", "45");
    Type("txtAl", "somebody");
    EXPECT_EQ(&Open(), &first);
    EXPECT_EQ(Box("txtPolling").Text(), "30");
    EXPECT_EQ(Box("txtAl").Text(), "somebody");
}

TEST_F(Options, TypedDataSourceIsLost) {
    Open();
    Type("txtDSN", "DSN=other");
    EXPECT_EQ(Box("txtDSN").Text(), "DSN=other");
    Click("cmdSave");
    EXPECT_EQ(Global::ConnectionString, "Provider=Test;Data Source=Z:\\data.dat");
    EXPECT_EQ(registry.writes.size(), 3U);
    Open();
    EXPECT_EQ(Box("txtDSN").Text(), "Provider=Test;Data Source=Z:\\data.dat");
}

TEST_F(Options, SetOnlyShowsTheConnectionStringAgain) {
    Open();
    Type("txtDSN", "DSN=other");
    Click("cmdDSN");
    EXPECT_EQ(Box("txtDSN").Text(), "Provider=Test;Data Source=Z:\\data.dat");
    EXPECT_TRUE(prompts.boxes.empty());
}

class OptionsWithBadInterval : public Options, public testing::WithParamInterface<const char*> {};

// The value is stored before it is converted; the settings after the failed conversion are not.
TEST_P(OptionsWithBadInterval, IsStoredAndEndsTheProcessWithTheRunTimeBox) {
    const std::string typed = GetParam();
    Open();
    Type("txtPolling", typed.c_str());
    Type("txtAl", "ann@example.com");
    Click("cmdSave");
    const std::string box =
        typed == "32768" ? "Run-time error \"6\":\n\nOverflow" : "Run-time error \"13\":\n\nType mismatch";
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{box, 16, "Oxbow Courier"}}));
    EXPECT_EQ(process.ends, std::vector<int>{1});
    EXPECT_EQ(registry.writes, Texts{key + "Poll=" + typed});
    EXPECT_EQ(Global::PollSeconds, 20);
    EXPECT_EQ(Global::AlertWho, "boss@example.com");
}

INSTANTIATE_TEST_SUITE_P(WordEmptyTooLarge, OptionsWithBadInterval, testing::Values("often", "", "32768"));

TEST_F(Options, LargestIntervalIsSixteenBits) {
    Open();
    Type("txtPolling", "32767");
    Click("cmdSave");
    EXPECT_EQ(Global::PollSeconds, 32767);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(Options, BrowseSetsTheCommonDialogUpAndTakesItsFile) {
    Texts asked;
    SetFileChooser([&asked](const CommonDialog& cd) {
        asked = {cd.DialogTitle, cd.CancelError ? "cancel is an error" : "", cd.Filter, cd.InitDir};
        return std::optional<std::string>("Z:\\opt\\crw32.exe");
    });
    Open();
    Click("Command1");
    EXPECT_EQ(asked, (Texts{"Select Application...", "cancel is an error",
                            "Crystal Reports (crw32.exe)|crw32.exe|", "Z:\\srv\\reports"}));
    EXPECT_EQ(Box("txtcrwpath").Text(), "Z:\\opt\\crw32.exe");
    EXPECT_EQ(Global::DesignerPath, "Z:\\opt\\designer");
    EXPECT_TRUE(registry.writes.empty());
}

TEST_F(Options, CancelledBrowseIsIgnored) {
    SetFileChooser([](const CommonDialog&) { return std::nullopt; });
    Open();
    Click("Command1");
    EXPECT_EQ(Box("txtcrwpath").Text(), "Z:\\opt\\designer");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(Options, CancelledBrowseTakesTheFileChosenTheTimeBefore) {
    frame.cd()->FileName = "Z:\\opt\\crw32.exe";
    SetFileChooser([](const CommonDialog&) { return std::nullopt; });
    Open();
    Click("Command1");
    EXPECT_EQ(Box("txtcrwpath").Text(), "Z:\\opt\\crw32.exe");
}

TEST_F(Options, FailedBrowseIsIgnored) {
    SetFileChooser([](const CommonDialog&) -> std::optional<std::string> { throw RuntimeError(76); });
    Open();
    Click("Command1");
    EXPECT_EQ(Box("txtcrwpath").Text(), "Z:\\opt\\designer");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_TRUE(process.ends.empty());
}

TEST_F(Options, AddressesArePickedIntoTheAlertBox) {
    mail.picks = {{"Ann Archer", "Bob"}};
    Global::AlertWho = "";
    Open();
    Click("cmdAddress");
    EXPECT_EQ(Box("txtAl").Text(), "Ann Archer;Bob;");
    EXPECT_EQ(Global::AlertWho, "");
}

TEST_F(Options, LongListOfPickedNamesIsNotCut) {
    mail.picks = {Texts(200, std::string(219, 'a'))};
    Global::AlertWho = "";
    Open();
    Click("cmdAddress");
    EXPECT_EQ(Box("txtAl").Text().size(), 44'000U);
    Click("cmdSave");
    EXPECT_EQ(Global::AlertWho.size(), 44'000U);
}

TEST_F(Options, TabGoesThroughTheBoxesAndTheirButtons) {
    frmConfig& form = Open();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    Box("txtPolling").setFocus();
    Texts order;
    for (int i = 0; i < 9; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(order, (Texts{"txtPolling", "txtcrwpath", "Command1", "txtAl", "cmdAddress", "txtDSN", "cmdDSN",
                            "cmdSave", "cmdCancel"}));
}

TEST_F(Options, LongTextsShowTheirBeginning) {
    Global::ConnectionString = std::string(500, 'x');
    Open();
    EXPECT_EQ(Box("txtDSN").cursorPosition(), 0);
}
