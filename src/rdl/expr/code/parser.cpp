// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/code/parser.h"

#include <algorithm>
#include <utility>

#include "rdl/expr/code/statements.h"
#include "rdl/expr/language/nodes.h"

namespace rdl::expr {
namespace {

constexpr int MaxVariables = 200;  // of a function, and of the module

bool IsModifier(const Token& token) {
    return token.IsWord("public") || token.IsWord("private") || token.IsWord("friend") ||
           token.IsWord("protected") || token.IsWord("shared") || token.IsWord("overloads") ||
           token.IsWord("readonly") || token.IsWord("overrides");
}

}  // namespace

CodeParser::CodeParser(std::vector<Token> tokens, CompileContext& context, CodeModule& module)
    : m_parser(std::move(tokens), "Code", context, this), m_module(module) {}

void CodeParser::Run() {
    FindFunctions();
    Members();
    // What reports may override to set their variables up.
    if (HasFunction("oninit")) {
        auto statement = std::make_unique<CallStatement>();
        statement->call = Function("oninit", {});
        m_module.startDepth = std::max(m_module.startDepth, statement->call->depth);
        m_module.start.push_back(std::move(statement));
    }
    m_module.pageGlobals = m_parser.facts().pageGlobals;
    m_module.reportItems = m_parser.facts().reportItems;
    for (const auto& [call, token] : m_calls) {
        if (const std::string fault = call->Fault(); !fault.empty()) {
            m_parser.FailAt(token, fault);
        }
    }
}

// Functions are known before their bodies are read: they may call one another in any order.
void CodeParser::FindFunctions() {
    for (std::size_t i = 0; m_parser.Peek(i).type != Token::Type::End; ++i) {
        const Token& word = m_parser.Peek(i);
        const Token& name = m_parser.Peek(i + 1);
        const bool starts =
            i == 0 || m_parser.Peek(i - 1).type == Token::Type::NewLine || IsModifier(m_parser.Peek(i - 1));
        if (!starts || !(word.IsWord("function") || word.IsWord("sub")) || name.type != Token::Type::Word) {
            continue;
        }
        auto& function = m_module.functions[name.lower];
        if (function) {
            m_parser.FailAt(name, "there are two functions \"" + name.text + "\"");
        }
        function = std::make_unique<CodeFunction>();
        function->name = name.text;
    }
}

void CodeParser::Members() {
    for (SkipEnds(); !m_parser.AtEnd(); SkipEnds()) {
        bool modified = false;
        while (IsModifier(m_parser.Peek())) {
            m_parser.Take();
            modified = true;
        }
        const bool constant = m_parser.TakeWord("const");
        const bool dim = m_parser.TakeWord("dim");
        while (dim && IsModifier(m_parser.Peek())) {
            m_parser.Take();
        }
        if (constant || dim || (modified && m_parser.Peek(1).IsWord("as"))) {
            do {
                Declare(Lifetime::Report, constant);
            } while (m_parser.TakeSymbol(","));
            EndStatement();
        } else if (m_parser.TakeWord("function")) {
            FunctionBody(Procedure::ReturnsValue);
        } else if (m_parser.TakeWord("sub")) {
            FunctionBody(Procedure::ReturnsNothing);
        } else {
            m_parser.Fail("only functions, variables and constants can stand here, not \"" +
                          m_parser.Peek().text + "\"");
        }
    }
}

void CodeParser::FunctionBody(Procedure kind) {
    const Token& name = m_parser.Peek();
    m_parser.Name("the name of a function");
    const auto found = m_module.functions.find(name.lower);
    if (found == m_module.functions.end()) {
        m_parser.FailAt(name, "a function must begin on a line of its own");
    }
    m_function = found->second.get();
    const int outerDepth = std::exchange(m_depth, 1);
    m_scopes.assign(1, {});
    if (m_parser.Peek().Is("(")) {
        ParameterList(*m_function);
    }
    if (kind == Procedure::ReturnsValue) {
        Declared result;
        bool given = false;
        AsType(result, given);
        m_function->conversion = result.variable.conversion;
        // Its own name stands for the result, until a parameter takes it.
        expr::Variable own;
        own.conversion = m_function->conversion;
        m_scopes.insert(m_scopes.begin(), std::map<std::string, expr::Variable>{{name.lower, own}});
    }
    EndStatement();
    m_function->body = BlockUntil({{"end", kind == Procedure::ReturnsNothing ? "sub" : "function"}});
    m_parser.Take();
    m_parser.Take();
    EndStatement();
    m_function->depth = m_depth + 5;
    m_depth = outerDepth;
    m_function = nullptr;
    m_scopes.clear();
}

void CodeParser::ParameterList(CodeFunction& function) {
    m_parser.Expect("(");
    if (m_parser.TakeSymbol(")")) {
        return;
    }
    do {
        CodeParameter parameter;
        bool optional = false;
        for (bool more = true; more;) {
            more = false;
            for (const std::string_view word : {"byval", "byref", "optional", "paramarray"}) {
                if (m_parser.TakeWord(word)) {
                    parameter.byReference = parameter.byReference || word == "byref";
                    parameter.rest = parameter.rest || word == "paramarray";
                    optional = optional || word == "optional";
                    more = true;
                }
            }
        }
        const Token& name = m_parser.Peek();
        m_parser.Name("the name of a parameter");
        Declared declared;
        if (m_parser.TakeSymbol("(")) {
            m_parser.Expect(")");
            declared.list = true;
        }
        bool given = false;
        AsType(declared, given);
        parameter.conversion = declared.list ? nullptr : declared.variable.conversion;
        if (m_parser.TakeSymbol("=")) {
            parameter.missing = Expression();
            if (!dynamic_cast<LiteralNode*>(parameter.missing.get())) {
                m_parser.FailAt(name, "what a parameter is when it is left out must be a constant value");
            }
        } else if (optional) {
            parameter.missing = std::make_unique<LiteralNode>(Value());
        }
        NewVariable(name.lower, Lifetime::Call, parameter.conversion, name);
        function.parameters.push_back(std::move(parameter));
    } while (m_parser.TakeSymbol(","));
    m_parser.Expect(")");
}

// As Type, As Type(), As New Type(...).
void CodeParser::AsType(Declared& declared, bool& given) {
    given = m_parser.TakeWord("as");
    if (!given) {
        return;
    }
    const Token& token = m_parser.Peek();
    if (token.IsWord("new")) {
        declared.made = Expression();
        return;
    }
    bool known = false;
    declared.variable.conversion = Parser::Conversion(m_parser.TypeName(), known);
    if (!known) {
        m_parser.FailAt(token, "the type \"" + token.text + "\" is not known");
    }
    if (m_parser.Peek().Is("(") && m_parser.Peek(1).Is(")")) {
        m_parser.Take();
        m_parser.Take();
        declared.list = true;
    }
}

expr::Variable CodeParser::NewVariable(const std::string& lower, Lifetime lifetime,
                                       const FunctionInfo* conversion, const Token& token) {
    auto& names = lifetime == Lifetime::Report && m_scopes.empty() ? m_module.variables : m_scopes.back();
    if (names.count(lower) != 0) {
        m_parser.FailAt(token, "\"" + token.text + "\" is declared twice");
    }
    expr::Variable variable;
    variable.conversion = conversion;
    if (lifetime == Lifetime::Report) {
        variable.module = &m_module.values;
        variable.slot = static_cast<int>(m_module.values.size());
        m_module.values.emplace_back();
    } else {
        variable.slot = m_function->slots++;
    }
    if (variable.slot > MaxVariables) {
        m_parser.FailAt(token, "there are too many variables");
    }
    names[lower] = variable;
    return variable;
}

// One name of a Dim, Const or Static: for the module the value is given when its code first runs, in a
// function by the statement that the caller makes of it.
CodeParser::Declared CodeParser::Declare(Lifetime lifetime, bool constant) {
    const Token& name = m_parser.Peek();
    m_parser.Name("the name of a variable");
    Declared declared;
    // What is set up once for the report cannot lean on the variables of one call.
    std::vector<std::map<std::string, expr::Variable>> hidden;
    if (lifetime == Lifetime::Report) {
        hidden = std::exchange(m_scopes, {});
    }
    if (m_parser.TakeSymbol("(")) {
        declared.list = true;
        if (!m_parser.Peek().Is(")") && !m_parser.Peek().Is(",")) {
            declared.upper = Expression();
        }
        if (m_parser.Peek().Is(",")) {
            m_parser.Fail("arrays of several dimensions are not known");
        }
        m_parser.Expect(")");
    }
    bool given = false;
    AsType(declared, given);
    NodePtr value = declared.made              ? std::move(declared.made)
                    : m_parser.TakeSymbol("=") ? Expression()
                                               : nullptr;
    if (constant && !value) {
        m_parser.Fail("a constant needs its value");
    }
    if (lifetime == Lifetime::Report) {
        m_scopes = std::move(hidden);
        m_module.startDepth = std::max(m_module.startDepth, m_depth);
    }
    declared.variable = NewVariable(name.lower, lifetime, declared.variable.conversion, name);
    if (constant) {
        (m_scopes.empty() ? m_module.variables : m_scopes.back())[name.lower].constant = true;
    }
    First(declared, std::move(value), lifetime == Lifetime::Report ? m_module.start : m_pending);
    return declared;
}

// The statement that gives a variable its first value.
void CodeParser::First(Declared& declared, NodePtr value, Block& block) {
    if (declared.upper) {
        auto size = std::make_unique<SizeStatement>();
        size->target = declared.variable;
        size->upper = std::move(declared.upper);
        block.push_back(std::move(size));
        return;
    }
    auto assign = std::make_unique<AssignStatement>();
    assign->target = declared.variable;
    if (declared.list && !value) {
        assign->target.conversion = nullptr;
    }
    assign->value = std::move(value);
    block.push_back(std::move(assign));
}

const expr::Variable* CodeParser::Lookup(std::string_view lower) const {
    const std::string name(lower);
    for (auto scope = m_scopes.rbegin(); scope != m_scopes.rend(); ++scope) {
        if (const auto found = scope->find(name); found != scope->end()) {
            return &found->second;
        }
    }
    const auto found = m_module.variables.find(name);
    return found == m_module.variables.end() ? nullptr : &found->second;
}

NodePtr CodeParser::Variable(std::string_view lower) {
    const expr::Variable* variable = Lookup(lower);
    // A function's own name is its result, but with brackets a call of it.
    const bool result = variable && !variable->module && variable->slot == 0;
    if (!variable || (result && m_parser.Peek(1).Is("("))) {
        return nullptr;
    }
    return std::make_unique<VariableNode>(*variable);
}

bool CodeParser::HasFunction(std::string_view lower) const {
    return m_module.functions.count(std::string(lower)) != 0;
}

NodePtr CodeParser::Function(std::string_view lower, std::vector<NodePtr> arguments) {
    const auto found = m_module.functions.find(std::string(lower));
    auto call = std::make_unique<CodeCallNode>(m_module, *found->second, std::move(arguments));
    m_calls.emplace_back(call.get(), m_parser.Peek());
    return call;
}

NodePtr CodeParser::WithObject() {
    return m_with.empty() ? nullptr : std::make_unique<VariableNode>(m_with.back());
}

NodePtr CodeParser::Expression() {
    NodePtr node = m_parser.Expression();
    m_depth = std::max(m_depth, node->depth);
    return node;
}

}  // namespace rdl::expr
