// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/report_parameters.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>

#include "designer/document/constants.h"
#include "designer/document/editing.h"
#include "designer/document/names.h"
#include "designer/document/xml_text.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"
#include "platform/base/text.h"

namespace designer {
namespace {

constexpr std::string_view Types[] = {"String", "Boolean", "DateTime", "Integer", "Float"};
constexpr const char* Defaults = "DefaultValue/Values";
constexpr const char* Valid = "ValidValues/ParameterValues";

std::vector<ElementId> ParameterElementsOf(const Document& document) {
    return ChildrenNamed(document, document.Root(), "ReportParameters", "ReportParameter");
}

std::string TextOf(const Document& document, ElementId id, std::string_view path) {
    return document.TextAt(id, path).value_or("");
}

void SetFlag(Document& document, ElementId id, std::string_view path, bool value) {
    if (value != FlagOf(document, id, path)) {
        value ? SetText(document, id, path, "true") : RemoveAt(document, id, path);
    }
}

// Returns the attribute by which a value is Null (XML Schema, xsi:nil), as it is written; empty if it is not.
std::string NullMark(const Document& document, ElementId id) {
    const SourceTree& tree = document.Tree();
    const SourceElement& element = tree[document.IndexOf(id)];
    for (std::uint32_t i = 0; i < element.attributeCount; ++i) {
        const SourceAttribute& attribute = tree.Attribute(element.firstAttribute + i);
        const std::string_view value = tree.At(attribute.value);
        if (tree.At(attribute.name).ends_with(":nil") && (value == "true" || value == "1")) {
            return std::string(tree.At(attribute.name));
        }
    }
    return {};
}

SetValues SetValuesOf(const Document& document, ElementId id, const std::string& owner) {
    const std::string path = owner + "/DataSetReference/";
    return {TextOf(document, id, path + "DataSetName"), TextOf(document, id, path + "ValueField"),
            TextOf(document, id, path + "LabelField")};
}

// The engine takes the query where both stand.
ValueOrigin OriginOf(const Document& document, ElementId id, const std::string& owner, bool hasTyped) {
    return document.Find(id, owner + "/DataSetReference") != NoElement ? ValueOrigin::Query
           : hasTyped                                                  ? ValueOrigin::Typed
                                                                       : ValueOrigin::None;
}

// Returns the word as the schemas have it; another word stays.
std::string TypeOf(const std::string& word) {
    const auto* const known = std::find_if(std::begin(Types), std::end(Types), [&](std::string_view type) {
        return SameAscii(type, Trim(word));
    });
    return known == std::end(Types) ? word : std::string(*known);
}

ReportParameter ParameterOf(const Document& document, ElementId id) {
    ReportParameter parameter;
    parameter.name = document.Attribute(id, "Name").value_or("");
    parameter.type = TypeOf(document.TextAt(id, "DataType").value_or("String"));
    parameter.prompt = TextOf(document, id, "Prompt");
    parameter.isMultiple = FlagOf(document, id, "MultiValue");
    parameter.isNullable = FlagOf(document, id, "Nullable");
    parameter.isBlankAllowed = FlagOf(document, id, "AllowBlank");
    parameter.isHidden = FlagOf(document, id, "Hidden");
    for (const ElementId value : ChildrenNamed(document, id, Defaults, "Value")) {
        parameter.defaults.push_back(
            {static_cast<int>(parameter.defaults.size()), ParameterValueText(document, value)});
    }
    for (const ElementId value : ChildrenNamed(document, id, Valid, "ParameterValue")) {
        parameter.valid.push_back({static_cast<int>(parameter.valid.size()), TextOf(document, value, "Value"),
                                   TextOf(document, value, "Label")});
    }
    parameter.defaultOrigin = OriginOf(document, id, "DefaultValue", !parameter.defaults.empty());
    parameter.defaultSet = SetValuesOf(document, id, "DefaultValue");
    parameter.validOrigin = OriginOf(document, id, "ValidValues", !parameter.valid.empty());
    parameter.validSet = SetValuesOf(document, id, "ValidValues");
    return parameter;
}

std::vector<int> PlacesOf(const std::vector<ParameterChoice>& values) {
    std::vector<int> places;
    std::transform(values.begin(), values.end(), std::back_inserter(places),
                   [](const ParameterChoice& value) { return value.place; });
    return places;
}

// Writes the values that are typed. `write` writes one that is new or has changed.
void PutChoices(Document& document, ElementId id, const char* path, const char* element,
                const std::vector<ParameterChoice>& values, const std::vector<ParameterChoice>& old,
                const std::function<void(ElementId, const ParameterChoice&)>& write) {
    const std::vector<ElementId> ids =
        PutRows(document, id, path, element, PlacesOf(values),
                [&](std::size_t) { return "<" + std::string(element) + "/>"; });
    for (std::size_t row = 0; row < values.size(); ++row) {
        const int place = values[row].place;
        if (place == NewRow || values[row] != old[static_cast<std::size_t>(place)]) {
            write(ids[row], values[row]);
        }
    }
}

void PutSetValues(Document& document, ElementId id, const std::string& owner, const SetValues& values) {
    const std::string path = owner + "/DataSetReference";
    SetText(document, id, path + "/DataSetName", values.set);
    SetText(document, id, path + "/ValueField", values.value);
    SetOrRemove(document, id, path + "/LabelField", values.label);
}

void PutDefaults(Document& document, ElementId id, const ReportParameter& parameter,
                 const ReportParameter& old) {
    if (parameter.defaultOrigin == old.defaultOrigin && parameter.defaults == old.defaults &&
        parameter.defaultSet == old.defaultSet) {
        return;
    }
    if (parameter.defaultOrigin != ValueOrigin::Query) {
        RemoveAt(document, id, "DefaultValue/DataSetReference");
    }
    if (parameter.defaultOrigin != ValueOrigin::Typed) {
        RemoveAt(document, id, Defaults);
    }
    if (parameter.defaultOrigin == ValueOrigin::Query) {
        PutSetValues(document, id, "DefaultValue", parameter.defaultSet);
    } else if (parameter.defaultOrigin == ValueOrigin::Typed) {
        PutChoices(document, id, Defaults, "Value", parameter.defaults, old.defaults,
                   [&](ElementId value, const ParameterChoice& choice) {
                       if (const std::string mark = NullMark(document, value); !mark.empty()) {
                           RemoveAttribute(document, value, mark);
                       }
                       SetText(document, value, "", choice.value);
                   });
    }
}

void PutValid(Document& document, ElementId id, const ReportParameter& parameter,
              const ReportParameter& old) {
    if (parameter.validOrigin == old.validOrigin && parameter.valid == old.valid &&
        parameter.validSet == old.validSet) {
        return;
    }
    if (parameter.validOrigin != ValueOrigin::Query) {
        RemoveAt(document, id, "ValidValues/DataSetReference");
    }
    if (parameter.validOrigin != ValueOrigin::Typed) {
        RemoveAt(document, id, Valid);
    }
    if (parameter.validOrigin == ValueOrigin::Query) {
        PutSetValues(document, id, "ValidValues", parameter.validSet);
    } else if (parameter.validOrigin == ValueOrigin::Typed) {
        PutChoices(document, id, Valid, "ParameterValue", parameter.valid, old.valid,
                   [&](ElementId value, const ParameterChoice& choice) {
                       SetText(document, value, "Value", choice.value);
                       SetOrRemove(document, value, "Label", choice.label);
                   });
    }
}

void PutParameter(Document& document, ElementId id, const ReportParameter& parameter,
                  const ReportParameter& old) {
    if (parameter.type != old.type) {
        SetText(document, id, "DataType", parameter.type);
    }
    SetOrRemove(document, id, "Prompt", parameter.prompt);
    SetFlag(document, id, "Nullable", parameter.isNullable);
    SetFlag(document, id, "AllowBlank", parameter.isBlankAllowed);
    SetFlag(document, id, "MultiValue", parameter.isMultiple);
    SetFlag(document, id, "Hidden", parameter.isHidden);
    PutDefaults(document, id, parameter, old);
    PutValid(document, id, parameter, old);
}

constexpr const char* Layout = "ReportParametersLayout/GridLayoutDefinition";

int PlaceAt(const Document& document, ElementId id, std::string_view path) {
    return NumberAt(document, id, path, 0, 0, 10'000);
}

// A parameter that comes gets the first free cell, of a new row if there is none.
void AddToLayout(Document& document, ElementId grid, const std::string& name) {
    const int columns = std::max(1, PlaceAt(document, grid, "NumberOfColumns"));
    std::set<std::pair<int, int>> taken;
    for (const ElementId cell : ChildrenNamed(document, grid, "CellDefinitions", "CellDefinition")) {
        taken.emplace(PlaceAt(document, cell, "RowIndex"), PlaceAt(document, cell, "ColumnIndex"));
    }
    std::pair<int, int> place{0, 0};
    while (taken.contains(place)) {
        place = place.second + 1 < columns ? std::pair(place.first, place.second + 1)
                                           : std::pair(place.first + 1, 0);
    }
    InsertXml(document, EnsureChild(document, grid, "CellDefinitions"),
              "<CellDefinition><ColumnIndex>" + std::to_string(place.second) + "</ColumnIndex><RowIndex>" +
                  std::to_string(place.first) + "</RowIndex><ParameterName>" + EscapedText(name, "") +
                  "</ParameterName></CellDefinition>");
    if (PlaceAt(document, grid, "NumberOfRows") <= place.first) {
        SetText(document, grid, "NumberOfRows", std::to_string(place.first + 1));
    }
}

// `names` has for each parameter the file's name before and the one afterwards; one of them is empty for one
// that comes or goes.
void PutLayout(Document& document, const std::vector<std::pair<std::string, std::string>>& names) {
    const ElementId grid = document.Find(document.Root(), Layout);
    if (grid == NoElement) {
        return;
    }
    for (const ElementId cell : ChildrenNamed(document, grid, "CellDefinitions", "CellDefinition")) {
        const std::string name = TextOf(document, cell, "ParameterName");
        const auto found = std::find_if(names.begin(), names.end(), [&](const auto& pair) {
            return !pair.first.empty() && SameAscii(pair.first, Trim(name));
        });
        if (found != names.end() && found->second.empty()) {
            Remove(document, cell);
        } else if (found != names.end() && found->second != found->first) {
            SetText(document, cell, "ParameterName", found->second);
        }
    }
    for (const auto& [before, after] : names) {
        if (before.empty()) {
            AddToLayout(document, grid, after);
        }
    }
}

void CheckNames(const std::vector<ReportParameter>& parameters) {
    std::set<std::string> names;
    for (const ReportParameter& parameter : parameters) {
        if (!names.insert(UpperText(parameter.name)).second) {
            throw EditError("two parameters have the name " + parameter.name);
        }
    }
}

}  // namespace

std::span<const std::string_view> ParameterTypes() {
    return Types;
}

bool HasMultipleValues(const Document& document) {
    return document.Tree().SpaceOf(0).find("/2003/") == std::string::npos;
}

std::string ParameterValueText(const Document& document, ElementId id) {
    return NullMark(document, id).empty() ? TextOf(document, id, "") : "=Nothing";
}

std::vector<ReportParameter> ReportParametersOf(const Document& document) {
    std::vector<ReportParameter> parameters;
    for (const ElementId id : ParameterElementsOf(document)) {
        parameters.push_back(ParameterOf(document, id));
        parameters.back().place = static_cast<int>(parameters.size()) - 1;
    }
    return parameters;
}

void PutReportParameters(Document& document, const std::vector<ReportParameter>& parameters) {
    CheckNames(parameters);
    const std::vector<ReportParameter> old = ReportParametersOf(document);
    std::vector<std::pair<std::string, std::string>> names;
    names.reserve(old.size() + parameters.size());
    for (const ReportParameter& parameter : old) {
        names.emplace_back(parameter.name, "");
    }
    std::vector<int> places;
    for (const ReportParameter& parameter : parameters) {
        places.push_back(parameter.place);
        if (parameter.place == NewRow) {
            names.emplace_back("", parameter.name);
        } else {
            names.at(static_cast<std::size_t>(parameter.place)).second = parameter.name;
        }
    }
    const std::vector<ElementId> ids = PutRows(
        document, document.Root(), "ReportParameters", "ReportParameter", places, [&](std::size_t row) {
            return "<ReportParameter Name=\"" + EscapedValue(parameters[row].name, '"') + "\"><DataType>" +
                   EscapedText(parameters[row].type, "") + "</DataType></ReportParameter>";
        });
    std::vector<std::string> wanted;
    std::transform(parameters.begin(), parameters.end(), std::back_inserter(wanted),
                   [](const ReportParameter& parameter) { return parameter.name; });
    RenameAll(document, ids, wanted);
    for (std::size_t row = 0; row < parameters.size(); ++row) {
        const int place = parameters[row].place;
        PutParameter(document, ids[row], parameters[row],
                     place == NewRow ? ReportParameter() : old[static_cast<std::size_t>(place)]);
    }
    PutLayout(document, names);
}

std::string NewParameterName(const std::vector<ReportParameter>& parameters) {
    for (int number = 1;; ++number) {
        std::string name = "Parameter" + std::to_string(number);
        if (std::none_of(parameters.begin(), parameters.end(),
                         [&](const ReportParameter& parameter) { return SameAscii(parameter.name, name); })) {
            return name;
        }
    }
}

}  // namespace designer
