// SPDX-License-Identifier: GPL-3.0-or-later
// What a subreport and a bar code show, as their dialogs have it (MS-RDL, Subreport and CustomReportItem).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct SubreportParameter {
    int old = -1;  // its number in the report; -1: a new one
    std::string name = {}, value = {};
    bool operator==(const SubreportParameter&) const = default;
};

struct SubreportDesign {
    std::string report = {};  // the file, as the report names it
    std::vector<SubreportParameter> parameters = {};
    bool operator==(const SubreportDesign&) const = default;
};

SubreportDesign ReadSubreportDesign(const Document& document, ElementId subreport);
// Writes what differs from the subreport as it is, as one step.
void PutSubreportDesign(Document& document, ElementId subreport, const SubreportDesign& design);

// Returns the names of the parameters of a report. Raises SourceFlaw if the text is no report.
std::vector<std::string> ParametersOfReport(std::string_view bytes);

struct BarcodeDesign {
    std::string symbology = {}, value = {}, showsText = {}, correction = {};  // empty: not set
    bool operator==(const BarcodeDesign&) const = default;
};

// Whether the item is a CustomReportItem or BarCode with the value of a bar code.
bool HasBarcodeDesign(const Document& document, ElementId item);
BarcodeDesign ReadBarcodeDesign(const Document& document, ElementId item);
// Writes what differs from the bar code as it is, as one step.
void PutBarcodeDesign(Document& document, ElementId item, const BarcodeDesign& design);
// Returns the element that has the value of the bar code as its child Value.
ElementId BarcodeValueOf(const Document& document, ElementId item);

}  // namespace designer
