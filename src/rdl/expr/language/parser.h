// SPDX-License-Identifier: GPL-3.0-or-later
// Parses tokens into nodes: one expression, by operator precedence. Report-level code uses it for the
// expressions in its statements. Raises rdl::Error with place and position.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/expr/language/lexer.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/language/node.h"
#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// What a program uses, known after parsing.
struct Facts {
    bool pageGlobals = false, reportItems = false;
    std::vector<const AggregateCall*> aggregates;
};

// Resolves the names of report-level code during parsing.
struct CodeNames {
    virtual ~CodeNames() = default;
    virtual NodePtr Variable(std::string_view lower) = 0;  // null if there is no such variable
    virtual bool HasFunction(std::string_view lower) const = 0;
    virtual NodePtr Function(std::string_view lower, std::vector<NodePtr> arguments) = 0;
    virtual NodePtr WithObject() = 0;  // the object of a leading point; null outside With
};

class Parser {
 public:
    // `where` starts error texts. With `codeNames` the tokens are those of report-level code.
    Parser(std::vector<Token> tokens, std::string where, CompileContext& context,
           CodeNames* codeNames = nullptr)
        : m_tokens(std::move(tokens)), m_where(std::move(where)), m_context(context), m_code(codeNames) {}

    NodePtr Expression(int least = 0);
    // Parses a value with members and indexes but no operators: a target of an assignment or call.
    NodePtr Target() { return Postfix(Primary()); }
    std::vector<NodePtr> Arguments();

    const Token& Peek(std::size_t ahead = 0) const;
    const Token& Take();
    bool TakeSymbol(std::string_view symbol);
    void TakeEmptyBrackets();  // Basic lets them follow a property
    void RefuseBrackets(const Token& token) const;
    bool TakeWord(std::string_view word);
    void Expect(std::string_view symbol);
    std::string Name(const char* what);
    // Parses a type name as in "As System.String" and returns its last part in lower case.
    std::string TypeName();
    std::size_t Position() const { return m_at; }  // index of the next token
    bool AtEnd() const { return Peek().type == Token::Type::End; }
    [[noreturn]] void Fail(const std::string& what) const { FailAt(Peek(), what); }
    [[noreturn]] void FailAt(const Token& token, const std::string& what) const;
    const Facts& facts() const { return m_facts; }
    // Returns the function that converts to a type, for CType, Dim and parameters; null for Object. `known`
    // is false for an unknown type.
    static const FunctionInfo* Conversion(const std::string& type, bool& known);

 private:
    friend class Compiler;
    using Nodes = std::vector<NodePtr>;
    static constexpr int AboveComparison = 6;  // precedence of operators that bind tighter than =

    NodePtr Binary(NodePtr left, int least);
    NodePtr Unary();
    NodePtr Postfix(NodePtr value);
    NodePtr Member(NodePtr value);
    NodePtr Primary();
    NodePtr FromWord();
    NodePtr New();
    NodePtr From(NodePtr made);
    NodePtr List();
    NodePtr Checked(NodePtr node) const;

    // Collections: parser_names.cpp.
    NodePtr Collection(const std::string& lower);
    NodePtr Fields();
    NodePtr Parameters();
    NodePtr ParameterValue(const std::string& name, const Token& token) const;
    NodePtr Globals(bool user);
    NodePtr GlobalValue(GlobalName name);
    NodePtr InBraces();
    NodePtr ReportItems();
    NodePtr Variables();
    NodePtr DataSets(const std::string& collection);
    NodePtr Code();
    NodePtr DynamicField(NodePtr name);
    // Parses the item name after a collection: returns a constant name, or sets `computed` to the expression
    // that gives it.
    std::string ItemName(NodePtr& computed);
    std::string Property();
    bool StartsCollection() const;

    // Calls: parser_calls.cpp.
    NodePtr NamedCall(std::string name);
    NodePtr ConstantOrOwnFunction(const Token& token, const std::string& lower);
    NodePtr CodeCall(const Token& token, const std::string& lower);
    [[noreturn]] void FailUnknown(const Token& token, std::string name) const;
    // Says that custom assemblies are not loaded, if the report names any; else empty.
    std::string NotLoaded() const;
    // Returns null if the name is neither that of an aggregate nor of a special form.
    NodePtr AggregateOrForm(std::string_view lower);
    NodePtr Form(SpecialForm form);
    NodePtr Condition(const Token& name);
    NodePtr Choose(const Token& name);
    NodePtr Aggregate(AggregateKind kind);
    NodePtr Lookup(LookupCall::Form form);
    NodePtr Scope(bool level);
    NodePtr Cast();
    NodePtr TypeTest();
    NodePtr TryParse(const std::string& type);
    NodePtr Switch(const Token& name);
    std::string ScopeName();
    std::string DataSetOf(const std::string& scope, const Token& token);
    std::vector<std::pair<std::size_t, std::size_t>> ArgumentRanges() const;
    std::shared_ptr<Program> Inner(std::size_t begin, std::size_t end, std::string dataSet);
    void NoteAggregates(const Facts& inner);

    std::vector<Token> m_tokens;
    std::string m_where;
    CompileContext& m_context;
    CodeNames* m_code;
    Facts m_facts;
    std::size_t m_at = 0;
    int m_nesting = 0;
    int m_aggregateNesting = 0;
};

// Creates programs; a friend of Program, which fills them in.
class Compiler {
 public:
    static std::shared_ptr<Program> Finish(NodePtr root, Facts facts);
};

}  // namespace rdl::expr
