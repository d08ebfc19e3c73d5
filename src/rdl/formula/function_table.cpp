// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/function_table.h"

#include <algorithm>
#include <cmath>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/formula/formula.h"
#include "rdl/values/named.h"

namespace rdl::formula {

Value NoNumber(const Value& value, Inputs& inputs) {
    return Value::Error("\"" + expr::TextOf(value, inputs.CurrentCulture()).substr(0, 40) +
                        "\" is no number");
}

namespace {

using Arguments = std::span<const Value>;

// The report language's functions ask only for the culture and the moment.
class SharedPlace : public expr::Environment {
 public:
    explicit SharedPlace(Inputs& inputs) : m_inputs(inputs) {}
    Value Field(int) override { return Nothing(); }
    bool FieldMissing(int) override { return true; }
    Value Parameter(int) override { return Nothing(); }
    Value ParameterLabel(int) override { return Nothing(); }
    Value Global(expr::GlobalName) override { return Nothing(); }
    Value ReportItem(const std::string&) override { return Nothing(); }
    Value Variable(const std::string&) override { return Nothing(); }
    Value Aggregate(const expr::AggregateCall&) override { return Nothing(); }
    Value Lookup(const expr::LookupCall&) override { return Nothing(); }
    bool InScope(const std::string&) override { return false; }
    int Level(const std::string&) override { return 0; }
    std::int64_t DataSetRowCount(const std::string&) override { return 0; }
    const Culture& CurrentCulture() override { return m_inputs.CurrentCulture(); }
    std::int64_t NowTicks() override { return m_inputs.NowTicks(); }

 private:
    static Value Nothing() { return Value::Error("it cannot be used in a record selection formula"); }
    Inputs& m_inputs;
};

bool NumberOf(const Value& value, Inputs& inputs, double& number) {
    return !value.IsNull() && expr::ToDouble(value, inputs.CurrentCulture(), number);
}

Value OfNumber(double number) {
    if (!std::isfinite(number)) {
        return Value::Error("a number is too large or none at all");
    }
    return number == std::trunc(number) && std::abs(number) < 9e15
               ? Value::Integer(static_cast<std::int64_t>(number))
               : Value::Real(number);
}

template <double (*Work)(double)>
Value OneNumber(Arguments arguments, Inputs& inputs) {
    double number = 0;
    return NumberOf(arguments[0], inputs, number) ? OfNumber(Work(number)) : NoNumber(arguments[0], inputs);
}

double SignOf(double number) {
    return number > 0 ? 1 : number < 0 ? -1 : 0;
}
double Absolute(double number) {
    return std::abs(number);
}
double Floor(double number) {
    return std::floor(number);
}
double Root(double number) {
    return std::sqrt(number);
}
double HalfAwayFromZero(double number) {
    return std::round(number);
}
double TowardsZero(double number) {
    return std::trunc(number);
}

template <double (*Work)(double)>
Value ToDecimals(Arguments arguments, Inputs& inputs) {
    double number = 0, decimals = 0;
    if (!NumberOf(arguments[0], inputs, number)) {
        return NoNumber(arguments[0], inputs);
    }
    if (arguments.size() > 1 && !NumberOf(arguments[1], inputs, decimals)) {
        return NoNumber(arguments[1], inputs);
    }
    const double scale = std::pow(10.0, std::clamp(std::trunc(decimals), -15.0, 15.0));
    const double scaled = number * scale;
    if (!std::isfinite(scaled) || std::abs(scaled) > 9e15) {
        return OfNumber(number);
    }
    // A decimal such as 2.345 lies a hair below itself in binary: numbers that are
    // equal in 15 digits count as equal.
    const double nudged = scaled + std::copysign(std::abs(scaled) * 4e-16, scaled);
    return OfNumber(Work(nudged) / scale);
}

Value Remainder(Arguments arguments, Inputs& inputs) {
    double left = 0, right = 0;
    if (!NumberOf(arguments[0], inputs, left) || !NumberOf(arguments[1], inputs, right)) {
        return NoNumber(arguments[0], inputs);
    }
    return right == 0 ? Value::Error("it divides by zero") : OfNumber(std::fmod(left, right));
}

Value ToNumber(Arguments arguments, Inputs& inputs) {
    double number = 0;
    return NumberOf(arguments[0], inputs, number) ? OfNumber(number) : NoNumber(arguments[0], inputs);
}

Value IsNumber(Arguments arguments, Inputs& inputs) {
    double number = 0;
    return Value::Boolean(
        arguments[0].IsNumber() ||
        (arguments[0].IsText() && ParseNumber(arguments[0].AsText(), inputs.CurrentCulture(), number)));
}

// The second value is a number of decimals or a format.
Value ToText(Arguments arguments, Inputs& inputs) {
    const Culture& culture = inputs.CurrentCulture();
    if (arguments.size() == 1) {
        return expr::MakeText(expr::TextOf(arguments[0], culture));
    }
    if (arguments[1].IsText()) {
        return expr::MakeText(FormatValue(arguments[0], arguments[1].AsText(), culture));
    }
    double decimals = 0;
    if (!NumberOf(arguments[1], inputs, decimals)) {
        return NoNumber(arguments[1], inputs);
    }
    const int count = static_cast<int>(std::clamp(decimals, 0.0, 15.0));
    return expr::MakeText(FormatValue(arguments[0], "N" + std::to_string(count), culture));
}

Value IsNull(Arguments arguments, Inputs&) {
    return Value::Boolean(arguments[0].IsNull());
}

Value Choose(Arguments arguments, Inputs&) {
    if (arguments[0].IsError()) {
        return arguments[0];
    }
    if (arguments[0].kind() != Kind::Boolean && !arguments[0].IsNull()) {
        return Value::Error("the condition of iif is neither true nor false");
    }
    return arguments[!arguments[0].IsNull() && arguments[0].AsBoolean() ? 1 : 2];
}

double Exponential(double number) {
    return std::exp(number);
}
double Logarithm(double number) {
    return std::log(number);
}
double Sine(double number) {
    return std::sin(number);
}
double Cosine(double number) {
    return std::cos(number);
}
double Tangent(double number) {
    return std::tan(number);
}
double ArcTangent(double number) {
    return std::atan(number);
}
double Ceiling(double number) {
    return std::ceil(number);
}
double AwayFromZero(double number) {
    return number < 0 ? std::floor(number) : std::ceil(number);
}

Value Pi(Arguments, Inputs&) {
    return Value::Real(3.141592653589793);
}

Value ReplicateString(Arguments arguments, Inputs& inputs) {
    const std::string text = expr::TextOf(arguments[0], inputs.CurrentCulture());
    double count = 0;
    if (!NumberOf(arguments[1], inputs, count)) {
        return NoNumber(arguments[1], inputs);
    }
    if (count < 0 || count * static_cast<double>(text.size()) > static_cast<double>(expr::MaxText)) {
        return Value::Error("a text becomes too long");
    }
    std::string result;
    for (std::size_t i = 0; i < static_cast<std::size_t>(count) && !text.empty(); ++i) {
        result += text;
    }
    return Value::Text(result);
}

Value ProperCase(Arguments arguments, Inputs& inputs) {
    const Value both[] = {arguments[0], Value::Integer(3)};
    SharedPlace place(inputs);
    return expr::FindFunction("strconv")->function(expr::Call(both, 2, place));
}

// Switch(condition, value, ...): the value after the first true condition, else Null.
Value Switch(Arguments arguments, Inputs&) {
    for (std::size_t i = 0; i + 1 < arguments.size(); i += 2) {
        const Value& condition = arguments[i];
        if (condition.IsError()) {
            return condition;
        }
        if (condition.kind() != Kind::Boolean && !condition.IsNull()) {
            return Value::Error("a condition of switch is neither true nor false");
        }
        if (!condition.IsNull() && condition.AsBoolean()) {
            return arguments[i + 1];
        }
    }
    return {};
}

// Choose(index, first, second, ...), from 1.
Value ChooseOne(Arguments arguments, Inputs& inputs) {
    double index = 0;
    if (arguments[0].IsNull() || arguments[0].IsError()) {
        return arguments[0];
    }
    if (!NumberOf(arguments[0], inputs, index)) {
        return NoNumber(arguments[0], inputs);
    }
    return index >= 1 && index < static_cast<double>(arguments.size())
               ? arguments[static_cast<std::size_t>(index)]
               : Value();
}

constexpr FunctionInfo Functions[] = {
    {"instrrev", 2, 3, nullptr, "instrrev"},
    {"chr", 1, 1, nullptr, "chr"},
    {"chrw", 1, 1, nullptr, "chrw"},
    {"asc", 1, 1, nullptr, "asc"},
    {"ascw", 1, 1, nullptr, "ascw"},
    {"strcmp", 2, 3, nullptr, "strcomp"},
    {"split", 1, 3, nullptr, "split"},
    {"join", 1, 2, nullptr, "join"},
    {"replicatestring", 2, 2, &ReplicateString, ""},
    {"propercase", 1, 1, &ProperCase, ""},
    {"exp", 1, 1, &OneNumber<Exponential>, ""},
    {"log", 1, 1, &OneNumber<Logarithm>, ""},
    {"sin", 1, 1, &OneNumber<Sine>, ""},
    {"cos", 1, 1, &OneNumber<Cosine>, ""},
    {"tan", 1, 1, &OneNumber<Tangent>, ""},
    {"atn", 1, 1, &OneNumber<ArcTangent>, ""},
    {"pi", 0, 0, &Pi, ""},
    {"ceiling", 1, 1, &OneNumber<Ceiling>, ""},
    {"floor", 1, 1, &OneNumber<Floor>, ""},
    {"roundup", 1, 2, &ToDecimals<AwayFromZero>, ""},
    {"choose", 2, 100, &ChooseOne, "", true, true},
    {"switch", 2, 200, &Switch, "", true, true},
    {"uppercase", 1, 1, nullptr, "ucase"},
    {"ucase", 1, 1, nullptr, "ucase"},
    {"lowercase", 1, 1, nullptr, "lcase"},
    {"lcase", 1, 1, nullptr, "lcase"},
    {"trim", 1, 1, nullptr, "trim"},
    {"trimleft", 1, 1, nullptr, "ltrim"},
    {"ltrim", 1, 1, nullptr, "ltrim"},
    {"trimright", 1, 1, nullptr, "rtrim"},
    {"rtrim", 1, 1, nullptr, "rtrim"},
    {"left", 2, 2, nullptr, "left"},
    {"right", 2, 2, nullptr, "right"},
    {"mid", 2, 3, nullptr, "mid"},
    {"len", 1, 1, nullptr, "len"},
    {"length", 1, 1, nullptr, "len"},
    {"instr", 2, 3, nullptr, "instr"},
    {"replace", 3, 3, nullptr, "replace"},
    {"strreverse", 1, 1, nullptr, "strreverse"},
    {"space", 1, 1, nullptr, "space"},
    {"totext", 1, 2, &ToText, ""},
    {"cstr", 1, 2, &ToText, ""},
    {"tonumber", 1, 1, &ToNumber, ""},
    {"cdbl", 1, 1, &ToNumber, ""},
    {"val", 1, 1, nullptr, "val"},
    {"isnumeric", 1, 1, &IsNumber, ""},
    {"numerictext", 1, 1, &IsNumber, ""},
    {"abs", 1, 1, &OneNumber<Absolute>, ""},
    {"round", 1, 2, &ToDecimals<HalfAwayFromZero>, ""},
    {"truncate", 1, 2, &ToDecimals<TowardsZero>, ""},
    {"fix", 1, 2, &ToDecimals<TowardsZero>, ""},
    {"int", 1, 1, &OneNumber<Floor>, ""},
    {"remainder", 2, 2, &Remainder, ""},
    {"sgn", 1, 1, &OneNumber<SignOf>, ""},
    {"sqr", 1, 1, &OneNumber<Root>, ""},
    {"isnull", 1, 1, &IsNull, "", true},
    {"iif", 3, 3, &Choose, "", true, true},
};
static_assert(NamesDiffer(Functions));

}  // namespace

std::span<const std::span<const FunctionInfo>> FunctionTables() {
    static const std::span<const FunctionInfo> tables[] = {Functions, DateFunctions()};
    return tables;
}

const FunctionInfo* FindFunction(std::string_view name) {
    for (const std::span<const FunctionInfo> functions : FunctionTables()) {
        for (const FunctionInfo& info : functions) {
            if (info.name == name) {
                return &info;
            }
        }
    }
    return nullptr;
}

Value CallFunction(const FunctionInfo& info, Arguments arguments, Inputs& inputs) {
    for (const Value& argument : arguments) {
        if (argument.IsError() && !info.picks) {
            return argument;
        }
    }
    const auto isNull = [](const Value& value) { return value.IsNull(); };
    if (!info.takesNull && std::any_of(arguments.begin(), arguments.end(), isNull)) {
        return {};
    }
    if (info.function) {
        return info.function(arguments, inputs);
    }
    const expr::FunctionInfo* shared = expr::FindFunction(info.shared);
    if (!shared) {
        return Value::Error("the function " + std::string(info.name) + " is not known");
    }
    SharedPlace place(inputs);
    const expr::Call call(arguments.data(), static_cast<int>(arguments.size()), place);
    Value result = shared->function(call);
    return call.error.IsError() ? call.error : result;
}

}  // namespace rdl::formula
