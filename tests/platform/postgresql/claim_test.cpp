// SPDX-License-Identifier: GPL-3.0-or-later
// Claims of several schedulers on one store. The claims of one process hold against each other, as each has a
// connection of its own.
#include <gtest/gtest.h>

#include <optional>

#include "platform/contracts/adodb.h"
#include "platform/postgresql/postgresql_session.h"
#include "shared/Global.h"
#include "support/database.h"

namespace {

class Claims : public testing::Test {
 protected:
    Claims() {
        fakes::Insert(database, {});
        fakes::Insert(database, {});
        database.Run("insert into ReportBatch(BatchName) values('Pack')");
    }
    static ADODB::Recordset Row(const std::string& table, int key) {
        ADODB::Recordset row;
        row.Open("select * from " + table + " where ReportID = " + std::to_string(key),
                 Global::ConnectionString);
        return row;
    }
    static ADODB::Claim Take(const std::string& table, int key) {
        return {Global::ConnectionString, table, Row(table, key)};
    }

    fakes::TestDatabase database;
};

}  // namespace

TEST_F(Claims, AreOfOneProcessUntilTheyEnd) {
    std::optional<ADODB::Claim> first = Take("ReportScheduler", 1);
    EXPECT_TRUE(first->IsHeld());
    EXPECT_FALSE(Take("ReportScheduler", 1).IsHeld());
    EXPECT_TRUE(Take("ReportScheduler", 2).IsHeld());
    EXPECT_TRUE(Take("ReportBatch", 1).IsHeld());
    first.reset();
    EXPECT_TRUE(Take("ReportScheduler", 1).IsHeld());
}

TEST_F(Claims, EndWithTheirConnection) {
    const ADODB::Claim first = Take("ReportScheduler", 1);
    database.Run(
        "select pg_terminate_backend(pid) from pg_stat_activity where datname = current_database() and pid "
        "<> pg_backend_pid()");
    EXPECT_TRUE(Take("ReportScheduler", 1).IsHeld());
}

TEST_F(Claims, AreProvedByTheSessionThatTookThem) {
    const ADODB::Claim first = Take("ReportScheduler", 1);
    const ADODB::Claim other = Take("ReportBatch", 1);
    first.Prove();
    other.Prove();
    database.Run(
        "select pg_terminate_backend(pid) from pg_locks where locktype = 'advisory' and objid = 1 and "
        "classid = 1870160640");
    try {
        first.Prove();
        FAIL();
    } catch (const ADODB::ClaimLost& lost) {
        EXPECT_EQ(lost.Number(), err::DataUnavailable);
        EXPECT_EQ(lost.Description().rfind("The store cannot be reached: ", 0), 0U) << lost.Description();
    }
    other.Prove();
    const ADODB::Claim again = Take("ReportScheduler", 1);
    again.Prove();
    EXPECT_THROW(first.Prove(), ADODB::ClaimLost);
}

// A pooler that is not in session mode gives the session of one scheduler to another one, which leaves its
// own mark there.
TEST_F(Claims, AreNotOfASessionThatAnotherProgramHasMarked) {
    constexpr const char* Shared =
        "another session of the server answers than the one that was opened, as a connection pooler does "
        "that "
        "is not in session mode";
    PostgresqlSession session(*ReadLink(database.Folder() / "PressroomLive.dat"));
    ASSERT_TRUE(session.TakeClaim("ReportScheduler", "1"));
    EXPECT_EQ(session.LossOfClaim("ReportScheduler", "1"), "");
    EXPECT_EQ(session.LossOfClaim("ReportScheduler", "2"), Shared);
    session.Query("select set_config('oxbow_courier.session', 'other', false)")->Next();
    EXPECT_EQ(session.LossOfClaim("ReportScheduler", "1"), Shared);
    try {
        session.TakeClaim("ReportScheduler", "2");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), err::DataUnavailable);
        EXPECT_TRUE(error.Description().ends_with(std::string(" cannot be used; ") + Shared))
            << error.Description();
    }
}

TEST_F(Claims, RowThatHasChangedIsLeft) {
    const ADODB::Recordset row = Row("ReportScheduler", 1);
    database.Run("update ReportScheduler set NextRun = '2002-03-08' where ReportID = 1");
    EXPECT_FALSE(ADODB::Claim(Global::ConnectionString, "ReportScheduler", row).IsHeld());
    EXPECT_TRUE(Take("ReportScheduler", 1).IsHeld());
    const ADODB::Recordset gone = Row("ReportScheduler", 2);
    database.Run("delete from ReportScheduler where ReportID = 2");
    EXPECT_FALSE(ADODB::Claim(Global::ConnectionString, "ReportScheduler", gone).IsHeld());
}

TEST_F(Claims, AreListedWithTheirHolders) {
    EXPECT_TRUE(ADODB::HeldClaims(Global::ConnectionString).empty());
    const ADODB::Claim package = Take("ReportBatch", 1);
    const ADODB::Claim schedule = Take("ReportScheduler", 2);
    const std::vector<ADODB::HeldClaim> held = ADODB::HeldClaims(Global::ConnectionString);
    ASSERT_EQ(held.size(), 2U);
    EXPECT_EQ(held[0].table + " " + held[0].key, "ReportScheduler 2");
    EXPECT_EQ(held[1].table + " " + held[1].key, "ReportBatch 1");
    EXPECT_EQ(held[0].holder.rfind("courier ", 0), 0U) << held[0].holder;
    EXPECT_NE(held[0].holder.find(" " + std::to_string(getpid())), std::string::npos) << held[0].holder;
}

TEST_F(Claims, RunNoStatementOfTheSystem) {
    const ADODB::Recordset row = Row("ReportScheduler", 1);
    database.TakeStatements();
    EXPECT_TRUE(ADODB::Claim(Global::ConnectionString, "ReportScheduler", row).IsHeld());
    EXPECT_TRUE(database.TakeStatements().empty());
}
