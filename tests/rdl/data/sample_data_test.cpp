// SPDX-License-Identifier: GPL-3.0-or-later
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

#include "data_fixture.h"
#include "rdl/definition/parse.h"
#include "rdl/format/format.h"
#include "support/source_dir.h"

namespace rdl::data {
namespace {

// The example reports of the system, generated again.
class SampleReports : public DataFixture {
 protected:
    static void SetUpTestSuite() {
        samples = std::filesystem::temp_directory_path() / ("sample-reports-" + std::to_string(getpid()));
        const std::string command =
            "python3 \"" + SourceDir() + "/samples/make_samples.py\" \"" + samples.string() + "\"";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }
    static void TearDownTestSuite() { std::filesystem::remove_all(samples); }

    std::map<std::string, Table> LoadReport(const std::string& name, const std::vector<Value>& parameters,
                                            const std::string& formula = "") {
        definition = ParseDefinitionFile(samples / name);
        request.folder = samples.string();
        for (const Value& value : parameters) {
            request.parameters.push_back({value, {}});
        }
        request.formula = formula;
        return LoadTables(request);
    }
    static inline std::filesystem::path samples;
};

TEST_F(SampleReports, OrderListHasEveryOrderOfThePeriod) {
    const auto tables = LoadReport(
        "order_list.rpt", {Value::DateTime(MakeTicks(2024, 1, 1)), Value::DateTime(MakeTicks(2026, 12, 31))});
    const Table& orders = tables.at("Orders");
    ASSERT_GT(orders.RowCount(), 1500u);
    EXPECT_EQ(orders.At(0, 1).AsTicks(), MakeTicks(2024, 1, 2));
    std::int64_t lines = 0;
    for (std::size_t row = 0; row < orders.RowCount(); ++row) {
        lines += orders.At(row, 4).AsInteger();
    }
    EXPECT_GE(lines, 5000);
}

TEST_F(SampleReports, SalesByRegionTakesTheFormula) {
    const auto tables =
        LoadReport("sales_by_region.rpt", {Value::Integer(2025)}, "{orders.country} in ['Italy', 'Ireland']");
    const Table& rows = tables.at("ByCustomer");
    ASSERT_GT(rows.RowCount(), 0u);
    for (std::size_t row = 0; row < rows.RowCount(); ++row) {
        const auto country = rows.At(row, 1).AsText();
        EXPECT_TRUE(country == "Italy" || country == "Ireland") << country;
    }
}

TEST_F(SampleReports, SummaryHasTwelveMonths) {
    EXPECT_EQ(LoadReport("summary.rpt", {Value::Integer(2024)}).at("Months").RowCount(), 12u);
}

TEST_F(SampleReports, ChartsHaveMonthsRegionsAndCategories) {
    const auto tables = LoadReport("sales_charts.rpt", {Value::Integer(2025)});
    EXPECT_EQ(tables.at("Months").RowCount(), 12u);
    EXPECT_GT(tables.at("Regions").RowCount(), 1u);
    EXPECT_GT(tables.at("Categories").RowCount(), 1u);
}

TEST_F(SampleReports, InvoiceIsOfOneOrder) {
    const auto tables = LoadReport("invoice.rpt", {Value::Integer(10042)});
    ASSERT_EQ(tables.at("Head").RowCount(), 1u);
    EXPECT_EQ(tables.at("Head").At(0, 0).AsInteger(), 10042);
    EXPECT_GT(tables.at("Lines").RowCount(), 0u);
}

class OtherPeoplesReports : public DataFixture {
 protected:
    std::map<std::string, Table> LoadReport(const std::string& name) {
        const std::filesystem::path reports = SourceDir() + "/../shared/rdl";
        definition = ParseDefinitionFile(reports / name);
        request.folder = reports.string();
        for (const DataSource& source : definition.dataSources) {
            if (source.provider != "ENTERDATA") {
                request.overrides[source.name] = {"SQLITE", "Data Source=northwindEF.db"};
            }
        }
        return LoadTables(request);
    }
    void SetUp() override {
        if (!std::filesystem::exists(SourceDir() + "/../shared/rdl")) {
            GTEST_SKIP() << "these reports are not here";
        }
    }
};

TEST_F(OtherPeoplesReports, EnteredDataIsRead) {
    const auto tables = LoadReport("Labels.rdl");
    EXPECT_EQ(tables.at("DataSet").RowCount(), 90u);
    EXPECT_FALSE(tables.at("DataSet").At(0, 1).IsNull());
}

TEST_F(OtherPeoplesReports, EveryDataSetOfAnInvoiceIsFilled) {
    request.parameters.push_back({Value::Text("Contoso Suites"), {}});
    for (const auto& [name, table] : LoadReport("Invoice.rdl")) {
        EXPECT_GT(table.RowCount(), 0u) << name;
        EXPECT_EQ(std::count(table.missing.begin(), table.missing.end(), true), 0) << name;
    }
}

TEST_F(OtherPeoplesReports, InlineRowsAreRead) {
    EXPECT_GT(LoadReport("EmployeeOrg.rdl").at("EmployeesAndManagers").RowCount(), 5u);
}

TEST_F(OtherPeoplesReports, DatabaseIsAskedInsteadOfTheServer) {
    EXPECT_GT(LoadReport("SuppliersStyled.rdl").at("Data").RowCount(), 20u);
}

}  // namespace
}  // namespace rdl::data
