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

}  // namespace
}  // namespace rdl::data
