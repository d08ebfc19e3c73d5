// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/rdl_parameter.h"

#include "platform/reports/moment.h"
#include "rdl/values/error.h"

namespace reports {
namespace {

rdl::Value PlainValue(const report::ParameterValue& given) {
    struct Visitor {
        rdl::Value operator()(double number) const { return rdl::Value::Real(number); }
        rdl::Value operator()(bool yes) const { return rdl::Value::Boolean(yes); }
        rdl::Value operator()(const std::string& text) const { return rdl::Value::Text(text); }
        rdl::Value operator()(DateValue moment) const { return rdl::Value::DateTime(TicksOf(moment)); }
        rdl::Value operator()(const Variant& variant) const {
            if (const std::int64_t* integer = variant.Integer()) {
                return rdl::Value::Integer(*integer);
            }
            if (const double* real = variant.Real()) {
                return rdl::Value::Real(*real);
            }
            return variant.IsNull() ? rdl::Value() : rdl::Value::Text(variant.Text());
        }
    };
    return std::visit(Visitor{}, given);
}

}  // namespace

int RdlParameter::ValueType() const {
    if (m_parameter.TakesSeveral()) {
        return report::OtherField;
    }
    switch (m_parameter.Kind()) {
        case rdl::ParameterKind::Boolean:
            return report::BooleanField;
        case rdl::ParameterKind::DateTime:
            return report::DateTimeField;
        case rdl::ParameterKind::Integer:
        case rdl::ParameterKind::Float:
            return report::NumberField;
        case rdl::ParameterKind::String:
            break;
    }
    return report::StringField;
}

void RdlParameter::AddCurrentValue(const report::ParameterValue& value) {
    try {
        m_parameter.Add(PlainValue(value));
    } catch (const rdl::Error& error) {
        throw RuntimeError(err::TypeMismatch,
                           RuntimeError(err::TypeMismatch).Description() + ": " + error.what());
    }
}

}  // namespace reports
