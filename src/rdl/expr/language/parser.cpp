// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/expr/language/parser.h"

#include <algorithm>

#include "rdl/expr/language/names.h"
#include "rdl/expr/language/near_name.h"
#include "rdl/expr/language/nodes.h"

namespace rdl::expr {
namespace {

constexpr int MaxNesting = 100;  // brackets within brackets
constexpr int MaxDepth = 1000;   // nodes below one another
constexpr int NotLevel = 4, CompareLevel = 5, ConcatenateLevel = 7, PowerLevel = 13;

struct BinaryOperator {
    std::string_view written;
    int level;
    Operator operation;  // null for those with nodes of their own
};

constexpr BinaryOperator Operators[] = {
    {"xor", 1, Xor},
    {"or", 2, Or},
    {"orelse", 2, nullptr},
    {"||", 2, nullptr},
    {"and", 3, And},
    {"andalso", 3, nullptr},
    {"&&", 3, nullptr},
    {"=", CompareLevel, Equal},
    {"<>", CompareLevel, NotEqual},
    {"<", CompareLevel, Less},
    {"<=", CompareLevel, LessEqual},
    {">", CompareLevel, Greater},
    {">=", CompareLevel, GreaterEqual},
    {"like", CompareLevel, Like},
    {"is", CompareLevel, Is},
    {"isnot", CompareLevel, IsNot},
    {"<<", 6, ShiftLeft},
    {">>", 6, ShiftRight},
    {"&", ConcatenateLevel, nullptr},
    {"+", 8, Add},
    {"-", 8, Subtract},
    {"mod", 9, Modulo},
    {"%", 9, Modulo},
    {"\\", 10, DivideWhole},
    {"*", 11, Multiply},
    {"/", 11, Divide},
    {"^", PowerLevel, Power},
};

const BinaryOperator* FindOperator(const Token& token) {
    const bool word = token.type == Token::Type::Word && !token.escaped;
    if (!word && token.type != Token::Type::Symbol) {
        return nullptr;
    }
    const std::string& text = word ? token.lower : token.text;
    const auto* found = std::find_if(std::begin(Operators), std::end(Operators),
                                     [&](const BinaryOperator& o) { return o.written == text; });
    return found == std::end(Operators) ? nullptr : found;
}

std::string Shown(const Token& token) {
    switch (token.type) {
        case Token::Type::End:
            return "the end";
        case Token::Type::NewLine:
            return "the end of the line";
        case Token::Type::Literal:
            return "a value";
        default:
            return "\"" + token.text + "\"";
    }
}

}  // namespace

const Token& Parser::Peek(std::size_t ahead) const {
    return m_tokens[std::min(m_at + ahead, m_tokens.size() - 1)];
}

const Token& Parser::Take() {
    const Token& token = Peek();
    m_at = std::min(m_at + 1, m_tokens.size() - 1);
    return token;
}

bool Parser::TakeSymbol(std::string_view symbol) {
    if (!Peek().Is(symbol)) {
        return false;
    }
    Take();
    return true;
}

bool Parser::TakeWord(std::string_view word) {
    if (!Peek().IsWord(word)) {
        return false;
    }
    Take();
    return true;
}

void Parser::Expect(std::string_view symbol) {
    if (!TakeSymbol(symbol)) {
        Fail("\"" + std::string(symbol) + "\" was expected instead of " + Shown(Peek()));
    }
}

std::string Parser::Name(const char* what) {
    if (Peek().type != Token::Type::Word) {
        Fail(std::string(what) + " was expected instead of " + Shown(Peek()));
    }
    return Take().text;
}

void Parser::FailAt(const Token& token, const std::string& what) const {
    std::string text = m_where + (m_code ? ", line " + std::to_string(token.line) : "") + ": " + what;
    if (!m_code) {
        text += ", at character " + std::to_string(token.position + 1);
    }
    std::replace(text.begin(), text.end(), '\'', '"');
    throw Error(text);
}

NodePtr Parser::Checked(NodePtr node) const {
    if (node->depth > MaxDepth) {
        Fail("the expression is nested too deeply");
    }
    return node;
}

NodePtr Parser::Expression(int least) {
    if (++m_nesting > MaxNesting) {
        Fail("the expression is nested too deeply");
    }
    NodePtr left;
    if (least <= NotLevel && Peek().IsWord("not")) {
        Take();
        left = std::make_unique<UnaryNode>(Not, Expression(CompareLevel));
    } else {
        left = Unary();
    }
    NodePtr result = Binary(std::move(left), least);
    --m_nesting;
    return result;
}

NodePtr Parser::Binary(NodePtr left, int least) {
    for (const BinaryOperator* op = FindOperator(Peek()); op && op->level >= least;
         op = FindOperator(Peek())) {
        Take();
        NodePtr right = Expression(op->level + 1);
        if (op->level == ConcatenateLevel) {
            auto* chain = dynamic_cast<ConcatenateNode*>(left.get());
            if (!chain) {
                auto made = std::make_unique<ConcatenateNode>();
                made->Add(std::move(left));
                chain = made.get();
                left = std::move(made);
            }
            chain->Add(std::move(right));
        } else if (op->operation) {
            left = std::make_unique<BinaryNode>(op->operation, std::move(left), std::move(right));
        } else {
            left = std::make_unique<ShortCircuitNode>(op->level == 2, std::move(left), std::move(right));
        }
        left = Checked(std::move(left));
    }
    return left;
}

NodePtr Parser::Unary() {
    if (TakeSymbol("-")) {
        NodePtr operand = Expression(PowerLevel);
        if (const auto* literal = dynamic_cast<LiteralNode*>(operand.get())) {
            return std::make_unique<LiteralNode>(Negate(literal->value, FindCulture("")));
        }
        return Checked(std::make_unique<UnaryNode>(Negate, std::move(operand)));
    }
    if (TakeSymbol("+")) {
        return Expression(PowerLevel);
    }
    if (Peek().IsWord("not")) {
        Take();
        return Checked(std::make_unique<UnaryNode>(Not, Expression(CompareLevel)));
    }
    return Postfix(Primary());
}

NodePtr Parser::Postfix(NodePtr value) {
    for (;;) {
        if (Peek().Is(".") && Peek(1).type == Token::Type::Word) {
            Take();
            value = Checked(Member(std::move(value)));
        } else if (Peek().Is("(")) {
            Take();
            NodePtr index = Expression();
            Expect(")");
            value = Checked(std::make_unique<IndexNode>(std::move(value), std::move(index)));
        } else {
            return value;
        }
    }
}

NodePtr Parser::Member(NodePtr value) {
    const Token& name = Take();
    const FunctionInfo* info = FindFunction("." + name.lower);
    // A member of a member that is no value of its own kind: a day of the week shows its name.
    const std::size_t brackets = Peek().Is("(") && Peek(1).Is(")") ? 2 : 0;
    if (const FunctionInfo* both = Peek(brackets).Is(".")
                                       ? FindFunction("." + name.lower + "." + Peek(brackets + 1).lower)
                                       : nullptr) {
        m_at += brackets + 2;
        info = both;
    }
    if (!info) {
        const std::string near = NearestMember(name.lower);
        FailAt(name, "a value has no member \"" + name.text + "\"" +
                         (near.empty() ? "" : "; the nearest is \"" + near + "\""));
    }
    Nodes arguments;
    if (Peek().Is("(") && info->most > 1) {
        arguments = Arguments();
    } else if (Peek().Is("(") && Peek(1).Is(")")) {
        Take();
        Take();
    }
    arguments.insert(arguments.begin(), std::move(value));
    const int count = static_cast<int>(arguments.size());
    if (count < info->least || count > info->most) {
        FailAt(name, "\"" + name.text + "\" does not take " + std::to_string(count - 1) + " arguments");
    }
    return std::make_unique<CallNode>(*info, std::move(arguments));
}

NodePtr Parser::Primary() {
    const Token& token = Peek();
    if (token.type == Token::Type::Literal) {
        return std::make_unique<LiteralNode>(Take().literal);
    }
    if (token.Is("(")) {
        Take();
        NodePtr inner = Expression();
        Expect(")");
        return inner;
    }
    if (token.Is("{")) {
        return List();
    }
    if (token.type == Token::Type::Word) {
        return FromWord();
    }
    if (m_code && token.Is(".")) {
        if (NodePtr object = m_code->WithObject()) {
            return object;
        }
    }
    Fail("a value was expected instead of " + Shown(token));
}

// { a, b }; some report designers also write {Name} for a field, {?Name} for a parameter and {@Name} for a
// global.
NodePtr Parser::List() {
    Expect("{");
    if (!m_code && (Peek().Is("?") || Peek().Is("@"))) {
        return InBraces();
    }
    if (!m_code && Peek().type == Token::Type::Word && Peek(1).Is("}")) {
        if (const auto slot = m_context.FieldSlot(m_context.dataSet, Peek().text)) {
            Take();
            Take();
            return std::make_unique<FieldNode>(*slot);
        }
    }
    Nodes parts;
    if (!Peek().Is("}")) {
        do {
            parts.push_back(Expression());
        } while (TakeSymbol(","));
    }
    Expect("}");
    return Checked(std::make_unique<ListNode>(std::move(parts)));
}

NodePtr Parser::FromWord() {
    const Token& token = Peek();
    if (!token.escaped) {
        if (token.lower == "true" || token.lower == "false") {
            Take();
            RefuseBrackets(token);
            return std::make_unique<LiteralNode>(Value::Boolean(token.lower == "true"));
        }
        if (token.lower == "nothing" || token.lower == "null") {
            Take();
            RefuseBrackets(token);
            return std::make_unique<LiteralNode>(Value());
        }
        if (token.lower == "new") {
            return New();
        }
    }
    if (m_code) {
        if (NodePtr variable = m_code->Variable(token.lower)) {
            Take();
            return variable;
        }
    }
    if (StartsCollection()) {
        const std::string lower = Take().lower;
        return Collection(lower);
    }
    return NamedCall(Take().text);
}

// New DateTime(2020, 1, 31), New String() {"a", "b"}.
NodePtr Parser::New() {
    Take();
    const Token& token = Peek();
    const std::string type = TypeName();
    if (Peek().Is("(") && Peek(1).Is(")")) {
        Take();
        Take();
    }
    if (Peek().Is("{")) {
        return List();
    }
    const FunctionInfo* info = FindFunction("new." + type);
    if (!info) {
        FailAt(token, "\"" + token.text + "\" cannot be made with New" + NotLoaded());
    }
    Nodes arguments = Peek().Is("(") ? Arguments() : Nodes();
    const int count = static_cast<int>(arguments.size());
    if (count < info->least || count > info->most) {
        FailAt(token, "\"" + token.text + "\" does not take " + std::to_string(count) + " arguments");
    }
    NodePtr made = Checked(std::make_unique<CallNode>(*info, std::move(arguments)));
    return Peek().IsWord("from") && Peek(1).Is("{") ? From(std::move(made)) : std::move(made);
}

// New List(Of String) From {"a", "b"}, New Dictionary(Of K, V) From {{"a", 1}}.
NodePtr Parser::From(NodePtr made) {
    Take();
    Take();
    auto filled = std::make_unique<FillNode>(std::move(made), *FindFunction(".add"));
    while (!Peek().Is("}")) {
        Nodes values;
        if (TakeSymbol("{")) {
            do {
                values.push_back(Expression());
            } while (TakeSymbol(","));
            Expect("}");
        } else {
            values.push_back(Expression());
        }
        if (values.size() > 2) {
            Fail("a key and a value were expected");
        }
        filled->Add(std::move(values));
        if (!TakeSymbol(",")) {
            break;
        }
    }
    Expect("}");
    return Checked(std::move(filled));
}

std::string Parser::TypeName() {
    Name("a type");

    std::string lower = m_tokens[m_at - 1].lower;
    while (Peek().Is(".") && Peek(1).type == Token::Type::Word) {
        Take();
        lower = Take().lower;
    }
    // The types of elements are not kept: List(Of String) holds what it is given.
    if (Peek().Is("(") && Peek(1).IsWord("of")) {
        while (!Peek().Is(")") && !AtEnd()) {
            Take();
        }
        Expect(")");
    }
    // What may be Nothing stays Nothing: no conversion makes a 0 of it.
    const bool nullable = TakeSymbol("?") || lower == "nullable";
    return nullable ? "object" : lower;
}

const FunctionInfo* Parser::Conversion(const std::string& type, bool& known) {
    const NamedType* named = FindNamed(TypeNames, type);
    known = named != nullptr;
    return named && !named->function.empty() ? FindFunction(named->function) : nullptr;
}

}  // namespace rdl::expr
