#include "platform/rdl/engine/parameter_field.h"

#include <algorithm>
#include <string_view>

#include "platform/rdl/engine/parameter_values.h"

namespace rdl::engine {
namespace {

Value PlainValue(const report::ParameterValue& given) {
    struct Visitor {
        Value operator()(double number) const { return Value::Real(number); }
        Value operator()(bool yes) const { return Value::Boolean(yes); }
        Value operator()(const std::string& text) const { return Value::Text(text); }
        Value operator()(DateValue moment) const { return Value::DateTime(TicksOf(moment)); }
        Value operator()(const Variant& variant) const {
            if (const std::int64_t* integer = variant.Integer()) {
                return Value::Integer(*integer);
            }
            if (const double* real = variant.Real()) {
                return Value::Real(*real);
            }
            return variant.IsNull() ? Value() : Value::Text(variant.Text());
        }
    };
    return std::visit(Visitor{}, given);
}

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

int RdlParameterField::ValueType() const {
    if (m_definition.multiValue) {
        return report::OtherField;
    }
    switch (m_definition.type) {
        case ParameterType::Boolean:
            return report::BooleanField;
        case ParameterType::DateTime:
            return report::DateTimeField;
        case ParameterType::Integer:
        case ParameterType::Float:
            return report::NumberField;
        case ParameterType::String:
            break;
    }
    return report::StringField;
}

std::vector<std::string> RdlParameterField::DefaultValues() const {
    return TextsOf(m_defaults);
}

std::vector<std::string> RdlParameterField::ValidValues() const {
    return TextsOf(m_valid);
}

void RdlParameterField::SetCurrent(const Value& value) {
    m_current = ValuesInType(m_definition, value);
}

void RdlParameterField::AddCurrentValue(const report::ParameterValue& value) {
    std::vector<Value> converted;
    try {
        for (const Value& piece : PiecesOf(m_definition, PlainValue(value))) {
            converted.push_back(ConvertToType(m_definition, piece));
        }
    } catch (const Error& error) {
        throw RuntimeError(err::TypeMismatch,
                           RuntimeError(err::TypeMismatch).Description() + ": " + error.what());
    }
    if (!m_definition.multiValue) {
        m_current.clear();
    }
    m_current.insert(m_current.end(), converted.begin(), converted.end());
}

}  // namespace rdl::engine
