#include "platform/rdl/engine/parameter_field.h"

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
    std::vector<std::string> texts;
    for (const Value& value : m_defaults) {
        if (!value.IsNull()) {
            texts.push_back(ParameterText(value));
        }
    }
    return texts;
}

void RdlParameterField::SetCurrent(const Value& value) {
    m_current = ValuesInType(m_definition, value);
}

void RdlParameterField::AddCurrentValue(const report::ParameterValue& value) {
    Value converted;
    try {
        converted = ConvertToType(m_definition, PlainValue(value));
    } catch (const Error& error) {
        throw RuntimeError(err::TypeMismatch,
                           RuntimeError(err::TypeMismatch).Description() + ": " + error.what());
    }
    if (!m_definition.multiValue) {
        m_current.clear();
    }
    m_current.push_back(std::move(converted));
}

}  // namespace rdl::engine
