#include "platform/controls/date_picker.h"

#include <QCalendarWidget>
#include <QClipboard>

#include "platform/regional.h"
#include "shown_form.h"
#include "support/raises.h"

class Date : public testing::Test {
 protected:
    void SetUp() override {
        SetRegional({DateOrder::YearMonthDay, '-'});
        picker = std::make_unique<DTPicker>();
        form.Show(picker.get());
        picker->setFocus();
    }
    void TearDown() override { SetRegional({DateOrder::YearMonthDay, '-'}); }

    ShownForm form;
    std::unique_ptr<DTPicker> picker;
};

TEST_F(Date, HoldsADayOfItsWholeRange) {
    for (const DateValue day : {DateSerial(100, 1, 1), DateSerial(1899, 12, 30), DateSerial(2024, 2, 29),
                                DateSerial(3000, 12, 31), DateSerial(9999, 12, 31)}) {
        picker->Value(day);
        EXPECT_EQ(picker->Value(), day);
    }
    EXPECT_EQ(picker->text(), "9999-12-31");
}

TEST_F(Date, HasNoTimeOfDay) {
    picker->Value(DateValue::FromSeconds(DateSerial(2003, 5, 1).Seconds() + 3600));
    EXPECT_EQ(picker->Value(), DateSerial(2003, 5, 1));
}

TEST_F(Date, OutsideItsRangeIsRefused) {
    picker->Value(DateSerial(2003, 5, 1));
    EXPECT_EQ(NumberRaisedBy([this] { picker->Value(DateSerial(99, 12, 31)); }), 380);
    EXPECT_EQ(NumberRaisedBy([this] { picker->Value(DateSerial(10000, 1, 1)); }), 380);
    EXPECT_EQ(picker->Value(), DateSerial(2003, 5, 1));
}

TEST_F(Date, IsTypedAsTheRegionWritesIt) {
    picker->Value(DateSerial(2003, 5, 1));
    picker->setSelectedSection(QDateTimeEdit::YearSection);
    Type("3000-12-31");
    EXPECT_EQ(picker->Value(), DateSerial(3000, 12, 31));
}

TEST_F(Date, IsShownInTheRegionsOrder) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    EXPECT_EQ(DTPicker().displayFormat(), "dd/MM/yyyy");
    SetRegional({DateOrder::MonthDayYear, '.'});
    EXPECT_EQ(DTPicker().displayFormat(), "MM.dd.yyyy");
}

TEST_F(Date, IsPastedInAnyFormThatIsADate) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    for (const char* text : {"2024-02-29", "29/02/2024", " 2024-02-29\n"}) {
        picker->Value(DateSerial(2003, 5, 1));
        QApplication::clipboard()->setText(text);
        Press(Qt::Key_V, Qt::ControlModifier);
        EXPECT_EQ(picker->Value(), DateSerial(2024, 2, 29)) << text;
    }
    QApplication::clipboard()->setText("soon");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(picker->Value(), DateSerial(2024, 2, 29));
}

TEST_F(Date, CalendarOpensByKeyAndChooses) {
    picker->Value(DateSerial(3000, 12, 31));
    int changes = 0;
    QObject::connect(picker.get(), &DTPicker::Change, [&] { ++changes; });
    for (const auto& [key, with] : {std::pair(Qt::Key_F4, Qt::NoModifier), {Qt::Key_Down, Qt::AltModifier}}) {
        Press(key, with);
        auto* calendar = qobject_cast<QCalendarWidget*>(picker->calendarWidget());
        ASSERT_NE(calendar, nullptr);
        ASSERT_TRUE(calendar->isVisible());
        QWidget* days = calendar->findChild<QWidget*>("qt_calendar_calendarview");
        QTest::keyClick(days, Qt::Key_Left);
        QTest::keyClick(days, Qt::Key_Return);
        EXPECT_FALSE(calendar->isVisible());
        picker->setFocus();
    }
    EXPECT_EQ(picker->Value(), DateSerial(3000, 12, 29));
    EXPECT_EQ(changes, 2);
}

TEST_F(Date, ArrowsCountThePartOfTheCursor) {
    picker->Value(DateSerial(2003, 5, 1));
    picker->setSelectedSection(QDateTimeEdit::MonthSection);
    Press(Qt::Key_Up);
    EXPECT_EQ(picker->Value(), DateSerial(2003, 6, 1));
}
