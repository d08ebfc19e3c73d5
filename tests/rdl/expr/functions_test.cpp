// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/fixture.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

TEST(TextFunctions, CutAndChange) {
    Expect({
        {"=Left(\"Hello\", 3)", "Hel"},
        {"=Left(\"Hello\", 9)", "Hello"},
        {"=Left(\"Hello\", -1)", "#Error"},
        {"=Right(\"Hello\", 3)", "llo"},
        {"=Mid(\"Hello\", 2, 3)", "ell"},
        {"=Mid(\"Hello\", 4)", "lo"},
        {"=Mid(\"Hello\", 9)", ""},
        {"=Mid(\"Hello\", 0)", "#Error"},
        {"=Len(\"Straße\")", "6"},
        {"=Len(Nothing)", "0"},
        {"=UCase(\"straße é\")", "STRAßE É"},
        {"=LCase(\"ÀB\")", "àb"},
        {"=\"[\" & Trim(\"  a b \") & \"]\"", "[a b]"},
        {"=\"[\" & LTrim(\"  a \") & \"]\"", "[a ]"},
        {"=\"[\" & RTrim(\" a  \") & \"]\"", "[ a]"},
        {"=Space(3) & \"x\"", "   x"},
        {"=StrDup(3, \"ab\")", "aaa"},
        {"=StrReverse(\"añb\")", "bña"},
        {"=LSet(\"abc\", 5) & \"|\"", "abc  |"},
        {"=RSet(\"abc\", 5)", "  abc"},
        {"=LSet(\"abc\", 2)", "ab"},
        {"=GetChar(\"abc\", 2)", "b"},
        {"=GetChar(\"abc\", 4)", "#Error"},
        {"=Asc(\"A\")", "65"},
        {"=AscW(\"é\")", "233"},
        {"=Asc(\"\")", "#Error"},
        {"=Chr(65) & ChrW(8364)", "A€"},
        {"=StrConv(\"john o'neil mc\", VbStrConv.ProperCase)", "John O'neil Mc"},
        {"=Left$(\"abc\", 1)", "a"},
        {"=Strings.Left(\"abc\", 2)", "ab"},
        {"=Microsoft.VisualBasic.Strings.UCase(\"a\")", "A"},
    });
}

TEST(TextFunctions, SearchCompareSplitJoin) {
    Expect({
        {"=InStr(\"XXpXXpXXPXXP\", \"P\")", "9"},
        {"=InStr(4, \"XXpXXpXXPXXP\", \"P\", CompareMethod.Text)", "6"},
        {"=InStr(\"abc\", \"z\")", "0"},
        {"=InStr(\"\", \"a\")", "0"},
        {"=InStr(2, \"abc\", \"\")", "2"},
        {"=InStr(\"a\", \"A\", 1)", "1"},
        {"=InStrRev(\"the quick the\", \"the\")", "11"},
        {"=InStrRev(\"the quick the\", \"the\", 10)", "1"},
        {"=Replace(\"aXbXc\", \"X\", \"-\")", "a-b-c"},
        {"=Replace(\"aXbXc\", \"x\", \"-\", 1, -1, 1)", "a-b-c"},
        {"=Replace(\"aXbXc\", \"X\", \"-\", 3)", "b-c"},
        {"=Replace(\"aXbXc\", \"X\", \"-\", 1, 1)", "a-bXc"},
        {"=Split(\"a,b,,c\", \",\")", "[a|b||c]"},
        {"=Split(\"a b\")(1)", "b"},
        {"=Split(\"a,b,c\", \",\", 2)", "[a|b,c]"},
        {"=Join(Split(\"a,b\", \",\"), \"-\")", "a-b"},
        {"=Join(Filter({\"apple\",\"pear\",\"grape\"}, \"ap\"), \",\")", "apple,grape"},
        {"=Join(Filter({\"apple\",\"pear\"}, \"AP\", False, CompareMethod.Text), \",\")", "pear"},
        {"=StrComp(\"a\", \"B\")", "1"},
        {"=StrComp(\"a\", \"B\", 1)", "-1"},
        {"=StrComp(\"a\", \"A\", CompareMethod.Text)", "0"},
    });
}

TEST(TextMembers, BehaveAsTheirTypesHaveThem) {
    Expect({
        {"=\"abc\".ToUpper", "ABC"},
        {"=\" a \".Trim().Length", "1"},
        {"=\"abcdef\".Substring(2)", "cdef"},
        {"=\"abcdef\".Substring(2, 3)", "cde"},
        {"=\"abc\".Substring(2, 3)", "#Error"},
        {"=\"abc\".Contains(\"b\")", "True"},
        {"=\"abc\".StartsWith(\"A\")", "False"},
        {"=\"abc\".EndsWith(\"bc\")", "True"},
        {"=\"abcb\".IndexOf(\"b\")", "1"},
        {"=\"abcb\".IndexOf(\"b\", 2)", "3"},
        {"=\"abcb\".LastIndexOf(\"b\")", "3"},
        {"=\"abc\".IndexOf(\"z\")", "-1"},
        {"=\"7\".PadLeft(3, \"0\"c)", "007"},
        {"=\"7\".PadRight(3) & \"|\"", "7  |"},
        {"=\"a-b\".Replace(\"-\", \"+\")", "a+b"},
        {"=\"a,b\".Split(\",\")(1)", "b"},
        {"=\"abc\".Insert(1, \"X\")", "aXbc"},
        {"=\"abc\".Remove(1, 1)", "ac"},
        {"=\"xxaxx\".Trim(\"x\"c)", "a"},
        {"=(1234.5).ToString(\"N2\")", "1,234.50"},
        {"=Fields!Amount.Value.ToString(\"C\")", "$1,234.50"},
        {"=Fields!Day.Value.ToString(\"yyyy-MM-dd\")", "2024-01-31"},
        {"=Nothing.ToString()", "#Error"},
        {"=\"abc\".Chars(1)", "b"},
        {"=\"abc\"(0)", "a"},
        {"=\"a\".CompareTo(\"b\")", "-1"},
        {"=\"a\".Equals(\"a\")", "True"},
    });
}

TEST(FormatFunctions, WriteNumbersAndDates) {
    Expect({
        {"=Format(1234.5, \"#,##0.00\")", "1,234.50"},
        {"=Format(0.256, \"Percent\")", "25.60 %"},
        {"=Format(1234.5, \"Currency\")", "$1,234.50"},
        {"=Format(True, \"Yes/No\")", "Yes"},
        {"=Format(0, \"On/Off\")", "Off"},
        {"=Format(#1/31/2024#, \"dd.MM.yyyy\")", "31.01.2024"},
        {"=Format(Nothing, \"N2\")", ""},
        {"=FormatNumber(1234.567)", "1,234.57"},
        {"=FormatNumber(1234.567, 1)", "1,234.6"},
        {"=FormatNumber(-5, 0, TriState.True, TriState.True)", "(5)"},
        {"=FormatNumber(0.5, 2, TriState.False)", ".50"},
        {"=FormatNumber(1234.5, 2, , , TriState.False)", "1234.50"},
        {"=FormatCurrency(1234.5)", "$1,234.50"},
        {"=FormatPercent(0.256, 1)", "25.6 %"},
        {"=FormatDateTime(#1/31/2024#, DateFormat.ShortDate)", "1/31/2024"},
        {"=FormatDateTime(#1/31/2024#, Microsoft.VisualBasic.DateFormat.LongDate)",
         "Wednesday, January 31, 2024"},
        {"=FormatDateTime(#1/31/2024 15:04:05#, 4)", "15:04"},
        {"=FormatDateTime(#1/31/2024#)", "1/31/2024"},
        {"=String.Format(\"{0:N1} of {1,5}|{2,-3}|{{}}\", 2.25, \"ab\", 7)", "2.3 of    ab|7  |{}"},
        {"=String.Format(\"{1}\", 1)", "#Error"},
        {"=String.Join(\"-\", \"a\", \"b\")", "a-b"},
        {"=String.Concat(\"a\", 1)", "a1"},
        {"=String.IsNullOrEmpty(Nothing) & String.IsNullOrEmpty(\"x\")", "TrueFalse"},
    });
    EXPECT_EQ(Show("=FormatNumber(1234.5)", "de-DE"), "1.234,50");
    EXPECT_EQ(Show("=MonthName(3)", "de-DE"), "März");
}

TEST(DateFunctions, AddAndCountByTheCalendar) {
    Expect({
        {"=DateAdd(\"m\", 1, #1/31/2024#).Day", "29"},
        {"=DateAdd(DateInterval.Day, -1, #3/1/2024#).Day", "29"},
        {"=DateAdd(\"yyyy\", 1, #2/29/2024#).Day", "28"},
        {"=DateAdd(\"q\", 1, #1/1/2024#).Month", "4"},
        {"=DateAdd(\"h\", 25, #1/1/2024#).Day", "2"},
        {"=DateAdd(\"ww\", 1, #1/1/2024#).Day", "8"},
        {"=DateAdd(\"n\", 90, #1/1/2024#).Hour", "1"},
        {"=DateAdd(\"x\", 1, Today())", "#Error"},
        {"=DateAdd(\"yyyy\", 9999, Today())", "#Error"},
        {"=DateDiff(\"yyyy\", #12/31/2023#, #1/1/2024#)", "1"},
        {"=DateDiff(\"m\", #1/31/2024#, #2/1/2024#)", "1"},
        {"=DateDiff(\"d\", #1/1/2024 23:00#, #1/2/2024 01:00#)", "0"},
        {"=DateDiff(DateInterval.Hour, #1/1/2024#, #1/2/2024 12:30#)", "36"},
        {"=DateDiff(\"ww\", #1/6/2024#, #1/7/2024#)", "1"},
        {"=DateDiff(\"w\", #1/1/2024#, #1/15/2024#)", "2"},
        {"=DateDiff(\"s\", #1/1/2024 0:00:10#, #1/1/2024#)", "-10"},
    });
}

TEST(DateFunctions, TakeDatesApartAndPutThemTogether) {
    Expect({
        {"=DatePart(\"q\", #5/5/2024#)", "2"},
        {"=DatePart(\"y\", #2/1/2024#)", "32"},
        {"=DatePart(\"ww\", #1/7/2024#)", "2"},
        {"=DatePart(\"ww\", #1/1/2021#, FirstDayOfWeek.Monday, FirstWeekOfYear.FirstFourDays)", "53"},
        {"=DatePart(\"ww\", #12/30/2024#, 2, 2)", "1"},
        {"=DatePart(\"ww\", #1/4/2021#, 2, 2)", "1"},
        {"=DatePart(\"w\", #1/1/2024#)", "2"},
        {"=DateSerial(2024, 14, 1).Month", "2"},
        {"=DateSerial(2024, 3, 0).Day", "29"},
        {"=DateSerial(24, 1, 1).Year", "2024"},
        {"=DateSerial(99999, 1, 1)", "#Error"},
        {"=TimeSerial(13, 90, 0).Hour", "14"},
    });
}

TEST(DateFunctions, KnowTheMomentAndTheNames) {
    Expect({
        {"=Year(Now()) & Month(Now()) & Day(Now())", "2024229"},
        {"=Hour(Now()) & \":\" & Minute(Now()) & \":\" & Second(Now())", "13:45:30"},
        {"=Today().Hour", "0"},
        {"=Timer", "49530"},
        {"=DateString()", "02-29-2024"},
        {"=TimeString()", "13:45:30"},
        {"=MonthName(2) & MonthName(2, True)", "FebruaryFeb"},
        {"=MonthName(13)", "#Error"},
        {"=Weekday(#2/29/2024#)", "5"},
        {"=Weekday(#2/29/2024#, FirstDayOfWeek.Monday)", "4"},
        {"=WeekdayName(1)", "Sunday"},
        {"=WeekdayName(1, True, FirstDayOfWeek.Monday)", "Mon"},
    });
}

TEST(DateFunctions, ReadTextsAndHaveMembers) {
    Expect({
        {"=DateValue(\"2024-05-06 10:00\").Hour", "0"},
        {"=TimeValue(\"10:30\").Minute", "30"},
        {"=CDate(\"2024-05-06\").Month", "5"},
        {"=CDate(\"abc\")", "#Error"},
        {"=Fields!Day.Value.AddDays(1.5).Day", "1"},
        {"=Fields!Day.Value.AddMonths(1).Day", "29"},
        {"=Fields!Day.Value.AddYears(-1).Year", "2023"},
        {"=Fields!Day.Value.Date.Hour", "0"},
        {"=Fields!Day.Value.DayOfWeek", "3"},
        {"=DateTime.Now.Year", "2024"},
        {"=System.DateTime.Today.Day", "29"},
        {"=DateTime.DaysInMonth(2023, 2)", "28"},
        {"=(#1/3/2024# - #1/1/2024 12:00#).TotalHours", "36"},
        {"=(#1/3/2024# - #1/1/2024 12:00#).Hours", "12"},
        {"=\"on \" & #1/31/2024#", "on 1/31/2024"},
        {"=CStr(#1/31/2024 10:30#)", "1/31/2024 10:30:00 AM"},
        {"=(#12/31/9999#).AddDays(1)", "#Error"},
        {"=(#1/1/2024#).AddDays(1E300)", "#Error"},
    });
}

TEST(MathFunctions, FollowTheLanguage) {
    Expect({
        {"=Abs(-5)", "5"},
        {"=Abs(-2.5)", "2.5"},
        {"=Int(-2.5)", "-3"},
        {"=Fix(-2.5)", "-2"},
        {"=Sign(-3)", "-1"},
        {"=Round(2.5)", "2"},
        {"=Round(3.5)", "4"},
        {"=Round(-2.5)", "-2"},
        {"=Round(1.005, 2)", "1"},
        {"=Round(2.345, 2)", "2.34"},
        {"=Round(1234.5678, 2)", "1234.57"},
        {"=Math.Round(2.5, MidpointRounding.AwayFromZero)", "3"},
        {"=Math.Round(-2.345, 2, MidpointRounding.AwayFromZero)", "-2.35"},
        {"=Round(1, 99)", "#Error"},
        {"=Floor(2.7)", "2"},
        {"=Ceiling(2.1)", "3"},
        {"=Sqrt(9)", "3"},
        {"=Pow(2, 10)", "1024"},
        {"=Exp(0)", "1"},
        {"=Log(1)", "0"},
        {"=Log10(1000)", "3"},
        {"=Math.Log(8, 2)", "3"},
        {"=Math.Max(3, 7.5)", "7.5"},
        {"=System.Math.Min(3, 7)", "3"},
        {"=Cos(0)", "1"},
        {"=Math.PI > 3.14", "True"},
        {"=Atan(0)", "0"},
        {"=Abs(\"x\")", "#Error"},
        {"=Rnd() = Rnd()", "True"},
        {"=Rnd() < 1", "True"},
    });
}

TEST(ConversionFunctions, RoundRangeAndRead) {
    Expect({
        {"=CInt(2.5)", "2"},
        {"=CInt(3.5)", "4"},
        {"=CInt(\"7\")", "7"},
        {"=CInt(True)", "-1"},
        {"=Convert.ToInt32(True)", "1"},
        {"=CInt(Nothing)", "0"},
        {"=CInt(3000000000)", "#Error"},
        {"=CInt(\"x\")", "#Error"},
        {"=CLng(3000000000)", "3000000000"},
        {"=CByte(256)", "#Error"},
        {"=CShort(-32768)", "-32768"},
        {"=CDbl(\"1.5\")", "1.5"},
        {"=CDec(1.1)", "1.1"},
        {"=CStr(1.5)", "1.5"},
        {"=CBool(\"true\")", "True"},
        {"=CBool(0)", "False"},
        {"=CBool(\"x\")", "#Error"},
        {"=CSng(0.1)", "0.1"},
        {"=Hex(255)", "FF"},
        {"=Hex(-1)", "FFFFFFFF"},
        {"=Oct(8)", "10"},
        {"=Str(5)", " 5"},
        {"=Str(-5.5)", "-5.5"},
        {"=Val(\" 12 34abc\")", "1234"},
        {"=Val(\"abc\")", "0"},
        {"=Val(\"&HFF\")", "255"},
        {"=Val(\"-1.5e2x\")", "-150"},
        {"=CType(\"5\", Integer) + 1", "6"},
        {"=IsNothing(Fields!Empty.Value)", "True"},
        {"=IsNumeric(\"12.5\")", "True"},
        {"=IsNumeric(\"x\")", "False"},
        {"=IsNumeric(Nothing)", "False"},
        {"=IsDate(\"2024-01-01\")", "True"},
        {"=IsDate(\"x\")", "False"},
        {"=IsArray(Parameters!Years.Value)", "True"},
        {"=IsError(1 \\ 0)", "True"},
        {"=TypeName(1.5)", "Double"},
        {"=Convert.ToString(5) & Convert.ToDouble(\"1.5\")", "51.5"},
    });
}

TEST(ListFunctions, FindAndBound) {
    Expect({
        {"=Array.IndexOf(Split(\"a,b,c\", \",\"), \"b\")", "1"},
        {"=Array.IndexOf({\"A\"}, \"a\")", "-1"},
        {"=Array.IndexOf(Parameters!Years.Value, 2024) >= 0", "True"},
        {"=UBound(Parameters!Years.Value) & LBound(Parameters!Years.Value)", "10"},
        {"=Fields!Day.Value.DayOfWeek.ToString()", "Wednesday"},
    });
}

TEST(FlowFunctions, RunOnlyWhatIsTaken) {
    Expect({
        {"=IIf(True, 1, 1 \\ 0)", "1"},
        {"=IIf(False, 1 \\ 0, 2)", "2"},
        {"=IIf(1 \\ 0 = 1, 1, 2)", "#Error"},
        {"=If(Nothing, 5)", "5"},
        {"=If(Fields!Amount.Value > 1000, \"big\", \"small\")", "big"},
        {"=Switch(False, 1 \\ 0, True, \"b\", True, \"c\")", "b"},
        {"=IsNothing(Switch(False, 1))", "True"},
        {"=Choose(2, \"a\", \"b\", \"c\")", "b"},
        {"=IsNothing(Choose(4, \"a\"))", "True"},
        {"=Choose(1.9, \"a\", \"b\")", "a"},
        {"=IIf(\"x\", 1, 2)", "#Error"},
    });
}

void Near(const char* source, double expected) {
    const Value value = Result(source);
    ASSERT_TRUE(value.IsNumber()) << source;
    EXPECT_NEAR(value.AsDouble(), expected, 0.005) << source;
}

TEST(FinancialFunctions, GiveThePublishedResults) {
    Near("=Pmt(0.08 / 12, 10, 10000)", -1037.03);
    Near("=Pmt(0.08 / 12, 10, 10000, 0, DueDate.BegOfPeriod)", -1030.16);
    Near("=FV(0.06 / 12, 10, -200, -500, 1)", 2581.40);
    Near("=FV(0, 10, -200)", 2000);
    Near("=PV(0.08 / 12, 12 * 20, 500, 0, 0)", -59777.15);
    Near("=NPer(0.12 / 12, -100, -1000, 10000, 1)", 59.6739);
    Near("=Rate(48, -200, 8000) * 12 * 100", 9.2418);
    Near("=IPmt(0.1 / 12, 1, 36, 8000)", -66.67);
    Near("=PPmt(0.1 / 12, 1, 24, 2000)", -75.62);
    Near("=IPmt(0.08 / 12, 2, 10, 10000) + PPmt(0.08 / 12, 2, 10, 10000)", -1037.03);
    Near("=SLN(30000, 7500, 10)", 2250);
    Near("=SYD(30000, 7500, 10, 1)", 4090.91);
    Near("=DDB(2400, 300, 10, 1)", 480);
    Near("=DDB(2400, 300, 10, 10)", 22.12);
    Near("=NPV(0.1, {-10000, 3000, 4200, 6800})", 1188.44);
    Near("=IRR({-70000, 12000, 15000, 18000, 21000, 26000}) * 100", 8.6631);
    Near("=MIRR({-120000, 39000, 30000, 21000, 37000, 46000}, 0.1, 0.12) * 100", 12.6094);
    EXPECT_EQ(Show("=IRR({1, 2})"), "#Error");
    EXPECT_EQ(Show("=SLN(1, 1, 0)"), "#Error");
}

}  // namespace
}  // namespace rdl::expr
