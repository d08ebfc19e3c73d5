// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace rdl::data {
namespace {

class DataSetFilter : public DataFixture {
 protected:
    void SetUp() override {
        Execute(
            "create table t (id integer, v real, name text);"
            "insert into t values (1, 10, 'Ann'), (2, 30, 'bob'), (3, 20, 'Cid'), (4, 30, 'Dan'), (5, null, "
            "null);");
        AddSource("SQLITE", "Data Source=sales.db");
        AddSet("select * from t order by id", {"id", "v", "name"});
    }
    std::string Ids(const std::string& expression, const std::string& op,
                    const std::vector<std::string>& values) {
        DataSet& set = definition.dataSets[0];
        set.filters.clear();
        AddFilter(set, expression, op, values);
        return IdsOf();
    }
    std::string IdsOf() {
        const Table table = Load();
        std::string ids;
        for (std::size_t row = 0; row < table.RowCount(); ++row) {
            ids += std::to_string(table.At(row, 0).AsInteger());
        }
        return ids;
    }
};

TEST_F(DataSetFilter, ComparesByValue) {
    EXPECT_EQ(Ids("=Fields!v.Value", "Equal", {"30"}), "24");
    EXPECT_EQ(Ids("=Fields!v.Value", "NotEqual", {"=30"}), "135");
    EXPECT_EQ(Ids("=Fields!v.Value", "GreaterThan", {"=20"}), "24");
    EXPECT_EQ(Ids("=Fields!v.Value", "GreaterThanOrEqual", {"=20"}), "234");
    EXPECT_EQ(Ids("=Fields!id.Value", "LessThan", {"3"}), "12");
    EXPECT_EQ(Ids("=Fields!id.Value", "LessThanOrEqual", {"3"}), "123");
    EXPECT_EQ(Ids("=Fields!id.Value", "Between", {"2", "=4"}), "234");
}

TEST_F(DataSetFilter, TextBesideANumberOrDateIsReadAsOne) {
    const char* const number = "=CStr(5 + Fields!id.Value)";  // 6 to 10: as texts 10 would come first
    EXPECT_EQ(Ids(number, "GreaterThan", {"=8"}), "45");
    EXPECT_EQ(Ids(number, "LessThan", {"=8"}), "12");
    EXPECT_EQ(Ids(number, "In", {"=6", "=10"}), "15");
    const char* const day = "=\"2025-01-0\" & Fields!id.Value";
    EXPECT_EQ(Ids(day, "GreaterThanOrEqual", {"=DateSerial(2025, 1, 4)"}), "45");
    EXPECT_EQ(Ids(day, "Between", {"=DateSerial(2025, 1, 2)", "=DateSerial(2025, 1, 3)"}), "23");
    EXPECT_EQ(Ids("=CStr(Fields!id.Value = 2)", "Equal", {"=True"}), "2");
}

TEST_F(DataSetFilter, TextsCompareByCaseOnlyWhenTheDataSetSaysSo) {
    EXPECT_EQ(Ids("=Fields!name.Value", "Equal", {"BOB"}), "2");
    EXPECT_EQ(Ids("=Fields!name.Value", "Like", {"?A*"}), "4");
    definition.dataSets[0].caseSensitive = true;
    EXPECT_EQ(Ids("=Fields!name.Value", "Equal", {"BOB"}), "");
    EXPECT_EQ(Ids("=Fields!name.Value", "Like", {"?A*"}), "");
    EXPECT_EQ(Ids("=Fields!name.Value", "Like", {"[A-C]*"}), "13");
}

TEST_F(DataSetFilter, InTakesValuesAndMultiValueParameters) {
    AddParameter("Ids", Value::List({Value::Integer(1), Value::Integer(4)}));
    EXPECT_EQ(Ids("=Fields!id.Value", "In", {"2", "5"}), "25");
    EXPECT_EQ(Ids("=Fields!id.Value", "In", {"=Parameters!Ids.Value"}), "14");
}

TEST_F(DataSetFilter, RanksKeepEqualValuesAtTheBorder) {
    EXPECT_EQ(Ids("=Fields!v.Value", "TopN", {"1"}), "24");
    EXPECT_EQ(Ids("=Fields!v.Value", "TopN", {"=3"}), "234");
    EXPECT_EQ(Ids("=Fields!v.Value", "BottomN", {"2"}), "15");
    EXPECT_EQ(Ids("=Fields!v.Value", "TopPercent", {"60"}), "234");
    EXPECT_EQ(Ids("=Fields!v.Value", "BottomPercent", {"20"}), "5");
    EXPECT_EQ(Ids("=Fields!v.Value", "TopN", {"0"}), "");
    EXPECT_EQ(Ids("=Fields!v.Value", "TopN", {"99"}), "12345");
}

TEST_F(DataSetFilter, LaterFiltersSeeWhatEarlierOnesLeft) {
    DataSet& set = definition.dataSets[0];
    AddFilter(set, "=Fields!v.Value", "LessThan", {"=30"});
    AddFilter(set, "=Fields!v.Value", "TopN", {"1"});
    EXPECT_EQ(IdsOf(), "3");
}

TEST_F(DataSetFilter, AggregatesSpanTheWholeTable) {
    EXPECT_EQ(Ids("=Fields!v.Value", "GreaterThan", {"=Avg(Fields!v.Value)"}), "24");
    EXPECT_EQ(Ids("=Fields!v.Value", "Equal", {"=Min(Fields!v.Value)"}), "1");
    EXPECT_EQ(Ids("=Fields!id.Value", "Equal", {"=CountRows()"}), "5");
    EXPECT_EQ(Ids("=Fields!id.Value", "LessThanOrEqual", {"=CountDistinct(Fields!v.Value)"}), "123");
}

TEST_F(DataSetFilter, SumOfTextsIsAnErrorAsInEveryOtherScope) {
    for (const char* function : {"Sum", "Avg", "Var", "StDev"}) {
        definition.dataSets[0].filters.clear();
        AddFilter(definition.dataSets[0], "=Fields!id.Value", "LessThan",
                  {"=" + std::string(function) + "(Fields!name.Value)"});
        EXPECT_NE(Failure().find("fails: A value that is no number"), std::string::npos) << Failure();
    }
}

TEST_F(DataSetFilter, MistakesAreErrors) {
    AddFilter(definition.dataSets[0], "=Fields!v.Value", "Resembles", {"1"});
    EXPECT_NE(Failure().find("unknown operator \"Resembles\""), std::string::npos);
    definition.dataSets[0].filters.clear();
    AddFilter(definition.dataSets[0], "=Fields!v.Value", "Between", {"1"});
    EXPECT_NE(Failure().find("a filter with Between has 1 values"), std::string::npos);
    definition.dataSets[0].filters.clear();
    AddFilter(definition.dataSets[0], "=Fields!v.Value", "TopN", {"many"});
    EXPECT_NE(Failure().find("a filter by the first or last few needs a number"), std::string::npos);
}

}  // namespace
}  // namespace rdl::data
