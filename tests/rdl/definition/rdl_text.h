// SPDX-License-Identifier: GPL-3.0-or-later
// Report files for tests, put together from the parts that a case is about.
#pragma once

#include <string>

#include "rdl/definition/parse.h"
#include "rdl/definition/tree/inline_rows.h"
#include "rdl/raises.h"

namespace rdl::test {

inline const std::string Ns2005 = "http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition";
inline const std::string Ns2008 = "http://schemas.microsoft.com/sqlserver/reporting/2008/01/reportdefinition";
inline const std::string Ns2016 = "http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition";

inline std::string Report(const std::string& inner, const std::string& uri = Ns2005) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<Report xmlns=\"" + uri + "\">" + inner + "</Report>";
}

// A report whose body holds `items`.
inline std::string WithItems(const std::string& items, const std::string& uri = Ns2005) {
    return Report(
        "<Width>6in</Width><Body><Height>3in</Height><ReportItems>" + items + "</ReportItems></Body>", uri);
}

inline Definition Parse(const std::string& bytes) {
    return ParseDefinition(bytes, "sales.rpt");
}

// As a long report is parsed, whose rows are read apart.
inline Definition ParseApart(const std::string& bytes, DefinitionLimits limits = {}) {
    limits.wholeBytes = 0;
    return ParseDefinition(bytes, "sales.rpt", limits);
}

// What the error says; empty when there is none. A long report with the error says the same.
inline std::string ErrorOf(const std::string& bytes, const DefinitionLimits& limits = {}) {
    const std::string error = ErrorRaisedBy([&] { ParseDefinition(bytes, "sales.rpt", limits); });
    const std::string apart = ErrorRaisedBy([&] { ParseApart(bytes, limits); });
    return apart == error ? error : "whole: " + error + "\nread apart: " + apart;
}

// Each inline row as Name=Text, with blanks between the values.
inline std::vector<std::string> RowsOf(const DataSet& set) {
    std::vector<std::string> rows;
    InlineRows::Reader reader(*set.inlineRows);
    while (reader.Next()) {
        std::string& row = rows.emplace_back();
        for (const auto& [name, text] : reader.Row()) {
            row += (row.empty() ? "" : " ") + set.inlineRows->Names()[name] + "=" + std::string(text);
        }
    }
    return rows;
}

template <typename Item>
const Item& Only(const std::vector<ItemPtr>& items) {
    return dynamic_cast<const Item&>(*items.at(0));
}

template <typename Item>
const Item& OnlyItem(const Definition& definition) {
    return Only<Item>(definition.sections.at(0).items);
}

// The constant or expression of the cell's first run.
inline std::string TextOf(const ReportItem* item) {
    const auto* textbox = dynamic_cast<const Textbox*>(item);
    return textbox ? textbox->paragraphs.at(0).runs.at(0).value.source : "(none)";
}

}  // namespace rdl::test
