// SPDX-License-Identifier: GPL-3.0-or-later
// Parses report-level code into a CodeModule.
#pragma once

#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "rdl/expr/code/module.h"
#include "rdl/expr/language/parser.h"
#include "rdl/expr/operations/operators.h"

namespace rdl::expr {

class CodeParser final : public CodeNames {
 public:
    CodeParser(std::vector<Token> tokens, CompileContext& context, CodeModule& module);
    // Raises rdl::Error with the line.
    void Run();

    NodePtr Variable(std::string_view lower) override;
    bool HasFunction(std::string_view lower) const override;
    NodePtr Function(std::string_view lower, std::vector<NodePtr> arguments) override;
    NodePtr WithObject() override;

 private:
    using Words = std::initializer_list<std::string_view>;
    enum class Procedure { ReturnsValue, ReturnsNothing };
    // A variable lives as long as the call, or as long as the report: those of the module, and Static.
    enum class Lifetime { Call, Report };
    struct Declared {
        expr::Variable variable;
        bool list = false;
        NodePtr upper;  // Dim a(upper)
        NodePtr made;   // As New Type(...)
    };

    // Declarations: parser.cpp.
    void FindFunctions();
    void Members();
    void FunctionBody(Procedure kind);
    void ParameterList(CodeFunction& function);
    Declared Declare(Lifetime lifetime, bool constant);
    void First(Declared& declared, NodePtr value, Block& block);
    void AsType(Declared& declared, bool& given);
    expr::Variable NewVariable(const std::string& lower, Lifetime lifetime, const FunctionInfo* conversion,
                               const Token& token);
    const expr::Variable* Lookup(std::string_view lower) const;

    // Statements: parser_statements.cpp.
    bool AtWords(Words words) const;
    bool AtEndOfStatement() const;
    void EndStatement();
    void SkipEnds();
    Block BlockUntil(std::initializer_list<Words> ends);
    Block SingleLine();
    void One(Block& block);
    std::unique_ptr<Statement> Known();
    void Declarations(Block& block);
    void ReDim(Block& block);
    std::unique_ptr<Statement> If();
    std::unique_ptr<Statement> Select();
    std::unique_ptr<Statement> For();
    std::unique_ptr<Statement> While();
    std::unique_ptr<Statement> Do();
    std::unique_ptr<Statement> Try();
    std::unique_ptr<Statement> Jump();
    std::unique_ptr<Statement> With();
    std::unique_ptr<Statement> AssignOrCall();
    std::unique_ptr<Statement> ToVariable(const expr::Variable& variable);
    std::unique_ptr<Statement> ToMember();
    std::unique_ptr<Statement> ArrayStatement();
    Operator AssignmentSign();
    NodePtr Expression();

    Parser m_parser;
    CodeModule& m_module;
    CodeFunction* m_function = nullptr;  // the function being parsed
    std::vector<std::map<std::string, expr::Variable>>
        m_scopes;  // variables of the function, innermost block last
    std::vector<std::pair<const CodeCallNode*, Token>>
        m_calls;                         // calls whose arguments are checked at the end
    int m_depth = 1;                     // depth of the deepest expression so far
    Block m_pending;                     // statements produced by declarations in a function
    std::vector<expr::Variable> m_with;  // objects of the enclosing With blocks
    int m_nesting = 0;
};

}  // namespace rdl::expr
