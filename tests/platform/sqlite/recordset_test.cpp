// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace {

class Recordset : public DataFixture {
 protected:
    Recordset() {
        Execute("insert into Schedule(ReportTitle, [Password], Weight) values('First', Null, 2.5)");
        Execute("insert into Schedule(ReportTitle, [Password], Weight) values('Second', 'pw', -1)");
    }
    ADODB::Recordset m_rows;
};

TEST_F(Recordset, FieldsHaveTheirNamesTypesAndNulls) {
    m_rows.Open("select * from Schedule order by ReportID", m_data);
    ASSERT_FALSE(m_rows.EOF_());
    EXPECT_EQ(m_rows.FieldCount(), 5U);
    EXPECT_EQ(m_rows.Fields("reportid").Value, Variant(1));
    EXPECT_EQ(m_rows.Fields("REPORTTITLE").Value, Variant("First"));
    EXPECT_EQ(m_rows.Fields("REPORTTITLE").Name, "ReportTitle");
    EXPECT_TRUE(m_rows.Fields("Password").Value.IsNull());
    EXPECT_EQ(m_rows.Fields("Weight").Value, Variant(2.5));
    EXPECT_EQ(m_rows.Fields(1).Value, Variant("First"));
}

TEST_F(Recordset, EveryRowHasItsOwnValues) {
    m_rows.Open("select ReportTitle, [Password] from Schedule order by ReportID", m_data);
    EXPECT_EQ(m_rows.Fields("ReportTitle").Value.Text(), "First");
    EXPECT_TRUE(m_rows.Fields("Password").Value.IsNull());
    m_rows.MoveNext();
    EXPECT_EQ(m_rows.Fields("ReportTitle").Value.Text(), "Second");
    EXPECT_EQ(m_rows.Fields("Password").Value.Text(), "pw");
    m_rows.MoveNext();
    EXPECT_TRUE(m_rows.EOF_());
}

TEST_F(Recordset, AfterTheLastRowThereIsNoCurrentRecord) {
    m_rows.Open("select ReportTitle from Schedule where ReportID > 100", m_data);
    EXPECT_TRUE(m_rows.EOF_());
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Fields("ReportTitle"); }), 3021);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Fields(0); }), 3021);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.MoveNext(); }), 3021);
}

TEST_F(Recordset, UnknownFieldIsNotInTheCollection) {
    m_rows.Open("select ReportTitle from Schedule", m_data);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Fields("Title"); }), 3265);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Fields(1); }), 3265);
}

TEST_F(Recordset, ClosedOneCannotBeRead) {
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.EOF_(); }), 3704);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Close(); }), 3704);
    m_rows.Open("select 1", m_data);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Open("select 1", m_data); }), 3705);
    m_rows.Close();
    EXPECT_FALSE(m_rows.IsOpen());
    m_rows.Open("select 2", m_data);
    EXPECT_EQ(m_rows.Fields(0).Value, Variant(2));
}

TEST_F(Recordset, StatementWithoutColumnsIsRunAndLeavesItClosed) {
    m_rows.Open("update Schedule set Weight = 9", m_data);
    EXPECT_FALSE(m_rows.IsOpen());
    EXPECT_EQ(Single("select count(*) from Schedule where Weight = 9"), "2");
}

TEST_F(Recordset, FailedOpenLeavesItClosed) {
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Open("select * from Nowhere", m_data); }),
              err::DataTableMissing);
    EXPECT_FALSE(m_rows.IsOpen());
}

TEST_F(Recordset, EndsWhenAStepRaises) {
    for (const char* moment : {"2002-03-07", "no date", "2002-03-08"}) {
        Execute(std::string("insert into History(LastRun) values('") + moment + "')");
    }
    m_rows.Open("select datediff('d', LastRun, '2002-03-07') from History order by rowid", m_data);
    ASSERT_FALSE(m_rows.EOF_());
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.MoveNext(); }), err::DataTypeMismatch);
    EXPECT_TRUE(m_rows.EOF_());
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.Fields(0); }), err::NoCurrentRecord);
    EXPECT_EQ(NumberRaisedBy([this] { m_rows.MoveNext(); }), err::NoCurrentRecord);
}

TEST_F(Recordset, CountsAreFieldZero) {
    m_rows.Open("select count(*) from Schedule", m_data);
    EXPECT_EQ(m_rows.Fields(0).Value, Variant(2));
}

TEST_F(Recordset, TextsKeepEveryByte) {
    Execute("insert into History(Status) values('a' || char(0) || 'b')");
    m_rows.Open("select Status from History", m_data);
    EXPECT_EQ(m_rows.Fields(0).Value, Variant(std::string("a\0b", 3)));
}

TEST_F(Recordset, RowsComeInTheOrderOfInsertion) {
    for (int value : {5, 3, 9, 1}) {
        Execute("insert into History(ReportID) values(" + std::to_string(value) + ")");
    }
    EXPECT_EQ(Column("select ReportID from History"), (std::vector<std::string>{"5", "3", "9", "1"}));
}

TEST_F(Recordset, CanBeMovedWhileOpen) {
    m_rows.Open("select ReportTitle from Schedule order by ReportID", m_data);
    ADODB::Recordset other = std::move(m_rows);
    other.MoveNext();
    EXPECT_EQ(other.Fields(0).Value.Text(), "Second");
}

TEST_F(Recordset, TraceSeesStatementsAsTheyWereGiven) {
    std::vector<std::string> seen;
    ADODB::SetStatementTrace([&seen](const std::string& statement) { seen.push_back(statement); });
    Column("select top 1 ReportID from Schedule");
    NumberRaisedBy([this] { Execute("broken"); });
    ADODB::SetStatementTrace({});
    Column("select 1");
    EXPECT_EQ(seen, (std::vector<std::string>{"select top 1 ReportID from Schedule", "broken"}));
}

}  // namespace
