// SPDX-License-Identifier: GPL-3.0-or-later
// The names of items, groups, data sets and so on, and what refers to them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// Returns whether elements of this name are report items (MS-RDL, ReportItems), of any schema.
bool IsReportItem(std::string_view element);

// Returns `wish` if nothing of the report has this name, in any case, else "wish" without its digits and with
// the next number that is free: Textbox7.
std::string UniqueName(const Document& document, std::string_view wish);

// Gives new names to the items and groups of a copy, and to what the element itself is. What refers to them
// from within the copy follows.
void MakeNamesUnique(Document& document, ElementId copy);

// A place that may name the old name and was not changed.
struct LeftReference {
    ElementId element = NoElement;
    std::string text;  // of the element
};

// Gives the element another name, as one step. What refers to it follows: ToggleItem, RepeatWith, DataSetName
// and so on, and in expressions ReportItems!Name and Parameters!Name. Returns the expressions that have the
// old name as a text, which may be a scope, or as a field. Raises EditError if the name is not an identifier,
// or if another element has it.
std::vector<LeftReference> Rename(Document& document, ElementId id, const std::string& name);

}  // namespace designer
