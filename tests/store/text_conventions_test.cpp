// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/TextConventions.h"

#include <gtest/gtest.h>

#include "platform/base/convert.h"
#include "platform/contracts/regional.h"
#include "support/fakes.h"

using cmFunc::FormatDateText;
using cmFunc::GetDelimitedField;

namespace {

class Box : public EditableText {
 public:
    explicit Box(std::string text) : m_text(std::move(text)) {}
    std::string Text() const override { return m_text; }
    void Text(const std::string& text) override { m_text = text; }

 private:
    std::string m_text;
};

class EveryRegion : public testing::TestWithParam<RegionalSettings> {
 protected:
    void SetUp() override { SetRegional(GetParam()); }
    void TearDown() override { SetRegional({}); }
};

}  // namespace

TEST_P(EveryRegion, DateFormIsTheSameEverywhere) {
    EXPECT_EQ(FormatDateText(DateSerial(2002, 3, 7)), "2002-03-07");
    EXPECT_EQ(CDate("2002-03-07"), DateSerial(2002, 3, 7));
}

TEST_P(EveryRegion, TheEndlessDateIsReadDayFirst) {
    EXPECT_EQ(FormatDateText(CDate("31/12/3000")), "3000-12-31");
}

INSTANTIATE_TEST_SUITE_P(Regions, EveryRegion,
                         testing::Values(RegionalSettings{DateOrder::YearMonthDay, '-'},
                                         RegionalSettings{DateOrder::DayMonthYear, '/'},
                                         RegionalSettings{DateOrder::DayMonthYear, '.'},
                                         RegionalSettings{DateOrder::MonthDayYear, '/'}));

TEST(DateForm, ZeroDateIsTheFirstDayOfTheCount) {
    EXPECT_EQ(FormatDateText(DateValue()), "1899-12-30");
}

TEST(DateForm, HasNoZerosBeforeAYearOfThreeDigits) {
    EXPECT_EQ(FormatDateText(DateSerial(999, 1, 2)), "999-01-02");
}

TEST(DateForm, LeavesTheTimeOfDayOut) {
    EXPECT_EQ(FormatDateText(fakes::At(2026, 11, 21, 23, 59, 59)), "2026-11-21");
}

TEST(DateForm, EndlessDateTextComparesLaterThanToday) {
    EXPECT_LT(FormatDateText(Today()), "3000-12-31");
}

TEST(Quotes, AreTakenOutOfABoxForGood) {
    Box box("O'Brien's 'report'");
    cmFunc::StripQuotes(box);
    EXPECT_EQ(box.Text(), "OBriens report");
}

TEST(DelimitedField, EmptyBetweenTwoDelimiters) {
    EXPECT_EQ(GetDelimitedField("a::b", 2, ":"), "");
}
TEST(DelimitedField, SecondOfTwo) {
    EXPECT_EQ(GetDelimitedField("a:b", 2, ":"), "b");
}
TEST(DelimitedField, EmptyAfterTheLastDelimiter) {
    EXPECT_EQ(GetDelimitedField("a:", 2, ":"), "");
}
TEST(DelimitedField, WholeTextWithoutDelimiter) {
    EXPECT_EQ(GetDelimitedField("abc", 2, ":"), "abc");
}
TEST(DelimitedField, BeyondTheLastBeginsAgain) {
    EXPECT_EQ(GetDelimitedField("a:b", 3, ":"), "a");
}

TEST(DelimitedField, NumberBelowTwoIsTheFirst) {
    EXPECT_EQ(GetDelimitedField("a:b", 1, ":"), "a");
    EXPECT_EQ(GetDelimitedField("a:b", 0, ":"), "a");
    EXPECT_EQ(GetDelimitedField("a:b", -3, ":"), "a");
}

TEST(DelimitedField, DelimiterInTheFirstPlaceDoesNotEndTheField) {
    EXPECT_EQ(GetDelimitedField(":a", 1, ":"), ":a");
}

TEST(DelimitedField, CountsCharactersAndNotBytes) {
    EXPECT_EQ(GetDelimitedField("ä→ö", 2, "→"), "ö");
}

TEST(DelimitedField, OfAnEmptyTextIsEmpty) {
    EXPECT_EQ(GetDelimitedField("", 5, ":"), "");
}

TEST(RecipientCount, IsTheNumberOfSeparatorsAndAtLeastOne) {
    EXPECT_EQ(cmFunc::CountRecipients("a;b"), 1);
    EXPECT_EQ(cmFunc::CountRecipients("a;b;"), 2);
    EXPECT_EQ(cmFunc::CountRecipients("N/A"), 1);
    EXPECT_EQ(cmFunc::CountRecipients(""), 1);
}

TEST(RecipientCount, IsTheNumberOfTheNames) {
    using Names = std::vector<std::string>;
    EXPECT_EQ(cmFunc::RecipientsOf("a;b"), Names{"a"});
    EXPECT_EQ(cmFunc::RecipientsOf("a; b;"), (Names{"a", " b"}));
    EXPECT_EQ(cmFunc::RecipientsOf("N/A"), Names{"N/A"});
    EXPECT_EQ(cmFunc::RecipientsOf("a;;b;"), (Names{"a", "", "b"}));
    EXPECT_EQ(cmFunc::RecipientsOf(""), Names{""});
}

TEST(Pause, YieldsUntilItsTarget) {
    fakes::FakeClock clock(fakes::At(2026, 11, 21, 12, 0, 0));
    fakes::FakeLoop loop(clock);
    cmFunc::PauseSeconds(3);
    EXPECT_EQ(loop.waits, 3);
    EXPECT_EQ(clock.now, fakes::At(2026, 11, 21, 12, 0, 3));
}
