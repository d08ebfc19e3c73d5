// SPDX-License-Identifier: GPL-3.0-or-later
// Annuities, depreciation and cash flows. Money paid out is negative, as in every financial function.
#include <algorithm>
#include <cmath>
#include <vector>

#include "rdl/expr/library/functions.h"
#include "rdl/expr/operations/convert.h"

namespace rdl::expr {
namespace {

constexpr double Accurate = 1e-7;

Value Impossible() {
    return Value::Error("The financial function has no result for its arguments");
}
Value Result(double number) {
    return std::isfinite(number) ? Value::Real(number) : Impossible();
}

// Reads all arguments as numbers; those left out are `missing`.
bool Numbers(const Call& call, double* numbers, int count, double missing = 0) {
    for (int i = 0; i < count; ++i) {
        numbers[i] = missing;
        if (call.Has(i) && !call.Number(i, numbers[i])) {
            return false;
        }
    }
    return true;
}

struct Annuity {
    double rate = 0, periods = 0, payment = 0, present = 0, future = 0;
    bool atBegin = false;
    double Growth() const { return std::pow(1 + rate, periods); }
    double Due() const { return atBegin ? 1 + rate : 1; }

    double FutureValue() const {
        return rate == 0 ? -present - payment * periods
                         : -present * Growth() - payment * Due() * (Growth() - 1) / rate;
    }
    double PresentValue() const {
        return rate == 0 ? -future - payment * periods
                         : -(future + payment * Due() * (Growth() - 1) / rate) / Growth();
    }
    double Payment() const {
        return rate == 0 ? (-future - present) / periods
                         : (-future - present * Growth()) * rate / (Due() * (Growth() - 1));
    }
    // Returns the interest in the payment of a period, counted from 1.
    double Interest(double period) const {
        if (atBegin && period == 1) {
            return 0;
        }
        Annuity before = *this;
        before.payment = Payment();
        before.periods = period - (atBegin ? 2 : 1);
        return atBegin ? (before.FutureValue() - before.payment) * rate : before.FutureValue() * rate;
    }
};

Value FV(const Call& call) {
    double n[5];
    return Numbers(call, n, 5) ? Result(Annuity{n[0], n[1], n[2], n[3], 0, n[4] != 0}.FutureValue())
                               : call.error;
}
Value PV(const Call& call) {
    double n[5];
    return Numbers(call, n, 5) ? Result(Annuity{n[0], n[1], n[2], 0, n[3], n[4] != 0}.PresentValue())
                               : call.error;
}
Value Pmt(const Call& call) {
    double n[5];
    return Numbers(call, n, 5) ? Result(Annuity{n[0], n[1], 0, n[2], n[3], n[4] != 0}.Payment()) : call.error;
}

Value InPeriod(const Call& call, bool interest) {
    double n[6];
    if (!Numbers(call, n, 6)) {
        return call.error;
    }
    if (n[1] < 1 || n[1] >= n[2] + 1) {
        return Impossible();
    }
    const Annuity annuity{n[0], n[2], 0, n[3], n[4], n[5] != 0};
    const double part = annuity.Interest(n[1]);
    return Result(interest ? part : annuity.Payment() - part);
}

Value IPmt(const Call& call) {
    return InPeriod(call, true);
}
Value PPmt(const Call& call) {
    return InPeriod(call, false);
}

Value NPer(const Call& call) {
    double n[5];
    if (!Numbers(call, n, 5)) {
        return call.error;
    }
    const double rate = n[0];
    if (rate <= -1 || (rate == 0 && n[1] == 0)) {
        return Impossible();
    }
    if (rate == 0) {
        return Result(-(n[2] + n[3]) / n[1]);
    }
    const double due = n[1] * (n[4] != 0 ? 1 + rate : 1) / rate;
    return Result(std::log((due - n[3]) / (due + n[2])) / std::log(1 + rate));
}

// Returns future value minus target at `rate`; the search looks for its zero.
double Shortfall(double rate, const double* n) {
    return Annuity{rate, n[0], n[1], n[2], 0, n[4] != 0}.FutureValue() - n[3];
}

Value Rate(const Call& call) {
    double n[5];
    double guess = 0.1;
    if (!Numbers(call, n, 5) || (call.Has(5) && !call.Number(5, guess))) {
        return call.error;
    }
    if (n[0] <= 0) {
        return Impossible();
    }
    double rate0 = guess;
    double rate1 = guess * 1.1 + 0.00001;
    double y0 = Shortfall(rate0, n);
    for (int i = 0; i < 100; ++i) {
        const double y1 = Shortfall(rate1, n);
        if (std::fabs(y1 - y0) < 1e-300 || std::fabs(rate1 - rate0) < 1e-13) {
            return std::fabs(y1) < 1e-3 * std::max(1.0, std::fabs(n[2]) + std::fabs(n[3])) ? Result(rate1)
                                                                                           : Impossible();
        }
        const double next = rate1 - y1 * (rate1 - rate0) / (y1 - y0);
        rate0 = rate1;
        y0 = y1;
        rate1 = next;
    }
    return Impossible();
}

// A list of cash flows, or the arguments from `first` on; at least one.
bool CashFlows(const Call& call, int index, std::vector<double>& flows) {
    const Value& list = call[index];
    const std::size_t count = list.kind() == Kind::List ? list.AsList().size() : 1;
    for (std::size_t i = 0; i < count; ++i) {
        const Value& value = list.kind() == Kind::List ? list.AsList()[i] : list;
        double number = 0;
        if (!ToDouble(value, call.culture(), number)) {
            call.error = NoConversion(value, "a number");
            return false;
        }
        flows.push_back(number);
    }
    if (flows.empty()) {
        call.error = Impossible();
    }
    return !flows.empty();
}

// Each flow at the end of its period, the first after one.
double PresentOf(double rate, const std::vector<double>& flows) {
    double sum = 0;
    double factor = 1;
    for (const double flow : flows) {
        factor *= 1 + rate;
        sum += flow / factor;
    }
    return sum;
}

Value NPV(const Call& call) {
    double rate = 0;
    std::vector<double> flows;
    if (!call.Number(0, rate) || !CashFlows(call, 1, flows)) {
        return call.error;
    }
    return Result(PresentOf(rate, flows));
}

bool HasBothSigns(const std::vector<double>& flows) {
    return std::any_of(flows.begin(), flows.end(), [](double f) { return f > 0; }) &&
           std::any_of(flows.begin(), flows.end(), [](double f) { return f < 0; });
}

Value IRR(const Call& call) {
    std::vector<double> flows;
    double rate = 0.1;
    if (!CashFlows(call, 0, flows) || (call.Has(1) && !call.Number(1, rate))) {
        return call.error;
    }
    if (!HasBothSigns(flows) || rate <= -1) {
        return Impossible();
    }
    double other = rate + 0.01;
    double y = PresentOf(rate, flows);
    for (int i = 0; i < 100; ++i) {
        const double z = PresentOf(other, flows);
        if (std::fabs(other - rate) < Accurate * 1e-5 || z == y) {
            return std::fabs(z) < 1e-3 * std::fabs(*std::max_element(flows.begin(), flows.end()))
                       ? Result(other)
                       : Impossible();
        }
        double next = other - z * (other - rate) / (z - y);
        next = next <= -1 ? (other - 1) / 2 : next;
        rate = other;
        y = z;
        other = next;
    }
    return Impossible();
}

Value MIRR(const Call& call) {
    std::vector<double> flows;
    double finance = 0;
    double reinvest = 0;
    if (!CashFlows(call, 0, flows) || !call.Number(1, finance) || !call.Number(2, reinvest)) {
        return call.error;
    }
    if (!HasBothSigns(flows) || finance == -1 || reinvest == -1) {
        return Impossible();
    }
    std::vector<double> in = flows;
    std::vector<double> out = flows;
    std::transform(in.begin(), in.end(), in.begin(), [](double f) { return std::max(0.0, f); });
    std::transform(out.begin(), out.end(), out.begin(), [](double f) { return std::min(0.0, f); });
    const auto count = static_cast<double>(flows.size());
    const double gained = -PresentOf(reinvest, in) * std::pow(1 + reinvest, count);
    const double spent = PresentOf(finance, out) * (1 + finance);
    return Result(std::pow(gained / spent, 1 / (count - 1)) - 1);
}

Value SLN(const Call& call) {
    double n[3];
    return Numbers(call, n, 3) ? Result((n[0] - n[1]) / n[2]) : call.error;
}

Value SYD(const Call& call) {
    double n[4];
    if (!Numbers(call, n, 4)) {
        return call.error;
    }
    if (n[1] < 0 || n[3] > n[2] || n[3] <= 0) {
        return Impossible();
    }
    return Result((n[0] - n[1]) * (n[2] + 1 - n[3]) * 2 / (n[2] * (n[2] + 1)));
}

// What is written off by the end of a period, the rest value never being undercut.
double Declined(double cost, double salvage, double life, double period, double factor) {
    const double left = cost * std::pow(std::max(0.0, 1 - factor / life), period);
    return cost - std::max(left, std::min(cost, salvage));
}

Value DDB(const Call& call) {
    double n[4];
    double factor = 2;
    if (!Numbers(call, n, 4) || (call.Has(4) && !call.Number(4, factor))) {
        return call.error;
    }
    if (n[0] < 0 || n[1] < 0 || n[2] <= 0 || n[3] <= 0 || n[3] > n[2] || factor <= 0) {
        return Impossible();
    }
    return Result(Declined(n[0], n[1], n[2], n[3], factor) - Declined(n[0], n[1], n[2], n[3] - 1, factor));
}

constexpr FunctionInfo functions[] = {
    {"fv", 3, 5, FV},     {"pv", 3, 5, PV},     {"pmt", 3, 5, Pmt},   {"ipmt", 4, 6, IPmt},
    {"ppmt", 4, 6, PPmt}, {"nper", 3, 5, NPer}, {"rate", 3, 6, Rate}, {"npv", 2, 2, NPV},
    {"irr", 1, 2, IRR},   {"mirr", 3, 3, MIRR}, {"sln", 3, 3, SLN},   {"syd", 4, 4, SYD},
    {"ddb", 4, 5, DDB},
};
static_assert(NamesDiffer(functions));

}  // namespace

std::span<const FunctionInfo> FinancialFunctions() {
    return functions;
}

}  // namespace rdl::expr
