// SPDX-License-Identifier: GPL-3.0-or-later
// What Report Properties shows after its load, and its effect on the Desktop.
#include <QGroupBox>
#include <QLabel>
#include <QStackedWidget>

#include "dialogs/properties_fixture.h"
#include "platform/base/paths.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class PropertiesLoad : public PropertiesTest {};

class PropertiesFrequency : public PropertiesTest,
                            public testing::WithParamInterface<std::pair<const char*, const char*>> {};

class PropertiesFormat : public PropertiesTest, public testing::WithParamInterface<const char*> {};

}  // namespace

TEST_F(PropertiesLoad, CaptionsReadAsTold) {
    const frmProp& form = Open();
    EXPECT_EQ(form.windowTitle(), "Report Properties");
    EXPECT_FALSE(form.isModal());
    Texts tabs;
    const auto& strip = Get<TabStrip>("TabStrip1");
    for (int i = 0; i < strip.count(); ++i) {
        tabs.push_back(strip.tabText(i).toStdString());
    }
    EXPECT_THAT(tabs, ElementsAre("General", "Schedule", "Parameters", "Formula", "Report Logon", "Email"));
    const std::pair<const char*, const char*> buttons[] = {{"cmdFolder", "Select..."},
                                                           {"cmdRefresh", "Refresh"},
                                                           {"cmdSet", "Set Parameters"},
                                                           {"cmdClear", "Clear Parameters"},
                                                           {"cmdTest", "&Test..."},
                                                           {"cmdBrowse", "To..."},
                                                           {"cmdOk", "&OK"},
                                                           {"cmdCancel", "&Cancel"}};
    for (const auto& [name, caption] : buttons) {
        EXPECT_EQ(Get<QPushButton>(name).text().toStdString(), caption);
    }
    const std::pair<const char*, const char*> ticks[] = {{"optDaily", "Daily"},
                                                         {"optWeekly", "Weekly"},
                                                         {"optWeekDays", "Week Days Only"},
                                                         {"optMonthly", "Monthly"},
                                                         {"Check1", "Dabase Login required?"}};
    for (const auto& [name, caption] : ticks) {
        EXPECT_EQ(Get<QAbstractButton>(name).text().toStdString(), caption);
    }
    EXPECT_EQ(Get<QGroupBox>("Frame1").title(), "Report Refresh");
    EXPECT_EQ(Get<QGroupBox>("Frame2").title(), "Run this Report");
}

TEST_F(PropertiesLoad, LabelsReadAsToldAndBelongToTheirBoxes) {
    Open();
    Texts labels;
    for (const auto* label : Shown()->findChildren<QLabel*>()) {
        const QWidget* box = label->buddy();
        labels.push_back((box != nullptr ? box->objectName().toStdString() + "=" : "") +
                         label->text().toStdString());
    }
    EXPECT_THAT(
        labels,
        testing::UnorderedElementsAre(
            "txtTitle=Title:", "txtPath=File Name:", "txtDesc=Description:", "cmbFolder=Folder Name:",
            "cmbFormat= Format:",
            "If the report file has been changed outside of OXC, you will need to refresh the report object "
            "in the OXC system.",
            "msExec=Run Time:", "lsvPar=Prompts and Parameters", "txtRecForm=Record Selection Formula",
            "Log-on details for the database (used for OLEDB connections)", "txtUserName=User Name",
            "txtPassword=Password", "txtSubject=Subject:", "txtMsg=Message:"));
}

TEST_F(PropertiesLoad, OneStatementReadsTheRecordAndItsValues) {
    database.TakeStatements();
    Open();
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select * from reportscheduler r left outer join reportparameter x  on r.reportid "
                    "= x.reportid where r.reportid = 1"));
    EXPECT_EQ(Text("txtID"), "1");
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(PropertiesLoad, FieldsShowTheRecord) {
    Open();
    EXPECT_EQ(Text("txtTitle"), "Week");
    EXPECT_EQ(Text("txtPath"), file);
    EXPECT_EQ(Get<TextBox>("txtPath").text().toStdString(), paths::ToMachine(file).string());
    EXPECT_EQ(Text("txtDesc"), "Sales of a year");
    EXPECT_EQ(Text("cmbFormat"), "MS Excel");
    EXPECT_EQ(Text("msExec"), "07:30");
    EXPECT_EQ(Text("txtSendTo"), "ann@example.com;");
    EXPECT_EQ(Text("txtSubject"), "Figures");
    EXPECT_EQ(Text("txtMsg"), "See\nattached");
    EXPECT_EQ(Text("txtRecForm"), "{Sales.Region} = \"N\"");
}

TEST_F(PropertiesLoad, FolderIsTheOneOpenedLastAndNotTheRecords) {
    Global::CurrentFolder = "Stock";
    Open();
    EXPECT_EQ(Text("cmbFolder"), "Stock");
    EXPECT_EQ(Stored("Parent"), "Sales");
}

TEST_F(PropertiesLoad, NullsAreEmptyTexts) {
    for (const char* column : {"Subject", "Message", "RunAt", "Format", "SelectionForm", "LoginReq"}) {
        Set(column, "null");
    }
    Open();
    for (const char* box : {"txtSubject", "txtMsg", "cmbFormat", "txtRecForm"}) {
        EXPECT_EQ(Text(box), "") << box;
    }
    EXPECT_EQ(Text("msExec"), "__:__");
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(PropertiesLoad, UsersFileIsOpenedAndLoggedOnToTableByTable) {
    Open();
    EXPECT_THAT(engine.calls, ElementsAre("open " + file, "logon 1 [][][sa][pw]", "logon 2 [][][sa][pw]"));
}

TEST_F(PropertiesLoad, LogonOfTheRecordIsShownUnlocked) {
    Open();
    EXPECT_TRUE(Get<CheckBox>("Check1").Value());
    for (const auto& [name, text] : {std::pair("txtUserName", "sa"), std::pair("txtPassword", "pw")}) {
        EXPECT_EQ(Text(name), text);
        EXPECT_FALSE(Get<TextBox>(name).Locked());
        EXPECT_EQ(Get<TextBox>(name).palette().color(QPalette::Base),
                  Shown()->palette().color(QPalette::Base));
    }
}

TEST_F(PropertiesLoad, WithoutLogonItsBoxesAreEmptyAndLocked) {
    Set("LoginReq", "'F'");
    Open();
    EXPECT_FALSE(Get<CheckBox>("Check1").Value());
    for (const char* name : {"txtUserName", "txtPassword"}) {
        EXPECT_EQ(Text(name), "");
        EXPECT_TRUE(Get<TextBox>(name).Locked());
        EXPECT_EQ(Get<TextBox>(name).palette().color(QPalette::Base),
                  Shown()->palette().color(QPalette::Button));
    }
    EXPECT_THAT(engine.calls, ElementsAre("open " + file));
}

TEST_F(PropertiesLoad, CurrentReportOfAWizardInTheMiddleOfItIsReplaced) {
    engine.reports["Z:\\other.rpt"].title = "Other";
    Global::OpenReport("Z:\\other.rpt");
    Open();
    EXPECT_EQ(Global::OpenedReport().Description(), "Sales of a year");
}

TEST_P(PropertiesFrequency, TicksTheOptionOfExactlyItsWord) {
    const auto [word, option] = GetParam();
    Set("Frequency", word);
    Open();
    EXPECT_EQ(TickedOption(), option);
}

INSTANTIATE_TEST_SUITE_P(Words, PropertiesFrequency,
                         testing::Values(std::pair("'Daily'", "optDaily"), std::pair("'Weekly'", "optWeekly"),
                                         std::pair("'WeekDays'", "optWeekDays"),
                                         std::pair("'Monthly'", "optMonthly"), std::pair("'daily'", ""),
                                         std::pair("'Weekends'", ""), std::pair("''", ""),
                                         std::pair("null", "")));

TEST_F(PropertiesLoad, WeekdaysOfTheWizardTickNoOption) {
    Set("Frequency", "'Weekdays'");
    Open();
    EXPECT_EQ(TickedOption(), "");
}

TEST_P(PropertiesFormat, IsShownAsItIsStored) {
    Set("Format", "'" + std::string(GetParam()) + "'");
    Open();
    EXPECT_EQ(Text("cmbFormat"), GetParam());
}

INSTANTIATE_TEST_SUITE_P(Words, PropertiesFormat,
                         testing::Values("Acrobat Format (PDF)", "DHTML", "MS Excel", "MS Word", "Rich Text",
                                         "HTML", "ms word", ""));

TEST_F(PropertiesLoad, FiveFormatsAreOffered) {
    Open();
    Texts words;
    for (int i = 0; i < Get<ComboBox>("cmbFormat").ListCount(); ++i) {
        words.push_back(Get<ComboBox>("cmbFormat").List(i));
    }
    EXPECT_THAT(words, ElementsAre("Acrobat Format (PDF)", "DHTML", "MS Excel", "MS Word", "Rich Text"));
}

TEST_F(PropertiesLoad, ValuesAreListedWithTheirNamesAndCountedKeys) {
    Open();
    EXPECT_THAT(Lines(), ElementsAre("Region1|Region|North", "Year2|Year|2025"));
    ColumnHeaders& columns = Get<ListView>("lsvPar").ColumnHeaders();
    EXPECT_EQ(columns.Count(), 2);
    EXPECT_EQ(columns(1), "Parameter Name");
    EXPECT_EQ(columns(2), "Parameter Value");
}

TEST_F(PropertiesLoad, RowsWithoutANameAreCountedAndNotListed) {
    database.Run("update ReportParameter set ParName=null where ParName='Region'");
    Open();
    EXPECT_THAT(Lines(), ElementsAre("Year2|Year|2025"));
}

TEST_F(PropertiesLoad, ScheduleWithoutValuesListsNothing) {
    database.Run("delete from ReportParameter");
    Open();
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(PropertiesLoad, ReportThatLostAParameterShowsItsOldRows) {
    engine.reports[file].parameterTypes = {report::StringField};
    Open();
    EXPECT_THAT(Lines(), ElementsAre("Region1|Region|North", "Year2|Year|2025"));
}

TEST_F(PropertiesLoad, ReportWithoutParametersDisablesItsCommands) {
    engine.reports[file].parameterTypes.clear();
    Open();
    EXPECT_FALSE(Get<QPushButton>("cmdSet").isEnabled());
    EXPECT_FALSE(Get<QPushButton>("cmdClear").isEnabled());
}

TEST_F(PropertiesLoad, ReportWithParametersHasItsCommands) {
    Open();
    EXPECT_TRUE(Get<QPushButton>("cmdSet").isEnabled());
    EXPECT_TRUE(Get<QPushButton>("cmdClear").isEnabled());
}

TEST_F(PropertiesLoad, OneFrameIsShownForEachTab) {
    Open();
    for (int tab = General; tab <= Email; ++tab) {
        Turn(static_cast<Tab>(tab));
        for (int i = 0; i < 6; ++i) {
            const QString name = "fraStrip" + QString::number(i);
            EXPECT_EQ(Shown()->findChild<QFrame*>(name)->isVisible(), i == tab - 1) << tab << " " << i;
        }
    }
}

TEST_F(PropertiesLoad, FirstTabIsInFrontAndItsFirstBoxHasTheFocus) {
    Open();
    EXPECT_EQ(Get<TabStrip>("TabStrip1").SelectedItem(), General);
    EXPECT_TRUE(Get<QFrame>("fraStrip0").isVisible());
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "txtTitle");
}

TEST_F(PropertiesLoad, TabThatIsClickedHandsTheFocusToItsFirstControl) {
    Open();
    const std::pair<Tab, const char*> firsts[] = {
        {Schedule, "msExec"}, {Formula, "txtRecForm"}, {Logon, "Check1"}, {Email, "txtSendTo"}};
    for (const auto& [tab, control] : firsts) {
        Turn(tab);
        EXPECT_EQ(QApplication::focusWidget()->objectName(), control);
    }
    Turn(Parameters);
    EXPECT_TRUE(Get<ListView>("lsvPar").isAncestorOf(QApplication::focusWidget()));
}

TEST_F(PropertiesLoad, ArrowKeysWalkAlongTheTabs) {
    Open();
    Get<TabStrip>("TabStrip1").setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
    EXPECT_TRUE(Get<QFrame>("fraStrip2").isVisible());
    EXPECT_TRUE(Get<TabStrip>("TabStrip1").hasFocus());
}

TEST_F(PropertiesLoad, DesktopIsDisabledAndItsButtonEnabledWhileItIsUp) {
    Open();
    EXPECT_EQ(desk.buttons, (std::vector<std::pair<int, bool>>{{3, true}}));
    EXPECT_EQ(desk.enablings, std::vector<bool>{false});
    EXPECT_EQ(frame.pointers, (std::vector<int>{11, 0}));
    Click("cmdCancel");
    EXPECT_EQ(desk.buttons, (std::vector<std::pair<int, bool>>{{3, true}, {5, false}}));
    EXPECT_EQ(desk.enablings, (std::vector<bool>{false, true}));
}

TEST_F(PropertiesLoad, WindowThatWasActiveAtTheLoadIsEnabledThoughAnotherIsNow) {
    Open();
    DeskForm other;
    Global::DeskWindows.push_back(&other);
    Global::DeskCount = Global::DeskIndex = 2;
    Click("cmdCancel");
    EXPECT_TRUE(desk.isEnabled());
    EXPECT_THAT(other.enablings, IsEmpty());
    EXPECT_THAT(other.buttons, IsEmpty());
}

TEST_F(PropertiesLoad, DesktopThatWasClosedMeanwhileIsLeftAlone) {
    auto closed = std::make_unique<DeskForm>();
    Global::DeskWindows[1] = closed.get();
    Open();
    closed.reset();
    Global::DeskWindows[1] = nullptr;
    Click("cmdCancel");
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_THAT(process.ends, IsEmpty());
}

TEST_F(PropertiesLoad, SecondShowKeepsTheScheduleThatIsUp) {
    AddSchedule({.title = "Month"});
    const frmProp& first = Open("1");
    EXPECT_EQ(&Open("2"), &first);
    EXPECT_EQ(Text("txtTitle"), "Week");
    EXPECT_EQ(Text("txtID"), "1");
}

TEST_F(PropertiesLoad, FormThatWasUnloadedIsLoadedAgain) {
    AddSchedule({.title = "Month"});
    Open("1");
    Click("cmdCancel");
    Open("2");
    EXPECT_EQ(Text("txtTitle"), "Month");
}

TEST_F(PropertiesLoad, ScheduleThatIsNotThereIsToldAndTheFormStaysUp) {
    Open("7");
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(3021, RuntimeError(err::NoCurrentRecord).Description())});
    EXPECT_EQ(Text("txtID"), "7");
    EXPECT_FALSE(desk.isEnabled());
    EXPECT_EQ(frame.pointers.back(), 0);
    Click("cmdCancel");
    EXPECT_TRUE(desk.isEnabled());
}

TEST_F(PropertiesLoad, ReportFileThatIsGoneIsToldAndWhatCameBeforeIsShown) {
    engine.reports.clear();
    Open();
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(53, "File not found: " + file)});
    EXPECT_EQ(Text("txtTitle"), "Week");
    EXPECT_EQ(Text("txtUserName"), "sa");
    EXPECT_EQ(TickedOption(), "");
    EXPECT_THAT(Lines(), IsEmpty());
    EXPECT_EQ(Get<ListView>("lsvPar").ColumnHeaders().Count(), 0);
    EXPECT_THAT(process.ends, IsEmpty());
}

// A save would overwrite the record with empty fields, and the open report is another one.
TEST_F(PropertiesLoad, OnlyCancelIsOpenAfterALoadThatFailed) {
    engine.reports["Z:\\other.rpt"].parameterTypes = {report::StringField};
    Global::OpenReport("Z:\\other.rpt");
    engine.reports.erase(file);
    Open();
    prompts.boxes.clear();
    database.TakeStatements();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdCancel");
    for (const Tab tab : {Schedule, Parameters, Formula, Logon, Email, General}) {
        Turn(tab);
        for (const auto* button : Shown()->findChildren<QAbstractButton*>()) {
            if (button->isVisible() && qobject_cast<const QPushButton*>(button) != nullptr) {
                EXPECT_EQ(button->isEnabled(), button->objectName() == "cmdCancel")
                    << button->objectName().toStdString();
            }
        }
    }
    Click("cmdOk");
    QTest::keyClick(Shown(), Qt::Key_O, Qt::AltModifier);
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
    EXPECT_THAT(prompts.boxes, IsEmpty());
    EXPECT_EQ(Stored("ReportTitle, Frequency"), "Week|Weekly");
    QTest::keyClick(Shown(), Qt::Key_Return);
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(desk.isEnabled());
}

TEST_F(PropertiesLoad, RunTimeOfAnotherShapeThanTheMaskStopsTheLoad) {
    Set("RunAt", "'noon'");
    Open();
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(380, "Invalid property value")});
    EXPECT_EQ(Text("cmbFolder"), "Sales");
    EXPECT_EQ(Text("txtSendTo"), "");
    EXPECT_THAT(engine.calls, IsEmpty());
}

TEST_F(PropertiesLoad, WithoutADesktopNothingIsRead) {
    Global::DeskWindows = {nullptr, nullptr};
    database.TakeStatements();
    Open();
    EXPECT_EQ(prompts.boxes, Boxes{ErrorBox(91, "Object variable or With block variable not set")});
    EXPECT_THAT(database.TakeStatements(), IsEmpty());
}

TEST_F(PropertiesLoad, BoxesThatAreNotSavedAreLocked) {
    Open();
    EXPECT_TRUE(Get<TextBox>("txtPath").Locked());
    EXPECT_TRUE(Get<MultiLineTextBox>("txtDesc").Locked());
    EXPECT_TRUE(Get<TextBox>("txtID").Locked());
}

TEST_F(PropertiesLoad, PasswordIsNotReadable) {
    Open();
    EXPECT_EQ(Get<TextBox>("txtPassword").echoMode(), QLineEdit::Password);
}

TEST_F(PropertiesLoad, TabGoesThroughEachPageAndThenTheCommands) {
    Open();
    Texts order;
    for (int i = 0; i < 10; ++i) {
        order.push_back(QApplication::focusWidget()->objectName().toStdString());
        TabOut();
    }
    EXPECT_THAT(order, ElementsAre("txtTitle", "txtPath", "txtDesc", "cmbFolder", "cmdFolder", "cmbFormat",
                                   "cmdRefresh", "cmdOk", "cmdCancel", "TabStrip1"));
}

TEST_F(PropertiesLoad, TabGoesToTheTickedOptionAndTheArrowKeysTickTheOthers) {
    Open();
    Turn(Schedule);
    TabOut();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "optWeekly");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    EXPECT_EQ(TickedOption(), "optDaily");
    TabOut();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "cmdOk");
}

TEST_F(PropertiesLoad, TabReachesTheOptionsWhenNoneIsTicked) {
    Set("Frequency", "'Weekdays'");
    Open();
    Turn(Schedule);
    TabOut();
    EXPECT_EQ(QApplication::focusWidget()->objectName(), "optDaily");
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_EQ(TickedOption(), "optDaily");
}
