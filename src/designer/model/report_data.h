// SPDX-License-Identifier: GPL-3.0-or-later
// The data sources and data sets of a report, as dialogs show and change them (MS-RDL, DataSource and
// DataSet), and what they have in common with parameters and embedded images.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"
#include "designer/new_report/columns.h"
#include "designer/tables/fields.h"

namespace designer {

struct ReportSource {
    std::string name, provider = {}, connectString = {};
    bool isShared = false;       // it is in another file
    std::string reference = {};  // of that file
    bool operator==(const ReportSource&) const = default;
};

std::vector<ReportSource> SourcesOf(const Document& document);

enum class DataPart { Source, Set, Parameter, Image };
// Returns why a part cannot have the name, as a text for users; empty if it can. `old` is the name that it
// has; empty for a new part.
std::string FaultOfName(const Document& document, DataPart part, std::string_view old, std::string_view name);
// Returns a name that a new part can have.
std::string NewNameOf(const Document& document, DataPart part);

// Returns the first place that refers to the part: "Textbox Total: =Parameters!Year.Value". Empty if there is
// none.
std::string UseOfPart(const Document& document, DataPart part, std::string_view name);
// Removes the part. Raises EditError if something refers to it. An edit of the step that is open.
void RemovePart(Document& document, DataPart part, const std::string& name);

// Write the part that has the name `old`, or a new one if it is empty. What refers to a name follows it;
// all other elements of the part stay. Raise EditError if FaultOfName finds a fault.
void PutSource(Document& document, const std::string& old, const ReportSource& source);
void PutSet(Document& document, const std::string& old, const ReportSet& set);

// Returns the fields for the columns of a query: those of `old` where they have a field already, without
// regard to case, and new ones for the others; then the computed fields of `old`. A field without a type gets
// that of its column; one that has a type keeps it.
std::vector<ReportField> FieldsFor(const std::vector<ReportColumn>& columns,
                                   const std::vector<ReportField>& old);

}  // namespace designer
