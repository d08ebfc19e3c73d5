// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace rdl::data {
namespace {

class SharedData : public DataFixture {
 protected:
    void SetUp() override {
        Execute("create table t (id integer, city text); insert into t values (1, 'Rome'), (2, 'Bonn');");
        Write("Warehouse.rds",
              "<?xml version='1.0'?><RptDataSource "
              "Name='Warehouse'><ConnectionProperties><Extension>SQLITE</Extension>"
              "<ConnectString>Data Source=sales.db</ConnectString></ConnectionProperties></RptDataSource>");
    }
};

TEST_F(SharedData, SourceStandsBesideTheReport) {
    AddSource("", "").reference = "/Data Sources/Warehouse";
    AddSet("select city from t where id = 1", {"city"});
    EXPECT_EQ(Rows(), "Rome");
    definition.dataSources[0].reference = "Elsewhere";
    EXPECT_NE(Failure().find("the shared file \"Elsewhere.rds\": the file"), std::string::npos);
}

TEST_F(SharedData, DataSetIsAskedWithTheReportsParameters) {
    Write(
        "Cities.rsd",
        "<SharedDataSet><DataSet Name='D'><Query><DataSourceReference>Warehouse</DataSourceReference>"
        "<DataSetParameters><DataSetParameter Name='@Id'><DefaultValue>1</DefaultValue></DataSetParameter>"
        "</DataSetParameters><CommandText>select id, city from t where id = @Id</CommandText></Query>"
        "<Fields><Field Name='Town'><DataField>city</DataField></Field></Fields></DataSet></SharedDataSet>");
    AddParameter("Which", Value::Integer(2));
    DataSet& set = AddSet("", {});
    set.sharedDataSet = "Cities";
    set.dataSourceName.clear();
    set.fields = {{"Place", "Town", {}, ""}};
    AddCalculated(set, "Shout", "=UCase(Fields!Place.Value)");
    EXPECT_EQ(Rows(), "Rome|ROME");
    set.parameters = {{"@Id", ExprOf("=Parameters!Which.Value")}};
    EXPECT_EQ(Rows(), "Bonn|BONN");
}

TEST_F(SharedData, WordsOfADataSetAreThoseOfAReport) {
    const auto failureWith = [this](const std::string& ofQuery, const std::string& ofSet) {
        Write("Cities.rsd",
              "<SharedDataSet><DataSet Name='D'><Query><DataSourceReference>Warehouse</DataSourceReference>"
              "<CommandText>select id, city from t</CommandText>" +
                  ofQuery +
                  "</Query><Fields><Field Name='City'><DataField>city</DataField></Field></Fields>" + ofSet +
                  "</DataSet></SharedDataSet>");
        return Failure();
    };
    DataSet& set = AddSet("", {});
    set.sharedDataSet = "Cities";
    set.dataSourceName.clear();
    set.fields = {{"City", "City", {}, ""}};
    EXPECT_NE(failureWith("<CommandType>Procedure</CommandType>", "")
                  .find("the shared data set \"Cities\", CommandType: \"Procedure\" is not known"),
              std::string::npos);
    for (const std::string timeout : {"-1", "99999999999", "1000001", "5 s", "x"}) {
        EXPECT_NE(failureWith("<Timeout>" + timeout + "</Timeout>", "")
                      .find("the shared data set \"Cities\", Timeout: \"" + timeout +
                            "\" is not a whole number from 0 to 1000000"),
                  std::string::npos)
            << timeout;
    }
    EXPECT_NE(
        failureWith("",
                    "<Filters><Filter><FilterExpression>=Fields!City.Value</FilterExpression>"
                    "<Operator>Near</Operator><FilterValues><FilterValue>Rome</FilterValue></FilterValues>"
                    "</Filter></Filters>")
            .find("Near"),
        std::string::npos);
    failureWith("<CommandType>text</CommandType><Timeout> 30 </Timeout>", "");
    EXPECT_EQ(Rows(), "Rome Bonn");
}

TEST_F(SharedData, SourceMayHaveTheFormOfAReportServer) {
    Write("Warehouse.rds",
          "<DataSourceDefinition xmlns='urn:x'><Extension>SQLITE</Extension>"
          "<ConnectString>sales.db</ConnectString></DataSourceDefinition>");
    AddSource("", "").reference = "/Data Sources/Warehouse.rds";
    AddSet("select city from t where id = 2", {"city"});
    EXPECT_EQ(Rows(), "Bonn");
    Write("Warehouse.rds", "<RptDataSource><ConnectionProperties/></RptDataSource>");
    EXPECT_NE(Failure().find("names no data provider"), std::string::npos);
}

class SharedPlaceholders : public SharedData {
 protected:
    void WriteSource(const std::string& connectString) {
        Write("Warehouse.rds", "<DataSourceDefinition><Extension>SQLITE</Extension><ConnectString>" +
                                   connectString + "</ConnectString></DataSourceDefinition>");
    }
};

TEST_F(SharedPlaceholders, AreValuesOfTheReportsParameters) {
    WriteSource("Data Source={?File}.{@ReportName}");
    request.reportName = "db";
    AddParameter("File", Value::Text("sales"));
    AddSource("", "").reference = "Warehouse";
    AddSet("select city from t where id = 1", {"city"});
    EXPECT_EQ(Rows(), "Rome");
}

TEST_F(SharedPlaceholders, ThatAreNoParametersAreAnErrorWithoutTheRestOfTheConnectString) {
    WriteSource("Data Source={?Nowhere};Password=secret");
    AddSource("", "").reference = "Warehouse";
    AddSet("select city from t", {"city"});
    EXPECT_EQ(Failure(),
              "Data set \"Set1\", data source \"Main\": the shared data source \"Warehouse\", "
              "ConnectString: there is no parameter \"Nowhere\", at character 21");
}

// The text of a shared file is no expression of the report.
TEST_F(SharedPlaceholders, AnEqualsSignBeginsNoExpression) {
    WriteSource("=\"sales.db\"");
    AddSource("", "").reference = "Warehouse";
    AddSet("select city from t where id = 1", {"city"});
    EXPECT_EQ(Failure(), "Data set \"Set1\", data source \"Main\": no file is named");
}

TEST_F(SharedPlaceholders, OfASharedDataSetAreTheReportsToo) {
    WriteSource("{?File}.db");
    Write("Cities.rsd",
          "<SharedDataSet><DataSet Name='D'><Query><DataSourceReference>Warehouse</DataSourceReference>"
          "<CommandText>select city from t where id = 2</CommandText></Query><Fields><Field Name='city'>"
          "<DataField>city</DataField></Field></Fields></DataSet></SharedDataSet>");
    AddParameter("File", Value::Text("sales"));
    DataSet& set = AddSet("", {"city"});
    set.sharedDataSet = "Cities";
    set.dataSourceName.clear();
    EXPECT_EQ(Rows(), "Bonn");
    DataSource& own = AddSource("SQLITE", "");
    own.name = "Warehouse";
    own.connectString = ExprOf("=Parameters!File.Value & \".db\"");
    EXPECT_EQ(Rows(), "Bonn");
}

class SharedDataSets : public SharedData {
 protected:
    void WriteSet(const std::string& parameters, const std::string& query, const std::string& rest = "") {
        Write("Cities.rsd",
              "<SharedDataSet><DataSet Name='D'><Query><DataSourceReference>Warehouse</DataSourceReference>"
              "<DataSetParameters>" +
                  parameters + "</DataSetParameters><CommandText>" + query +
                  "</CommandText></Query><Fields><Field Name='city'><DataField>city</DataField></Field>"
                  "<Field Name='id'><DataField>id</DataField></Field></Fields>" +
                  rest + "</DataSet></SharedDataSet>");
        DataSet& set = AddSet("", {"city"});
        set.sharedDataSet = "/Shared/Cities";
        set.dataSourceName.clear();
    }
};

TEST_F(SharedDataSets, ExpressionsKnowTheirOwnParametersAndNotTheReports) {
    AddParameter("Least", Value::Integer(0));
    WriteSet(
        "<DataSetParameter Name='@Least'><DefaultValue>2</DefaultValue><OmitFromQuery>true</OmitFromQuery>"
        "</DataSetParameter>",
        "select * from t order by id",
        "<Filters><Filter><FilterExpression>=Fields!id.Value</FilterExpression>"
        "<Operator>GreaterThanOrEqual</Operator><FilterValues><FilterValue>=CInt(Parameters!Least.Value)"
        "</FilterValue></FilterValues></Filter></Filters>");
    EXPECT_EQ(Rows(), "Bonn");
    definition.dataSets[0].parameters = {{"@Least", ExprOf("=Parameters!Least.Value")}};
    EXPECT_EQ(Rows(), "Rome Bonn");
}

TEST_F(SharedDataSets, ReadOnlyParameterKeepsItsValue) {
    WriteSet(
        "<DataSetParameter "
        "Name='@Id'><DefaultValue>1</DefaultValue><ReadOnly>true</ReadOnly></DataSetParameter>",
        "select * from t where id = @Id");
    definition.dataSets[0].parameters = {{"@Id", ExprOf("2")}};
    EXPECT_EQ(Rows(), "Rome");
}

TEST_F(SharedDataSets, ParameterWithoutAValueIsAnErrorUnlessItMayBeNull) {
    WriteSet("<DataSetParameter Name='@Id'/>", "select * from t where id = @Id or @Id is null order by id");
    EXPECT_NE(Failure().find("the parameter \"@Id\" of the shared data set has no value"), std::string::npos);
    WriteSet("<DataSetParameter Name='@Id'><Nullable>true</Nullable></DataSetParameter>",
             "select * from t where id = @Id or @Id is null order by id");
    EXPECT_EQ(Rows(), "Rome Bonn");
    WriteSet("<DataSetParameter Name='@Id'><Nullable> 1 </Nullable></DataSetParameter>",
             "select * from t where id = @Id or @Id is null order by id");
    EXPECT_EQ(Rows(), "Rome Bonn");
    WriteSet("<DataSetParameter Name='@Id'><Nullable>maybe</Nullable></DataSetParameter>",
             "select * from t where id = @Id or @Id is null order by id");
    EXPECT_NE(
        Failure().find("\"/Shared/Cities\", Parameter @Id, Nullable: \"maybe\" is neither true nor false"),
        std::string::npos);
}

TEST_F(SharedDataSets, MarksWithoutNamesAreParametersToo) {
    WriteSet(
        "<DataSetParameter Name='?'><DefaultValue>1</DefaultValue></DataSetParameter>"
        "<DataSetParameter Name='?'><DefaultValue>2</DefaultValue></DataSetParameter>",
        "select * from t where id between ? and ? order by id desc");
    EXPECT_EQ(Rows(), "Bonn Rome");
}

}  // namespace
}  // namespace rdl::data
