// SPDX-License-Identifier: GPL-3.0-or-later
// The data sets of a report and their fields (MS-RDL, DataSet, Field).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct ReportField {
    std::string name;
    std::string column = {};    // of the query; empty for a field that is computed
    std::string value = {};     // of a field that is computed: an expression
    std::string typeName = {};  // System.Int64 ...; may be empty
    ElementId id = NoElement;   // of one that is read
    bool IsNumeric() const;     // by the type; false if there is none
    // Whether they say the same, wherever they stand.
    bool operator==(const ReportField& other) const;
};

struct ReportSet {
    std::string name, source = {}, query = {};
    std::vector<ReportField> fields = {};
    bool isShared = false;       // its query is in another file; `source` and `query` are empty
    std::string reference = {};  // of that file
    ElementId id = NoElement;
    bool operator==(const ReportSet& other) const;
};

// The place of the name of a shared data set's file, below its element.
inline constexpr std::string_view SharedReference = "SharedDataSet/SharedDataSetReference";

ReportField FieldOf(const Document& document, ElementId id);
std::vector<ReportSet> SetsOf(const Document& document);

// Returns the data set of a region: its own, that of the region around it, or the only one of the report.
// Empty if there is none of these.
std::string DataSetOfRegion(const Document& document, ElementId region);

// Returns the names of the fields of the region's data set.
std::vector<std::string> FieldNamesOfRegion(const Document& document, ElementId region);

// Returns whether the field of the region's data set is a number.
bool IsNumericField(const Document& document, ElementId region, std::string_view field);

// Returns =Fields!Name.Value and =Sum(Fields!Name.Value).
std::string FieldValue(std::string_view field);
std::string FieldSum(std::string_view field);
// Returns the name of the field if this is exactly its value, else an empty text.
std::string FieldOfValue(std::string_view expression);

}  // namespace designer
