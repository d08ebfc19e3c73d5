// SPDX-License-Identifier: GPL-3.0-or-later
// Parses the text of a formula into its tree.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "rdl/formula/formula.h"
#include "rdl/formula/lexer.h"
#include "rdl/formula/node.h"

namespace rdl::formula {

class Parser {
 public:
    explicit Parser(std::string_view text);
    // Parses the whole text and returns its tree, which the caller owns. Raises rdl::Error with the position,
    // also if the text is nested too deeply. Call this once.
    NodePtr Run();
    // What the text names, each once. The nodes of the tree refer to these by index.
    std::vector<FieldName> fields;
    std::vector<ParameterName> parameters;

 private:
    // Each function parses an operand of at least this precedence.
    NodePtr Expression();
    NodePtr If();
    NodePtr Chain(const char* word, NodeKind kind, NodePtr (Parser::*operand)());
    NodePtr Or();
    NodePtr Xor();
    NodePtr And();
    NodePtr Not();
    NodePtr Comparison();
    NodePtr Binary(int level);
    NodePtr Sign();
    NodePtr Power();
    NodePtr Primary();
    NodePtr Word();
    NodePtr Call(const Token& name);
    NodePtr Choice();
    NodePtr Element();
    NodePtr PeriodCall(const FunctionInfo& function, int period) const;
    NodePtr FieldOrParameter();
    bool Suffix(NodePtr& left);  // in, like, startswith, is null
    NodePtr Negated(NodePtr node, bool negated) const;

    bool Take(std::string_view what);
    void Expect(std::string_view what);
    void Advance() { m_token = m_lexer.Next(); }
    NodePtr Make(NodeKind kind, NodePtr first = nullptr, NodePtr second = nullptr,
                 NodePtr third = nullptr) const;
    void Adopt(Node& parent, NodePtr child) const;
    [[noreturn]] void Unexpected() const;

    Lexer m_lexer;
    Token m_token;
    int m_nesting = 0;
};

}  // namespace rdl::formula
