// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/fields.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "rdl/api/identifier.h"

namespace designer {
namespace {

constexpr std::string_view NumericTypes[] = {
    "System.Byte",   "System.SByte",  "System.Int16",  "System.Int32",  "System.Int64",  "System.UInt16",
    "System.UInt32", "System.UInt64", "System.Single", "System.Double", "System.Decimal"};

bool IsNumericType(std::string_view type) {
    return std::find(std::begin(NumericTypes), std::end(NumericTypes), Trim(type)) != std::end(NumericTypes);
}

}  // namespace

bool ReportField::IsNumeric() const {
    return IsNumericType(typeName);
}

bool ReportField::operator==(const ReportField& other) const {
    return std::tie(name, column, value, typeName) ==
           std::tie(other.name, other.column, other.value, other.typeName);
}

bool ReportSet::operator==(const ReportSet& other) const {
    return std::tie(name, source, query, fields, isShared, reference) ==
           std::tie(other.name, other.source, other.query, other.fields, other.isShared, other.reference);
}

ReportField FieldOf(const Document& document, ElementId id) {
    return {.name = document.Attribute(id, "Name").value_or(""),
            .column = document.TextAt(id, "DataField").value_or(""),
            .value = document.TextAt(id, "Value").value_or(""),
            .typeName = document.TextAt(id, "rd:TypeName").value_or(""),
            .id = id};
}

std::vector<ReportSet> SetsOf(const Document& document) {
    std::vector<ReportSet> sets;
    for (const ElementId id : ChildrenNamed(document, document.Root(), "DataSets", "DataSet")) {
        ReportSet set{.name = document.Attribute(id, "Name").value_or(""),
                      .source = document.TextAt(id, "Query/DataSourceName").value_or(""),
                      .query = document.TextAt(id, "Query/CommandText").value_or(""),
                      .fields = {},
                      .isShared = document.Find(id, "SharedDataSet") != NoElement,
                      .reference = document.TextAt(id, SharedReference).value_or(""),
                      .id = id};
        for (const ElementId field : ChildrenNamed(document, id, "Fields", "Field")) {
            set.fields.push_back(FieldOf(document, field));
        }
        sets.push_back(std::move(set));
    }
    return sets;
}

std::string DataSetOfRegion(const Document& document, ElementId region) {
    for (ElementId id = region; id != NoElement; id = document.Parent(id)) {
        const std::string name(Trim(document.TextAt(id, "DataSetName").value_or("")));
        if (!name.empty()) {
            return name;
        }
    }
    const std::vector<ReportSet> sets = SetsOf(document);
    return sets.size() == 1 ? sets.front().name : std::string();
}

std::vector<std::string> FieldNamesOfRegion(const Document& document, ElementId region) {
    const std::string name = DataSetOfRegion(document, region);
    std::vector<std::string> names;
    for (const ReportSet& set : SetsOf(document)) {
        for (const ReportField& field : set.fields) {
            if (SameAscii(set.name, name)) {
                names.push_back(field.name);
            }
        }
    }
    return names;
}

bool IsNumericField(const Document& document, ElementId region, std::string_view field) {
    const std::string name = DataSetOfRegion(document, region);
    for (const ReportSet& set : SetsOf(document)) {
        for (const ReportField& one : set.fields) {
            if (SameAscii(set.name, name) && SameAscii(one.name, field)) {
                return one.IsNumeric();
            }
        }
    }
    return false;
}

std::string FieldValue(std::string_view field) {
    return "=Fields!" + std::string(field) + ".Value";
}

std::string FieldSum(std::string_view field) {
    return "=Sum(Fields!" + std::string(field) + ".Value)";
}

std::string FieldOfValue(std::string_view expression) {
    constexpr std::string_view Begin = "Fields!", End = ".Value";
    std::string_view text = Trim(expression);
    if (!text.starts_with('=')) {
        return {};
    }
    text = Trim(text.substr(1));
    if (text.size() <= Begin.size() + End.size() || !SameAscii(text.substr(0, Begin.size()), Begin) ||
        !SameAscii(text.substr(text.size() - End.size()), End)) {
        return {};
    }
    const std::string_view name = text.substr(Begin.size(), text.size() - Begin.size() - End.size());
    return rdl::IsIdentifier(name) ? std::string(name) : std::string();
}

}  // namespace designer
