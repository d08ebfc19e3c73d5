// SPDX-License-Identifier: GPL-3.0-or-later
// What a run of the report asks its user for (MS-RDL, ReportParameter).
#pragma once

#include <string>
#include <vector>

#include "designer/document/document.h"

namespace designer {

struct AskedChoice {
    std::string value, label;
    bool operator==(const AskedChoice&) const = default;
};

struct AskedParameter {
    enum class Kind { Boolean, DateTime, Integer, Float, String };

    std::string name, prompt;
    Kind kind = Kind::String;
    bool mayBeNull = false, mayBeBlank = false, takesSeveral = false;
    bool hasDefault = false;     // constants, expressions, or the rows of a query
    bool isNullDefault = false;  // which is Null, and nothing else
    // The allowed values that the file has as constants: all of them, or none.
    std::vector<AskedChoice> choices = {};
    // The data set that gives the choices, and its fields; empty if no data set gives them. Without a label
    // field the values are shown.
    std::string choiceSet = {}, valueField = {}, labelField = {};
    bool operator==(const AskedParameter&) const = default;
};

// Returns the parameters that have a prompt and are not hidden, in the order of the file.
std::vector<AskedParameter> AskedParametersOf(const Document& document);

}  // namespace designer
