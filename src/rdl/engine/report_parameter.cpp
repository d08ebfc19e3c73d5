// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/report_parameter.h"

#include <algorithm>
#include <string_view>

#include "rdl/engine/in_stage.h"
#include "rdl/engine/parameter_values.h"

namespace rdl::engine {
namespace {

// What a stored text holds for a multi-value parameter: values parted by ; or line feeds, and by commas where
// a comma is no part of a value.
std::vector<Value> PiecesOf(const ReportParameter& definition, const Value& value) {
    if (!definition.multiValue || !value.IsText()) {
        return {value};
    }
    const std::string_view separators = definition.type == ParameterType::String ? ";\n" : ";\n,";
    std::vector<Value> pieces;
    std::string_view rest = value.AsText();
    while (true) {
        const std::size_t end = rest.find_first_of(separators);
        std::string_view piece = rest.substr(0, end);
        // A tab may be part of a value; Trimmed would remove it.
        piece.remove_prefix(std::min(piece.find_first_not_of(" \r"), piece.size()));
        piece = piece.substr(0, piece.find_last_not_of(" \r") + 1);
        if (!piece.empty()) {
            pieces.push_back(Value::Text(piece));
        }
        if (end == std::string_view::npos) {
            break;
        }
        rest.remove_prefix(end + 1);
    }
    return pieces.empty() ? std::vector<Value>{value} : pieces;
}

std::vector<std::string> TextsOf(const ValueList& values) {
    std::vector<std::string> texts;
    for (const Value& value : values) {
        if (!value.IsNull()) {
            texts.push_back(ParameterText(value));
        }
    }
    return texts;
}

}  // namespace

ParameterKind ReportParameterState::Kind() const {
    switch (m_definition.type) {
        case ParameterType::Boolean:
            return ParameterKind::Boolean;
        case ParameterType::DateTime:
            return ParameterKind::DateTime;
        case ParameterType::Integer:
            return ParameterKind::Integer;
        case ParameterType::Float:
            return ParameterKind::Float;
        case ParameterType::String:
            break;
    }
    return ParameterKind::String;
}

std::vector<std::string> ReportParameterState::DefaultValues() const {
    return TextsOf(m_defaults);
}

std::vector<std::string> ReportParameterState::ValidValues() const {
    return TextsOf(m_valid);
}

void ReportParameterState::SetCurrent(const Value& value) {
    m_current = ValuesInType(m_definition, value);
}

void ReportParameterState::Add(const Value& value) {
    ValueList converted;
    InStage(Stage::Parameter, [&] {
        for (const Value& piece : PiecesOf(m_definition, value)) {
            converted.push_back(ConvertToType(m_definition, piece));
        }
    });
    if (!m_definition.multiValue) {
        m_current.clear();
    }
    m_current.insert(m_current.end(), converted.begin(), converted.end());
}

}  // namespace rdl::engine
