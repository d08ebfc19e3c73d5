// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/dialect.h"

#include <gtest/gtest.h>

#include "platform/contracts/regional.h"
#include "support/fakes.h"
#include "support/raises.h"

namespace {

struct Translation {
    const char* statement;
    const char* expected;
};

class ServerDialect : public testing::TestWithParam<Translation> {
 protected:
    ServerDialect() { SetRegional({}); }
    fakes::FakeClock clock{fakes::At(2026, 11, 21, 14, 5, 9)};
};

TEST_P(ServerDialect, IsToldToTheServer) {
    EXPECT_EQ(TranslateForServer(GetParam().statement), GetParam().expected);
}

INSTANTIATE_TEST_SUITE_P(
    Order, ServerDialect,
    testing::Values(
        Translation{"select * from ReportParameter where ReportID = 5",
                    "select * from ReportParameter where ReportID = 5 order by ReportParameter.rowid"},
        Translation{"select a from t order by a", "select a from t order by a nulls first,t.rowid"},
        Translation{"select a from t order by a desc, b asc ; ",
                    "select a from t order by a desc nulls last, b asc nulls first,t.rowid "},
        Translation{"select a from t order by a nulls last", "select a from t order by a nulls last,t.rowid"},
        Translation{
            "select x.a from ReportBatch b inner join ReportBatchDtls as r on b.ReportID = r.ReportID "
            "Where r.a = 1",
            "select x.a from ReportBatch b inner join ReportBatchDtls as r on b.ReportID = r.ReportID "
            "Where r.a = 1 order by b.rowid,r.rowid"},
        Translation{"select * from t r left outer join u x on r.a = x.a where r.a = 2",
                    "select * from t r left outer join u x on r.a = x.a where r.a = 2 order by "
                    "r.rowid,x.rowid"},
        Translation{"select a from t, u", "select a from t, u order by t.rowid,u.rowid"},
        Translation{"select a from oxbow_courier.t", "select a from oxbow_courier.t order by t.rowid"},
        Translation{"select count(*) from t", "select count(*) from t"},
        Translation{"select max(a) as b from t", "select max(a) as b from t"},
        Translation{"select a from t group by a", "select a from t group by a"},
        Translation{"select a from t union all select a from u", "select a from t union all select a from u"},
        Translation{"select a from (select a from t) x", "select a from (select a from t) x"},
        Translation{
            "select distinct frequency from reportscheduler",
            "select frequency from (select distinct on ( frequency) frequency,reportscheduler.rowid "
            "from reportscheduler order by frequency,reportscheduler.rowid) as firsts order by rowid"},
        Translation{"delete from t where a =(select b from u where c =3)",
                    "delete from t where a =(select b from u where c =3)"},
        Translation{"insert into t(a) values('select a from t')",
                    "insert into t(a) values('select a from t')"}));

INSTANTIATE_TEST_SUITE_P(
    Top, ServerDialect,
    testing::Values(Translation{"select top 10 a from t order by b",
                                "select a from t order by b nulls first,t.rowid limit 10"},
                    Translation{"SELECT  TOP 3 * FROM t", "SELECT * FROM t order by t.rowid limit 3"},
                    Translation{"select a from t where b in (select top 1 b from u)",
                                "select a from t where b in (select b from u order by u.rowid limit 1) order "
                                "by t.rowid"},
                    Translation{"select top 1 a from t -- all; of it",
                                "select a from t order by t.rowid limit 1  "}));

INSTANTIATE_TEST_SUITE_P(
    Moments, ServerDialect,
    testing::Values(
        Translation{"select top 10 a from r order by lastrun desc",
                    "select a from r order by store_moment('ymd',lastrun) desc nulls last,r.rowid limit 10"},
        Translation{"select a from r order by a, h.LastRun",
                    "select a from r order by a nulls first, store_moment('ymd',h.LastRun) nulls "
                    "first,r.rowid"},
        Translation{"delete from h where datediff('d',lastrun, Now()) > 30",
                    "delete from h where store_datediff('ymd','d',lastrun, '2026-11-21 14:05:09') > 30"},
        Translation{"delete from h where datediff('d',left(lastrun,10),Now()) > 30",
                    "delete from h where "
                    "store_datediff('ymd','d',store_left(lastrun,10),'2026-11-21 14:05:09') > 30"}));

INSTANTIATE_TEST_SUITE_P(
    Words, ServerDialect,
    testing::Values(Translation{"insert into t([Password], \"User\") values('a\\','b''c')",
                                "insert into t(\"password\", \"user\") values('a\\','b''c')"},
                    Translation{"update t set a = 'x' where b == 2", "update t set a = 'x' where b = 2"},
                    Translation{
                        "select name from clients where name not like '(%' order by name",
                        "select name from clients where name collate \"default\" not like '(%' escape "
                        "'' order by name nulls first,clients.rowid"},
                    Translation{"delete from t where a like 'x!%' escape '!'",
                                "delete from t where a collate \"default\" like 'x!%' escape '!'"},
                    Translation{"delete /* all */ from t", "delete   from t"}));

struct Refusal {
    const char* statement;
    int number;
    const char* description;
};

class ServerRefusal : public testing::TestWithParam<Refusal> {};

TEST_P(ServerRefusal, NeverReachesTheServer) {
    try {
        TranslateForServer(GetParam().statement);
        FAIL() << GetParam().statement;
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), GetParam().number);
        EXPECT_EQ(error.Description(), GetParam().description);
    }
}

INSTANTIATE_TEST_SUITE_P(
    All, ServerRefusal,
    testing::Values(Refusal{"delete from t; delete from u", err::DataSyntax,
                            "The statement is not understood; there is more after its end"},
                    Refusal{" -- nothing", err::DataSyntax, "The statement is not understood; it is empty"},
                    Refusal{"update t set a = e'\\''", err::DataSyntax,
                            "The statement is not understood; there is a text directly after \"e\""},
                    Refusal{"update t set a = u&'x'", err::DataSyntax,
                            "The statement is not understood; there is a text directly after \"&\""},
                    Refusal{"update t set a = $$x$$", err::DataSyntax,
                            "The statement is not understood; there is a \"$\" in it"},
                    Refusal{"select Now(1)", err::DataSyntax,
                            "The statement is not understood; the function Now takes no values"}));

}  // namespace

TEST(ServerDialectRegion, OrderOfTheRegionGoesWithTheText) {
    SetRegional({DateOrder::DayMonthYear, '/'});
    EXPECT_EQ(TranslateForServer("select a from r order by lastrun"),
              "select a from r order by store_moment('dmy',lastrun) nulls first,r.rowid");
    SetRegional({DateOrder::MonthDayYear, '/'});
    EXPECT_EQ(TranslateForServer("select a from r order by lastrun"),
              "select a from r order by store_moment('mdy',lastrun) nulls first,r.rowid");
    SetRegional({});
}

TEST(ServerDialectKeys, InsertGivesTheKeyOfItsRow) {
    EXPECT_EQ(TranslateForServer("insert into t(a) values(1);", InsertedKey::IsReturned),
              "insert into t(a) values(1) returning rowid");
    EXPECT_EQ(TranslateForServer("update t set a = 1", InsertedKey::IsReturned), "update t set a = 1");
    EXPECT_EQ(TableOfInsert("insert into [ReportBatch](a) values(1)"), "reportbatch");
    EXPECT_EQ(TableOfInsert("delete from t"), "");
}

TEST(ServerDialectKeys, ReadingTheNewestKeyIsRecognized) {
    EXPECT_EQ(TableOfNewestKey("select max(ReportID) from ReportBatch"), "reportbatch");
    EXPECT_EQ(TableOfNewestKey("select max(folderid) as MaxID from Folders;"), "folders");
    EXPECT_EQ(TableOfNewestKey("select max(a) from t where b = 1"), "");
    EXPECT_EQ(TableOfNewestKey("select min(a) from t"), "");
}
