// SPDX-License-Identifier: GPL-3.0-or-later
// The classes and modules of the run time that a report may use, one table for each; the expectations are
// those of their published reference.
#include "rdl/expr/fixture.h"

namespace rdl::expr {
namespace {

TEST(InspectionFunctions, NameKindsOfValues) {
    Expect({
        {"=VarType(\"a\") = VariantType.String", "True"},
        {"=VarType(1)", "3"},
        {"=VarType(3000000000)", "20"},
        {"=VarType(1.5) & VarType(True) & VarType(Now)", "5117"},
        {"=VarType(Nothing) = VariantType.Object", "True"},
        {"=(VarType({1, 2}) And VariantType.Array) <> 0", "True"},
        {"=TypeName(1) & TypeName(1.5) & TypeName(\"\") & TypeName(Nothing)", "IntegerDoubleStringNothing"},
        {"=SystemTypeName(\"Integer\")", "System.Int32"},
        {"=SystemTypeName(\"date\")", "System.DateTime"},
        {"=SystemTypeName(\"Nonsense\")", ""},
        {"=VbTypeName(\"Int32\") & VbTypeName(\"System.DateTime\")", "IntegerDate"},
        {"=VbTypeName(\"Nonsense\")", ""},
        {"=IsReference(\"a\") & IsReference(1)", "TrueFalse"},
        {"=IsArray({1}) & IsArray(1)", "TrueFalse"},
        {"=(5).GetType().Name & \" \" & \"a\".GetType().FullName", "Int32 System.String"},
        {"=Now.GetType.ToString()", "System.DateTime"},
        {"=Nothing.GetType()", "#Error"},
        {"=LBound({4, 5}) & UBound({4, 5})", "01"},
        {"=UBound(5)", "#Error"},
    });
}

TEST(InspectionFunctions, TypeOfAsksForTheKind) {
    Expect({
        {"=TypeOf \"a\" Is String", "True"},
        {"=TypeOf 5 Is String", "False"},
        {"=TypeOf 5 IsNot String", "True"},
        {"=TypeOf Now Is System.DateTime And True", "True"},
        {"=TypeOf Nothing Is Object", "False"},
    });
    EXPECT_NE(Refusal("=TypeOf 5"), "compiled");
    EXPECT_NE(Refusal("=TypeOf 5 = Integer"), "compiled");
}

TEST(InteractionFunctions, PartitionAlignsBothEnds) {
    Expect({
        {"=Partition(-1, 0, 99, 5)", "   : -1"},
        {"=Partition(3, 0, 99, 5)", "  0:  4"},
        {"=Partition(97, 0, 99, 5)", " 95: 99"},
        {"=Partition(120, 0, 99, 5)", "100:   "},
        {"=Partition(19, 20, 199, 10)", "   : 19"},
        {"=Partition(199, 20, 199, 10)", "190:199"},
        {"=Partition(1005, 100, 1010, 20)", "1000:1010"},
        {"=Partition(1011, 100, 1010, 20)", "1011:    "},
        {"=Partition(100, 0, 1000, 1)", " 100: 100"},
        {"=Partition(1, -1, 10, 1)", "#Error"},
        {"=Partition(1, 10, 10, 1)", "#Error"},
        {"=Partition(1, 0, 10, 0)", "#Error"},
    });
}

TEST(InformationFunctions, ColoursAreNumbers) {
    Expect({
        {"=RGB(255, 0, 0)", "255"},
        {"=RGB(0, 0, 1)", "65536"},
        {"=RGB(75, 139, 203)", "13339467"},
        {"=RGB(300, 0, 0)", "255"},
        {"=RGB(-1, 0, 0)", "#Error"},
        {"=QBColor(0)", "0"},
        {"=QBColor(1)", "8388608"},
        {"=QBColor(12)", "255"},
        {"=QBColor(15)", "16777215"},
        {"=QBColor(16)", "#Error"},
    });
}

TEST(CharMembers, AskForClassesOfCharacters) {
    Expect({
        {"=Char.IsDigit(\"5\"c) & Char.IsDigit(\"x\"c)", "TrueFalse"},
        {"=Char.IsLetter(\"é\"c) & Char.IsLetter(\"5\"c)", "TrueFalse"},
        {"=Char.IsUpper(\"A\"c) & Char.IsUpper(\"a\"c) & Char.IsLower(\"a\"c)", "TrueFalseTrue"},
        {"=Char.IsWhiteSpace(\" \"c) & Char.IsLetterOrDigit(\"_\"c)", "TrueFalse"},
        {"=Char.IsPunctuation(\".\"c) & Char.IsPunctuation(\"+\"c) & Char.IsSymbol(\"+\"c)", "TrueFalseTrue"},
        {"=Char.IsDigit(\"ab3\", 2)", "True"},
        {"=Char.IsDigit(\"ab3\", 3)", "#Error"},
        {"=Char.ToUpper(\"a\"c) & Char.ToLower(\"B\"c)", "Ab"},
    });
}

TEST(ParseMembers, ReadWhatTheirTypeHolds) {
    Expect({
        {"=Integer.Parse(\" -12 \")", "-12"},
        {"=Integer.Parse(\"+7\")", "7"},
        {"=Integer.Parse(\"1.5\")", "#Error"},
        {"=Integer.Parse(\"1,000\")", "#Error"},
        {"=Integer.Parse(\"2147483648\")", "#Error"},
        {"=Integer.Parse(Nothing)", "#Error"},
        {"=Long.Parse(\"2147483648\")", "2147483648"},
        {"=Short.Parse(\"40000\")", "#Error"},
        {"=Byte.Parse(\"255\")", "255"},
        {"=Byte.Parse(\"-1\")", "#Error"},
        {"=Double.Parse(\"1,234.5\")", "1234.5"},
        {"=Double.Parse(\"1.234,5\", New System.Globalization.CultureInfo(\"de-DE\"))", "1234.5"},
        {"=Decimal.Parse(\"1.50\")", "1.50"},
        {"=Double.Parse(\"abc\")", "#Error"},
        {"=Boolean.Parse(\" true \")", "True"},
        {"=Boolean.Parse(\"1\")", "#Error"},
    });
}

TEST(ConvertMembers, ChangeTypes) {
    Expect({
        {"=Convert.ToInt32(2.5)", "2"},
        {"=Convert.ToInt32(3.5)", "4"},
        {"=Convert.ToInt32(True)", "1"},
        {"=Convert.ToInt32(Nothing)", "0"},
        {"=Convert.ToInt32(\"2.5\")", "#Error"},
        {"=Convert.ToInt32(\"ff\", 16)", "255"},
        {"=Convert.ToInt32(\"FFFFFFFF\", 16)", "-1"},
        {"=Convert.ToInt32(\"1FFFFFFFF\", 16)", "#Error"},
        {"=Convert.ToInt64(\"17\", 8)", "15"},
        {"=Convert.ToByte(\"101\", 2)", "5"},
        {"=Convert.ToInt32(\"12\", 7)", "#Error"},
        {"=Convert.ToByte(300)", "#Error"},
        {"=Convert.ToUInt16(40000)", "40000"},
        {"=Convert.ToSByte(-1)", "-1"},
        {"=Convert.ToDouble(True)", "1"},
        {"=Convert.ToDecimal(\"1.5\")", "1.5"},
        {"=Convert.ToBoolean(2)", "True"},
        {"=Convert.ToChar(65)", "A"},
        {"=Convert.ToChar(\"AB\")", "#Error"},
        {"=Convert.ToString(255, 16)", "ff"},
        {"=Convert.ToString(5, 2)", "101"},
        {"=Convert.ToString(-1, 16)", "ffffffff"},
        {"=Convert.ToString(8, 8)", "10"},
        {"=Convert.ToString(5, 3)", "#Error"},
        {"=Convert.ToString(1.5, New CultureInfo(\"de-DE\"))", "1,5"},
        {"=Convert.ToString(Nothing)", ""},
        {"=Convert.ToDateTime(\"1/2/2024\").Month", "1"},
        {"=Convert.ToDateTime(\"1/2/2024\", New CultureInfo(\"en-GB\")).Month", "2"},
        {"=Convert.ToDateTime(Nothing).Year", "1"},
        {"=Convert.ToBase64String(Convert.FromBase64String(\"QUJD\"))", "QUJD"},
        {"=Convert.ToBase64String(Convert.FromBase64String(\"QQ==\"))", "QQ=="},
        {"=Convert.FromBase64String(\"Q\")", "#Error"},
        {"=Convert.FromBase64String(\"QQ=A\")", "#Error"},
        {"=Convert.FromBase64String(\"QUI\")", "#Error"},
        {"=Convert.FromBase64String(\"QQ==QQ==\")", "#Error"},
        {"=Convert.ToBase64String(Convert.FromBase64String(\" QU\" & vbCrLf & \"JD \"))", "QUJD"},
        {"=CInt(\"&HFF\")", "255"},
    });
}

TEST(DecimalMembers, Calculate) {
    Expect({
        {"=Decimal.Round(2.567D, 2)", "2.57"},
        {"=Decimal.Round(2.5D) & Decimal.Round(3.5D)", "24"},
        {"=Decimal.Round(2.5D, 0, MidpointRounding.AwayFromZero)", "3"},
        {"=Decimal.Truncate(-2.7D)", "-2"},
        {"=Decimal.Floor(-2.7D) & Decimal.Ceiling(2.1D)", "-33"},
        {"=Decimal.Remainder(7D, 3D)", "1"},
        {"=Decimal.Negate(3)", "-3"},
        {"=Decimal.Add(1, 2) & Decimal.Subtract(1, 2) & Decimal.Multiply(3, 2) & Decimal.Divide(3, 2)",
         "3-161.5"},
        {"=Decimal.ToInt32(2.9D)", "2"},
        {"=Decimal.ToInt32(3000000000D)", "#Error"},
        {"=Decimal.Compare(1, 2)", "-1"},
        {"=Decimal.One + Decimal.Zero + Decimal.MinusOne", "0"},
        {"=New Decimal(1.5)", "1.5"},
    });
}

TEST(TypeLimits, AreThoseOfTheirBits) {
    Expect({
        {"=Integer.MaxValue", "2147483647"},
        {"=Short.MinValue", "-32768"},
        {"=Byte.MaxValue", "255"},
        {"=Long.MinValue", "-9223372036854775808"},
        {"=UInteger.MaxValue", "4294967295"},
        {"=SByte.MinValue", "-128"},
        {"=Double.Epsilon > 0 And Double.Epsilon < 1E-300", "True"},
        {"=Double.IsPositiveInfinity(1 / 0) & Double.IsNegativeInfinity(-1 / 0)", "TrueTrue"},
        {"=Boolean.TrueString", "True"},
        {"=vbObjectError", "-2147221504"},
    });
}

TEST(StringMembers, OfTheClassAndOfTexts) {
    Expect({
        {"=String.Equals(\"a\", \"A\")", "False"},
        {"=String.Equals(\"a\", \"A\", StringComparison.OrdinalIgnoreCase)", "True"},
        {"=String.Equals(Nothing, \"\")", "False"},
        {"=String.Compare(\"a\", \"A\", StringComparison.CurrentCultureIgnoreCase)", "0"},
        {"=String.CompareOrdinal(\"a\", \"b\")", "-1"},
        {"=New String(\"x\"c, 3)", "xxx"},
        {"=New String(\"abc\".ToCharArray())", "abc"},
        {"=\"abc\".ToCharArray()(1)", "b"},
        {"=\"abcabc\".IndexOfAny({\"c\"c, \"b\"c})", "1"},
        {"=\"abc\".IndexOfAny(\"xyz\".ToCharArray())", "-1"},
        {"=\"aBc\".IndexOf(\"b\", StringComparison.OrdinalIgnoreCase)", "1"},
        {"=\"abcabc\".IndexOf(\"c\", 3, 2)", "-1"},
        {"=\"abcabc\".IndexOf(\"c\", 3, 3)", "5"},
        {"=\"abc\".IndexOf(\"c\", 4)", "#Error"},
        {"=\"abcabc\".LastIndexOf(\"b\", 3)", "1"},
        {"=\"abcabc\".LastIndexOf(\"b\")", "4"},
        {"=\"Abc\".StartsWith(\"aB\", StringComparison.OrdinalIgnoreCase)", "True"},
        {"=\"Abc\".EndsWith(\"BC\", True, Nothing)", "True"},
        {"=\"Abc\".Equals(\"abc\", StringComparison.OrdinalIgnoreCase)", "True"},
        {"=\"xyabcyx\".Trim(\"x\"c, \"y\"c)", "abc"},
        {"=\"abcc\".TrimEnd(\"c\"c)", "ab"},
        {"=Join(\"a,b;c\".Split(\",\"c, \";\"c), \"|\")", "a|b|c"},
        {"=Join(\"a,b,c\".Split({\",\"c}, 2), \"|\")", "a|b,c"},
        {"=Join(\"a,,b,\".Split({\",\"c}, StringSplitOptions.RemoveEmptyEntries), \"|\")", "a|b"},
        {"=Join(\"a b\".Split(), \"|\")", "a|b"},
        {"={1, 2}.Rank & {1, 2}.GetLowerBound(0) & {1, 2}.GetUpperBound(0)", "101"},
    });
}

TEST(CultureMembers, ChooseTheLanguageOfOneText) {
    Expect({
        {"=Now.ToString(\"MMMM\", New System.Globalization.CultureInfo(\"de-DE\"))", "Februar"},
        {"=(1234.5).ToString(\"N2\", New CultureInfo(\"de-DE\"))", "1.234,50"},
        {"=(1234.5).ToString(System.Globalization.CultureInfo.GetCultureInfo(\"de-DE\"))", "1234,5"},
        {"=(1234.5).ToString(\"N1\", System.Globalization.CultureInfo.InvariantCulture)", "1,234.5"},
        {"=String.Format(New CultureInfo(\"de-DE\"), \"{0:N1}\", 1.5)", "1,5"},
        {"=CultureInfo.CurrentCulture.Name", "en-US"},
        {"=New CultureInfo(\"fr-FR\").Name", "fr-FR"},
    });
    EXPECT_EQ(Refusal("=New CultureInfo(\"fr-FR\").Shout"),
              "Here: a value has no member \"Shout\", at character 27");
}

TEST(DateTimeMembers, ParseAndMake) {
    Expect({
        {"=DateTime.ParseExact(\"20240131\", \"yyyyMMdd\", Nothing).Day", "31"},
        {"=DateTime.ParseExact(\"31.1.24 5:07 PM\", \"d.M.yy h:mm tt\", CultureInfo.InvariantCulture).Hour",
         "17"},
        {"=DateTime.ParseExact(\"31-Jan-2024\", {\"d\", \"dd-MMM-yyyy\"}, Nothing).Month", "1"},
        {"=DateTime.ParseExact(\"2024131\", \"yyyyMMdd\", Nothing)", "#Error"},
        {"=DateTime.ParseExact(\"20240231\", \"yyyyMMdd\", Nothing)", "#Error"},
        {"=DateTime.Parse(\"31/1/2024\", New CultureInfo(\"en-GB\")).Month", "1"},
        {"=DateTime.Parse(\"31/1/2024\")", "#Error"},
        {"=DateTime.Compare(#1/1/2024#, #1/2/2024#)", "-1"},
        {"=DateTime.Equals(#1/1/2024#, #1/1/2024#)", "True"},
        {"=New DateTime(2024, 1, 2, 3, 4, 5, 6).Millisecond", "6"},
        {"=New DateTime(864000000000).Day", "2"},
        {"=New DateTime(2024, 13, 1)", "#Error"},
        {"=DateTime.FromOADate(45000).ToString(\"yyyy-MM-dd\")", "2023-03-15"},
        {"=DateTime.FromOADate(0.5).ToString(\"yyyy-MM-dd HH\")", "1899-12-30 12"},
        {"=DateTime.FromOADate(-1.25).ToString(\"yyyy-MM-dd HH\")", "1899-12-29 06"},
        {"=(#3/15/2023 12:00 PM#).ToOADate()", "45000.5"},
        {"=New DateTime(1899, 12, 29, 6, 0, 0).ToOADate()", "-1.25"},
        {"=Now.ToUniversalTime() = DateTime.UtcNow", "True"},
        {"=TimeSpan.Parse(\"1.02:03:04\").TotalHours.ToString(\"F2\")", "26.05"},
        {"=TimeSpan.Parse(\"-0:30\").TotalMinutes", "-30"},
        {"=TimeSpan.Parse(\"6\").Days", "6"},
        {"=TimeSpan.Parse(\"0:0:0.5\").Milliseconds", "500"},
        {"=TimeSpan.Parse(\"24:00\")", "#Error"},
        {"=TimeSpan.Parse(\"x\")", "#Error"},
        {"=New TimeSpan(1, 2, 3, 4, 5).Milliseconds", "5"},
        {"=New TimeSpan(1, 30, 0).Negate().TotalMinutes", "-90"},
        {"=TimeSpan.Compare(TimeSpan.Zero, TimeSpan.FromDays(1))", "-1"},
        {"=TimeSpan.TicksPerDay", "864000000000"},
        {"=TimeSpan.MaxValue > TimeSpan.MinValue", "True"},
    });
}

TEST(RegularExpressions, ReplaceFindAndSplit) {
    Expect({
        {"=System.Text.RegularExpressions.Regex.Replace(\"4255550123\", \"(\\d{3})(\\d{3})(\\d{4})\", "
         "\"($1) $2-$3\")",
         "(425) 555-0123"},
        {"=Regex.Replace(\"<b>x</b> y\", \"<[^>]*>\", \"\")", "x y"},
        {"=Regex.Replace(\"aAa\", \"a\", \"-\", RegexOptions.IgnoreCase)", "---"},
        {"=Regex.Replace(\"ab\", \"(?<one>a)\", \"[${one}$&$$]\")", "[aa$]b"},
        {"=Regex.Replace(\"abc\", \"x*\", \"-\")", "-a-b-c-"},
        {"=Regex.Replace(\"é1\", \"\\w\", \"x\")", "xx"},
        {"=Regex.IsMatch(\"a1\", \"^[a-z]\\d$\")", "True"},
        {"=Regex.IsMatch(\"A1\", \"^[a-z]\\d$\")", "False"},
        {"=Regex.Match(\"order 1234, 99\", \"\\d+\").Value", "1234"},
        {"=Regex.Match(\"k=v\", \"(\\w)=(\\w)\").Groups(2).Value", "v"},
        {"=Regex.Match(\"k=v\", \"(?<name>\\w)=\").Groups(\"name\").Value", "k"},
        {"=Regex.Match(\"abc\", \"x\").Success & Regex.Match(\"abc\", \"c\").Index", "False2"},
        {"=Join(Regex.Split(\"a1b22c\", \"\\d+\"), \"|\")", "a|b|c"},
        {"=Join(Regex.Matches(\"a1b22c\", \"\\d+\"), \"|\")", "1|22"},
        {"=Regex.Replace(\"a.b\", Regex.Escape(\".\"), \"-\")", "a-b"},
        {"=Regex.IsMatch(\"a\", \"(\")", "#Error"},
        {"=Regex.IsMatch(StrDup(40, \"a\") & \"!\", \"^(a+)+$\")", "#Error"},
    });
}

TEST(EscapeFunctions, MakeAddressesAndMarkup) {
    Expect({
        {"=System.Uri.EscapeDataString(\"a b&c/é\")", "a%20b%26c%2F%C3%A9"},
        {"=Uri.EscapeUriString(\"http://x/a b\")", "http://x/a%20b"},
        {"=Uri.UnescapeDataString(\"a%20b%zz\")", "a b%zz"},
        {"=System.Web.HttpUtility.UrlEncode(\"a b&c\")", "a+b%26c"},
        {"=System.Web.HttpUtility.UrlDecode(\"a+b%26c\")", "a b&c"},
        {"=System.Web.HttpUtility.HtmlEncode(\"<a & 'b'>\")", "&lt;a &amp; &#39;b&#39;&gt;"},
        {"=System.Net.WebUtility.HtmlDecode(\"&lt;a&gt; &amp;amp;\")", "<a> &amp;"},
    });
}

TEST(NumberLiterals, TakeTheirTypeCharacters) {
    Expect({
        {"=5% + 2&", "7"},
        {"=(5%)", "5"},
        {"=7 % 4", "3"},
        {"=7%4", "3"},
        {"=2&\"x\"", "2x"},
        {"=3@ * 2", "6"},
        {"=5US + 5UI + 5UL + 5S + 5I", "25"},
    });
}

}  // namespace
}  // namespace rdl::expr
