// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace rdl::data {
namespace {

class DataExpressions : public DataFixture {
 protected:
    void SetUp() override {
        Execute("create table t (id integer, city text); insert into t values (1, 'Rome'), (2, 'Bonn');");
    }
};

TEST_F(DataExpressions, ConnectStringMayBeOne) {
    AddParameter("File", Value::Text("sales"));
    AddSource("SQLITE", "=\"Data Source=\" & Parameters!File.Value & \".db\"");
    AddSet("select city from t where id = 1", {"city"});
    EXPECT_EQ(Rows(), "Rome");
    definition.dataSources[0].connectString = ExprOf("=\"Data Source=\" & CInt(\"x\")");
    EXPECT_NE(Failure().find("the expression of the connect string fails"), std::string::npos) << Failure();
}

TEST_F(DataExpressions, QueryParameterMayBeAConstantOrOfTheRun) {
    AddSource("SQLITE", "sales.db");
    request.userName = "ann";
    DataSet& set =
        AddSet("select id, @Who as who from t where id = @Id and @Day = '2025-06-15'", {"id", "who"});
    set.parameters = {{"@Id", ExprOf("2")},
                      {"Who", ExprOf("=UCase(User!UserID)")},
                      {"@Day", ExprOf("=Globals!ExecutionTime.Date")}};
    EXPECT_EQ(Rows(), "2|ANN");
}

TEST_F(DataExpressions, QueryParameterThatFailsIsNamed) {
    AddSource("SQLITE", "sales.db");
    AddSet("select id from t where id = @Id", {"id"}).parameters = {{"@Id", ExprOf("=CInt(\"x\")")}};
    EXPECT_NE(Failure().find("the query parameter \"@Id\" fails"), std::string::npos) << Failure();
}

TEST_F(DataExpressions, SeveralValuesCanBeJoinedAndPicked) {
    AddSource("SQLITE", "sales.db");
    AddParameter("Ids", Value::List({Value::Integer(2), Value::Integer(1)}));
    DataSet& set = AddSet("select id, @All as a from t where id = @First", {"id", "a"});
    set.parameters = {{"@All", ExprOf("=Join(Parameters!Ids.Value, \"+\")")},
                      {"@First", ExprOf("=Parameters!Ids.Value(0)")}};
    EXPECT_EQ(Rows(), "2|2+1");
}

TEST_F(DataExpressions, CalculatedFieldMayBeAConstantAndAskWhetherAFieldIsMissing) {
    AddSource("SQLITE", "sales.db");
    DataSet& set = AddSet("select id from t where id = 1", {"id", "gone"});
    AddCalculated(set, "Fixed", "north");
    AddCalculated(set, "Lost", "=Fields!gone.IsMissing");
    EXPECT_EQ(Rows(), "1||north|True");
}

TEST_F(DataExpressions, FieldsFilterByCalculatedOnes) {
    AddSource("SQLITE", "sales.db");
    DataSet& set = AddSet("select id, city from t order by id", {"id", "city"});
    AddCalculated(set, "Length", "=Len(Fields!city.Value) * Fields!id.Value");
    AddFilter(set, "=Fields!Length.Value", "GreaterThan", {"4"});
    EXPECT_EQ(Rows(), "2|Bonn|8");
}

}  // namespace
}  // namespace rdl::data
