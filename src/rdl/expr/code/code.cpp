// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code/code.h"

#include <algorithm>
#include <utility>

#include "rdl/expr/code/parser.h"

namespace rdl::expr {
namespace {

constexpr std::size_t MaxSource = 1u << 20;
constexpr std::int64_t StepsOfReport = 2'000'000'000;

}  // namespace

CodeLibrary::CodeLibrary(std::string_view source, CompileContext& context)
    : m_module(std::make_unique<CodeModule>()) {
    if (source.size() > MaxSource) {
        throw Error("Code: the code of the report is longer than " + std::to_string(MaxSource) +
                    " characters");
    }
    m_module->steps = StepsOfReport;
    // Code stands outside every data region.
    const std::string dataSet = std::exchange(context.dataSet, "");
    try {
        CodeParser(Lex(source, LexMode::Code), context, *m_module).Run();
    } catch (const LexError& error) {
        context.dataSet = dataSet;
        std::string what = "Code, line " + std::to_string(error.line) + ": " + error.what;
        std::replace(what.begin(), what.end(), '\'', '"');
        throw Error(what);
    } catch (...) {
        context.dataSet = dataSet;
        throw;
    }
    context.dataSet = dataSet;
}

CodeLibrary::~CodeLibrary() = default;

std::vector<std::string> CodeLibrary::FunctionNames() const {
    std::vector<std::string> names;
    for (const auto& [name, function] : m_module->functions) {
        names.push_back(name);
    }
    return names;
}

bool CodeLibrary::UsesPageGlobals() const {
    return m_module->pageGlobals;
}
bool CodeLibrary::UsesReportItems() const {
    return m_module->reportItems;
}

void CodeLibrary::Reset() {
    m_module->started = false;
    m_module->steps = StepsOfReport;
    std::fill(m_module->values.begin(), m_module->values.end(), Value());
}

NodePtr CodeLibrary::Use(const std::string& lower, std::vector<NodePtr> arguments, std::string& why) const {
    if (const auto found = m_module->functions.find(lower); found != m_module->functions.end()) {
        auto call = std::make_unique<CodeCallNode>(*m_module, *found->second, std::move(arguments));
        why = call->Fault();
        return why.empty() ? std::move(call) : nullptr;
    }
    if (const auto found = m_module->variables.find(lower);
        found != m_module->variables.end() && arguments.empty()) {
        return std::make_unique<ModuleVariableNode>(*m_module, found->second);
    }
    why = "the code of the report has no function \"" + lower + "\"";
    return nullptr;
}

}  // namespace rdl::expr
