// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"
#include "rdl/definition/tree/inline_rows.h"
#include "rdl/spool/spool.h"

namespace rdl::data {
namespace {

class InlineData : public DataFixture {};

std::shared_ptr<InlineRows> Inline(const std::vector<InlineRows::Row>& rows) {
    auto added = std::make_shared<InlineRows>();
    for (const InlineRows::Row& row : rows) {
        added->Add(row);
    }
    return added;
}

TEST_F(InlineData, RowsOfTheReportNeedNoSource) {
    DataSet& set = AddSet("", {"Name", "Salary:Float", "Since:DateTime"});
    set.dataSourceName = "xxx";
    set.inlineRows =
        Inline({{{"Name", "Ann"}, {"Salary", "1200.5"}, {"Since", "2020-01-02"}}, {{"Name", "Bob"}}});
    const Table table = Load();
    ASSERT_EQ(table.RowCount(), 2u);
    EXPECT_DOUBLE_EQ(table.At(0, 1).AsReal(), 1200.5);
    EXPECT_EQ(table.At(0, 2).kind(), Kind::DateTime);
    EXPECT_TRUE(table.At(1, 1).IsNull());
}

TEST_F(InlineData, RowsOfAFileAreTakenAsTheyAre) {
    Write("people.xml", "<Rows><Row><Name>Ann</Name><Salary>1200.5</Salary></Row><Row Name='Bob'/></Rows>");
    DataSet& set = AddSet("", {"Name", "Salary:Float"});
    set.dataSourceName = "xxx";
    set.rowsFile = "People.xml";
    const Table table = Load();
    ASSERT_EQ(table.RowCount(), 2u);
    EXPECT_EQ(table.At(0, 0).AsText(), "Ann");
    EXPECT_DOUBLE_EQ(table.At(0, 1).AsReal(), 1200.5);
    EXPECT_TRUE(table.At(1, 1).IsNull());
}

TEST_F(InlineData, AMissingFileOfRowsIsNamed) {
    AddSet("", {"Name"}).rowsFile = "nobody.xml";
    const std::string failure = Failure();
    EXPECT_NE(failure.find("Set1"), std::string::npos) << failure;
    EXPECT_NE(failure.find("nobody.xml\" does not exist"), std::string::npos) << failure;
}

TEST_F(InlineData, AnotherDataSourceIsAskedInsteadOfAFileOfRows) {
    Execute("create table t (Name text); insert into t values ('Cleo');");
    AddSource("xxx", "");
    AddSet("select Name from t", {"Name"}).rowsFile = "nobody.xml";
    request.overrides["Main"] = {"SQLITE", "Data Source=sales.db"};
    EXPECT_EQ(Rows(), "Cleo");
}

TEST_F(InlineData, RowsOfAFileThatIsGivenReplaceTheQuery) {
    Write("orders.csv", "Town;Total\nRome;3\nBonn;4\n");
    AddSource("System.Data.DataSet", "");
    DataSet& set = AddSet("/* Local Query */", {"Town", "Total:Integer"});
    set.fields[0].dataField = "town_name";
    AddCalculated(set, "Twice", "=Fields!Total.Value * 2");
    request.rowFiles["Set1"] = (folder / "orders.csv").string();
    EXPECT_EQ(Rows(), "Rome|3|6 Bonn|4|8");
    set.inlineRows = Inline({});
    EXPECT_EQ(Rows(), "Rome|3|6 Bonn|4|8");
    request.rowFiles["Set1"] = (folder / "none.csv").string();
    EXPECT_NE(Failure().find("Data set \"Set1\", rows given for it: "), std::string::npos) << Failure();
    EXPECT_NE(Failure().find("none.csv"), std::string::npos) << Failure();
}

TEST_F(InlineData, ADataSourceThatCannotBeReadSaysHowToGiveTheRows) {
    AddSource("OLEDB-MD", "Data Source=cubes");
    AddSet("SELECT FROM [Sales]", {"Town"});
    const std::string failure = Failure();
    EXPECT_NE(failure.find("Data set \"Set1\", data source \"Main\": the data provider \"OLEDB-MD\" (a cube, "
                           "asked in MDX) cannot be used here"),
              std::string::npos)
        << failure;
    EXPECT_NE(failure.find("--data-source \"Main=PROVIDER;CONNECT STRING\" or --rows \"Set1=FILE.csv\""),
              std::string::npos)
        << failure;
}

TEST_F(InlineData, EnteredRowsHaveTheTypesOfTheirElementPath) {
    AddSource("ENTERDATA", "");
    AddSet(
        "<Query><XmlData><Data><Row><Item>A</Item><Amount>1.5</Amount></Row>"
        "<Row><Item>B &amp; C</Item><Amount>-2</Amount></Row></Data></XmlData>"
        "<ElementPath>Data{}/Row{Item(String),Amount(Float)}</ElementPath></Query>",
        {"Item", "Amount"});
    EXPECT_EQ(Rows(), "A|1.5 B & C|-2");
    EXPECT_EQ(Load().At(1, 1).kind(), Kind::Real);
}

TEST_F(InlineData, EnteredRowsNeedNoElementPath) {
    AddSource("ENTERDATA", "");
    AddSet("<Query><XmlData><Data><Row><Item>A</Item></Row><Row><Item/></Row></Data></XmlData></Query>",
           {"Item"});
    EXPECT_EQ(Rows(), "A ");
}

TEST_F(InlineData, DamagedDataIsAnErrorWithItsPlace) {
    AddSource("ENTERDATA", "");
    DataSet& set = AddSet("<Query><XmlData><Data><Row></Data></XmlData></Query>", {"Item"});
    EXPECT_NE(Failure().find("the XML is not usable at line 1"), std::string::npos);
    set.commandText = ExprOf("<!DOCTYPE q [<!ENTITY a \"b\">]><Query>&a;</Query>");
    EXPECT_NE(Failure().find("a document type is not allowed"), std::string::npos);
    std::string deep;
    for (int i = 0; i < 10'000; ++i) {
        deep += "<a>";
    }
    set.commandText = ExprOf("<Query>" + deep);
    EXPECT_NE(Failure().find("nested more than 100 deep"), std::string::npos);
    std::string attributes;
    for (int i = 0; i < 4'097; ++i) {
        attributes += " a" + std::to_string(i) + "=\"\"";
    }
    set.commandText = ExprOf("<Query><?x '?><XmlData>\n<D" + attributes + "/></XmlData></Query>");
    EXPECT_NE(Failure().find("not usable at line 2: an element has more than 4096 attributes"),
              std::string::npos);
    set.commandText = ExprOf("<Query><XmlData><D/></XmlData><ElementPath>D{a</ElementPath></Query>");
    EXPECT_NE(Failure().find("closing brace"), std::string::npos);
}

TEST_F(InlineData, AFieldMayBeChosenByAnExpression) {
    DataSet& set = AddSet("", {"First", "Last"});
    set.inlineRows = Inline({{{"First", "Ann"}, {"Last", "Lee"}}});
    AddParameter("Which", Value::Text("LA"));
    AddCalculated(set, "Chosen", "=Fields(Parameters!Which.Value & \"st\").Value");
    EXPECT_EQ(Rows(), "Ann|Lee|Lee");
}

// A heading that is mistyped would otherwise give an empty column and no word of it.
TEST_F(InlineData, RowsThatAreGivenHaveAColumnForEachField) {
    Write("orders.csv", "Town;Totl\nRome;3\n");
    AddSource("System.Data.DataSet", "");
    DataSet& set = AddSet("x", {"Town", "Total:Integer"});
    AddCalculated(set, "Twice", "=Fields!Town.Value");
    request.rowFiles["Set1"] = (folder / "orders.csv").string();
    EXPECT_EQ(Failure(),
              "Data set \"Set1\", rows given for it: the file has no column for the field \"Total\"; it has "
              "\"Town\", \"Totl\"");
    Write("orders.csv", "Town;Totl\n");
    EXPECT_NE(Failure().find("no column for the field \"Total\""), std::string::npos) << Failure();
    Write("orders.csv", "TOWN;total;more\nRome;3;x\n");
    EXPECT_EQ(Rows(), "Rome|3|Rome");
}

}  // namespace
}  // namespace rdl::data
