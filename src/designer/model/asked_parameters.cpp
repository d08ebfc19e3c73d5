// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/asked_parameters.h"

#include <algorithm>
#include <utility>

#include "designer/document/constants.h"
#include "designer/model/report_parameters.h"
#include "designer/tables/tablix_shape.h"
#include "platform/base/ascii.h"

namespace designer {
namespace {

AskedParameter::Kind KindOf(const std::string& type) {
    constexpr std::pair<const char*, AskedParameter::Kind> Kinds[] = {
        {"Boolean", AskedParameter::Kind::Boolean},
        {"DateTime", AskedParameter::Kind::DateTime},
        {"Integer", AskedParameter::Kind::Integer},
        {"Float", AskedParameter::Kind::Float},
    };
    for (const auto& [name, kind] : Kinds) {
        if (SameAscii(Trim(type), name)) {
            return kind;
        }
    }
    return AskedParameter::Kind::String;
}

// An expression is known when the report runs: with one in the list, anything may be typed.
std::vector<AskedChoice> ChoicesOf(const Document& document, ElementId parameter) {
    std::vector<AskedChoice> choices;
    for (const ElementId one :
         ChildrenNamed(document, parameter, "ValidValues/ParameterValues", "ParameterValue")) {
        AskedChoice choice{.value = document.TextAt(one, "Value").value_or(""),
                           .label = document.TextAt(one, "Label").value_or("")};
        if (choice.value.starts_with("=") || document.Find(one, "Value") == NoElement) {
            return {};
        }
        if (choice.label.empty() || choice.label.starts_with("=")) {
            choice.label = choice.value;
        }
        choices.push_back(std::move(choice));
    }
    return choices;
}

bool HasNullDefault(const Document& document, ElementId id) {
    const std::vector<ElementId> values = ChildrenNamed(document, id, "DefaultValue/Values", "Value");
    return !values.empty() && std::all_of(values.begin(), values.end(), [&](ElementId value) {
        return SameAscii(Trim(ParameterValueText(document, value)), "=Nothing");
    });
}

AskedParameter AskedParameterOf(const Document& document, ElementId id) {
    const auto text = [&](const char* path) { return document.TextAt(id, path).value_or(""); };
    return {.name = document.Attribute(id, "Name").value_or(""),
            .prompt = text("Prompt"),
            .kind = KindOf(text("DataType")),
            .mayBeNull = FlagOf(document, id, "Nullable"),
            .mayBeBlank = FlagOf(document, id, "AllowBlank"),
            .takesSeveral = FlagOf(document, id, "MultiValue"),
            .hasDefault = document.Find(id, "DefaultValue") != NoElement,
            .isNullDefault = HasNullDefault(document, id),
            .choices = ChoicesOf(document, id),
            .choiceSet = text("ValidValues/DataSetReference/DataSetName"),
            .valueField = text("ValidValues/DataSetReference/ValueField"),
            .labelField = text("ValidValues/DataSetReference/LabelField")};
}

}  // namespace

std::vector<AskedParameter> AskedParametersOf(const Document& document) {
    std::vector<AskedParameter> parameters;
    for (const ElementId id :
         ChildrenNamed(document, document.Root(), "ReportParameters", "ReportParameter")) {
        AskedParameter parameter = AskedParameterOf(document, id);
        if (!parameter.prompt.empty() && !FlagOf(document, id, "Hidden")) {
            parameters.push_back(std::move(parameter));
        }
    }
    return parameters;
}

}  // namespace designer
