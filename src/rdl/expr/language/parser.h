// From words to nodes: one expression, by precedence. Report-level code uses it for the expressions in its
// statements. Raises rdl::Error with the place and the position.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "rdl/expr/language/lexer.h"
#include "rdl/expr/language/node.h"
#include "rdl/expr/library/functions.h"

namespace rdl::expr {

// What a program is known to use once it is parsed.
struct Facts {
    bool pageGlobals = false, reportItems = false;
    std::vector<const AggregateCall*> aggregates;
};

// The names that report-level code adds while it is parsed.
struct CodeNames {
    virtual ~CodeNames() = default;
    virtual NodePtr Variable(std::string_view lower) = 0;  // null when there is none
    virtual bool HasFunction(std::string_view lower) const = 0;
    virtual NodePtr Function(std::string_view lower, std::vector<NodePtr> arguments) = 0;
    virtual NodePtr WithObject() = 0;  // what a leading . belongs to; null outside With
};

class Parser {
 public:
    // `where` begins the text of an error. With `codeNames` the words are those of report-level code.
    Parser(std::vector<Token> tokens, std::string where, CompileContext& context,
           CodeNames* codeNames = nullptr)
        : m_tokens(std::move(tokens)), m_where(std::move(where)), m_context(context), m_code(codeNames) {}

    NodePtr Expression(int least = 0);
    // A value with its members and indices, no operators: what can be assigned to or called.
    NodePtr Target() { return Postfix(Primary()); }
    std::vector<NodePtr> Arguments();

    const Token& Peek(std::size_t ahead = 0) const;
    const Token& Take();
    bool TakeSymbol(std::string_view symbol);
    bool TakeWord(std::string_view word);
    void Expect(std::string_view symbol);
    std::string Name(const char* what);
    // A type as in "As System.String"; its last word in small letters.
    std::string TypeName();
    std::size_t Position() const { return m_at; }  // in words
    bool AtEnd() const { return Peek().type == Token::Type::End; }
    [[noreturn]] void Fail(const std::string& what) const { FailAt(Peek(), what); }
    [[noreturn]] void FailAt(const Token& token, const std::string& what) const;
    const Facts& facts() const { return m_facts; }
    // The function that converts to a type, for CType, Dim and parameters; null for Object.
    static const FunctionInfo* Conversion(const std::string& type, bool& known);

 private:
    friend class Compiler;
    using Nodes = std::vector<NodePtr>;
    static constexpr int AboveComparison = 6;  // the rank of operators that bind tighter than =

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
    NodePtr Globals(bool user);
    NodePtr ReportItems();
    NodePtr Variables();
    NodePtr DataSets(const std::string& collection);
    NodePtr Code();
    NodePtr DynamicField(NodePtr name);
    // The item behind a collection's name: a constant name, or a node when it must be worked out.
    std::string ItemName(NodePtr& computed);
    std::string Property();
    bool StartsCollection() const;

    // Calls: parser_calls.cpp.
    NodePtr NamedCall(std::string name);
    NodePtr SpecialCall(const std::string& lower, bool& known);
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

// Builds programs; the one that may fill them in.
class Compiler {
 public:
    static std::shared_ptr<Program> Finish(NodePtr root, Facts facts);
};

}  // namespace rdl::expr
