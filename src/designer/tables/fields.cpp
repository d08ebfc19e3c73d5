// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/tables/fields.h"

#include <algorithm>
#include <iterator>

#include "designer/document/xml_text.h"
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

std::vector<DataSetFields> DataSetsOf(const Document& document) {
    std::vector<DataSetFields> sets;
    for (const ElementId set : ChildrenNamed(document, document.Root(), "DataSets", "DataSet")) {
        DataSetFields& one = sets.emplace_back();
        one.id = set;
        one.name = document.Attribute(set, "Name").value_or("");
        for (const ElementId field : ChildrenNamed(document, set, "Fields", "Field")) {
            one.fields.push_back({field, document.Attribute(field, "Name").value_or(""),
                                  IsNumericType(document.TextAt(field, "rd:TypeName").value_or(""))});
        }
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
    const std::vector<DataSetFields> sets = DataSetsOf(document);
    return sets.size() == 1 ? sets.front().name : std::string();
}

std::vector<std::string> FieldNamesOfRegion(const Document& document, ElementId region) {
    const std::string name = DataSetOfRegion(document, region);
    std::vector<std::string> names;
    for (const DataSetFields& set : DataSetsOf(document)) {
        for (const DataField& field : set.fields) {
            if (SameAscii(set.name, name)) {
                names.push_back(field.name);
            }
        }
    }
    return names;
}

bool IsNumericField(const Document& document, ElementId region, std::string_view field) {
    const std::string name = DataSetOfRegion(document, region);
    for (const DataSetFields& set : DataSetsOf(document)) {
        for (const DataField& one : set.fields) {
            if (SameAscii(set.name, name) && SameAscii(one.name, field)) {
                return one.isNumeric;
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
