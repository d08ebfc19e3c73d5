// SPDX-License-Identifier: GPL-3.0-or-later
// Small reports for tests: a definition as text, a table by hand, the pages as text.
#pragma once

#include <initializer_list>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "rdl/definition/parse.h"
#include "rdl/layout/build.h"
#include "rdl/layout/model/page.h"

namespace rdl::layout {

inline std::string Box(const std::string& name, const std::string& value, const std::string& more = {}) {
    return "<Textbox Name=\"" + name + "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>" + value +
           "</Value></TextRun></TextRuns></Paragraph></Paragraphs>" + more + "</Textbox>";
}

inline std::string Cell(const std::string& name, const std::string& value, const std::string& more = {}) {
    return "<TablixCell><CellContents>" + Box(name, value, "<CanGrow>true</CanGrow>" + more) +
           "</CellContents></TablixCell>";
}

inline std::string RowOf(const std::string& cells) {
    return "<TablixRow><Height>20pt</Height><TablixCells>" + cells + "</TablixCells></TablixRow>";
}

// A Tablix "Sales" of columns of 100 points.
inline std::string Tablix(int columns, const std::string& rows, const std::string& rowMembers,
                          const std::string& columnMembers = {}, const std::string& more = {}) {
    std::string widths, plainMembers;
    for (int i = 0; i < columns; ++i) {
        widths += "<TablixColumn><Width>100pt</Width></TablixColumn>";
        plainMembers += "<TablixMember/>";
    }
    return "<Tablix Name=\"Sales\"><TablixBody><TablixColumns>" + widths + "</TablixColumns><TablixRows>" +
           rows + "</TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>" +
           (columnMembers.empty() ? plainMembers : columnMembers) +
           "</TablixMembers></TablixColumnHierarchy><TablixRowHierarchy><TablixMembers>" + rowMembers +
           "</TablixMembers></TablixRowHierarchy><DataSetName>Data</DataSetName>" + more + "</Tablix>";
}

// A report with the data set Data (Region, Product, Amount) on pages of 400 by 300 points without margins.
inline std::string Report(const std::string& items, const std::string& page = {}) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<DataSources><DataSource Name=\"S\"><ConnectionProperties><DataProvider>SQLITE</DataProvider>"
           "<ConnectString>x</ConnectString></ConnectionProperties></DataSource></DataSources>"
           "<DataSets><DataSet "
           "Name=\"Data\"><Query><DataSourceName>S</DataSourceName><CommandText>x</CommandText></Query>"
           "<Fields><Field Name=\"Region\"><DataField>Region</DataField></Field>"
           "<Field Name=\"Product\"><DataField>Product</DataField></Field>"
           "<Field Name=\"Amount\"><DataField>Amount</DataField></Field></Fields></DataSet></DataSets>"
           "<ReportSections><ReportSection><Body><ReportItems>" +
           items + "</ReportItems><Height>100pt</Height></Body><Width>400pt</Width><Page>" + page +
           "<PageHeight>300pt</PageHeight><PageWidth>400pt</PageWidth></Page></ReportSection></"
           "ReportSections></Report>";
}

struct SaleRow {
    const char* region;
    const char* product;
    std::int64_t amount;
};

// Sales that are all alike.
inline std::vector<SaleRow> Many(int count) {
    return std::vector<SaleRow>(static_cast<std::size_t>(count), SaleRow{"North", "Pen", 1});
}

inline Table Sales(const std::vector<SaleRow>& rows) {
    Table table;
    table.fieldNames = {"Region", "Product", "Amount"};
    for (const SaleRow& row : rows) {
        table.cells.push_back(Value::Text(row.region));
        table.cells.push_back(Value::Text(row.product));
        table.cells.push_back(Value::Integer(row.amount));
    }
    return table;
}

struct BuiltKit {
    std::unique_ptr<Definition> definition;
    std::unique_ptr<ReportInstance> report;
    TableInstance& Table() const { return *report->sections.front()->items.front().table; }
};

inline BuiltKit BuildKit(const std::string& source, Table table, Drawings drawings = Drawings::Vectors) {
    BuiltKit kit;
    kit.definition = std::make_unique<Definition>(ParseDefinition(source, "test.rdl"));
    ReportInput input;
    input.definition = kit.definition.get();
    input.tables.emplace("Data", std::move(table));
    input.drawings = drawings;
    kit.report = Build(std::move(input));
    return kit;
}

// Rows of a table, cells joined by |.
inline std::vector<std::string> Rows(TableInstance& table) {
    std::vector<std::string> lines;
    layout::TableRow row;
    for (std::size_t i = 0; i < table.RowCount(); ++i) {
        table.Row(i, row);
        std::string line;
        for (const TableCell& cell : row.cells) {
            line += (line.empty() ? "" : "|") + cell.content.PlainText();
        }
        lines.push_back(line);
    }
    return lines;
}

// Texts of each page's body and margins, in the order drawn.
struct TextSink final : PageSink {
    std::vector<std::vector<std::string>> bodies, margins;
    std::vector<Page> pages;
    static std::vector<std::string> Texts(const Page& page) {
        std::vector<std::string> texts;
        for (const Op& op : page.ops) {
            if (const auto* text = std::get_if<TextOp>(&op)) {
                texts.push_back(page.text.substr(text->textBegin, text->textEnd - text->textBegin));
            }
        }
        return texts;
    }
    void Body(int, Page& content) override {
        bodies.push_back(Texts(content));
        pages.push_back(content);
    }
    void Margins(int page, Page& content) override {
        margins.resize(static_cast<std::size_t>(page) + 1);
        margins[static_cast<std::size_t>(page)] = Texts(content);
    }
};

inline TextSink PagesOf(const BuiltKit& kit) {
    TextSink sink;
    Paginate(*kit.report, sink);
    return sink;
}

// What of a kind is drawn on a page, in its order.
template <typename Kind>
std::vector<Kind> Of(const Page& page) {
    std::vector<Kind> found;
    for (const Op& op : page.ops) {
        if (const auto* kind = std::get_if<Kind>(&op)) {
            found.push_back(*kind);
        }
    }
    return found;
}

}  // namespace rdl::layout
