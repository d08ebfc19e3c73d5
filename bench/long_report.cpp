// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/long_report.h"

#include <sqlite3.h>

#include <array>
#include <cstdlib>
#include <fstream>
#include <string>

namespace bench {
namespace {

constexpr std::array Columns = {"OrderID", "Customer", "City", "Product", "Quantity", "Amount"};
constexpr std::array Widths = {"2cm", "2.7cm", "2.3cm", "4cm", "2.2cm", "3cm"};

void Execute(sqlite3* database, const std::string& statement) {
    if (sqlite3_exec(database, statement.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) {
        std::abort();
    }
}

void WriteData(const std::filesystem::path& file, int rowCount) {
    sqlite3* database = nullptr;
    if (sqlite3_open(file.c_str(), &database) != SQLITE_OK) {
        std::abort();
    }
    Execute(database,
            "create table Orders (OrderID integer primary key, Customer text, City text, Product "
            "text, Quantity integer, Amount real); begin");
    for (int i = 1; i <= rowCount; ++i) {
        const std::string number = std::to_string(i);
        Execute(database, "insert into Orders values (" + number + ", 'Customer " + std::to_string(i % 97) +
                              "', 'City " + std::to_string(i % 31) + "', 'Product number " +
                              std::to_string(i % 211) + "', " + std::to_string(i % 40 + 1) + ", " + number +
                              ".25)");
    }
    Execute(database, "commit");
    sqlite3_close(database);
}

std::string Cell(const std::string& name, const std::string& value) {
    return "<TablixCell><CellContents><Textbox Name=\"" + name +
           "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>" + value +
           "</Value><Style><FontSize>9pt</FontSize></Style></TextRun></TextRuns></Paragraph></Paragraphs>"
           "<Style><Border><Style>Solid</Style><Color>#c0c0c0</Color></Border><PaddingLeft>2pt</PaddingLeft>"
           "</Style></Textbox></CellContents></TablixCell>";
}

std::string Row(const std::string& prefix, bool isHeader) {
    std::string row = "<TablixRow><Height>0.48cm</Height><TablixCells>";
    for (const char* column : Columns) {
        row += Cell(prefix + column,
                    isHeader ? std::string(column) : "=Fields!" + std::string(column) + ".Value");
    }
    return row + "</TablixCells></TablixRow>";
}

std::string Definition(const std::filesystem::path& data) {
    std::string fields, widths, members;
    for (const char* column : Columns) {
        fields += std::string("<Field Name=\"") + column + "\"><DataField>" + column + "</DataField></Field>";
        members += "<TablixMember/>";
    }
    for (const char* width : Widths) {
        widths += std::string("<TablixColumn><Width>") + width + "</Width></TablixColumn>";
    }
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2008/01/reportdefinition\">"
           "<DataSources><DataSource Name=\"d\"><ConnectionProperties><DataProvider>SQLITE</DataProvider>"
           "<ConnectString>Data Source=" +
           data.string() +
           "</ConnectString></ConnectionProperties></DataSource></DataSources>"
           "<DataSets><DataSet Name=\"Orders\"><Query><DataSourceName>d</DataSourceName><CommandText>select "
           "* "
           "from Orders</CommandText></Query><Fields>" +
           fields +
           "</Fields></DataSet></DataSets><Body><Height>2cm</Height><ReportItems><Tablix Name=\"t\">"
           "<DataSetName>Orders</DataSetName><TablixBody><TablixColumns>" +
           widths + "</TablixColumns><TablixRows>" + Row("h", true) + Row("r", false) +
           "</TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>" + members +
           "</TablixMembers></TablixColumnHierarchy><TablixRowHierarchy><TablixMembers><TablixMember>"
           "<KeepWithGroup>After</KeepWithGroup><RepeatOnNewPage>true</RepeatOnNewPage></TablixMember>"
           "<TablixMember><Group Name=\"Details\"/></TablixMember></TablixMembers></TablixRowHierarchy>"
           "<Width>16.2cm</Width></Tablix></ReportItems></Body><Width>16.2cm</Width><Page><PageHeader>"
           "<Height>1cm</Height><ReportItems><Textbox Name=\"p\"><Paragraphs><Paragraph><TextRuns><TextRun>"
           "<Value>=\"Page \" &amp; Globals!PageNumber &amp; \" of \" &amp; Globals!TotalPages</Value>"
           "</TextRun></TextRuns></Paragraph></Paragraphs></Textbox></ReportItems></PageHeader>"
           "<PageWidth>21cm</PageWidth><PageHeight>29.7cm</PageHeight><LeftMargin>2cm</LeftMargin>"
           "<RightMargin>2cm</RightMargin><TopMargin>1.5cm</TopMargin><BottomMargin>1.5cm</BottomMargin>"
           "</Page></Report>";
}

}  // namespace

std::filesystem::path LongReportData(const std::filesystem::path& folder) {
    return folder / "orders.db";
}

std::filesystem::path WriteLongReport(const std::filesystem::path& folder, int rowCount) {
    WriteData(LongReportData(folder), rowCount);
    const std::filesystem::path report = folder / "orders.rpt";
    std::ofstream(report) << Definition(LongReportData(folder));
    return report;
}

}  // namespace bench
