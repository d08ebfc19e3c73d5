// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace rdl::data {
namespace {

class RecordSelectionOnData : public DataFixture {
 protected:
    void SetUp() override {
        Execute(
            "create table t (id integer, city text); insert into t values (1, 'Rome'), (2, 'Bonn'), (3, "
            "null);"
            "create table u (id integer, town text); insert into u values (1, 'Oslo'), (2, 'Bern');");
        AddSource("SQLITE", "Data Source=sales.db");
        AddSet("select * from t", {"id", "city"});
        AddSet("select * from u", {"id", "town"});
        AddParameter("City", Value::Text("bonn"));
    }
    std::string Counts(const std::string& formula) {
        request.formula = formula;
        const auto tables = LoadTables(request);
        return std::to_string(tables.at("Set1").RowCount()) + "," +
               std::to_string(tables.at("Set2").RowCount());
    }
    std::string FormulaFailure(const std::string& formula) {
        request.formula = formula;
        return Failure();
    }
};

TEST_F(RecordSelectionOnData, RulesTheDataSetsThatHoldAllItsFields) {
    EXPECT_EQ(Counts(""), "3,2");
    EXPECT_EQ(Counts("{city} = {?City}"), "1,2");
    EXPECT_EQ(Counts("{id} = 1"), "1,1");
    EXPECT_EQ(Counts("{SET2.Id} = 1"), "3,1");
    EXPECT_EQ(Counts("{id} > 1 and {town} startswith 'b'"), "3,1");
    EXPECT_EQ(Counts("false"), "0,0");
}

TEST_F(RecordSelectionOnData, AnyTableNameServesAFieldOfOneDataSet) {
    EXPECT_EQ(Counts("{customers.city} = 'Rome'"), "1,2");
    EXPECT_NE(FormulaFailure("{customers.id} = 1").find("\"customers\" is no data set, and 2 data sets"),
              std::string::npos);
}

TEST_F(RecordSelectionOnData, RowWithNullIsNotSelected) {
    EXPECT_EQ(Counts("{city} <> 'Rome'"), "1,2");
    EXPECT_EQ(Counts("isnull({city})"), "1,2");
}

TEST_F(RecordSelectionOnData, MistakesAreErrorsBeforeAnyQueryRuns) {
    definition.dataSets[0].commandText = ExprOf("select broken");
    EXPECT_NE(FormulaFailure("{country} = 'x'").find("has no field \"country\", at character 1"),
              std::string::npos);
    EXPECT_NE(FormulaFailure("{?Town} = 'x'").find("no parameter \"Town\""), std::string::npos);
    EXPECT_NE(FormulaFailure("{city} = 'x' and {town} = 'y'").find("no data set has all the fields"),
              std::string::npos);
    EXPECT_NE(FormulaFailure("{city} = ").find("Record selection formula: something is missing"),
              std::string::npos);
    EXPECT_THROW(CheckFormula(definition, "{city} ="), Error);
    EXPECT_NO_THROW(CheckFormula(definition, "{city} = 'x'"));
}

TEST_F(RecordSelectionOnData, SelectsBeforeFiltersRank) {
    AddFilter(definition.dataSets[0], "=Fields!id.Value", "BottomN", {"1"});
    EXPECT_EQ(Counts("{city} = 'Bonn'"), "1,2");
}

}  // namespace
}  // namespace rdl::data
