// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/near_name.h"

#include <algorithm>
#include <vector>

#include "rdl/expr/language/code_functions.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/library/functions.h"

namespace rdl::expr {
namespace {

constexpr std::size_t LongestName = 40;

// Characters added, removed, replaced or exchanged with the next.
std::size_t Distance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> before, last, now(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) {
        now[j] = j;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        before = std::move(last);
        last = now;
        now[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t replaced = last[j - 1] + (a[i - 1] == b[j - 1] ? 0 : 1);
            now[j] = std::min({last[j] + 1, now[j - 1] + 1, replaced});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) {
                now[j] = std::min(now[j], before[j - 2] + 1);
            }
        }
    }
    return now.back();
}

// Keeps the nearest of the names that it is shown; of equally near ones the first.
class Search {
 public:
    explicit Search(std::string_view wanted)
        : m_wanted(wanted), m_least(wanted.size() > LongestName ? 0 : Most(wanted.size()) + 1) {}

    void Try(std::string_view name, std::string_view before = {}) {
        const std::size_t gap =
            name.size() > m_wanted.size() ? name.size() - m_wanted.size() : m_wanted.size() - name.size();
        if (gap >= m_least) {
            return;
        }
        if (const std::size_t distance = Distance(m_wanted, name); distance < m_least) {
            m_least = distance;
            m_nearest = std::string(before) + std::string(name);
        }
    }

    const std::string& Nearest() const { return m_nearest; }

 private:
    // Short names are near to many others.
    static std::size_t Most(std::size_t length) { return length < 6 ? 1 : length < 10 ? 2 : 3; }

    std::string_view m_wanted;
    std::size_t m_least;  // only what is nearer counts
    std::string m_nearest;
};

void TryOwn(const CodeFunctions& code, Search& search) {
    for (const std::string& name : code.FunctionNames()) {
        search.Try(name, "Code.");
    }
}

}  // namespace

std::string NearestOwn(std::string_view lower, const CodeFunctions& code) {
    Search search(lower);
    TryOwn(code, search);
    return search.Nearest();
}

std::string NearestName(std::string_view lower, const CodeFunctions* code) {
    Search search(lower);
    if (code) {
        TryOwn(*code, search);
    }
    for (const auto& [name, kind] : AggregateNames) {
        search.Try(name);
    }
    for (const auto& [name, form] : SpecialForms) {
        search.Try(name);
    }
    for (const auto& table : FunctionTables()) {
        for (const FunctionInfo& function : table) {
            if (!function.name.starts_with('.')) {
                search.Try(function.name);
            }
        }
    }
    for (const NamedConstant& constant : Constants()) {
        search.Try(constant.name);
    }
    return search.Nearest();
}

std::string NearestMember(std::string_view lower) {
    Search search(lower);
    for (const auto& table : FunctionTables()) {
        for (const FunctionInfo& function : table) {
            if (function.name.starts_with('.')) {
                search.Try(function.name.substr(1));
            }
        }
    }
    return search.Nearest();
}

}  // namespace rdl::expr
