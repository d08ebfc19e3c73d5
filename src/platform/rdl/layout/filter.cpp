#include "platform/rdl/layout/filter.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <numeric>
#include <string_view>

#include "platform/rdl/error.h"

namespace rdl::layout {
namespace {

char LowerOf(char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
}

bool InClass(std::string_view set, char c) {
    const bool negated = !set.empty() && set.front() == '!';
    bool found = false;
    for (std::size_t i = negated ? 1 : 0; i < set.size(); ++i) {
        if (i + 2 < set.size() && set[i + 1] == '-') {
            found = found || (LowerOf(set[i]) <= c && c <= LowerOf(set[i + 2]));
            i += 2;
        } else {
            found = found || LowerOf(set[i]) == c;
        }
    }
    return found != negated;
}

// * any text, ? one character, # a digit, [..] one of these. Backtracks only to the last *, so no pattern is
// slow.
bool MatchesLike(std::string_view text, std::string_view pattern) {
    std::size_t t = 0, p = 0, star = std::string_view::npos, mark = 0;
    while (t < text.size()) {
        std::size_t next = p + 1;
        bool matches = false;
        if (p < pattern.size() && pattern[p] == '*') {
            star = p++;
            mark = t;
            continue;
        }
        if (p < pattern.size()) {
            const char c = pattern[p];
            const std::size_t close = c == '[' ? pattern.find(']', p + 1) : std::string_view::npos;
            if (close != std::string_view::npos) {
                matches = InClass(pattern.substr(p + 1, close - p - 1), LowerOf(text[t]));
                next = close + 1;
            } else {
                matches = c == '?' || (c == '#' ? std::isdigit(static_cast<unsigned char>(text[t])) != 0
                                                : LowerOf(c) == LowerOf(text[t]));
            }
        }
        if (matches) {
            ++t;
            p = next;
        } else if (star != std::string_view::npos) {
            p = star + 1;
            t = ++mark;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of('*', p) == std::string_view::npos;
}

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
        return MatchesLike(ToText(value, culture), ToText(pattern, culture));
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
