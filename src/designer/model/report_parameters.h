// SPDX-License-Identifier: GPL-3.0-or-later
// The parameters of a report, as a dialog shows and changes them (MS-RDL, ReportParameter).
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"
#include "designer/model/element_rows.h"

namespace designer {

enum class ValueOrigin { None, Typed, Query };

// The columns of a data set that values come from. Defaults have no label.
struct SetValues {
    std::string set, value, label = {};
    bool operator==(const SetValues&) const = default;
};

struct ParameterChoice {
    int place = NewRow;  // among the values in the file
    std::string value, label = {};
    bool operator==(const ParameterChoice&) const = default;
};

struct ReportParameter {
    int place = NewRow;  // among the parameters in the file
    std::string name, type = "String", prompt = {};
    bool isMultiple = false, isNullable = false, isBlankAllowed = false, isHidden = false;
    ValueOrigin defaultOrigin = ValueOrigin::None;
    std::vector<ParameterChoice> defaults = {};  // without labels; =Nothing is Null
    SetValues defaultSet = {};
    ValueOrigin validOrigin = ValueOrigin::None;
    std::vector<ParameterChoice> valid = {};
    SetValues validSet = {};
    bool operator==(const ReportParameter&) const = default;
};

// Returns the words for types, as files have them.
std::span<const std::string_view> ParameterTypes();
// Whether the schema of the file has parameters with several values, and hidden ones: that of 2003 does not.
bool HasMultipleValues(const Document& document);

std::vector<ReportParameter> ReportParametersOf(const Document& document);

// Returns what a Value element of a default says: =Nothing if it is Null.
std::string ParameterValueText(const Document& document, ElementId id);

// Makes these the parameters of the report. What has not changed is not touched; expressions follow the
// names. A layout of the parameters that the file has (MS-RDL, ReportParametersLayout) loses the cells of
// those that go, and gets one for each that comes. Edits of the step that is open. Raises EditError for a
// name that is no identifier or stands twice.
void PutReportParameters(Document& document, const std::vector<ReportParameter>& parameters);

// Returns a name that none of these has: Parameter1.
std::string NewParameterName(const std::vector<ReportParameter>& parameters);

}  // namespace designer
