// SPDX-License-Identifier: GPL-3.0-or-later
// Small reports with one table, written on few lines so that a test can compare all of it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "designer/document/document.h"
#include "designer/document/report_items.h"

namespace designer::test {

inline std::string Box(const std::string& name, const std::string& value) {
    return "<Textbox Name=\"" + name + "\"><Paragraphs><Paragraph><TextRuns><TextRun><Value>" + value +
           "</Value></TextRun></TextRuns></Paragraph></Paragraphs></Textbox>";
}

inline std::string Cell(const std::string& name, const std::string& value, const std::string& span = {}) {
    return "<TablixCell><CellContents>" + Box(name, value) + span + "</CellContents></TablixCell>";
}

inline std::string DataSet() {
    return "<DataSets><DataSet Name=\"Sales\"><Query><DataSourceName>D</DataSourceName><CommandText>select"
           "</CommandText></Query><Fields><Field Name=\"Region\"><DataField>Region</DataField></Field>"
           "<Field Name=\"Net_Amount\"><DataField>Net</DataField>"
           "<rd:TypeName>System.Decimal</rd:TypeName></Field></Fields></DataSet></DataSets>";
}

inline std::string Report(const std::string& item, const std::string& year = "2010") {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" + year +
           "/01/reportdefinition\" "
           "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\"><DataSources>"
           "<DataSource Name=\"D\"><ConnectionProperties><DataProvider>SQLite</DataProvider>"
           "<ConnectString>d.db</ConnectString></ConnectionProperties></DataSource></DataSources>" +
           DataSet() + "<Body><ReportItems>" + item +
           "</ReportItems><Height>5cm</Height></Body><Width>10cm</Width></Report>";
}

// A head, and a row for each row of data.
inline std::string ListTablix(const std::string& rowMembers =
                                  "<TablixMember><KeepWithGroup>After</KeepWithGroup></TablixMember>"
                                  "<TablixMember><Group Name=\"Details\"/></TablixMember>") {
    return "<Tablix Name=\"T\"><TablixBody><TablixColumns><TablixColumn><Width>2cm</Width></TablixColumn>"
           "<TablixColumn><Width>3cm</Width></TablixColumn></TablixColumns><TablixRows><TablixRow><Height>1cm"
           "</Height><TablixCells>" +
           Cell("A", "Region") + Cell("B", "Net") +
           "</TablixCells></TablixRow><TablixRow><Height>5mm</Height><TablixCells>" +
           Cell("C", "=Fields!Region.Value") + Cell("D", "=Fields!Net_Amount.Value") +
           "</TablixCells></TablixRow></TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers>"
           "<TablixMember/><TablixMember/></TablixMembers></TablixColumnHierarchy><TablixRowHierarchy>"
           "<TablixMembers>" +
           rowMembers +
           "</TablixMembers></TablixRowHierarchy><DataSetName>Sales</DataSetName><Width>5cm</Width></Tablix>";
}

inline ElementId Region(const Document& document) {
    for (const ReportItem& item : ReadReportItems(document).items) {
        if (HasGrid(item.kind)) {
            return item.id;
        }
    }
    return NoElement;
}

// Replaces one place; the test fails if the text is not there once.
inline std::string With(std::string text, const std::string& old, const std::string& now) {
    const std::size_t at = text.find(old);
    EXPECT_NE(at, std::string::npos) << old;
    EXPECT_EQ(text.find(old, at + 1), std::string::npos) << old;
    return at == std::string::npos ? text : text.replace(at, old.size(), now);
}

// Puts the table of a small report a centimetre from both sides of the corner.
inline std::string Placed(const std::string& report) {
    return With(report, "<Width>5cm</Width></Tablix>", "<Top>1cm</Top><Left>1cm</Left></Tablix>");
}

// What a new cell holds whose neighbour has no style.
inline std::string NewBox(const std::string& name, const std::string& value = {}, bool isBold = false) {
    return "<Textbox Name=\"" + name +
           "\"><CanGrow>true</CanGrow><KeepTogether>true</KeepTogether><Paragraphs><Paragraph><TextRuns>"
           "<TextRun><Value>" +
           value + "</Value>" + (isBold ? "<Style><FontWeight>Bold</FontWeight></Style>" : "<Style />") +
           "</TextRun></TextRuns><Style /></Paragraph></Paragraphs><Style /></Textbox>";
}

inline std::string NewCellText(const std::string& name, const std::string& value = {}, bool isBold = false) {
    return "<TablixCell><CellContents>" + NewBox(name, value, isBold) + "</CellContents></TablixCell>";
}

// Runs an edit and expects this text, one step, and the bytes of before after an undo.
template <typename Work>
void ExpectEdit(const std::string& before, const std::string& after, const std::string& step, Work work) {
    Document document(before);
    work(document, Region(document));
    EXPECT_EQ(document.Text(), after);
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_EQ(document.UndoName(), step);
    document.Undo();
    EXPECT_EQ(document.Bytes(), before);
}

// Expects that an edit is refused with this text and changes nothing.
template <typename Work>
void ExpectRefusal(const std::string& before, const std::string& text, Work work) {
    Document document(before);
    try {
        work(document, Region(document));
        FAIL() << "no refusal";
    } catch (const EditError& error) {
        EXPECT_EQ(std::string(error.what()), text);
    }
    EXPECT_EQ(document.Bytes(), before);
    EXPECT_EQ(document.UndoCount(), 0u);
}

}  // namespace designer::test
