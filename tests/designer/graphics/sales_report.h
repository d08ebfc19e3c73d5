// SPDX-License-Identifier: GPL-3.0-or-later
// A report with its rows in it and an empty body, and what the engine makes of it.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "designer/document/document.h"
#include "designer/document/report_items.h"
#include "platform/contracts/report_engine.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "rdl/api/report.h"
#include "rdl/string_output.h"
#include "support/temporary_folder.h"

namespace designer::test {

inline std::string SalesReport(const std::string& items = {}, const std::string& year = "2016") {
    const std::string rows =
        "<Row><Region>North</Region><City>Oslo</City><Amount>10</Amount><Pieces>2</Pieces></Row>"
        "<Row><Region>South</Region><City>Rome</City><Amount>30</Amount><Pieces>5</Pieces></Row>"
        "<Row><Region>North</Region><City>Bergen</City><Amount>20</Amount><Pieces>1</Pieces></Row>";
    const auto field = [](const std::string& name, const std::string& type) {
        return "<Field Name=\"" + name + "\"><DataField>" + name + "</DataField><rd:TypeName>System." + type +
               "</rd:TypeName></Field>";
    };
    const std::string all = items.empty() ? items : "<ReportItems>" + items + "</ReportItems>";
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/" + year +
           "/01/reportdefinition\" "
           "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\"><DataSets>"
           "<DataSet Name=\"Sales\"><Fields>" +
           field("Region", "String") + field("City", "String") + field("Amount", "Int32") +
           field("Pieces", "Int32") + "</Fields><Rows>" + rows +
           "</Rows></DataSet></DataSets><ReportSections><ReportSection><Body>" + all +
           "<Height>15cm</Height></Body><Width>16cm</Width><Page><PageFooter><Height>1cm</Height>"
           "<PrintOnFirstPage>true</PrintOnFirstPage></PageFooter><PageHeight>29.7cm</PageHeight>"
           "<PageWidth>21cm</PageWidth></Page></ReportSection></ReportSections></Report>";
}

// The report as the engine exports it, or the error.
inline std::string Exported(const Document& document, rdl::DocumentFormat format) {
    const TemporaryFolder folder;
    WriteBytes(folder / "sales.rdl", document.Bytes());
    try {
        rdl::StringOutput text;
        rdl::OpenReport(folder / "sales.rdl")->Write(format, text);
        return text.bytes;
    } catch (const std::exception& error) {
        return error.what();
    }
}
inline std::string Csv(const Document& document) {
    return Exported(document, rdl::DocumentFormat::Csv);
}

}  // namespace designer::test
