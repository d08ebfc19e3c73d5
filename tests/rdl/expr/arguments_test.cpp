// SPDX-License-Identifier: GPL-3.0-or-later
// Functions with each number of arguments that they take, lists of no, one and two values, and null in lists.
// The expectations are those of the published reference of the language and of its run time; those of the
// financial functions were computed payment by payment.
#include <utility>

#include "rdl/expr/fixture.h"
#include "support/time_zone.h"

namespace rdl::expr {
namespace {

// The number with four digits after the point.
struct Amount {
    const char* source;
    const char* shown;
};

void ExpectAmounts(std::initializer_list<Amount> amounts) {
    for (const auto& [source, shown] : amounts) {
        EXPECT_EQ(Show("=Format(" + std::string(source) + ", \"0.0000\")"), shown) << source;
    }
}

TEST(FinancialArguments, OfAnnuities) {
    ExpectAmounts({
        {"FV(0.01, 12, -100)", "1268.2503"},
        {"FV(0.01, 12, -100, -1000)", "2395.0753"},
        {"FV(0.01, 12, -100, -1000, DueDate.BegOfPeriod)", "2407.7578"},
        {"FV(0, 12, -100, -1000)", "2200.0000"},
        {"PV(0.01, 12, -100)", "1125.5077"},
        {"PV(0.01, 12, -100, -1000)", "2012.9570"},
        {"PV(0.01, 12, -100, -1000, DueDate.BegOfPeriod)", "2024.2121"},
        {"PV(0, 12, -100, -1000)", "2200.0000"},
        {"Pmt(0.01, 12, 1000)", "-88.8488"},
        {"Pmt(0.01, 12, 1000, 500)", "-128.2732"},
        {"Pmt(0.01, 12, 1000, 500, DueDate.BegOfPeriod)", "-127.0032"},
        {"Pmt(0, 12, 1000, 200)", "-100.0000"},
        {"NPer(0.01, -100, 1000)", "10.5886"},
        {"NPer(0.01, -100, 1000, -500)", "5.4337"},
        {"NPer(0.01, -100, 1000, -500, DueDate.BegOfPeriod)", "5.3756"},
        {"NPer(0.01, -100, 1000, 0, DueDate.BegOfPeriod)", "10.4781"},
        {"NPer(0, -100, 1000, -500)", "5.0000"},
        {"Rate(48, -200, 8000)", "0.0077"},
        {"Rate(48, -200, 8000, -500)", "0.0095"},
        {"Rate(48, -200, 8000, -500, DueDate.BegOfPeriod)", "0.0099"},
        {"Rate(48, -200, 8000, 0, DueDate.BegOfPeriod, 0.05)", "0.0081"},
    });
}

TEST(FinancialArguments, OfOnePayment) {
    ExpectAmounts({
        {"IPmt(0.01, 1, 12, 1000)", "-10.0000"},
        {"IPmt(0.01, 12, 12, 1000)", "-0.8797"},
        {"IPmt(0.01, 3, 12, 1000, 500)", "-7.6227"},
        {"IPmt(0.01, 3, 12, 1000, 500, DueDate.BegOfPeriod)", "-7.5472"},
        {"IPmt(0.01, 1, 12, 1000, 0, DueDate.BegOfPeriod)", "0.0000"},
        {"IPmt(0.01, 2, 12, 1000, 0, DueDate.BegOfPeriod)", "-9.1203"},
        {"IPmt(0.01, 12, 12, 1000, 0, DueDate.BegOfPeriod)", "-0.8710"},
        {"PPmt(0.01, 1, 12, 1000)", "-78.8488"},
        {"PPmt(0.01, 12, 12, 1000)", "-87.9691"},
        {"PPmt(0.01, 3, 12, 1000, 500)", "-120.6505"},
        {"PPmt(0.01, 3, 12, 1000, 500, DueDate.BegOfPeriod)", "-119.4559"},
        {"PPmt(0.01, 1, 12, 1000, 0, DueDate.BegOfPeriod)", "-87.9691"},
        {"PPmt(0.01, 2, 12, 1000, 0, DueDate.BegOfPeriod)", "-78.8488"},
    });
    Expect({{"=IPmt(0.01, 0, 12, 1000)", "#Error"}, {"=IPmt(0.01, 13, 12, 1000)", "#Error"}});
}

TEST(FinancialArguments, OfListsAndDepreciation) {
    ExpectAmounts({
        {"NPV(0.1, {110})", "100.0000"},
        {"NPV(0.1, {110, 121})", "200.0000"},
        {"NPV(0.1, 110)", "100.0000"},
        {"NPV(0.1, {110, Nothing, 133.1})", "200.0000"},
        {"IRR({-100, 110})", "0.1000"},
        {"IRR({-70000, 12000, 15000, 18000, 21000})", "-0.0212"},
        {"IRR({-70000, 12000, 15000}, -0.1)", "-0.4435"},
        {"MIRR({-100, 110}, 0.1, 0.12)", "0.1000"},
        {"MIRR({-100, -50, 80, 120}, 0.1, 0.12)", "0.1295"},
        {"SLN(1000, 100, 9)", "100.0000"},
        {"SYD(30000, 7500, 10, 10)", "409.0909"},
        {"DDB(2400, 300, 3650, 1)", "1.3151"},
        {"DDB(2400, 300, 10, 2, 1.5)", "306.0000"},
        {"DDB(1000, 900, 5, 1)", "100.0000"},
        {"DDB(1000, 900, 5, 2)", "0.0000"},
    });
    Expect({
        {"=IRR({-100})", "#Error"},
        {"=MIRR({100, 110}, 0.1, 0.1)", "#Error"},
        {"=NPV(0.1, {\"x\"})", "#Error"},
        {"=SYD(30000, 7500, 10, 11)", "#Error"},
        {"=DDB(2400, 300, 10, 11)", "#Error"},
    });
}

TEST(DateArguments, OfIntervals) {
    Expect({
        // 6 January 2024 is a Saturday.
        {"=DateDiff(\"ww\", #1/6/2024#, #1/7/2024#, FirstDayOfWeek.Monday)", "0"},
        {"=DateDiff(\"ww\", #1/7/2024#, #1/8/2024#, FirstDayOfWeek.Monday)", "1"},
        {"=DateDiff(\"ww\", #1/7/2024#, #1/8/2024#, FirstDayOfWeek.Monday, FirstWeekOfYear.Jan1)", "1"},
        {"=DateDiff(\"q\", #3/31/2024#, #4/1/2024#)", "1"},
        {"=DateDiff(\"q\", #2/29/2024#, #3/1/2024#)", "0"},
        {"=DateDiff(\"q\", #12/31/2023#, #1/1/2024#)", "1"},
        {"=DateDiff(\"q\", #11/15/2023#, #5/15/2024#)", "2"},
        {"=DateDiff(\"n\", #1/1/2024#, #1/1/2024 01:30#)", "90"},
        {"=DateDiff(\"y\", #1/1/2024#, #3/1/2024#)", "60"},
        {"=DatePart(\"w\", #1/7/2024#, FirstDayOfWeek.Monday)", "7"},
        {"=DatePart(\"ww\", #1/7/2024#, FirstDayOfWeek.Monday)", "1"},
        {"=DatePart(\"ww\", #1/7/2024#, FirstDayOfWeek.Monday, FirstWeekOfYear.FirstFullWeek)", "1"},
        // 1 January is a Friday in 2021: the first four days of the year lie in the week of 28 December.
        {"=DatePart(\"ww\", #1/3/2021#, FirstDayOfWeek.Monday, FirstWeekOfYear.FirstFourDays)", "53"},
        {"=DatePart(\"ww\", #1/3/2021#, FirstDayOfWeek.Monday, FirstWeekOfYear.FirstFullWeek)", "52"},
        {"=DatePart(\"ww\", #1/3/2021#, FirstDayOfWeek.Monday, FirstWeekOfYear.Jan1)", "1"},
        // 1 January is a Thursday in 2026: four days of that week belong to the year.
        {"=DatePart(\"ww\", #1/1/2026#, FirstDayOfWeek.Monday, FirstWeekOfYear.FirstFourDays)", "1"},
        {"=DateAdd(\"y\", 1, #2/28/2024#).Day", "29"},
        {"=DateAdd(\"w\", 1, #2/28/2024#).Day", "29"},
        {"=DateAdd(\"s\", 61, #1/1/2024#).Minute", "1"},
        {"=DateSerial(29, 1, 1).Year", "2029"},
        {"=DateSerial(30, 1, 1).Year", "1930"},
        {"=Weekday(#1/7/2024#, FirstDayOfWeek.System)", "1"},
        {"=WeekdayName(1, False, FirstDayOfWeek.System)", "Sunday"},
        {"=Timer()", "49530"},
        {"=TimeOfDay().Hour & \":\" & TimeOfDay().Minute", "13:45"},
        {"=Date.Today.Hour & Date.Now.Hour", "013"},
    });
    EXPECT_EQ(Show("=Weekday(#1/7/2024#, FirstDayOfWeek.System)", "de-DE"), "7");
    EXPECT_EQ(Show("=WeekdayName(1, False, FirstDayOfWeek.System)", "de-DE"), "Montag");
}

TEST(DateArguments, UtcIsTheMomentAtGreenwich) {
    for (const auto& [zone, hour] : {std::pair("Etc/UTC", "13:45"), std::pair("America/St_Johns", "17:15"),
                                     std::pair("Asia/Kolkata", "8:15")}) {
        const TimeZone other(zone);
        EXPECT_EQ(Show("=DateTime.UtcNow.Hour & \":\" & DateTime.UtcNow.Minute"), hour) << zone;
    }
}

TEST(DateArguments, OfMembersAndMakers) {
    Expect({
        {"=New DateTime(2024, 1, 2).Day", "2"},
        {"=New DateTime(2024, 1, 2, 3, 4, 5).Second", "5"},
        {"=New Date(2024, 1, 2).Month", "1"},
        {"=New TimeSpan(864000000000).Days", "1"},
        {"=New TimeSpan(1, 2, 3).TotalSeconds", "3723"},
        {"=New TimeSpan(1, 2, 3, 4).TotalSeconds", "93784"},
        {"=TimeSpan.FromMinutes(90).Hours & TimeSpan.FromMinutes(90).Minutes", "130"},
        {"=TimeSpan.FromSeconds(61.5).Seconds & \" \" & TimeSpan.FromSeconds(61.5).Milliseconds", "1 500"},
        {"=TimeSpan.FromMilliseconds(1500).TotalMilliseconds", "1500"},
        {"=TimeSpan.FromTicks(10000000).TotalSeconds", "1"},
        {"=TimeSpan.FromHours(-2).Duration().Hours", "2"},
        {"=(#1/1/2024 10:30:15#).TimeOfDay.TotalMinutes", "630.25"},
        {"=(#1/1/2024#).AddHours(1.5).ToString(\"HH:mm\")", "01:30"},
        {"=(#1/1/2024#).AddMinutes(61).ToString(\"HH:mm\")", "01:01"},
        {"=(#1/1/2024#).AddSeconds(61).ToString(\"mm:ss\")", "01:01"},
        {"=(#1/1/2024#).AddMilliseconds(1500).ToString(\"ss.fff\")", "01.500"},
        {"=(#1/1/2024#).AddTicks(10000000).Second", "1"},
        {"=(#1/3/2024#).Subtract(#1/1/2024#).Days", "2"},
        {"=(#1/3/2024#).Subtract(TimeSpan.FromDays(1)).Day", "2"},
        {"=(#1/31/2024 13:05:00#).ToShortDateString()", "1/31/2024"},
        {"=(#1/31/2024 13:05:00#).ToLongDateString()", "Wednesday, January 31, 2024"},
        {"=(#1/31/2024 13:05:00#).ToShortTimeString()", "1:05 PM"},
        {"=(#1/31/2024 13:05:00#).ToLongTimeString()", "1:05:00 PM"},
        {"=DateTime.IsLeapYear(2000) & DateTime.IsLeapYear(1900) & Date.IsLeapYear(2024)", "TrueFalseTrue"},
        {"=Date.DaysInMonth(2024, 2) & DateTime.DaysInMonth(1900, 2)", "2928"},
        {"=Date.Parse(\"2024-05-06\").Month", "5"},
        {"=Date.ParseExact(\"06/2024\", \"MM/yyyy\", Nothing).Month", "6"},
        {"=Date.Compare(#1/2/2024#, #1/1/2024#) & Date.FromOADate(45000).Year", "12023"},
    });
}

TEST(MathArguments, OfFunctionsAndTheirMembers) {
    ExpectAmounts({
        {"Atan2(1, 2)", "0.4636"},
        {"Math.Atan2(1, 2)", "0.4636"},
        {"Asin(0.5)", "0.5236"},
        {"Math.Asin(0.5)", "0.5236"},
        {"Acos(0.5)", "1.0472"},
        {"Math.Acos(0.5)", "1.0472"},
        {"Sinh(0.5)", "0.5211"},
        {"Math.Sinh(0.5)", "0.5211"},
        {"Cosh(0.5)", "1.1276"},
        {"Math.Cosh(0.5)", "1.1276"},
        {"Tanh(0.5)", "0.4621"},
        {"Math.Tanh(0.5)", "0.4621"},
        {"Math.Sin(1)", "0.8415"},
        {"Math.Cos(1)", "0.5403"},
        {"Math.Tan(1)", "1.5574"},
        {"Math.Atan(0.5)", "0.4636"},
        {"Math.Exp(2)", "7.3891"},
        {"Log(10)", "2.3026"},
        {"Log(8, 2)", "3.0000"},
        {"Math.Log(10)", "2.3026"},
        {"Math.Log(8, 2)", "3.0000"},
        {"Math.Log10(1000)", "3.0000"},
        {"Math.Pow(2, 10)", "1024.0000"},
        {"Math.IEEERemainder(10, 4)", "2.0000"},
        {"Math.IEEERemainder(11, 4)", "-1.0000"},
    });
    Expect({
        {"=Round(2.5)", "2"},
        {"=Round(-2.5)", "-2"},
        {"=Round(2.345, 2)", "2.34"},
        {"=Round(2.5, MidpointRounding.AwayFromZero)", "3"},
        {"=Round(-2.5, MidpointRounding.AwayFromZero)", "-3"},
        {"=Round(2.25, 1, MidpointRounding.AwayFromZero)", "2.3"},
        {"=Round(CDec(-2.25), 1, MidpointRounding.AwayFromZero)", "-2.3"},
        {"=Round(CDec(2.25), 1)", "2.2"},
        {"=CDec(-7) Mod CDec(3)", "-1"},
        {"=CDec(7) Mod CDec(-3)", "1"},
        {"=BigMul(100000, 100000)", "10000000000"},
        {"=Math.BigMul(-3, 4)", "-12"},
        {"=Double.IsNaN(0 / 0.0) & Double.IsNaN(1)", "TrueFalse"},
        {"=Double.IsInfinity(1 / 0.0) & Double.IsInfinity(1)", "TrueFalse"},
        {"=Rnd(5) >= 0 And Rnd(5) < 1 And Rnd(5) = Rnd(5)", "True"},
    });
}

TEST(TextArguments, OfSearchAndChange) {
    Expect({
        {"=InStr(\"abc\", \"\")", "1"},
        {"=InStr(3, \"abc\", \"\")", "3"},
        {"=InStr(4, \"abc\", \"\")", "0"},
        {"=InStr(1, \"aBc\", \"b\", CompareMethod.Text)", "2"},
        {"=InStrRev(\"abab\", \"AB\", -1, CompareMethod.Text)", "3"},
        {"=InStrRev(\"abab\", \"ab\", 2)", "1"},
        {"=Filter({\"ab\", \"cd\"}, \"a\", False)", "[cd]"},
        {"=Filter({\"ab\", \"cd\"}, \"x\")", "[]"},
        {"=Filter({\"ab\", Nothing}, \"A\", True, CompareMethod.Text)", "[ab]"},
        {"=Split(\"a b c\", \" \", 2)", "[a|b c]"},
        {"=Split(\"a b c\", \" \", 1)", "[a b c]"},
        {"=Join({\"a\", Nothing, \"c\"}, \"-\")", "a--c"},
        {"=Join({\"a\"}, \"-\")", "a"},
        {"=StrConv(\"it's 3d\", VbStrConv.ProperCase)", "It's 3D"},
        {"=StrConv(\"ab\", VbStrConv.Uppercase, 1033)", "AB"},
        {"=\"abcabc\".IndexOf(\"c\", 3)", "5"},
        {"=\"abcabc\".IndexOf(\"c\", 3, 2)", "-1"},
        {"=\"abcabc\".IndexOf(\"C\", 3, 3, StringComparison.OrdinalIgnoreCase)", "5"},
        {"=\"abcabc\".LastIndexOf(\"c\", 4)", "2"},
        {"=\"abc\".Contains(\"B\", StringComparison.OrdinalIgnoreCase)", "True"},
        {"=\"abc\".EndsWith(\"C\", StringComparison.OrdinalIgnoreCase)", "True"},
        {"=\"a\".PadRight(3, \"x\"c)", "axx"},
        {"=\"ÄB\".ToLowerInvariant() & \"äb\".ToUpperInvariant()", "äbÄB"},
        {"=\"a\" Like \"[!a]\"", "False"},
        {"=\"b\" Like \"[!a]\"", "True"},
        {"=String.IsNullOrWhiteSpace(\" \") & String.IsNullOrWhiteSpace(\"a\")", "TrueFalse"},
        {"=String.Compare(\"a\", \"b\")", "-1"},
        {"=New String(\"x\"c, 3)", "xxx"},
        {"=Char.IsLetter(\"a1\", 1) & Char.IsDigit(\"a1\", 1)", "FalseTrue"},
        {"=Char.IsNumber(\"5\"c) & Char.IsControl(vbTab)", "TrueTrue"},
        {"=Char.ToString(\"x\"c) & String.Copy(\"y\")", "xy"},
        {"=Uri.UnescapeDataString(\"a%20\")", "a "},
        {"=HttpUtility.HtmlDecode(\"&lt;b&gt; &amp;\")", "<b> &"},
        {"=WebUtility.HtmlEncode(\"<b>\")", "&lt;b&gt;"},
    });
}

TEST(TextArguments, OfPatterns) {
    Expect({
        {"=Regex.IsMatch(\"AB\", \"b\", RegexOptions.IgnoreCase)", "True"},
        {"=Regex.IsMatch(\"a\" & vbLf & \"b\", \"^b\", RegexOptions.Multiline)", "True"},
        {"=Regex.IsMatch(\"a\" & vbLf & \"b\", \"^b\", RegexOptions.Singleline)", "False"},
        {"=Regex.IsMatch(\"a\" & vbLf & \"b\", \"a.b\", RegexOptions.Singleline)", "True"},
        {"=Regex.IsMatch(\"a\" & vbLf & \"b\", \"a.b\", RegexOptions.Multiline)", "False"},
        {"=Regex.Match(\"xAB\", \"ab\", RegexOptions.IgnoreCase).Index", "1"},
        {"=Regex.Matches(\"aA\", \"a\", RegexOptions.IgnoreCase).Count", "2"},
        {"=Regex.Split(\"1a2A3\", \"a\", RegexOptions.IgnoreCase)", "[1|2|3]"},
    });
}

TEST(FormatArguments, OfNumbers) {
    Expect({
        {"=FormatNumber(1234.5)", "1,234.50"},
        {"=FormatNumber(1234.5, 0)", "1,235"},
        {"=FormatNumber(0.5, 1, TriState.False)", ".5"},
        {"=FormatNumber(-1.5, 1, TriState.True, TriState.True)", "(1.5)"},
        {"=FormatNumber(1.5, 1, TriState.True, TriState.True)", "1.5"},
        {"=FormatNumber(1234.5, 1, TriState.True, TriState.False, TriState.False)", "1234.5"},
        {"=FormatCurrency(1234.5, 1)", "$1,234.5"},
        {"=FormatCurrency(0.5, 1, TriState.False)", "$.5"},
        {"=FormatCurrency(-1234.5, 1, TriState.True, TriState.True, TriState.False)", "($1234.5)"},
        {"=FormatPercent(0.125)", "12.50 %"},
        {"=FormatPercent(0.125, 1, TriState.True, TriState.False, TriState.True)", "12.5 %"},
        {"=Format(5)", "5"},
        {"=Format(1234.5, \"Standard\")", "1,234.50"},
        {"=Format(-0.4, \"0\")", "0"},
        {"=Format(1234567, \"0,,\")", "1"},
        {"=Format(#1/1/2024 12:05#, \"h:mm tt\") & Format(#1/1/2024 00:05#, \"h:mm tt\")",
         "12:05 PM12:05 AM"},
        {"=Format(#1/31/2024#, \"yy\") & Format(#1/31/2024#, \"y/M/d\")", "2424/1/31"},
    });
}

TEST(TypeArguments, OfConversions) {
    Expect({
        {"=CSByte(-5) & CUShort(5) & CUInt(6) & CULng(7)", "-5567"},
        {"=CChar(\"xy\") & CObj(5)", "x5"},
        {"=IsDBNull(Nothing) & IsDBNull(5) & Convert.IsDBNull(Nothing)", "TrueFalseTrue"},
        {"=Convert.ToInt16(\"12\") & Convert.ToInt64(\"13\") & Convert.ToUInt32(\"14\")", "121314"},
        {"=Convert.ToInt32(\"ff\", 16) & Convert.ToInt32(\"101\", 2)", "2555"},
        {"=Convert.ToDouble(\"1.5\") + Convert.ToSingle(\"2.5\")", "4"},
        {"=Int32.Parse(\"5\") + Int64.Parse(\"6\") + Int16.Parse(\"7\")", "18"},
        {"=Double.Parse(\"1.5\", CultureInfo.InvariantCulture)", "1.5"},
        {"=Single.Parse(\"2.5\") + Decimal.ToDouble(CDec(1))", "3.5"},
        {"=Object.Equals(1, 1) & Object.Equals(1, 2)", "TrueFalse"},
        {"=True + 1", "0"},
        {"=UBound({4, 5}, 1) & LBound({4, 5}, 1)", "10"},
    });
}

TEST(FlowArguments, ChooseAndIndex) {
    Expect({
        {"=Choose(1, \"a\", \"b\")", "a"},
        {"=Choose(2, \"a\", \"b\")", "b"},
        {"=Choose(2.9, \"a\", \"b\")", "b"},
        {"=Choose(0, \"a\", \"b\")", ""},
        {"=Choose(3, \"a\", \"b\")", ""},
        {"={4, 5}(0) & {4, 5}(1)", "45"},
        {"={4, 5}(2)", "#Error"},
    });
}

}  // namespace
}  // namespace rdl::expr
