// SPDX-License-Identifier: GPL-3.0-or-later
// Report Properties of the schedule that is selected in a Desktop window.
#include <QPushButton>

#include "desk_fixture.h"
#include "dialogs/frmProp.h"
#include "platform/controls/text_box.h"
#include "support/shown_forms.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class DeskProperties : public DeskTest {
 protected:
    void SetUp() override {
        DeskTest::SetUp();
        engine.reports["Z:\\users\\week.rpt"].title = "Week";
    }
    void TearDown() override {
        if (Shown() != nullptr) {
            Shown()->close();
        }
        DeskTest::TearDown();
    }
    // A root window with the schedule selected in it.
    frmDesk& OpenWith(const std::string& title) {
        AddSchedule(title, "Desktop");
        database.Run("update ReportScheduler set OriginalPath='Z:\\users\\week.rpt'");
        frmDesk& window = OpenRoot();
        ClickNode(window, "Desktop");
        ClickItem(window, title);
        database.TakeStatements();
        return window;
    }
    static frmProp* Shown() { return fakes::ShownForm<frmProp>(); }
    static void Cancel() {
        QTest::mouseClick(Shown()->findChild<QPushButton*>("cmdCancel"), Qt::LeftButton);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    static std::string Text(const char* box) { return Shown()->findChild<TextBox*>(box)->Text(); }
};

}  // namespace

TEST_F(DeskProperties, EntryShowsTheSelectedScheduleWithoutModality) {
    AddSchedule("Other", "Desktop");
    OpenWith("Week");
    ClickEntry("mnuDeskProp");
    EXPECT_THAT(
        database.TakeStatements(),
        ElementsAre("select reportid from reportscheduler where reporttitle = 'Week' and parent = 'Desktop'",
                    "select * from reportscheduler r left outer join reportparameter x  on r.reportid "
                    "= x.reportid where r.reportid = 2"));
    ASSERT_NE(Shown(), nullptr);
    EXPECT_FALSE(Shown()->isModal());
    EXPECT_EQ(Shown()->parentWidget(), &frame);
    EXPECT_EQ(Global::SelectedReportID, "2");
    EXPECT_EQ(Text("txtID"), "2");
    EXPECT_EQ(Text("txtTitle"), "Week");
    EXPECT_THAT(prompts.boxes, IsEmpty());
}

TEST_F(DeskProperties, WindowIsDisabledAndItsButtonsAreSetWhileTheFormIsUp) {
    frmDesk& window = OpenWith("Week");
    window.EnableButton(NewPackageButton, false);
    EXPECT_TRUE(window.Toolbar1->Buttons()(PreviewButton).Enabled());
    ClickEntry("mnuDeskProp");
    EXPECT_FALSE(window.isEnabled());
    EXPECT_TRUE(window.Toolbar1->Buttons()(NewPackageButton).Enabled());
    EXPECT_FALSE(Hourglass(window));
    Cancel();
    EXPECT_TRUE(window.isEnabled());
    EXPECT_FALSE(window.Toolbar1->Buttons()(PreviewButton).Enabled());
}

TEST_F(DeskProperties, WindowStaysDisabledWhileOtherMenusAreUsedAndIsEnabledAfterThem) {
    frmDesk& window = OpenWith("Week");
    ClickEntry("mnuDeskProp");
    ClickEntry("mnuTile");
    EXPECT_FALSE(window.isEnabled());
    frmDesk& second = OpenRoot();
    EXPECT_EQ(Global::DeskIndex, 2);
    EXPECT_FALSE(window.isEnabled());
    EXPECT_TRUE(second.isEnabled());
    Cancel();
    EXPECT_TRUE(window.isEnabled());
    EXPECT_TRUE(second.isEnabled());
}

TEST_F(DeskProperties, DisabledWindowIsNotClosedByItsTitleBar) {
    frmDesk& window = OpenWith("Week");
    ClickEntry("mnuDeskProp");
    EXPECT_FALSE(window.parentWidget()->isEnabled());
    Cancel();
    EXPECT_TRUE(window.parentWidget()->isEnabled());
}

TEST_F(DeskProperties, WindowThatIsClosedMeanwhileIsForgotten) {
    frmDesk& window = OpenWith("Week");
    ClickEntry("mnuDeskProp");
    Close(window);
    Cancel();
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_THAT(process.ends, IsEmpty());
}

TEST_F(DeskProperties, KeyboardIsBackInTheListWhenTheFormIsLeft) {
    frmDesk& window = OpenWith("Week");
    frame.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    window.lsvDesk->setFocus();
    ClickEntry("mnuDeskProp");
    ASSERT_TRUE(QTest::qWaitForWindowActive(Shown()));
    Cancel();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&frame));
    EXPECT_TRUE(window.lsvDesk->isAncestorOf(QApplication::focusWidget()));
    EXPECT_EQ(window.SelectedText(), "Week");
}

TEST_F(DeskProperties, NothingSelectedShowsNothingAndLeavesNoHourglass) {
    AddSchedule("Week", "Desktop");
    frmDesk& window = OpenRoot();
    ClickNode(window, "Desktop");
    ClickEntry("mnuDeskProp");
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_THAT(prompts.boxes, IsEmpty());
    EXPECT_FALSE(Hourglass(window));
    EXPECT_TRUE(window.isEnabled());
}

TEST_F(DeskProperties, OtherErrorsAreShown) {
    frmDesk& window = OpenWith("Week");
    database.Run("alter table ReportScheduler rename to gone");
    ClickEntry("mnuDeskProp");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{ErrorBox(
                  -2147217865, "The data has no table of that name; no such table: reportscheduler")}));
    EXPECT_EQ(Shown(), nullptr);
    EXPECT_TRUE(Hourglass(window));
}

TEST_F(DeskProperties, ScheduleThatIsGoneMeanwhileIsTold) {
    OpenWith("Week");
    database.Run("delete from ReportScheduler");
    ClickEntry("mnuDeskProp");
    EXPECT_EQ(Global::SelectedReportID, "0");
    EXPECT_EQ(prompts.boxes,
              (std::vector<fakes::Box>{ErrorBox(3021, RuntimeError(err::NoCurrentRecord).Description())}));
    EXPECT_NE(Shown(), nullptr);
}
