#include "platform/controls/date_picker.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QLineEdit>
#include <tuple>

#include "platform/contracts/regional.h"
#include "shown_form.h"
#include "support/raises.h"

class Date : public testing::Test {
 protected:
    void SetUp() override {
        SetRegional({DateOrder::YearMonthDay, '-'});
        picker = std::make_unique<DTPicker>();
        form.Show(&other, picker.get());
        picker->setFocus();
    }
    void TearDown() override { SetRegional({DateOrder::YearMonthDay, '-'}); }

    // Makes another box, which shows dates as the region writes them.
    void Renew(const RegionalSettings& region) {
        SetRegional(region);
        picker = std::make_unique<DTPicker>();
        form.Show(picker.get());
        picker->setFocus();
    }
    QLineEdit& Edit() const { return *picker->findChild<QLineEdit*>(); }
    std::string Selected() const { return Edit().selectedText().toStdString(); }
    // Returns the left edge of a character.
    QPoint PlaceOf(int letter) const {
        for (int x = 0; x < Edit().width(); ++x) {
            if (Edit().cursorPositionAt({x, Edit().height() / 2}) >= letter) {
                return {x + 1, Edit().height() / 2};
            }
        }
        return {};
    }
    void ClickAt(int letter) const {
        QTest::mouseClick(&Edit(), Qt::LeftButton, {}, PlaceOf(letter), 600);  // no double click
    }

    ShownForm form;
    QLineEdit other;
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

TEST_F(Date, IsTypedOverEverythingInEveryRegionsForm) {
    struct Case {
        RegionalSettings region;
        DateValue from;
        const char* typed;
        DateValue day;
    };
    const RegionalSettings plain{DateOrder::YearMonthDay, '-'}, american{DateOrder::MonthDayYear, '/'},
        german{DateOrder::DayMonthYear, '.'};
    const std::vector<Case> cases = {
        {plain, DateSerial(2026, 11, 22), "2028-01-02", DateSerial(2028, 1, 2)},
        {plain, DateSerial(2026, 5, 31), "2028-02-29", DateSerial(2028, 2, 29)},
        {plain, DateSerial(2026, 5, 31), "28-2-9", DateSerial(2028, 2, 9)},
        {plain, DateSerial(2003, 5, 1), "30001231", DateSerial(3000, 12, 31)},
        {american, DateSerial(2026, 11, 22), "07/03/2026", DateSerial(2026, 7, 3)},
        {american, DateSerial(2026, 5, 10), "02/29/2028", DateSerial(2028, 2, 29)},
        {american, DateSerial(2026, 5, 10), "1/3/2028", DateSerial(2028, 1, 3)},
        {american, DateSerial(2026, 11, 22), "2028-01-02", DateSerial(2028, 1, 2)},
        {german, DateSerial(2026, 11, 22), "2028-12-24", DateSerial(2028, 12, 24)},
        {german, DateSerial(2026, 11, 22), "24.12.2028", DateSerial(2028, 12, 24)},
        {german, DateSerial(2026, 2, 10), "31.12.2028", DateSerial(2028, 12, 31)},
        {german, DateSerial(2026, 5, 31), "29.02.2028", DateSerial(2028, 2, 29)},
        {german, DateSerial(2026, 5, 31), "7.3.28", DateSerial(2028, 3, 7)},
        {german, DateSerial(2026, 5, 31), "1/2/99", DateSerial(1999, 2, 1)},
    };
    for (const auto& [region, from, typed, day] : cases) {
        Renew(region);
        picker->Value(from);
        Press(Qt::Key_A, Qt::ControlModifier);
        Type(typed);
        EXPECT_EQ(picker->Value(), day) << typed;
        other.setFocus();
        EXPECT_EQ(picker->Value(), day) << typed;
        EXPECT_EQ(picker->date(), QDate(Split(day).year, Split(day).month, Split(day).day)) << typed;
    }
}

TEST_F(Date, IsTypedFromItsBeginningAfterHome) {
    for (const auto& [region, typed] :
         {std::pair(RegionalSettings{DateOrder::DayMonthYear, '.'}, "24.12.2028"),
          {RegionalSettings{DateOrder::YearMonthDay, '-'}, "2028-12-24"}}) {
        Renew(region);
        picker->Value(DateSerial(2026, 11, 22));
        Press(Qt::Key_Home);
        Type(typed);
        EXPECT_EQ(picker->Value(), DateSerial(2028, 12, 24)) << typed;
    }
}

TEST_F(Date, ClickSelectsItsPartAndDigitsTakeItsPlace) {
    picker->Value(DateSerial(2026, 11, 22));
    for (const auto& [letter, part, typed, day] : {std::tuple(2, "2026", "2028", DateSerial(2028, 11, 22)),
                                                   {5, "11", "3", DateSerial(2028, 3, 22)},
                                                   {9, "22", "07", DateSerial(2028, 3, 7)},
                                                   {0, "2028", "1999", DateSerial(1999, 3, 7)}}) {
        ClickAt(letter);
        EXPECT_EQ(Selected(), part);
        Type(typed);
        EXPECT_EQ(picker->Value(), day) << typed;
    }
}

TEST_F(Date, ClickThatBringsTheFocusSelectsItsPart) {
    picker->Value(DateSerial(2026, 11, 22));
    other.setFocus();
    ClickAt(6);
    EXPECT_EQ(Selected(), "11");
    Type("12");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 12, 22));
}

TEST_F(Date, DoubleClickSelectsItsPartToo) {
    picker->Value(DateSerial(2026, 11, 22));
    QTest::mouseDClick(&Edit(), Qt::LeftButton, {}, PlaceOf(9));
    EXPECT_EQ(Selected(), "22");
    Type("5.");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 11, 5));
}

TEST_F(Date, FullPartHandsOnAndItsSeparatorDoesNotSkipTheNext) {
    picker->Value(DateSerial(2026, 11, 22));
    ClickAt(0);
    Type("2028");
    EXPECT_EQ(Selected(), "11");
    Type("-");
    EXPECT_EQ(Selected(), "11");
    Type("-");
    EXPECT_EQ(Selected(), "22");
}

TEST_F(Date, BackspaceTakesTheLastDigitBack) {
    picker->Value(DateSerial(2026, 11, 22));
    ClickAt(0);
    Type("203");
    Press(Qt::Key_Backspace);
    Type("28");
    EXPECT_EQ(picker->Value(), DateSerial(2028, 11, 22));
    Press(Qt::Key_End);
    Press(Qt::Key_Backspace);
    Type("4");
    EXPECT_EQ(picker->Value(), DateSerial(2028, 11, 24));
}

TEST_F(Date, BackspaceAndDeleteEmptyASelectedPart) {
    for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Delete}) {
        picker->Value(DateSerial(2026, 11, 22));
        ClickAt(0);
        Press(key);
        EXPECT_EQ(picker->text(), "-11-22");
        Type("2028");
        EXPECT_EQ(picker->Value(), DateSerial(2028, 11, 22));
        Press(Qt::Key_A, Qt::ControlModifier);
        Press(key);
        Type("2031-03-04");
        EXPECT_EQ(picker->Value(), DateSerial(2031, 3, 4));
    }
}

TEST_F(Date, PartLeftEmptyOrImpossibleIsAsItWas) {
    picker->Value(DateSerial(2026, 11, 22));
    ClickAt(5);
    Press(Qt::Key_Backspace);
    other.setFocus();
    EXPECT_EQ(picker->text(), "2026-11-22");
    picker->setFocus();
    ClickAt(5);
    Type("13");
    EXPECT_EQ(Selected(), "11");
    other.setFocus();
    EXPECT_EQ(picker->text(), "2026-11-22");
}

TEST_F(Date, DayThatTheMonthLacksBecomesItsLastOneWhenTheBoxIsLeft) {
    picker->Value(DateSerial(2026, 2, 10));
    ClickAt(9);
    Type("31");
    EXPECT_EQ(picker->text(), "2026-02-31");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 2, 28));
    other.setFocus();
    EXPECT_EQ(picker->text(), "2026-02-28");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 2, 28));
}

TEST_F(Date, IsWhatWasTypedSoFarWithoutLeavingIt) {
    picker->Value(DateSerial(2026, 11, 22));
    Press(Qt::Key_A, Qt::ControlModifier);
    Type("2028-1-2");
    EXPECT_EQ(picker->Value(), DateSerial(2028, 1, 2));
    EXPECT_EQ(picker->text(), "2028-01-2");
}

TEST_F(Date, LettersChangeNothing) {
    picker->Value(DateSerial(2026, 11, 22));
    Press(Qt::Key_A, Qt::ControlModifier);
    Type("soon");
    EXPECT_EQ(picker->text(), "2026-11-22");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 11, 22));
}

TEST_F(Date, PastedDigitsTakeThePlaceOfTheirPart) {
    picker->Value(DateSerial(2026, 11, 22));
    ClickAt(0);
    QApplication::clipboard()->setText("2028");
    Press(Qt::Key_V, Qt::ControlModifier);
    EXPECT_EQ(picker->Value(), DateSerial(2028, 11, 22));
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
    ClickAt(5);
    Press(Qt::Key_Up);
    EXPECT_EQ(picker->Value(), DateSerial(2003, 6, 1));
    EXPECT_EQ(Selected(), "06");
}
