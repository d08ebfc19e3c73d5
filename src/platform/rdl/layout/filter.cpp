#include "platform/rdl/layout/filter.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "platform/rdl/error.h"
#include "platform/rdl/expr/characters.h"
#include "platform/rdl/expr/operators.h"

namespace rdl::layout {
namespace {

Value Checked(const Property& property, Evaluator& evaluator) {
    Value value = property.Get(evaluator);
    if (value.IsError()) {
        throw Error("A filter cannot be worked out: " + std::string(value.AsText()));
    }
    return value;
}

// A constant in the report is text; it is compared as what the other side is.
int CompareAs(const Value& value, const Value& operand, const Culture& culture) {
    double number = 0;
    std::int64_t ticks = 0;
    if (value.IsNumber() && operand.IsText() && expr::ToDouble(operand, culture, number)) {
        return expr::Compare(value, Value::Real(number));
    }
    if (value.kind() == Kind::DateTime && operand.IsText() &&
        ParseDateTime(operand.AsText(), culture, ticks)) {
        return expr::Compare(value, Value::DateTime(ticks));
    }
    bool truth = false;
    if (value.kind() == Kind::Boolean && operand.IsText() && expr::ToBoolean(operand, truth)) {
        return expr::Compare(value, Value::Boolean(truth));
    }
    return expr::Compare(value, operand);
}

class CandidateTest final : public expr::FilterTest {
 public:
    CandidateTest(const FilterPlan& filter, Evaluator& evaluator)
        : m_filter(filter), m_evaluator(evaluator) {}

    bool Passes() {
        const Value value = Checked(m_filter.expression, m_evaluator);
        return FilterTest::Passes(m_filter.op, value, m_filter.values.size());
    }

 private:
    Value Operand(std::size_t index) override { return Checked(m_filter.values[index], m_evaluator); }
    int Order(const Value& value, const Value& operand) override {
        return CompareAs(value, operand, m_evaluator.CurrentCulture());
    }
    bool IsLike(const Value& value, const Value& pattern) override {
        const Culture& culture = m_evaluator.CurrentCulture();
        bool valid = true;
        const bool matches = expr::MatchesPattern(expr::Lower(ToText(value, culture)),
                                                  expr::Lower(ToText(pattern, culture)), valid);
        if (!valid) {
            throw Error("The pattern of a filter lacks a closing bracket");
        }
        return matches && !value.IsNull();
    }

    const FilterPlan& m_filter;
    Evaluator& m_evaluator;
};

// Those with the largest (smallest) values; ties with the last of them stay as well.
void KeepExtremes(const FilterPlan& filter, std::vector<std::uint32_t>& candidates, Evaluator& evaluator,
                  const std::function<void(std::uint32_t)>& enter) {
    if (candidates.empty()) {
        return;
    }
    std::vector<Value> values;
    values.reserve(candidates.size());
    for (const std::uint32_t candidate : candidates) {
        enter(candidate);
        values.push_back(Checked(filter.expression, evaluator));
    }
    double wanted = 0;
    if (!expr::ToDouble(Checked(filter.values.front(), evaluator), evaluator.CurrentCulture(), wanted)) {
        throw Error("A filter by the first or last few needs a number");
    }
    if (expr::RanksByPercent(filter.op)) {
        wanted = std::ceil(static_cast<double>(candidates.size()) * wanted / 100 - 1e-9);
    }
    const auto count =
        static_cast<std::size_t>(std::clamp(wanted, 0.0, static_cast<double>(candidates.size())));
    const std::vector<bool> keep =
        expr::MarkExtremes(values, count, expr::RanksFromTop(filter.op), expr::Compare);
    std::size_t kept = 0;
    for (std::size_t i = 0; i < candidates.size(); ++i) {
        if (keep[i]) {
            candidates[kept++] = candidates[i];
        }
    }
    candidates.resize(kept);
}

}  // namespace

void ApplyFilter(const FilterPlan& filter, std::vector<std::uint32_t>& candidates, Evaluator& evaluator,
                 const std::function<void(std::uint32_t)>& enter) {
    if (expr::Ranks(filter.op)) {
        KeepExtremes(filter, candidates, evaluator, enter);
        return;
    }
    CandidateTest test(filter, evaluator);
    std::erase_if(candidates, [&](std::uint32_t candidate) {
        enter(candidate);
        return !test.Passes();
    });
}

void ApplySort(const std::vector<SortPlan>& sorts, std::vector<std::uint32_t>& candidates,
               Evaluator& evaluator, const std::function<void(std::uint32_t)>& enter) {
    if (sorts.empty() || candidates.size() < 2) {
        return;
    }
    const std::size_t width = sorts.size();
    std::vector<Value> keys;
    keys.reserve(candidates.size() * width);
    for (const std::uint32_t candidate : candidates) {
        enter(candidate);
        for (const SortPlan& sort : sorts) {
            keys.push_back(sort.value.Get(evaluator));
        }
    }
    std::vector<std::uint32_t> order(candidates.size());
    std::iota(order.begin(), order.end(), 0U);
    std::stable_sort(order.begin(), order.end(), [&](std::uint32_t left, std::uint32_t right) {
        for (std::size_t i = 0; i < width; ++i) {
            const int difference = expr::Compare(keys[left * width + i], keys[right * width + i]);
            if (difference != 0) {
                return sorts[i].descending ? difference > 0 : difference < 0;
            }
        }
        return false;
    });
    std::vector<std::uint32_t> sorted;
    sorted.reserve(order.size());
    for (const std::uint32_t index : order) {
        sorted.push_back(candidates[index]);
    }
    candidates.swap(sorted);
}

}  // namespace rdl::layout
