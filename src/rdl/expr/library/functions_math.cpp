// SPDX-License-Identifier: GPL-3.0-or-later
// Mathematics. Whole numbers stay whole where the result is one.
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/compare.h"
#include "rdl/expr/operations/convert.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {
namespace {

template <double (*F)(double)>
Value Real(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Real(F(number)) : call.error;
}

template <double (*F)(double, double)>
Value Real2(const Call& call) {
    double a = 0;
    double b = 0;
    return call.Number(0, a) && call.Number(1, b) ? Value::Real(F(a, b)) : call.error;
}

// Floor and its like: a whole number is its own result.
template <double (*F)(double), Rounding R>
Value Cut(const Call& call) {
    Value number;
    if (!ToNumber(call[0], call.culture(), number)) {
        return NoConversion(call[0], "a number");
    }
    if (number.kind() == Kind::Decimal) {
        return Value::Decimal(number.AsDecimal().Rounded(0, R));
    }
    return number.kind() == Kind::Integer ? number : Value::Real(F(number.AsReal()));
}

Value Abs(const Call& call) {
    Value number;
    if (call[0].kind() == Kind::TimeSpan) {
        return call[0].AsTicks() < 0 ? Negate(call[0], call.culture()) : call[0];
    }
    if (!ToNumber(call[0], call.culture(), number)) {
        return NoConversion(call[0], "a number");
    }
    if (number.kind() == Kind::Integer) {
        return number.AsInteger() < 0 ? Negate(number, call.culture()) : number;
    }
    if (number.kind() == Kind::Decimal) {
        return Value::Decimal(number.AsDecimal().Magnitude());
    }
    return Value::Real(std::fabs(number.AsReal()));
}

Value Sign(const Call& call) {
    double number = 0;
    if (!call.Number(0, number)) {
        return call.error;
    }
    return std::isnan(number) ? Value::Error("What is no number has no sign")
                              : Value::Integer(number > 0   ? 1
                                               : number < 0 ? -1
                                                            : 0);
}

Value Log(const Call& call) {
    double number = 0;
    double base = 0;
    if (!call.Number(0, number) || !call.Number(1, base)) {
        return call.error;
    }
    return Value::Real(call.Has(1) ? std::log(number) / std::log(base) : std::log(number));
}

// A half is judged on the decimal number that was meant: 1.005 is one, though its double lies below.
double RoundAt(double number, int digits, bool awayFromZero) {
    const double scale = std::pow(10.0, digits);
    const double scaled = number * scale;
    if (!std::isfinite(scaled) || std::fabs(scaled) >= 4503599627370496.0) {
        return number;
    }
    const double floor = std::floor(scaled);
    const double rest = scaled - floor;
    const bool half = std::fabs(rest - 0.5) <= std::fabs(scaled) * std::numeric_limits<double>::epsilon();
    double whole = rest < 0.5 ? floor : floor + 1;
    if (half && awayFromZero) {
        whole = number < 0 ? floor : floor + 1;
    } else if (half) {
        whole = std::fmod(floor, 2) == 0 ? floor : floor + 1;
    }
    return whole / scale;
}

// Round(number [, digits [, mode]]) or Round(number, mode): the modes are texts of our own making, see the
// constants MidpointRounding.
Value Round(const Call& call) {
    Value number;
    if (!ToNumber(call[0], call.culture(), number)) {
        return NoConversion(call[0], "a number");
    }
    std::int64_t digits = 0;
    bool away = false;
    for (int i = 1; i < call.count(); ++i) {
        if (call[i].IsText()) {
            away = call[i].AsText() == "AwayFromZero";
        } else if (!call.Integer(i, digits)) {
            return call.error;
        }
    }
    if (digits < 0 || digits > 28) {
        return Value::Error("Round takes 0 to 28 digits");
    }
    if (number.kind() == Kind::Decimal) {
        return Value::Decimal(number.AsDecimal().Rounded(
            static_cast<int>(digits), away ? Rounding::HalfAwayFromZero : Rounding::HalfEven));
    }
    return number.kind() == Kind::Integer
               ? number
               : Value::Real(RoundAt(number.AsReal(), static_cast<int>(digits), away));
}

Value MinMax(const Call& call, bool least) {
    Value best;
    bool isDecimal = false, isReal = false;
    for (int i = 0; i < call.count(); ++i) {
        Value number;
        if (!ToNumber(call[i], call.culture(), number)) {
            return NoConversion(call[i], "a number");
        }
        const int order = i == 0 ? 0 : Compare(number, best);
        best = i == 0 || (least ? order < 0 : order > 0) ? number : best;
        isDecimal = isDecimal || number.kind() == Kind::Decimal;
        isReal = isReal || number.kind() == Kind::Real;
    }
    // The other number gives its type.
    if (!isDecimal || best.kind() == Kind::Real) {
        return best;
    }
    return isReal ? Value::Real(best.AsDouble()) : Value::Decimal(best.AsDecimal());
}

Value Min(const Call& call) {
    return MinMax(call, true);
}
Value Max(const Call& call) {
    return MinMax(call, false);
}

// The same report must come out the same each time, so the number depends on the argument alone: a negative
// one seeds, none is the seed of a fresh start.
Value Rnd(const Call& call) {
    double seed = 1;
    if (call.Has(0) && !call.Number(0, seed)) {
        return call.error;
    }
    std::uint64_t state = 0;
    std::memcpy(&state, &seed, sizeof state);
    state += 0x9E3779B97F4A7C15ull;
    state = (state ^ (state >> 30)) * 0xBF58476D1CE4E5B9ull;
    state = (state ^ (state >> 27)) * 0x94D049BB133111EBull;
    return Value::Real(static_cast<double>((state ^ (state >> 31)) >> 40) / 16777216.0);
}

Value IsNaN(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Boolean(std::isnan(number)) : call.error;
}
Value IsInfinity(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Boolean(std::isinf(number)) : call.error;
}

Value IsPositiveInfinity(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Boolean(std::isinf(number) && number > 0) : call.error;
}
Value IsNegativeInfinity(const Call& call) {
    double number = 0;
    return call.Number(0, number) ? Value::Boolean(std::isinf(number) && number < 0) : call.error;
}

double Floor(double x) {
    return std::floor(x);
}
double Ceiling(double x) {
    return std::ceil(x);
}
double Truncate(double x) {
    return std::trunc(x);
}
double Sqrt(double x) {
    return std::sqrt(x);
}
double Exp(double x) {
    return std::exp(x);
}
double Log10(double x) {
    return std::log10(x);
}
double Sin(double x) {
    return std::sin(x);
}
double Cos(double x) {
    return std::cos(x);
}
double Tan(double x) {
    return std::tan(x);
}
double Asin(double x) {
    return std::asin(x);
}
double Acos(double x) {
    return std::acos(x);
}
double Atan(double x) {
    return std::atan(x);
}
double Sinh(double x) {
    return std::sinh(x);
}
double Cosh(double x) {
    return std::cosh(x);
}
double Tanh(double x) {
    return std::tanh(x);
}
double Pow(double x, double y) {
    return std::pow(x, y);
}
double Atan2(double y, double x) {
    return std::atan2(y, x);
}
double Remainder(double x, double y) {
    return std::remainder(x, y);
}

constexpr Function Floors = Cut<Floor, Rounding::Down>, Ceilings = Cut<Ceiling, Rounding::Up>,
                   Cuts = Cut<Truncate, Rounding::TowardsZero>;

// The members of Decimal take numbers of any type as decimal ones.
template <Function F>
Value OfDecimal(const Call& call) {
    Value arguments[3];
    Decimal number;
    if (!call.Exact(0, number)) {
        return call.error;
    }
    arguments[0] = Value::Decimal(number);
    for (int i = 1; i < call.count(); ++i) {
        arguments[i] = call[i];
    }
    return F(Call(arguments, call.count(), call.environment));
}

Value BigMul(const Call& call) {
    return Multiply(call[0], call[1], call.culture());
}

constexpr FunctionInfo functions[] = {
    {"abs", 1, 1, Abs},
    {"sign", 1, 1, Sign},
    {"sgn", 1, 1, Sign},
    {"int", 1, 1, Floors},
    {"fix", 1, 1, Cuts},
    {"floor", 1, 1, Floors},
    {"ceiling", 1, 1, Ceilings},
    {"truncate", 1, 1, Cuts},
    {"round", 1, 3, Round},
    {"sqrt", 1, 1, Real<Sqrt>},
    {"sqr", 1, 1, Real<Sqrt>},
    {"exp", 1, 1, Real<Exp>},
    {"log", 1, 2, Log},
    {"log10", 1, 1, Real<Log10>},
    {"pow", 2, 2, Real2<Pow>},
    {"sin", 1, 1, Real<Sin>},
    {"cos", 1, 1, Real<Cos>},
    {"tan", 1, 1, Real<Tan>},
    {"asin", 1, 1, Real<Asin>},
    {"acos", 1, 1, Real<Acos>},
    {"atan", 1, 1, Real<Atan>},
    {"atn", 1, 1, Real<Atan>},
    {"atan2", 2, 2, Real2<Atan2>},
    {"sinh", 1, 1, Real<Sinh>},
    {"cosh", 1, 1, Real<Cosh>},
    {"tanh", 1, 1, Real<Tanh>},
    {"bigmul", 2, 2, BigMul},
    {"rnd", 0, 1, Rnd},
    {"math.abs", 1, 1, Abs},
    {"math.sign", 1, 1, Sign},
    {"math.floor", 1, 1, Floors},
    {"math.ceiling", 1, 1, Ceilings},
    {"math.truncate", 1, 1, Cuts},
    {"math.round", 1, 3, Round},
    {"math.sqrt", 1, 1, Real<Sqrt>},
    {"math.exp", 1, 1, Real<Exp>},
    {"math.log", 1, 2, Log},
    {"math.log10", 1, 1, Real<Log10>},
    {"math.pow", 2, 2, Real2<Pow>},
    {"math.sin", 1, 1, Real<Sin>},
    {"math.cos", 1, 1, Real<Cos>},
    {"math.tan", 1, 1, Real<Tan>},
    {"math.asin", 1, 1, Real<Asin>},
    {"math.acos", 1, 1, Real<Acos>},
    {"math.atan", 1, 1, Real<Atan>},
    {"math.atan2", 2, 2, Real2<Atan2>},
    {"math.sinh", 1, 1, Real<Sinh>},
    {"math.cosh", 1, 1, Real<Cosh>},
    {"math.tanh", 1, 1, Real<Tanh>},
    {"math.min", 2, 2, Min},
    {"math.max", 2, 2, Max},
    {"math.bigmul", 2, 2, BigMul},
    {"math.ieeeremainder", 2, 2, Real2<Remainder>},
    {"decimal.round", 1, 3, OfDecimal<Round>},
    {"decimal.truncate", 1, 1, OfDecimal<Cuts>},
    {"decimal.floor", 1, 1, OfDecimal<Floors>},
    {"decimal.ceiling", 1, 1, OfDecimal<Ceilings>},
    {"double.ispositiveinfinity", 1, 1, IsPositiveInfinity},
    {"double.isnegativeinfinity", 1, 1, IsNegativeInfinity},
    {"double.isnan", 1, 1, IsNaN},
    {"double.isinfinity", 1, 1, IsInfinity},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> MathFunctions() {
    return functions;
}

}  // namespace rdl::expr
