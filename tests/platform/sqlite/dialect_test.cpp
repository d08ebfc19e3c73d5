// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/sqlite/dialect.h"

#include <random>
#include <string_view>

#include "data_fixture.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/regional.h"
#include "platform/data_provider/statement_text.h"
#include "platform/data_provider/tokens.h"

namespace {

struct Translation {
    const char* statement;
    const char* expected;
};

class DialectText : public testing::TestWithParam<Translation> {};

TEST_P(DialectText, IsToldToSqlite) {
    EXPECT_EQ(TranslateDialect(GetParam().statement), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Top, DialectText,
    testing::Values(
        Translation{"select top 10 a from t order by a", "select a from t order by a limit 10"},
        Translation{"SELECT  TOP 3 * FROM t", "SELECT * FROM t limit 3"},
        Translation{"select distinct top 2 a from t", "select distinct a from t limit 2"},
        Translation{"select top 1 a from t ; ", "select a from t limit 1 ; "},
        Translation{"select top 1 a from t -- all; of it", "select a from t limit 1 -- all; of it"},
        Translation{"select a from (select top 2 a from t order by b) where a > 1",
                    "select a from (select a from t order by b limit 2) where a > 1"},
        Translation{"select top 4 a from t where b in (select top 1 b from u)",
                    "select a from t where b in (select b from u limit 1) limit 4"},
        Translation{"select top, a from t", "select top, a from t"},
        Translation{"select a as top from t", "select a as top from t"},
        Translation{"select top 1 a from t; delete from t", "select a from t limit 1; delete from t"},
        Translation{"select /* top 5 */ a from t", "select /* top 5 */ a from t"},
        Translation{"insert into t values('select top 5 a')", "insert into t values('select top 5 a')"}));

INSTANTIATE_TEST_SUITE_P(
    Moments, DialectText,
    testing::Values(
        Translation{"select top 10 a from t order by lastrun desc",
                    "select a from t order by lastrun collate moment desc limit 10"},
        Translation{"select a from t ORDER  BY r.LastRun",
                    "select a from t ORDER  BY r.LastRun collate moment"},
        Translation{"select a from t order by a, [LastRun] asc, \"lastrun\"; ",
                    "select a from t order by a, [LastRun] collate moment asc, \"lastrun\" collate moment; "},
        Translation{"select a from (select top 1 lastrun from t order by lastrun) where lastrun > 1",
                    "select a from (select lastrun from t order by lastrun collate moment limit 1) where "
                    "lastrun > 1"},
        Translation{"select lastrun from t group by lastrun", "select lastrun from t group by lastrun"},
        Translation{"select a from t order by left(lastrun, 4)",
                    "select a from t order by \"left\"(lastrun, 4)"},
        Translation{"select a from t order by lastrun collate nocase",
                    "select a from t order by lastrun collate nocase"},
        Translation{"select a from t order by 'lastrun', lastrun + 1",
                    "select a from t order by 'lastrun', lastrun + 1"}));

INSTANTIATE_TEST_SUITE_P(
    Left, DialectText,
    testing::Values(Translation{"select left(a,3) from t", "select \"left\"(a,3) from t"},
                    Translation{"select Left (a,3) from t", "select \"left\" (a,3) from t"},
                    Translation{"select a from t left outer join u on t.a = u.a",
                                "select a from t left outer join u on t.a = u.a"},
                    Translation{"select a from t left join (select b from u) on a = b",
                                "select a from t left join (select b from u) on a = b"},
                    Translation{"select [left], \"left(\" from t", "select [left], \"left(\" from t"}));

INSTANTIATE_TEST_SUITE_P(
    Quotes, DialectText,
    testing::Values(
        Translation{"select a from t where a = 'it''s left(x,1)'",
                    "select a from t where a = 'it''s left(x,1)' collate nocase"},
        Translation{"select a from t where 'x' <> a", "select a from t where 'x' collate nocase <> a"},
        Translation{"select a as 'name' from t", "select a as 'name' from t"},
        Translation{"insert into t(a) values('x', 'y')", "insert into t(a) values('x', 'y')"},
        Translation{"pragma encoding = 'UTF-8'", "pragma encoding = 'UTF-8'"},
        Translation{"insert into t([Password]) values('[a]')", "insert into t([Password]) values('[a]')"},
        Translation{"select '", "select '"}, Translation{"select [a", "select [a"}, Translation{"", ""},
        Translation{")))(((", ")))((("}, Translation{"select top 5", "select limit 5"}));

TEST(DialectRest, MayBeBlanksCommentsAndSemicolons) {
    EXPECT_TRUE(IsBlankStatement(" ; -- done\n /* and\n out */ ;"));
    EXPECT_FALSE(IsBlankStatement(" ; x"));
    EXPECT_FALSE(IsBlankStatement("-- a\n delete from t"));
    EXPECT_FALSE(IsBlankStatement("''"));
}

TEST(Tokens, EveryByteOfAnyStatementLiesInOneToken) {
    constexpr std::string_view Letters = "a'\"`[](-*/); \n09.x<=>\xc3\xbc";
    std::minstd_rand random(1);
    for (int round = 0; round < 20'000; ++round) {
        std::string statement;
        for (auto length = random() % 30; length > 0; --length) {
            statement += Letters[random() % Letters.size()];
        }
        std::string joined;
        for (const Token& token : Tokenize(statement)) {
            ASSERT_FALSE(token.text.empty());
            joined += token.text;
        }
        ASSERT_EQ(joined, statement);
        TranslateDialect("select top 3 " + statement);
    }
}

class Dialect : public DataFixture {
 protected:
    ~Dialect() override {
        SetRegional({});
        SetClock(nullptr);
    }
};

class NoonOfMarch : public Clock {
 public:
    DateValue Now() const override {
        return DateValue::FromSeconds(DateSerial(2002, 3, 7).Seconds() + 43200);
    }
};

TEST_F(Dialect, TopGivesTheFirstRowsOfTheOrder) {
    for (const char* title : {"c", "a", "b"}) {
        Execute(std::string("insert into Schedule(ReportTitle) values('") + title + "')");
    }
    EXPECT_EQ(Column("select top 2 ReportTitle from Schedule order by ReportTitle desc"),
              (std::vector<std::string>{"c", "b"}));
    EXPECT_EQ(
        Column("select top 1 r.ReportTitle from Schedule r inner join Schedule x on r.ReportID = x.ReportID "
               "where r.ReportID > 0 order by r.ReportTitle"),
        std::vector<std::string>{"a"});
}

TEST_F(Dialect, LeftCutsLettersNotBytes) {
    EXPECT_EQ(Single("select left('Übersicht', 2)"), "Üb");
    EXPECT_EQ(Single("select left('ab', 5)"), "ab");
    EXPECT_EQ(Single("select left('ab', 0)"), "");
    EXPECT_EQ(Single("select left(Null, 1) is null"), "1");
    EXPECT_EQ(NumberRaisedBy([this] { Column("select left('ab', -1)"); }), err::DataSyntax);
}

TEST_F(Dialect, LeftOuterJoinKeepsRowsWithoutAPartner) {
    Execute("insert into Schedule(ReportTitle) values('lonely')");
    EXPECT_EQ(
        Single("select r.ReportTitle from Schedule r  left outer join History x on r.ReportID = x.ReportID "
               "Where r.ReportTitle = 'LONELY'"),
        "lonely");
}

TEST_F(Dialect, DateDifferencesCountCalendarDays) {
    EXPECT_EQ(Single("select datediff('d', '2002-03-06 23:59:59', '2002-03-07')"), "1");
    EXPECT_EQ(Single("select DateDiff('D', '2002-03-07', '2002-03-01, 08:00:00')"), "-6");
    EXPECT_EQ(Single("select datediff('d', Null, Now()) is null"), "1");
    SetRegional({DateOrder::DayMonthYear, '.'});
    EXPECT_EQ(Single("select datediff('d', '06.03.2002', '07.03.2002 14:00:00')"), "1");
}

TEST_F(Dialect, NowIsTheClockOfThePlatform) {
    const NoonOfMarch clock;
    SetClock(&clock);
    EXPECT_EQ(Single("select Now()"), "2002-03-07 12:00:00");
    EXPECT_EQ(Single("select datediff('d', '2002-02-05', Now())"), "30");
}

TEST_F(Dialect, HistoryComesNewestFirstInWhateverFormItsMomentsStand) {
    struct Region {
        RegionalSettings settings;
        std::vector<const char*> onDemand;  // of 8 and 9 March, with a row of the poll between them
    };
    for (const Region& region :
         {Region{{DateOrder::MonthDayYear, '/'}, {"03/08/2002 09:00:00", "03/09/2002 07:30:00"}},
          Region{{DateOrder::DayMonthYear, '/'}, {"08/03/2002 09:00:00", "09/03/2002 07:30:00"}},
          Region{{DateOrder::DayMonthYear, '.'}, {"08.03.2002 09:00:00", "09.03.2002 07:30:00"}},
          Region{{}, {"2002-03-08 09:00:00", "2002-03-09 07:30:00"}}}) {
        SetRegional(region.settings);
        Execute("delete from History");
        int key = 0;
        for (const char* moment :
             {"2002-02-28 23:59:59", region.onDemand[1], "no moment", "2002-03-08 14:00:00",
              "2001-12-31 08:00:00", "", region.onDemand[0], "2002-03-08 09:00:00"}) {
            Execute("insert into History(ReportID, LastRun) values(" + std::to_string(++key) + ",'" + moment +
                    "')");
        }
        Execute("insert into History(ReportID) values(9)");
        EXPECT_EQ(Column("select top 10 ReportID from History order by lastrun desc"),
                  (std::vector<std::string>{"2", "4", "7", "8", "1", "5", "3", "6", "9"}))
            << region.onDemand[0];
        EXPECT_EQ(Column("select top 3 ReportID from History order by lastrun desc"),
                  (std::vector<std::string>{"2", "4", "7"}));
    }
}

TEST_F(Dialect, HistoryOlderThanThirtyDaysGoes) {
    const NoonOfMarch clock;
    SetClock(&clock);
    Execute("insert into History(ReportID, LastRun) values(1, '2002-02-05 23:00:00')");
    Execute("insert into History(ReportID, LastRun) values(2, '2002-02-04, 23:00:00')");
    Execute("insert into History(ReportID, LastRun) values(3, Null)");
    Execute("delete from history where datediff('d',left(lastrun,10), Now()) > 30");
    EXPECT_EQ(Column("select ReportID from History"), (std::vector<std::string>{"1", "3"}));
}

TEST_F(Dialect, TextThatIsNoDateFailsTheStatementAndChangesNothing) {
    Execute("insert into History(ReportID, LastRun) values(1, '1999-01-01')");
    Execute("insert into History(ReportID, LastRun) values(2, 'yesterday')");
    EXPECT_EQ(
        NumberRaisedBy([this] { Execute("delete from History where datediff('d',lastrun, Now()) > 30"); }),
        err::DataTypeMismatch);
    EXPECT_EQ(Single("select count(*) from History"), "2");
    EXPECT_EQ(NumberRaisedBy([this] { Column("select datediff('m', '2002-01-01', '2002-02-01')"); }),
              err::DataSyntax);
}

TEST_F(Dialect, TextsCompareWithoutRegardToCase) {
    Execute("insert into Schedule(ReportTitle) values('Übersicht Nord')");
    for (const char* condition :
         {"reporttitle = 'übersicht nord'", "'ÜBERSICHT NORD' = ReportTitle",
          "reporttitle in ('übersicht NORD')", "reporttitle like 'ÜBER%NORD'",
          "'100%' like '1__!%' escape '!'", "'(a' like '(%'", "left(reporttitle, 9) = 'ÜBERSICHT'",
          "'a' = 'A'", "left('Abc',1) = 'a'", "'a' in ('A')", "not reporttitle <> 'ÜBERSICHT nord'",
          "left(reporttitle,1) between 'ü' and 'Ü'"}) {
        EXPECT_EQ(Single(std::string("select count(*) from Schedule where ") + condition), "1") << condition;
    }
    EXPECT_EQ(Column("select ReportTitle from Schedule where reporttitle not like '(%' order by reporttitle")
                  .size(),
              1U);
}

TEST_F(Dialect, NumbersCompareWithTextsOfTheirDigits) {
    Execute("insert into Schedule(ReportTitle, Folder) values('a', 5)");
    EXPECT_EQ(Single("select count(*) from Schedule where Folder = '5'"), "1");
}

TEST_F(Dialect, ReservedNamesStandInBrackets) {
    Execute("insert into Schedule(ReportTitle, [Password]) values('a', 'secret')");
    Execute("update Schedule set [Password] = 'other' where ReportTitle = 'A'");
    EXPECT_EQ(Single("select [password] from schedule"), "other");
}

TEST_F(Dialect, DeepNestingIsRefusedNotFollowed) {
    const std::string open(200'000, '(');
    EXPECT_EQ(NumberRaisedBy([&] { Column("select " + open + "1"); }), err::DataSyntax);
}

}  // namespace
