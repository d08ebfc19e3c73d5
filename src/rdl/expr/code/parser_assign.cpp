// SPDX-License-Identifier: GPL-3.0-or-later
// Members of CodeParser: assignments and calls.
#include <utility>

#include "rdl/expr/code/parser.h"
#include "rdl/expr/code/statements.h"
#include "rdl/expr/language/nodes.h"

namespace rdl::expr {
namespace {

Operator AssignmentOperator(const std::string& symbol) {
    static constexpr std::pair<std::string_view, Operator> operators[] = {
        {"+=", Add},          {"-=", Subtract}, {"*=", Multiply},    {"/=", Divide},
        {"\\=", DivideWhole}, {"^=", Power},    {"&=", Concatenate},
    };
    for (const auto& [written, operation] : operators) {
        if (written == symbol) {
            return operation;
        }
    }
    return nullptr;
}

}  // namespace

// Takes = (null) or += and its like.
Operator CodeParser::AssignmentSign() {
    const Operator operation = AssignmentOperator(m_parser.Peek().text);
    if (operation) {
        m_parser.Take();
    } else {
        m_parser.Expect("=");
    }
    return operation;
}

std::unique_ptr<Statement> CodeParser::AssignOrCall() {
    m_parser.TakeWord("call");
    const Token& name = m_parser.Peek();
    const Token& next = m_parser.Peek(1);
    const expr::Variable* variable = name.type == Token::Type::Word ? Lookup(name.lower) : nullptr;
    const bool assigned = next.Is("=") || AssignmentOperator(next.text);
    if (variable && assigned) {
        return ToVariable(*variable);
    }
    const bool ownResult = variable && !variable->module && variable->slot == 0;
    if (name.Is(".") || (variable && !ownResult && (next.Is("(") || next.Is(".")))) {
        return ToMember();
    }
    if (name.IsWord("array") && next.Is(".")) {
        return ArrayStatement();
    }
    if (name.type != Token::Type::Word || !HasFunction(name.lower)) {
        m_parser.Fail(
            "\"" + name.text +
            "\" is no statement that the code of a report can use, and no variable or function of it");
    }
    m_parser.Take();
    auto statement = std::make_unique<CallStatement>();
    std::vector<NodePtr> arguments = m_parser.Peek().Is("(") ? m_parser.Arguments() : std::vector<NodePtr>();
    statement->call = Function(name.lower, std::move(arguments));
    m_depth = std::max(m_depth, statement->call->depth);
    return statement;
}

std::unique_ptr<Statement> CodeParser::ToVariable(const expr::Variable& variable) {
    if (variable.constant) {
        m_parser.Fail("the constant \"" + m_parser.Peek().text + "\" cannot change");
    }
    auto statement = std::make_unique<AssignStatement>();
    statement->target = variable;
    m_parser.Take();
    statement->operation = AssignmentSign();
    statement->value = Expression();
    return statement;
}

// name(index) = value, object.Member = value, object.Item(index) = value, object.Method(...).
std::unique_ptr<Statement> CodeParser::ToMember() {
    const Token& start = m_parser.Peek();
    NodePtr target = m_parser.Target();
    m_depth = std::max(m_depth, target->depth + 1);
    if (!m_parser.Peek().Is("=") && !AssignmentOperator(m_parser.Peek().text)) {
        if (!dynamic_cast<CallNode*>(target.get())) {
            m_parser.FailAt(start, "a value alone is no statement");
        }
        auto statement = std::make_unique<CallStatement>();
        statement->call = std::move(target);
        return statement;
    }
    auto* element = dynamic_cast<IndexNode*>(target.get());
    const auto* variable = element ? dynamic_cast<VariableNode*>(element->target.get()) : nullptr;
    if (variable) {
        auto statement = std::make_unique<AssignStatement>();
        statement->target = variable->variable;
        if (variable->variable.constant) {
            m_parser.FailAt(start, "the constant \"" + start.text + "\" cannot change");
        }
        statement->index = std::move(element->index);
        statement->operation = AssignmentSign();
        statement->value = Expression();
        return statement;
    }
    auto* member = dynamic_cast<CallNode*>(target.get());
    if ((!member || member->info.name[0] != '.' || member->arguments.size() > 2) && !element) {
        m_parser.FailAt(start, "nothing can be assigned to this");
    }
    auto statement = std::make_unique<MemberStatement>();
    statement->member = element ? ".item" : member->info.name;
    statement->object = std::move(element ? element->target : member->arguments[0]);
    if (element || member->arguments.size() == 2) {
        statement->index = std::move(element ? element->index : member->arguments[1]);
    }
    statement->operation = AssignmentSign();
    statement->value = Expression();
    return statement;
}

// Array.Sort(name), Array.Reverse(name): the variable takes its values in their new order.
std::unique_ptr<Statement> CodeParser::ArrayStatement() {
    const Token& start = m_parser.Peek();
    NodePtr sorted = m_parser.Target();
    m_depth = std::max(m_depth, sorted->depth);
    const auto* call = dynamic_cast<CallNode*>(sorted.get());
    const auto* variable =
        call && call->arguments.size() == 1 ? dynamic_cast<VariableNode*>(call->arguments[0].get()) : nullptr;
    if (!variable || variable->variable.constant) {
        m_parser.FailAt(start, "only Array.Sort and Array.Reverse of a variable are statements");
    }
    auto statement = std::make_unique<AssignStatement>();
    statement->target = variable->variable;
    statement->value = std::move(sorted);
    return statement;
}

std::unique_ptr<Statement> CodeParser::With() {
    auto statement = std::make_unique<WithStatement>();
    const Token& token = m_parser.Peek();
    statement->object = Expression();
    m_scopes.emplace_back();
    // No name of the code can be the same as a blank one.
    statement->target = NewVariable(" with", Lifetime::Call, nullptr, token);
    m_with.push_back(statement->target);
    EndStatement();
    statement->body = BlockUntil({{"end", "with"}});
    m_parser.Take();
    m_parser.Take();
    m_with.pop_back();
    m_scopes.pop_back();
    return statement;
}

}  // namespace rdl::expr
