// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>

#include "rdl/expr/language/nodes.h"
#include "rdl/expr/language/parser.h"

namespace rdl::expr {
namespace {

constexpr std::size_t MaxSource = 65536;

}  // namespace

Program::Program(std::unique_ptr<Node> root) : m_root(std::move(root)) {}
Program::~Program() = default;

Value Program::Evaluate(Environment& environment) const {
    Machine machine{environment};
    const Machine fresh{environment};
    Value value = m_root->Run(machine);
    constexpr std::int64_t Least = 50, BytesInStep = 64;
    environment.Spend(Least + fresh.steps - machine.steps + (fresh.bytes - machine.bytes) / BytesInStep);
    return value;
}

std::shared_ptr<Program> Compiler::Finish(NodePtr root, Facts facts) {
    auto program = std::make_shared<Program>(std::move(root));
    if (const auto* field = dynamic_cast<const FieldNode*>(program->m_root.get())) {
        program->m_plainField = field->slot;
    }
    if (const auto* literal = dynamic_cast<const LiteralNode*>(program->m_root.get())) {
        program->m_constant = literal->value;
    }
    program->m_usesPageGlobals = facts.pageGlobals;
    program->m_usesReportItems = facts.reportItems;
    program->m_aggregates = std::move(facts.aggregates);
    return program;
}

std::shared_ptr<Program> Compile(std::string_view source, const std::string& where, CompileContext& context) {
    if (source.size() > MaxSource) {
        throw Error(where + ": the expression is longer than " + std::to_string(MaxSource) + " characters");
    }
    // A blank stands for the = so that positions are those of the report file.
    std::string text(source);
    const std::size_t first = text.find_first_not_of(" \t\r\n");
    if (first != std::string::npos && text[first] == '=') {
        text[first] = ' ';
    }
    try {
        Parser parser(Lex(text, LexMode::Expression), where, context);
        NodePtr root = parser.Expression();
        if (!parser.AtEnd()) {
            parser.Fail("an operator was expected instead of \"" + parser.Peek().text + "\"");
        }
        return Compiler::Finish(std::move(root), parser.facts());
    } catch (const LexError& error) {
        std::string what = where + ": " + error.what + ", at character " + std::to_string(error.position + 1);
        std::replace(what.begin(), what.end(), '\'', '"');
        throw Error(what);
    }
}

}  // namespace rdl::expr
