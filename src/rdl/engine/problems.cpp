// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/problems.h"

#include <algorithm>
#include <unordered_set>
#include <utility>

#include "rdl/definition/parse.h"
#include "rdl/layout/plan/style_check.h"
#include "rdl/values/error_text.h"

namespace rdl::engine {
namespace {

constexpr std::size_t MostProblems = 1'000;

}  // namespace

std::vector<std::string> ProblemsOf(const std::filesystem::path& file) {
    const std::string name = WithoutMarks(file.filename().string());
    std::vector<std::pair<int, std::string>> found;  // with their lines
    std::unordered_set<std::string> known;           // a style may be read for several items
    const TakeStyleConstant take = [&](StyleProperty property, const Expr& constant) {
        if (known.size() > MostProblems) {
            return;
        }
        const std::string flaw = layout::FlawOfStyle(property, constant.source);
        if (flaw.empty()) {
            return;
        }
        std::string problem =
            name + ", line " + std::to_string(constant.line) + ": " + constant.where + ": " + flaw;
        if (known.insert(problem).second && known.size() <= MostProblems) {
            found.emplace_back(constant.line, std::move(problem));
        }
    };
    ParseDefinitionFile(file, {}, take);
    std::stable_sort(found.begin(), found.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    std::vector<std::string> problems;
    for (auto& [line, problem] : found) {
        problems.push_back(std::move(problem));
    }
    if (known.size() > MostProblems) {
        problems.emplace_back("there are more");
    }
    return problems;
}

}  // namespace rdl::engine
