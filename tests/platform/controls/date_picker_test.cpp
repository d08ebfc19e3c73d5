// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/controls/date_picker.h"

#include <QCalendarWidget>
#include <QClipboard>
#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QToolTip>
#include <tuple>

#include "platform/contracts/regional.h"
#include "shown_form.h"
#include "support/raises.h"

namespace {

constexpr RegionalSettings Plain{DateOrder::YearMonthDay, '-'}, American{DateOrder::MonthDayYear, '/'},
    German{DateOrder::DayMonthYear, '.'}, Dutch{DateOrder::DayMonthYear, '-'};

// As a hand does it on a keyboard where the slash is a shifted key.
void TypeByHand(const char* text) {
    QWidget* box = QApplication::focusWidget();
    for (const char* character = text; *character != '\0'; ++character) {
        const bool shifted = *character == '/';
        if (shifted) {
            QTest::keyPress(box, Qt::Key_Shift, Qt::ShiftModifier);
        }
        QTest::keyClick(box, *character, shifted ? Qt::ShiftModifier : Qt::NoModifier);
        if (shifted) {
            QTest::keyRelease(box, Qt::Key_Shift);
        }
    }
}

}  // namespace

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
        form.activateWindow();
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

    // The ways to begin at the first part.
    void Begin(int way) const {
        switch (way) {
            case 0:
                Press(Qt::Key_A, Qt::ControlModifier);
                break;
            case 1:
                Press(Qt::Key_Home);
                break;
            default:
                ClickAt(1);
                break;
        }
    }
    static constexpr int WaysToBegin = 3;
    void Leave() {
        other.setFocus();
        QApplication::processEvents();
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

TEST_F(Date, IsTypedInTheRegionsFormOrYearFirstFromItsBeginning) {
    struct Case {
        RegionalSettings region;
        DateValue from;
        const char* typed;
        DateValue day;
    };
    const std::vector<Case> cases = {
        {Plain, DateSerial(2026, 11, 22), "2028-01-02", DateSerial(2028, 1, 2)},
        {Plain, DateSerial(2026, 5, 31), "2028-02-29", DateSerial(2028, 2, 29)},
        {Plain, DateSerial(2026, 5, 31), "28-2-9", DateSerial(2028, 2, 9)},
        {Plain, DateSerial(2003, 5, 1), "30001231", DateSerial(3000, 12, 31)},
        {American, DateSerial(2026, 11, 22), "07/03/2026", DateSerial(2026, 7, 3)},
        {American, DateSerial(2026, 5, 10), "02/29/2028", DateSerial(2028, 2, 29)},
        {American, DateSerial(2026, 5, 10), "1/3/2028", DateSerial(2028, 1, 3)},
        {American, DateSerial(2026, 11, 22), "2028-01-02", DateSerial(2028, 1, 2)},
        {American, DateSerial(2026, 11, 22), "1228-1-2", DateSerial(1228, 1, 2)},
        {German, DateSerial(2026, 11, 22), "2028-12-24", DateSerial(2028, 12, 24)},
        {German, DateSerial(2026, 11, 22), "2012-01-02", DateSerial(2012, 1, 2)},
        {German, DateSerial(2026, 11, 22), "2028-1-2", DateSerial(2028, 1, 2)},
        {German, DateSerial(2026, 11, 22), "24.12.2028", DateSerial(2028, 12, 24)},
        {German, DateSerial(2026, 11, 22), "24122028", DateSerial(2028, 12, 24)},
        {German, DateSerial(2026, 2, 10), "31.12.2028", DateSerial(2028, 12, 31)},
        {German, DateSerial(2026, 5, 31), "29.02.2028", DateSerial(2028, 2, 29)},
        {German, DateSerial(2026, 5, 31), "7.3.28", DateSerial(2028, 3, 7)},
        {German, DateSerial(2026, 5, 31), "24", DateSerial(2026, 5, 24)},
        {Dutch, DateSerial(2026, 11, 22), "24-12-2028", DateSerial(2028, 12, 24)},
        {Dutch, DateSerial(2026, 11, 22), "2012-01-02", DateSerial(2012, 1, 2)},
    };
    for (const auto& [region, from, typed, day] : cases) {
        for (int way = 0; way < WaysToBegin; ++way) {
            Renew(region);
            picker->Value(from);
            Begin(way);
            TypeByHand(typed);
            EXPECT_EQ(picker->Value(), day) << typed << " " << way;
            Leave();
            EXPECT_EQ(picker->Value(), day) << typed << " " << way;
            EXPECT_EQ(picker->date(), QDate(Split(day).year, Split(day).month, Split(day).day)) << typed;
        }
    }
}

TEST_F(Date, InAnotherFormOrThatThereIsNotIsRefused) {
    const std::vector<std::pair<RegionalSettings, std::vector<const char*>>> cases = {
        {Plain,
         {"24.12.2028", "12/24/2028", "24/12/2028", "24-12-2028", "12-24-2028", "2028/12/24", "2028.12.24",
          "1999-99-99", "2026-13-01", "2026-00-10", "2028-12-0", "2026-02-31", "0099-01-02", "2028-12-241",
          "2028-12-24-"}},
        {American,
         {"24.12.2028", "12.24.2028", "24/12/2028", "13/01/2028", "12-24-2028", "2028/01/02", "2028.01.02",
          "02/30/2028", "1999-99-99", "2028-13-01", "2028-02-30", "2028-01", "2028", "20281224"}},
        {German,
         {"12/24/2028", "24/12/2028", "1/2/99", "24-12-2028", "12.24.2028", "31.02.2027", "2028.12.24",
          "2028/12/24", "1999-99-99", "2028-13-01", "2028-02-30", "2028-12", "2012-12", "2012-2012",
          "24.12.20281", "00.12.2028", "24 12 2028"}},
        {Dutch, {"24.12.2028", "12-24-2028", "2012-12.24", "31-02-2027"}},
    };
    const DateValue before = DateSerial(2026, 11, 22);
    for (const auto& [region, texts] : cases) {
        for (const char* typed : texts) {
            for (int way = 0; way < WaysToBegin; ++way) {
                Renew(region);
                picker->Value(before);
                const QString shown = picker->text();
                Begin(way);
                TypeByHand(typed);
                EXPECT_EQ(picker->Value(), before) << typed << " " << way;
                Leave();
                EXPECT_EQ(picker->Value(), before) << typed << " " << way;
                EXPECT_EQ(picker->text(), shown) << typed << " " << way;
            }
        }
    }
}

TEST_F(Date, RefusalShowsTheDateOfBeforeAtOnceAndSaysWhichFormsThereAre) {
    Renew(German);
    picker->Value(DateSerial(2026, 11, 22));
    Press(Qt::Key_A, Qt::ControlModifier);
    TypeByHand("12/");
    QApplication::processEvents();
    EXPECT_EQ(picker->text(), "22.11.2026");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 11, 22));
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_TRUE(QToolTip::text().contains("22.11.2026"));
    EXPECT_TRUE(QToolTip::text().contains("2026-11-22"));
    QToolTip::hideText();
}

TEST_F(Date, IsTypedAgainAfterARefusalByAnyOtherKeyOrAClick) {
    for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Backspace, Qt::Key_unknown}) {
        Renew(German);
        picker->Value(DateSerial(2026, 11, 22));
        Press(Qt::Key_Home);
        TypeByHand("12/24/2028");
        if (key == Qt::Key_unknown) {
            ClickAt(1);
        } else {
            Press(key);
        }
        TypeByHand("24.12.2028");
        EXPECT_EQ(picker->Value(), DateSerial(2028, 12, 24)) << key;
    }
}

TEST_F(Date, BackspaceTakesBackWhatWasTypedAlsoInThePartBefore) {
    for (const char* typed : {"2038", "3028", "2028-1", "2028-12-25"}) {
        for (const RegionalSettings& region : {German, American}) {
            Renew(region);
            picker->Value(DateSerial(2026, 11, 22));
            Press(Qt::Key_Home);
            TypeByHand(typed);
            for (const char* character = typed; *character != '\0'; ++character) {
                Press(Qt::Key_Backspace);
            }
            TypeByHand("2028-12-24");
            EXPECT_EQ(picker->Value(), DateSerial(2028, 12, 24)) << typed;
        }
    }
}

TEST_F(Date, EnterOnOneThatIsRefusedDoesNotLeaveTheDialog) {
    for (const char* typed : {"2026-02-31", "24.12.2028"}) {
        QDialog dialog;
        auto* box = new DTPicker(&dialog);
        auto* accept = new QPushButton("OK", &dialog);
        accept->setDefault(true);
        QObject::connect(accept, &QPushButton::clicked, &dialog, &QDialog::accept);
        box->Value(DateSerial(2026, 11, 22));
        dialog.show();
        dialog.activateWindow();
        box->setFocus();
        QApplication::processEvents();
        Press(Qt::Key_Home);
        TypeByHand(typed);
        Press(Qt::Key_Return);
        ASSERT_TRUE(dialog.isVisible()) << typed;
        EXPECT_EQ(box->text(), "2026-11-22") << typed;
        Press(Qt::Key_Return);
        EXPECT_FALSE(dialog.isVisible()) << typed;
        EXPECT_EQ(box->Value(), DateSerial(2026, 11, 22)) << typed;
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
    Type("5");
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

TEST_F(Date, DayThatTheMonthLacksMayStandWhileTheOthersChange) {
    for (const Qt::Key key : {Qt::Key_unknown, Qt::Key_Left}) {
        picker->setFocus();
        picker->Value(DateSerial(2026, 2, 10));
        ClickAt(9);
        Type("31");
        EXPECT_EQ(picker->text(), "2026-02-31");
        EXPECT_EQ(picker->Value(), DateSerial(2026, 2, 10));
        if (key == Qt::Key_unknown) {
            ClickAt(6);
        } else {
            Press(key, Qt::ControlModifier);
        }
        EXPECT_EQ(picker->text(), "2026-02-31");
        Type("12");
        EXPECT_EQ(picker->text(), "2026-12-31");
        EXPECT_EQ(picker->Value(), DateSerial(2026, 12, 31));
        Leave();
        EXPECT_EQ(picker->text(), "2026-12-31");
    }
}

TEST_F(Date, DayThatTheMonthLacksLeavesTheDateAsItWas) {
    picker->Value(DateSerial(2026, 2, 10));
    ClickAt(9);
    Type("31");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 2, 10));
    Leave();
    EXPECT_EQ(picker->text(), "2026-02-10");
    EXPECT_EQ(picker->Value(), DateSerial(2026, 2, 10));
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
