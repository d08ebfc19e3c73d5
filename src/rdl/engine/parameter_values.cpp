// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/parameter_values.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <unordered_map>
#include <utility>

#include "rdl/data/row_environment.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/format/format.h"
#include "rdl/values/ascii.h"

namespace rdl::engine {
namespace {

constexpr double LargestInteger = 9007199254740992.0;  // 2 to the 53rd: whole numbers are exact up to here

const Culture& Invariant() {
    return FindCulture("");
}

std::string Place(const ReportParameter& parameter) {
    return "Parameter \"" + parameter.name + "\"";
}

[[noreturn]] void Refuse(const ReportParameter& parameter, const Value& value, const char* what) {
    throw Error(Place(parameter) + ": \"" + ParameterText(value) + "\" is not " + what);
}

// Commas separate thousands. At any other place a comma is meant as a decimal point, and without it the
// number would be another one.
bool HasStrayComma(std::string_view text) {
    const std::size_t first = text.find(',');
    if (first == std::string_view::npos) {
        return false;
    }
    for (std::size_t comma = first; comma != std::string_view::npos; comma = text.find(',', comma + 1)) {
        const std::size_t end = std::min(text.find_first_not_of("0123456789", comma + 1), text.size());
        if (end - comma != 4) {
            return true;
        }
    }
    const std::size_t begin = std::min(text.find_first_of("0123456789"), first);
    return first - begin > 3 || text.find('.') < first;
}

bool ToNumber(const Value& value, double& number) {
    if (value.IsNumber()) {
        number = value.AsDouble();
        return true;
    }
    return value.IsText() && !HasStrayComma(value.AsText()) &&
           ParseNumber(value.AsText(), Invariant(), number);
}

// Whole numbers are exact up to 64 bits, which a double is not.
bool ToWholeNumber(const Value& value, std::int64_t& whole) {
    if (value.kind() == Kind::Integer) {
        whole = value.AsInteger();
        return true;
    }
    if (value.kind() == Kind::Decimal) {
        const auto exact = value.AsDecimal().ToInteger();
        whole = exact.value_or(0);
        return exact.has_value();
    }
    if (!value.IsText()) {
        return false;
    }
    const std::string_view digits = Trimmed(value.AsText());
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), whole);
    return failure == std::errc() && end == digits.data() + digits.size();
}

Value ToBooleanValue(const ReportParameter& parameter, const Value& value) {
    if (value.kind() == Kind::Boolean) {
        return value;
    }
    if (value.IsText() && EqualNoCase(Trimmed(value.AsText()), "true")) {
        return Value::Boolean(true);
    }
    if (value.IsText() && EqualNoCase(Trimmed(value.AsText()), "false")) {
        return Value::Boolean(false);
    }
    double number = 0;
    if (!ToNumber(value, number)) {
        Refuse(parameter, value, "true or false");
    }
    return Value::Boolean(number != 0);
}

Value ToIntegerValue(const ReportParameter& parameter, const Value& value) {
    std::int64_t whole = 0;
    if (ToWholeNumber(value, whole)) {
        return Value::Integer(whole);
    }
    double number = 0;
    if (!ToNumber(value, number) || number != std::floor(number) || std::fabs(number) > LargestInteger) {
        Refuse(parameter, value, "a whole number");
    }
    return Value::Integer(static_cast<std::int64_t>(number));
}

Value ToFloatValue(const ReportParameter& parameter, const Value& value) {
    double number = 0;
    if (!ToNumber(value, number)) {
        Refuse(parameter, value, "a number");
    }
    return Value::Real(number);
}

// CDate in platform/base/convert.h reads the dates of the system, in the order of the machine's region.
Value ToDateValue(const ReportParameter& parameter, const Value& value) {
    if (value.kind() == Kind::DateTime) {
        return value;
    }
    std::int64_t ticks = 0;
    if (!value.IsText() || !ParseDateTime(value.AsText(), Invariant(), ticks)) {
        Refuse(parameter, value, "a date");
    }
    return Value::DateTime(ticks);
}

ValueList Defaults(const data::LoadRequest& request, const ReportParameter& parameter) {
    ValueList values;
    for (std::size_t i = 0; i < parameter.defaultValues.size(); ++i) {
        if (parameter.defaultIsNull[i]) {
            values.emplace_back();
            continue;
        }
        const Expr& source = parameter.defaultValues[i];
        Value value = data::EvaluateAlone(request, source);
        if (value.IsError()) {
            throw Error(source.where + ": " + std::string(value.AsText()));
        }
        // What is written without any text is the empty text, which only a String can be.
        if (!source.IsSet() && parameter.type == ParameterType::String) {
            value = Value::Text("");
        }
        const ValueList several = ValuesInType(parameter, value);
        values.insert(values.end(), several.begin(), several.end());
    }
    return values;
}

std::size_t FieldOf(const Table& table, const DataSetReference& reference, const std::string& field) {
    for (std::size_t i = 0; i < table.fieldNames.size(); ++i) {
        if (EqualNoCase(table.fieldNames[i], field)) {
            return i;
        }
    }
    throw Error("Data set \"" + reference.dataSet + "\" has no field \"" + field + "\"");
}

ValueList QueriedDefaults(const data::LoadRequest& request, const ReportParameter& parameter) {
    ValueList values;
    const DataSetReference& reference = *parameter.defaultQuery;
    const Table table = data::LoadTable(request, reference.dataSet);
    const std::size_t field = FieldOf(table, reference, reference.valueField);
    for (std::size_t row = 0; row < table.RowCount() && (parameter.multiValue || row == 0); ++row) {
        values.push_back(ConvertToType(parameter, table.At(row, field)));
    }
    return values;
}

struct ValidValue {
    Value value, label;
};

std::vector<ValidValue> ListedValidValues(const data::LoadRequest& request,
                                          const ReportParameter& parameter) {
    std::vector<ValidValue> valid;
    for (const ParameterValueDef& entry : parameter.validValues) {
        const Value value = data::EvaluateAlone(request, entry.value);
        valid.push_back({ConvertToType(parameter, value), data::EvaluateAlone(request, entry.label)});
    }
    return valid;
}

std::vector<ValidValue> ValidValues(const data::LoadRequest& request, const ReportParameter& parameter) {
    std::vector<ValidValue> valid = ListedValidValues(request, parameter);
    if (parameter.validQuery) {
        const DataSetReference& reference = *parameter.validQuery;
        const Table table = data::LoadTable(request, reference.dataSet);
        const std::size_t value = FieldOf(table, reference, reference.valueField);
        const std::size_t label =
            reference.labelField.empty() ? value : FieldOf(table, reference, reference.labelField);
        for (std::size_t row = 0; row < table.RowCount(); ++row) {
            valid.push_back({ConvertToType(parameter, table.At(row, value)), table.At(row, label)});
        }
    }
    return valid;
}

// The values that the report offers. A parameter with many of them may have as many values, so that each is
// found without a look at the others.
class Offer {
 public:
    explicit Offer(std::vector<ValidValue> valid) : m_valid(std::move(valid)) {
        for (std::size_t i = 0; i < m_valid.size(); ++i) {
            m_places[expr::Hash(m_valid[i].value)].push_back(i);
        }
    }
    bool IsEmpty() const { return m_valid.empty(); }
    // Returns the first one that is equal; null if there is none.
    const ValidValue* Find(const Value& value) const {
        const auto places = m_places.find(expr::Hash(value));
        if (places != m_places.end()) {
            for (const std::size_t place : places->second) {
                if (expr::Compare(m_valid[place].value, value) == 0) {
                    return &m_valid[place];
                }
            }
        }
        return nullptr;
    }

 private:
    std::vector<ValidValue> m_valid;
    std::unordered_map<std::size_t, std::vector<std::size_t>> m_places;
};

// A value that was given must be among those that the report offers. A default need not: what its author put
// there runs as it stands.
void CheckOffered(const ReportParameter& parameter, const Offer& offer, const Value& value) {
    if (!offer.IsEmpty() && !value.IsNull() && !offer.Find(value)) {
        Refuse(parameter, value, "one of the values that the report allows");
    }
}

Value LabelOf(const Offer& offer, const Value& value) {
    const ValidValue* const known = offer.Find(value);
    return known && !known->label.IsNull() ? known->label : Value::Text(ParameterText(value));
}

void Check(const ReportParameter& parameter, const Value& value) {
    if (value.IsNull() && !parameter.nullable) {
        throw Error(Place(parameter) + " has no value");
    }
    if (value.IsText() && value.AsText().empty() && !parameter.allowBlank) {
        throw Error(Place(parameter) + " must not be blank");
    }
}

ValueList ValuesOf(const data::LoadRequest& request, const ReportParameterState& field) {
    const ReportParameter& parameter = field.Definition();
    if (!field.Current().empty()) {
        return field.Current();
    }
    ValueList values = Defaults(request, parameter);
    if (values.empty() && parameter.defaultQuery) {
        values = QueriedDefaults(request, parameter);
    }
    if (values.empty() && parameter.nullable) {
        values.emplace_back();
    }
    if (values.empty()) {
        throw Error(Place(parameter) + " has no value and no default");
    }
    return values;
}

data::ParameterInput Input(const ReportParameter& parameter, const ValueList& values,
                           const ValueList& labels) {
    if (parameter.multiValue) {
        return {Value::List(values), Value::List(labels)};
    }
    return values.empty() ? data::ParameterInput{} : data::ParameterInput{values.front(), labels.front()};
}

}  // namespace

Value ConvertToType(const ReportParameter& parameter, const Value& value) {
    if (value.IsNull()) {
        return value;
    }
    if (value.IsError()) {
        throw Error(Place(parameter) + ": " + std::string(value.AsText()));
    }
    switch (parameter.type) {
        case ParameterType::Boolean:
            return ToBooleanValue(parameter, value);
        case ParameterType::Integer:
            return ToIntegerValue(parameter, value);
        case ParameterType::Float:
            return ToFloatValue(parameter, value);
        case ParameterType::DateTime:
            return ToDateValue(parameter, value);
        case ParameterType::String:
            break;
    }
    return value.IsText() ? value : Value::Text(ParameterText(value));
}

ValueList ValuesInType(const ReportParameter& parameter, const Value& value) {
    ValueList values;
    if (value.kind() != Kind::List) {
        values.push_back(ConvertToType(parameter, value));
        return values;
    }
    for (const Value& element : value.AsList()) {
        values.push_back(ConvertToType(parameter, element));
    }
    return values;
}

std::string ParameterText(const Value& value) {
    if (value.kind() != Kind::DateTime) {
        return ToText(value, Invariant());
    }
    const bool midnight = value.AsTicks() % TicksPerDay == 0;
    return FormatValue(value, midnight ? "yyyy-MM-dd" : "yyyy-MM-dd HH:mm:ss", Invariant());
}

ValueList ConstantDefaults(const data::LoadRequest& request, const ReportParameter& parameter) {
    try {
        return Defaults(request, parameter);
    } catch (const Error&) {
        return {};
    }
}

ValueList ConstantValidValues(const data::LoadRequest& request, const ReportParameter& parameter) {
    try {
        ValueList values;
        for (ValidValue& valid : ListedValidValues(request, parameter)) {
            values.push_back(std::move(valid.value));
        }
        return values;
    } catch (const Error&) {
        return {};
    }
}

std::string PromptOf(const data::LoadRequest& request, const ReportParameter& parameter) {
    return parameter.prompt.IsExpression() ? ParameterText(data::EvaluateAlone(request, parameter.prompt))
                                           : parameter.prompt.source;
}

data::ParameterInput InputBeforeRun(const ReportParameter& parameter, const ValueList& values) {
    const bool isNull = parameter.nullable && parameter.defaultValues.empty() && !parameter.defaultQuery;
    if (values.empty() && !isNull) {
        const Value unknown = Value::Error("the value of " + parameter.name + " is not known yet");
        return {unknown, unknown};
    }
    ValueList labels;
    for (const Value& value : values) {
        labels.push_back(Value::Text(ParameterText(value)));
    }
    return Input(parameter, values, labels);
}

void ResolveParameters(data::LoadRequest& request,
                       const std::vector<std::unique_ptr<ReportParameterState>>& fields) {
    request.parameters.clear();
    for (const std::unique_ptr<ReportParameterState>& field : fields) {
        const ReportParameter& parameter = field->Definition();
        const ValueList values = ValuesOf(request, *field);
        const Offer offer(ValidValues(request, parameter));
        ValueList labels;
        for (const Value& value : values) {
            Check(parameter, value);
            if (!field->Current().empty()) {
                CheckOffered(parameter, offer, value);
            }
            labels.push_back(LabelOf(offer, value));
        }
        request.parameters.push_back(Input(parameter, values, labels));
    }
}

}  // namespace rdl::engine
