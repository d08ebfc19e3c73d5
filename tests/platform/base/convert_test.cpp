// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/convert.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/contracts/regional.h"
#include "support/raises.h"

namespace {

TEST(Conversion, WholeNumbersRoundHalvesToEven) {
    EXPECT_EQ(CInt(0.5), 0);
    EXPECT_EQ(CInt(1.5), 2);
    EXPECT_EQ(CInt(2.5), 2);
    EXPECT_EQ(CInt(-2.5), -2);
    EXPECT_EQ(CInt("3.5"), 4);
    EXPECT_EQ(CLng(2.5000001), 3);
    EXPECT_EQ(CLng("-7"), -7);
}

TEST(Conversion, SixteenBitsOverflow) {
    EXPECT_EQ(CInt("32767"), 32767);
    EXPECT_EQ(CInt("-32768.5"), -32768);
    EXPECT_EQ(CInt(32767.4), 32767);
    EXPECT_EQ(NumberRaisedBy([] { CInt("32768"); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CInt(32767.5); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CInt(-32769); }), 6);
    EXPECT_EQ(CLng("2147483647"), 2147483647);
    EXPECT_EQ(NumberRaisedBy([] { CLng("2147483648"); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CLng(std::numeric_limits<double>::infinity()); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CLng(std::numeric_limits<double>::quiet_NaN()); }), 6);
    EXPECT_EQ(NumberRaisedBy([] { CDbl("1e999"); }), 6);
}

TEST(Conversion, TextsThatAreNoNumberAreATypeMismatch) {
    for (const char* text :
         {"abc", "", " ", "12a", "1 2", "inf", "nan", "--1", "+-1", "0x10", "&H", "&HG", "&Z1", "True"}) {
        EXPECT_EQ(NumberRaisedBy([&] { CInt(text); }), 13) << text;
    }
    EXPECT_EQ(NumberRaisedBy([] { CInt(Variant()); }), 94);
    EXPECT_EQ(NumberRaisedBy([] { CDbl(Variant()); }), 94);
}

TEST(Conversion, NumbersMayHaveBlanksSignAndExponent) {
    EXPECT_EQ(CInt(" 15 "), 15);
    EXPECT_EQ(CInt("+15"), 15);
    EXPECT_EQ(CDbl("-1.25e2"), -125.0);
    EXPECT_EQ(CDbl(".5"), 0.5);
}

TEST(Conversion, HexadecimalTellsBits) {
    EXPECT_EQ(CInt("&H10"), 16);
    EXPECT_EQ(CInt("&hFFFF"), -1);
    EXPECT_EQ(CInt("&O17"), 15);
    EXPECT_EQ(CLng("&H80000000"), std::numeric_limits<std::int32_t>::min());
    EXPECT_EQ(NumberRaisedBy([] { CInt("&H10000"); }), 6);
}

TEST(Conversion, TruthIsAWordOrANumber) {
    EXPECT_TRUE(CBool("True"));
    EXPECT_TRUE(CBool("TRUE"));
    EXPECT_FALSE(CBool("false"));
    EXPECT_TRUE(CBool(-1));
    EXPECT_FALSE(CBool("0"));
    EXPECT_TRUE(CBool("2.5"));
    EXPECT_EQ(NumberRaisedBy([] { CBool("yes"); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { CBool(""); }), 13);
    EXPECT_EQ(NumberRaisedBy([] { CBool(Variant()); }), 94);
}

TEST(Conversion, DateTextFollowsTheRegionWithTenCharacters) {
    SetRegional({DateOrder::MonthDayYear, '/'});
    EXPECT_EQ(DateText(DateSerial(2002, 3, 7)), "03/07/2002");
    SetRegional({DateOrder::DayMonthYear, '.'});
    EXPECT_EQ(DateText(DateSerial(2002, 3, 7)), "07.03.2002");
    SetRegional({});
    EXPECT_EQ(DateText(DateSerial(2002, 3, 7)), "2002-03-07");
    EXPECT_EQ(DateText(DateSerial(476, 9, 4)), "0476-09-04");
}

TEST(Conversion, TimeTextSorts) {
    EXPECT_EQ(TimeText(TimeSerial(9, 5, 3)), "09:05:03");
    EXPECT_EQ(TimeText(DateValue::FromDays(37322.75)), "18:00:00");
}

TEST(Conversion, UpperCaseKnowsEveryScript) {
    EXPECT_EQ(UCase("Desktop"), "DESKTOP");
    EXPECT_EQ(UCase("Übersicht ñ жук"), "ÜBERSICHT Ñ ЖУК");
    EXPECT_EQ(UCase("\xff\xfe ok \xc3"), "\xff\xfe OK \xc3");
}

TEST(Conversion, ReplaceFindsEveryPlaceFromTheLeft) {
    EXPECT_EQ(Replace("O'Brien's", "'", ""), "OBriens");
    EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(Replace("aAa", "a", "aa"), "aaAaa");
    EXPECT_EQ(Replace("abc", "", "x"), "abc");
    EXPECT_EQ(Replace("", "a", "b"), "");
}

}  // namespace
