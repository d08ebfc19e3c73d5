// SPDX-License-Identifier: GPL-3.0-or-later
// The names of items, groups, data sets and so on, and what refers to them.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"

namespace designer {

// Returns whether elements of this name are report items (MS-RDL, ReportItems), of any schema.
bool IsReportItem(std::string_view element);

// Returns what users read about a name that is not an identifier.
std::string NotAName(std::string_view name);

// Returns `wish` if no item or group has this name, compared without regard to case; else `wish` without its
// digits and with the next free number: Textbox7.
std::string UniqueName(const Document& document, std::string_view wish);

// Renames a copied element and the items and groups in it. References from within the copy follow.
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

// Gives each of the elements, which have names of one kind, the name at its place; names may change places.
// Raises EditError as Rename does.
void RenameAll(Document& document, const std::vector<ElementId>& ids, const std::vector<std::string>& names);

// Returns the first place that refers to an item, a group or a data set with one of these names: an element
// such as ToggleItem, ReportItems!Name or a text in an expression. nullopt if there is none.
std::optional<LeftReference> UseOf(const Document& document, const std::vector<std::string>& names);

// Returns all places outside of the element that refer to its name, as Rename follows them; for an item,
// group or data set also texts in expressions, which may be scopes. At most 1000.
std::vector<LeftReference> ReferencesTo(const Document& document, ElementId id);

// Returns the kind and name of the innermost element with a name that the element is in or is: "Textbox
// Total". Empty if there is none.
std::string NamedOwnerOf(const Document& document, ElementId id);

// Returns the names of all items and groups in the element, itself included.
std::vector<std::string> ScopesIn(const Document& document, ElementId id);

// Returns names that the report does not have, as UniqueName does, and each of them once.
class NewNames {
 public:
    explicit NewNames(const Document& document);
    std::string Take(const std::string& wish);

 private:
    std::set<std::string> m_taken;
    std::map<std::string, int> m_next;  // by stem: lower numbers are taken
};

// Returns an element, as InsertXml takes it, with names that are still free; what refers to them from within
// it follows. Raises SourceFlaw if it is not well-formed by itself.
std::string WithNewNames(const std::string& xml, NewNames& names);

}  // namespace designer
