// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/formula.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/raises.h"

#include <gtest/gtest.h>

#include <map>

namespace rdl::formula {
namespace {

// A row by field name; what it does not have is Null.
class Row : public Inputs {
 public:
    explicit Row(const Formula& formula) : m_formula(formula) {}
    Value Field(int index) override {
        return fields[m_formula.Fields()[static_cast<std::size_t>(index)].field];
    }
    Value Parameter(int index) override {
        return parameters[m_formula.Parameters()[static_cast<std::size_t>(index)].name];
    }
    std::int64_t NowTicks() override { return MakeTicks(2025, 6, 15, 13, 30, 0); }
    const Culture& CurrentCulture() override { return FindCulture("en-US"); }
    std::map<std::string, Value> fields, parameters;

 private:
    const Formula& m_formula;
};

Value ValueOf(std::string_view text, const std::map<std::string, Value>& fields = {},
              const std::map<std::string, Value>& parameters = {}) {
    const Formula formula(text);
    Row row(formula);
    row.fields = fields;
    row.parameters = parameters;
    return formula.Evaluate(row);
}

bool Selects(std::string_view text, const std::map<std::string, Value>& fields = {},
             const std::map<std::string, Value>& parameters = {}) {
    const Formula formula(text);
    Row row(formula);
    row.fields = fields;
    row.parameters = parameters;
    return formula.Selects(row);
}

std::string CompileError(std::string_view text) {
    return ErrorRaisedBy([&] { const Formula formula(text); });
}

const Value Rome = Value::Text("Rome");

TEST(RecordSelectionFormula, ComparesNumbers) {
    EXPECT_TRUE(Selects("{T.N} > 4", {{"N", Value::Integer(5)}}));
    EXPECT_FALSE(Selects("{T.N} > 5", {{"N", Value::Integer(5)}}));
    EXPECT_TRUE(Selects("{N} >= 5 and {N} <= 5 and {N} = 5.0 and {N} <> 6", {{"N", Value::Integer(5)}}));
    EXPECT_TRUE(Selects("{N} < 5.5", {{"N", Value::Real(5.25)}}));
}

TEST(RecordSelectionFormula, ComparesTextsWithoutRegardToCase) {
    EXPECT_TRUE(Selects("{City} = 'rome'", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{City} = \"ROME\"", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{City} = \"MÜNCHEN\"", {{"City", Value::Text("münchen")}}));
    EXPECT_TRUE(Selects("{City} < 'Sofia'", {{"City", Rome}}));
}

TEST(RecordSelectionFormula, ReadsDoubledMarksInTexts) {
    EXPECT_TRUE(Selects("{N} = 'O''Neill' and {N} = \"O'Neill\"", {{"N", Value::Text("O'Neill")}}));
}

TEST(RecordSelectionFormula, KeywordsHaveNoCase) {
    EXPECT_TRUE(Selects("NOT (1 = 2) AND True Or FALSE"));
}

TEST(RecordSelectionFormula, AndBindsTighterThanOr) {
    EXPECT_TRUE(Selects("true or false and false"));
    EXPECT_FALSE(Selects("(true or false) and false"));
    EXPECT_TRUE(Selects("not false or true and false"));
    EXPECT_FALSE(Selects("true xor true"));
}

TEST(RecordSelectionFormula, ComparisonWithNullIsNeitherTrueNorFalse) {
    EXPECT_FALSE(Selects("{X} = 1"));
    EXPECT_FALSE(Selects("not ({X} = 1)"));
    EXPECT_FALSE(Selects("{X} <> 1"));
    EXPECT_TRUE(Selects("{X} = 1 or true"));
    EXPECT_TRUE(ValueOf("{X} = 1 and true").IsNull());
    EXPECT_TRUE(Selects("isnull({X}) and {X} is null"));
    EXPECT_TRUE(Selects("{X} is not null and not isnull({X})", {{"X", Value::Integer(0)}}));
}

TEST(RecordSelectionFormula, InTakesListsAndRanges) {
    EXPECT_TRUE(Selects("{City} in ['Paris', 'ROME']", {{"City", Rome}}));
    EXPECT_FALSE(Selects("{City} in ['Paris', 'Bonn']", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{City} not in ['Paris', 'Bonn']", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{N} in 1 to 5", {{"N", Value::Integer(5)}}));
    EXPECT_FALSE(Selects("{N} in 1 to 5", {{"N", Value::Integer(6)}}));
    EXPECT_TRUE(Selects("{N} in [1, 3 to 6, 9] and {N} in 1 to 5 + 1", {{"N", Value::Integer(6)}}));
}

TEST(RecordSelectionFormula, MultiValueParameterMatchesAnyOfItsValues) {
    const Value list = Value::List({Value::Text("Paris"), Value::Text("Rome")});
    EXPECT_TRUE(Selects("{City} in {?Cities}", {{"City", Rome}}, {{"Cities", list}}));
    EXPECT_TRUE(Selects("{City} = {?Cities}", {{"City", Rome}}, {{"Cities", list}}));
    EXPECT_FALSE(Selects("{City} <> {?Cities}", {{"City", Rome}}, {{"Cities", list}}));
    EXPECT_FALSE(Selects("{City} in {?Cities}", {{"City", Value::Text("Bonn")}}, {{"Cities", list}}));
}

TEST(RecordSelectionFormula, LikeKnowsBothSetsOfWildcards) {
    EXPECT_TRUE(Selects("{City} like 'r*' and {City} like '%ME' and {City} like '?o_e'", {{"City", Rome}}));
    EXPECT_FALSE(Selects("{City} like 'r?'", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{City} like ['P*', 'R*']", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{N} like '*aab'", {{"N", Value::Text("aaaaab")}}));
}

TEST(RecordSelectionFormula, StartsWithComparesTheBeginning) {
    EXPECT_TRUE(Selects("{City} startswith 'RO' and {City} startswith ''", {{"City", Rome}}));
    EXPECT_FALSE(Selects("{City} startswith 'Romeo'", {{"City", Rome}}));
    EXPECT_TRUE(Selects("{City} startswith ['X', 'ro']", {{"City", Rome}}));
}

TEST(RecordSelectionFormula, CalculatesByTheUsualRanks) {
    EXPECT_EQ(ValueOf("1 + 2 * 3").AsInteger(), 7);
    EXPECT_EQ(ValueOf("(1 + 2) * 3").AsInteger(), 9);
    EXPECT_DOUBLE_EQ(ValueOf("7 / 2").AsReal(), 3.5);
    EXPECT_EQ(ValueOf("7 \\ 2").AsInteger(), 3);
    EXPECT_EQ(ValueOf("-7 mod 3").AsInteger(), -1);
    EXPECT_DOUBLE_EQ(ValueOf("2 ^ 3 ^ 2").AsReal(), 64);
    EXPECT_DOUBLE_EQ(ValueOf("-2 ^ 2").AsReal(), -4);
    EXPECT_EQ(ValueOf("10 - 3 - 2").AsInteger(), 5);
    EXPECT_EQ(ValueOf("'a' & 1 + 1").AsText(), "a2");
    EXPECT_EQ(ValueOf("'a' + 'b'").AsText(), "ab");
}

TEST(RecordSelectionFormula, DecimalsAreExact) {
    const auto decimal = [](std::string_view text) { return Value::Decimal(Decimal::OfText(text).value()); };
    const std::map<std::string, Value> row{{"A", decimal("0.1")}, {"B", decimal("0.20")}};
    EXPECT_EQ(expr::TextOf(ValueOf("{A} + {B}", row), FindCulture("")), "0.30");
    EXPECT_EQ(expr::TextOf(ValueOf("-{B}", row), FindCulture("")), "-0.20");
    EXPECT_EQ(expr::TextOf(ValueOf("{A} * 3 - {B} / 2", row), FindCulture("")), "0.20");
    EXPECT_EQ(ValueOf("{A} * 1.5", row).kind(), Kind::Real);
    EXPECT_EQ(ValueOf("{B} mod 2", row).AsInteger(), 0);
    EXPECT_TRUE(Selects("{A} = 0.1 and {A} + {B} = 0.3 and {A} in [0.1] and {B} in 0.1 to 0.2", row));
    EXPECT_TRUE(Selects("{A} = '0.10' and Round({B}, 1) = 0.2", row));
    EXPECT_EQ(ValueOf("{A} / 0", row).kind(), Kind::Error);
    EXPECT_EQ(ValueOf("{M} + 1", {{"M", Value::Decimal({Decimal::MostCoefficient, 0, false})}}).kind(),
              Kind::Error);
}

TEST(RecordSelectionFormula, LargeNumbersNeitherWrapNorTrap) {
    EXPECT_DOUBLE_EQ(ValueOf("9223372036854775807 + 1").AsReal(), 9223372036854775808.0);
    EXPECT_EQ(ValueOf("1 / 0").kind(), Kind::Error);
    EXPECT_EQ(ValueOf("1 mod 0.2").kind(), Kind::Error);
    EXPECT_EQ(ValueOf("10 ^ 400").kind(), Kind::Error);
    EXPECT_THROW(Selects("1 / 0 = 1"), Error);
}

TEST(RecordSelectionFormula, ReadsDates) {
    const std::map<std::string, Value> row{{"D", Value::DateTime(MakeTicks(2024, 2, 29))}};
    EXPECT_TRUE(Selects("{D} = Date(2024, 2, 29)", row));
    EXPECT_TRUE(Selects("{D} = #2024-02-29# and {D} = #2/29/2024#", row));
    EXPECT_TRUE(Selects("{D} in Date(2024,1,1) to DateTime(2024,12,31,23,59,59)", row));
    EXPECT_TRUE(Selects("{D} + 1 = Date(2024,3,1) and {D} - Date(2024,2,1) = 28", row));
    EXPECT_TRUE(Selects("Year({D}) = 2024 and Month({D}) = 2 and Day({D}) = 29 and DayOfWeek({D}) = 5", row));
    EXPECT_TRUE(
        Selects("DateAdd('m', 1, {D}) = Date(2024,3,29) and DateDiff('d', {D}, Date(2024,3,1)) = 1", row));
    EXPECT_TRUE(Selects("{D} = '2024-02-29'", row));
}

TEST(RecordSelectionFormula, TodayIsTheDayOfTheRun) {
    EXPECT_EQ(ValueOf("CurrentDate").AsTicks(), MakeTicks(2025, 6, 15));
    EXPECT_EQ(ValueOf("Today()").AsTicks(), MakeTicks(2025, 6, 15));
    EXPECT_EQ(ValueOf("Now").AsTicks(), MakeTicks(2025, 6, 15, 13, 30, 0));
}

TEST(RecordSelectionFormula, HasTextFunctions) {
    EXPECT_EQ(ValueOf("UpperCase('aé') & UCase('b') & LowerCase('C') & LCase('D')").AsText(), "AÉBcd");
    EXPECT_EQ(ValueOf("Left('abcdef', 2) & Right('abcdef', 2) & Mid('abcdef', 3, 2)").AsText(), "abefcd");
    EXPECT_EQ(ValueOf("Len('häß') + Length(' ')").AsInteger(), 4);
    EXPECT_EQ(ValueOf("InStr('abc', 'c')").AsInteger(), 3);
    EXPECT_EQ(ValueOf("Replace(Trim('  a-b '), '-', '+')").AsText(), "a+b");
    EXPECT_EQ(ValueOf("StrReverse('abc')").AsText(), "cba");
    EXPECT_EQ(ValueOf("ToText(1234.5, 2) & '|' & ToText(12)").AsText(), "1,234.50|12");
    EXPECT_EQ(ValueOf("ToText(Date(2024,2,3), 'yyyy-MM-dd')").AsText(), "2024-02-03");
    EXPECT_EQ(ValueOf("ToNumber('1,234') + Val('12 apples')").AsDouble(), 1246);
}

TEST(RecordSelectionFormula, HasNumberFunctions) {
    EXPECT_EQ(ValueOf("Abs(-3) + Sgn(-2) + Sqr(16) + Int(-1.5) + Truncate(-1.5)").AsInteger(),
              3 - 1 + 4 - 2 - 1);
    EXPECT_DOUBLE_EQ(ValueOf("Round(2.345, 2)").AsDouble(), 2.35);
    EXPECT_DOUBLE_EQ(ValueOf("Round(-2.5)").AsDouble(), -3);
    EXPECT_DOUBLE_EQ(ValueOf("Remainder(7.5, 2)").AsDouble(), 1.5);
}

std::string TextOf(std::string_view text) {
    const Value value = ValueOf(text);
    return value.IsError() ? "error" : ToText(value, FindCulture("en-US"));
}

TEST(RecordSelectionFormula, EveryTextFunction) {
    const std::pair<const char*, const char*> cases[] = {
        {"TrimLeft('  a') & TrimRight('b  ') & '|'", "ab|"},
        {"LTrim(' a') & RTrim('b ')", "ab"},
        {"InStrRev('abcb', 'b')", "4"},
        {"InStr('abc', 'z')", "0"},
        {"ReplicateString('ab', 3)", "ababab"},
        {"ReplicateString('ab', 0)", ""},
        {"ReplicateString('ab', -1)", "error"},
        {"ReplicateString('ab', 1000000000)", "error"},
        {"ProperCase('john SMITH')", "John Smith"},
        {"StrCmp('a', 'b') & StrCmp('b', 'a') & StrCmp('a', 'a')", "-110"},
        {"StrCmp('a', 'A', 1)", "0"},
        {"Chr(65) & ChrW(8364) & Asc('A') & AscW('€')", "A€658364"},
        {"Join(Split('a,b', ','), '-')", "a-b"},
        {"Space(2) & '|'", "  |"},
        {"Mid('abc', 0)", "error"},
        {"Left('abc', -1)", "error"},
        {"ToNumber('x')", "error"},
        {"IsNumeric('12') & NumericText('1x')", "TrueFalse"},
        {"CStr(1.5, 1)", "1.5"},
    };
    for (const auto& [source, expected] : cases) {
        EXPECT_EQ(TextOf(source), expected) << source;
    }
    EXPECT_TRUE(Selects("{City} in Split('Bonn,Rome', ',')", {{"City", Rome}}));
}

TEST(RecordSelectionFormula, EveryNumberFunction) {
    const std::pair<const char*, const char*> cases[] = {
        {"Exp(0) + Log(1) + Sin(0) + Cos(0) + Tan(0) + Atn(0)", "2"},
        {"Round(Pi, 4)", "3.1416"},
        {"Ceiling(1.2) & Floor(-1.2) & Int(-1.2) & Fix(-1.7)", "2-2-2-1"},
        {"RoundUp(1.21, 1) & ' ' & RoundUp(-1.2)", "1.3 -2"},
        {"Truncate(1.567, 2)", "1.56"},
        {"Sqr(-1)", "error"},
        {"Log(0)", "error"},
        {"Remainder(1, 0)", "error"},
        {"Abs('x')", "error"},
        {"Sgn(0)", "0"},
    };
    for (const auto& [source, expected] : cases) {
        EXPECT_EQ(TextOf(source), expected) << source;
    }
}

TEST(RecordSelectionFormula, EveryDateFunction) {
    const std::pair<const char*, const char*> cases[] = {
        {"Hour(Now) & Minute(Now) & Second(Now)", "13300"},
        {"Time(13, 30, 0) = CurrentTime", "True"},
        {"TimeValue('1:30 PM') = TimeSerial(13, 30, 0)", "True"},
        {"CTime(Now) = Time(13, 30, 0)", "True"},
        {"Time(24, 0, 0)", "error"},
        {"MonthName(6) & WeekdayName(1, true)", "JuneSun"},
        {"DatePart('q', Date(2024, 5, 1))", "2"},
        {"DateDiff('ww', Date(2024, 1, 6), Date(2024, 1, 7))", "1"},
        {"DateSerial(2024, 3, 0) = Date(2024, 2, 29)", "True"},
        {"IsDate('2024-02-30') & IsDate('2024-02-29')", "FalseTrue"},
        {"CDateTime('2024-02-29 10:15') = DateTime(2024, 2, 29, 10, 15, 0)", "True"},
        {"DateValue('2024-02-29 10:15') = Date(2024, 2, 29)", "True"},
        {"Date('x')", "error"},
        {"Weekday(Date(2024, 2, 29), 2)", "4"},
        {"Year('x')", "error"},
    };
    for (const auto& [source, expected] : cases) {
        EXPECT_EQ(TextOf(source), expected) << source;
    }
}

TEST(RecordSelectionFormula, NamedPeriodsCountFromTheDayOfTheRun) {
    // The run is on Sunday, 2025-06-15.
    struct Case {
        const char* period;
        std::int64_t first, last;
    };
    const Case cases[] = {
        {"MonthToDate", MakeTicks(2025, 6, 1), MakeTicks(2025, 6, 15)},
        {"YearToDate", MakeTicks(2025, 1, 1), MakeTicks(2025, 6, 15)},
        {"WeekToDateFromSun", MakeTicks(2025, 6, 15), MakeTicks(2025, 6, 15)},
        {"Last7Days", MakeTicks(2025, 6, 9), MakeTicks(2025, 6, 15)},
        {"LastFullWeek", MakeTicks(2025, 6, 8), MakeTicks(2025, 6, 14)},
        {"LastFullMonth", MakeTicks(2025, 5, 1), MakeTicks(2025, 5, 31)},
        {"Last4WeeksToSun", MakeTicks(2025, 5, 19), MakeTicks(2025, 6, 15)},
        {"LastYearMTD", MakeTicks(2024, 6, 1), MakeTicks(2024, 6, 15)},
        {"LastYearYTD", MakeTicks(2024, 1, 1), MakeTicks(2024, 6, 15)},
        {"Aged0To30Days", MakeTicks(2025, 5, 16), MakeTicks(2025, 6, 15)},
        {"Aged31To60Days", MakeTicks(2025, 4, 16), MakeTicks(2025, 5, 15)},
        {"Next30Days", MakeTicks(2025, 6, 15), MakeTicks(2025, 7, 15)},
        {"Calendar1stQtr", MakeTicks(2025, 1, 1), MakeTicks(2025, 3, 31)},
        {"Calendar4thQtr", MakeTicks(2025, 10, 1), MakeTicks(2025, 12, 31)},
        {"Calendar1stHalf", MakeTicks(2025, 1, 1), MakeTicks(2025, 6, 30)},
        {"AllDatesToToday", 0, MakeTicks(2025, 6, 15)},
        {"AllDatesFromTomorrow", MakeTicks(2025, 6, 16), MakeTicks(9999, 12, 31)},
        {"Aged61To90Days", MakeTicks(2025, 3, 17), MakeTicks(2025, 4, 15)},
        {"Over90Days", 0, MakeTicks(2025, 3, 16)},
        {"Next31To60Days", MakeTicks(2025, 7, 16), MakeTicks(2025, 8, 14)},
        {"Next61To90Days", MakeTicks(2025, 8, 15), MakeTicks(2025, 9, 13)},
        {"Next91To365Days", MakeTicks(2025, 9, 14), MakeTicks(2026, 6, 15)},
        {"Calendar2ndQtr", MakeTicks(2025, 4, 1), MakeTicks(2025, 6, 30)},
        {"Calendar3rdQtr", MakeTicks(2025, 7, 1), MakeTicks(2025, 9, 30)},
        {"Calendar2ndHalf", MakeTicks(2025, 7, 1), MakeTicks(2025, 12, 31)},
        {"AllDatesToYesterday", 0, MakeTicks(2025, 6, 14)},
        {"AllDatesFromToday", MakeTicks(2025, 6, 15), MakeTicks(9999, 12, 31)},
    };
    for (const auto& [period, first, last] : cases) {
        const std::string formula = "{D} in " + std::string(period);
        EXPECT_TRUE(Selects(formula, {{"D", Value::DateTime(first)}})) << period;
        EXPECT_TRUE(Selects(formula, {{"D", Value::DateTime(last + TicksPerDay - 1)}})) << period;
        EXPECT_FALSE(first > 0 && Selects(formula, {{"D", Value::DateTime(first - 1)}})) << period;
        EXPECT_FALSE(Selects(formula, {{"D", Value::DateTime(last + TicksPerDay)}}) && last < MaxTicks / 2)
            << period;
    }
    EXPECT_TRUE(
        Selects("not ({D} in [LastFullMonth, Next30Days])", {{"D", Value::DateTime(MakeTicks(2025, 6, 5))}}));
    EXPECT_FALSE(Selects("{D} in MonthToDate"));
    EXPECT_EQ(CompileError("{D} = LastFullMonth"),
              "Record selection formula: \"lastfullmonth\" can only stand after in, at character 7");
}

TEST(RecordSelectionFormula, ChooseAndSwitchPickAValue) {
    EXPECT_EQ(TextOf("Choose(2, 'a', 'b')"), "b");
    EXPECT_EQ(TextOf("Choose(3, 'a', 'b')"), "");
    EXPECT_EQ(TextOf("Switch({X} = 1, 'a', true, 'b')"), "b");
    EXPECT_EQ(TextOf("Switch(1, 'a')"), "error");
}

TEST(RecordSelectionFormula, IfChooses) {
    const std::string_view text = "if {N} > 5 then {City} = 'Rome' else {City} = 'Bonn'";
    EXPECT_TRUE(Selects(text, {{"N", Value::Integer(6)}, {"City", Rome}}));
    EXPECT_FALSE(Selects(text, {{"N", Value::Integer(5)}, {"City", Rome}}));
    EXPECT_EQ(ValueOf("iif({N} is null, 'none', 'some')").AsText(), "none");
}

TEST(RecordSelectionFormula, CommentsRunToTheEndOfTheLine) {
    EXPECT_TRUE(Selects("// all of them\ntrue // and more ' \""));
}

TEST(RecordSelectionFormula, KeepsTableAndFieldOfEachNameOnce) {
    const Formula formula(
        "{Order Details.Unit Price} > 1 and {order details.UNIT PRICE} < 9 and {?Until} > {x}");
    ASSERT_EQ(formula.Fields().size(), 2u);
    EXPECT_EQ(formula.Fields()[0].table, "Order Details");
    EXPECT_EQ(formula.Fields()[0].field, "Unit Price");
    EXPECT_EQ(formula.Fields()[1].table, "");
    ASSERT_EQ(formula.Parameters().size(), 1u);
    EXPECT_EQ(formula.Parameters()[0].name, "Until");
}

TEST(RecordSelectionFormula, ErrorsNamePositionAndWord) {
    EXPECT_EQ(CompileError("{A} = bogus"),
              "Record selection formula: \"bogus\" is not known, at character 7");
    EXPECT_EQ(CompileError("{A} = "),
              "Record selection formula: something is missing at the end, at character 7");
    EXPECT_NE(CompileError("{A} = 'x").find("no closing mark, at character 7"), std::string::npos);
    EXPECT_NE(CompileError("{A = 1").find("no closing }, at character 1"), std::string::npos);
    EXPECT_NE(CompileError("(1 = 1").find("\")\" is missing before the end"), std::string::npos);
    EXPECT_NE(CompileError("left('a') = 'a'").find("\"left\" does not take 1 values, at character 1"),
              std::string::npos);
    EXPECT_NE(CompileError("{A} in [1, 2").find("\"]\" is missing"), std::string::npos);
    EXPECT_NE(CompileError("#banana# = 1").find("\"banana\" is no date"), std::string::npos);
    EXPECT_NE(CompileError("1 = 1 ; drop").find("\";\" has no meaning, at character 7"), std::string::npos);
    EXPECT_EQ(CompileError("{A} = 'it''s' 'x'").find('\''), std::string::npos);
}

TEST(RecordSelectionFormula, PositionsCountCharacters) {
    EXPECT_EQ(CompileError("{Straße} = 'Köln' andd true"),
              "Record selection formula: \"andd\" is not expected here, at character 19");
    EXPECT_EQ(CompileError("{Ä} = 5ü"), "Record selection formula: \"5ü\" is no number, at character 7");
    EXPECT_EQ(Formula("'ä' = {?Ö}").Parameters()[0].position, 7u);
}

std::string RunError(std::string_view text, const std::map<std::string, Value>& fields) {
    return ErrorRaisedBy([&] { Selects(text, fields); });
}

TEST(RecordSelectionFormula, ErrorsOfARowNameTheirPlaceToo) {
    const std::map<std::string, Value> row{{"N", Value::Integer(0)}, {"City", Rome}};
    EXPECT_EQ(RunError("{City} = 'Rome' and 1 / {N} > 2", row),
              "Record selection formula: it divides by zero, at character 21");
    EXPECT_EQ(RunError("{N} = 5 or {City} in [1, 2 to tonumber({City})]", row),
              "Record selection formula: \"Rome\" cannot be compared with \"1\", at character 12");
    EXPECT_EQ(RunError("if {N} = 0 then tonumber({City}) = 1 else 1 / {N} = 1", row),
              "Record selection formula: \"Rome\" is no number, at character 17");
}

TEST(RecordSelectionFormula, WhatAChoiceDoesNotPickMayFail) {
    const std::map<std::string, Value> zero{{"N", Value::Integer(0)}};
    EXPECT_TRUE(Selects("iif({N} = 0, 0, 1 / {N}) = 0", zero));
    EXPECT_TRUE(Selects("switch({N} = 0, 0, true, 1 / {N}) = 0", zero));
    EXPECT_TRUE(Selects("choose(2, 1 / {N}, 7) = 7", zero));
    EXPECT_EQ(RunError("iif({N} = 0, 1 / {N}, 0) = 0", zero),
              "Record selection formula: it divides by zero, at character 1");
    EXPECT_EQ(RunError("iif(1 / {N} = 1, 1, 0) = 0", zero),
              "Record selection formula: it divides by zero, at character 5");
}

TEST(RecordSelectionFormula, MixedKindsAreAnErrorOfTheRow) {
    EXPECT_EQ(ValueOf("{City} > 5", {{"City", Rome}}).kind(), Kind::Error);
    EXPECT_THROW(Selects("{City}", {{"City", Rome}}), Error);
    EXPECT_TRUE(Selects("{N} = 5", {{"N", Value::Text("5")}}));
}

TEST(RecordSelectionFormula, DepthIsBounded) {
    const std::string open(100'000, '('), close(100'000, ')');
    EXPECT_NE(CompileError(open + "1" + close).find("too deeply"), std::string::npos);
    std::string sum = "1";
    for (int i = 0; i < 20'000; ++i) {
        sum += "+1";
    }
    EXPECT_NE(CompileError(sum).find("too deeply"), std::string::npos);
}

TEST(RecordSelectionFormula, LongChainsAreNotDeep) {
    std::string any = "{N} = 0";
    for (int i = 1; i < 5'000; ++i) {
        any += " or {N} = " + std::to_string(i);
    }
    EXPECT_TRUE(Selects(any, {{"N", Value::Integer(4'999)}}));
    EXPECT_FALSE(Selects(any, {{"N", Value::Integer(5'000)}}));
}

TEST(RecordSelectionFormula, NullInAListLeavesWhatIsNotFoundUnknown) {
    const auto n = [](std::int64_t number) {
        return std::map<std::string, Value>{{"N", Value::Integer(number)}};  // {M} is null
    };
    EXPECT_TRUE(ValueOf("{N} in [{M}, 5]", n(5)).AsBoolean());
    EXPECT_TRUE(ValueOf("{N} in [{M}, 5]", n(3)).IsNull());
    EXPECT_TRUE(ValueOf("not ({N} in [{M}, 5])", n(3)).IsNull());
    EXPECT_FALSE(Selects("not ({N} in [{M}, 5])", n(3)));
    EXPECT_FALSE(Selects("not ({N} in [{M}, 5])", n(5)));
    EXPECT_TRUE(Selects("not ({N} in [4, 5])", n(3)));
    EXPECT_TRUE(ValueOf("{M} in [4, 5]", n(3)).IsNull());
    EXPECT_TRUE(ValueOf("{N} in [{M} to 4, 9]", n(3)).IsNull());
    EXPECT_TRUE(ValueOf("{N} = 3 and {M} = 1", n(3)).IsNull());
    EXPECT_FALSE(ValueOf("{N} = 4 and {M} = 1", n(3)).AsBoolean());
    EXPECT_TRUE(ValueOf("{N} = 3 or {M} = 1", n(3)).AsBoolean());
    EXPECT_TRUE(ValueOf("{N} = 4 or {M} = 1", n(3)).IsNull());
}

TEST(RecordSelectionFormula, BothEndsOfARangeBelongToIt) {
    for (const std::int64_t number : {1, 3, 5}) {
        EXPECT_TRUE(Selects("{N} in 1 to 5", {{"N", Value::Integer(number)}})) << number;
    }
    EXPECT_FALSE(Selects("{N} in 1 to 5", {{"N", Value::Integer(0)}}));
    EXPECT_FALSE(Selects("{N} in 1 to 5", {{"N", Value::Integer(6)}}));
}

TEST(RecordSelectionFormula, TimesOfDayHaveTheirEnds) {
    EXPECT_EQ(ValueOf("time(23, 59, 59)").AsTicks(), TicksPerDay - TicksPerSecond);
    EXPECT_EQ(ValueOf("time(0, 0, 0)").AsTicks(), 0);
    EXPECT_EQ(ValueOf("time(1, 2, 3)").AsTicks(), 3723 * TicksPerSecond);
    for (const char* text : {"time(24, 0, 0)", "time(0, 60, 0)", "time(0, 0, 60)", "time(0, 0, -1)"}) {
        EXPECT_TRUE(ValueOf(text).IsError()) << text;
    }
}

}  // namespace
}  // namespace rdl::formula
