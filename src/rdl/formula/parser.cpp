// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/formula/parser.h"

#include <algorithm>

#include "rdl/formula/periods.h"
#include "rdl/values/characters.h"

namespace rdl::formula {
namespace {

// Deep enough for every formula written by hand, and shallow enough for every stack.
constexpr int DeepestNesting = 60;
constexpr int DeepestTree = 500;
constexpr std::size_t LongestFormula = 1 << 20;

bool SameName(std::string_view left, std::string_view right) {
    return CompareNoCase(left, right) == 0;
}

struct BinaryMark {
    std::string_view mark;
    NodeKind kind;
    int level;
};
// From the loosest to the tightest.
constexpr BinaryMark BinaryMarks[] = {
    {"&", NodeKind::Concatenate, 0}, {"+", NodeKind::Add, 1},          {"-", NodeKind::Subtract, 1},
    {"mod", NodeKind::Modulo, 2},    {"\\", NodeKind::DivideWhole, 3}, {"*", NodeKind::Multiply, 4},
    {"/", NodeKind::Divide, 4},
};
constexpr int TightestLevel = 4;

struct ComparisonMark {
    std::string_view mark;
    NodeKind kind;
};
constexpr ComparisonMark ComparisonMarks[] = {
    {"=", NodeKind::Equal},        {"<>", NodeKind::NotEqual}, {"<", NodeKind::Less},
    {"<=", NodeKind::LessOrEqual}, {">", NodeKind::Greater},   {">=", NodeKind::GreaterOrEqual},
};

}  // namespace

Parser::Parser(std::string_view text) : m_lexer(text) {
    if (text.size() > LongestFormula) {
        FailAt(LongestFormula, "it is too long");
    }
    Advance();
}

NodePtr Parser::Run() {
    NodePtr root = Expression();
    if (m_token.kind != TokenKind::End) {
        Unexpected();
    }
    return root;
}

bool Parser::Take(std::string_view what) {
    if (!m_token.Is(what)) {
        return false;
    }
    Advance();
    return true;
}

void Parser::Expect(std::string_view what) {
    if (!Take(what)) {
        FailAt(m_token.position,
               "\"" + std::string(what) + "\" is missing before " +
                   (m_token.kind == TokenKind::End ? "the end" : "\"" + m_token.text + "\""));
    }
}

void Parser::Unexpected() const {
    if (m_token.kind == TokenKind::End) {
        FailAt(m_token.position, "something is missing at the end");
    }
    FailAt(m_token.position, "\"" + m_token.text + "\" is not expected here");
}

void Parser::Adopt(Node& parent, NodePtr child) const {
    parent.depth = std::max(parent.depth, child->depth + 1);
    if (parent.depth > DeepestTree) {
        FailAt(m_token.position, "it is nested too deeply");
    }
    if (parent.children.empty() && parent.kind != NodeKind::Call) {
        parent.position = child->position;
    }
    parent.children.push_back(std::move(child));
}

NodePtr Parser::Make(NodeKind kind, NodePtr first, NodePtr second, NodePtr third) const {
    auto node = std::make_unique<Node>();
    node->kind = kind;
    for (NodePtr* child : {&first, &second, &third}) {
        if (*child) {
            Adopt(*node, std::move(*child));
        }
    }
    return node;
}

NodePtr Parser::Expression() {
    if (++m_nesting > DeepestNesting) {
        FailAt(m_token.position, "it is nested too deeply");
    }
    NodePtr node = Take("if") ? If() : Or();
    --m_nesting;
    return node;
}

NodePtr Parser::If() {
    NodePtr condition = Expression();
    Expect("then");
    NodePtr then = Expression();
    NodePtr otherwise = Take("else") ? Expression() : std::make_unique<Node>();
    return Make(NodeKind::If, std::move(condition), std::move(then), std::move(otherwise));
}

NodePtr Parser::Chain(const char* word, NodeKind kind, NodePtr (Parser::*operand)()) {
    NodePtr first = (this->*operand)();
    if (!m_token.Is(word)) {
        return first;
    }
    NodePtr chain = Make(kind, std::move(first));
    while (Take(word)) {
        Adopt(*chain, (this->*operand)());
    }
    return chain;
}

NodePtr Parser::Or() {
    return Chain("or", NodeKind::Or, &Parser::Xor);
}

NodePtr Parser::Xor() {
    return Chain("xor", NodeKind::Xor, &Parser::And);
}

NodePtr Parser::And() {
    return Chain("and", NodeKind::And, &Parser::Not);
}

NodePtr Parser::Not() {
    bool negated = false;
    while (Take("not")) {
        negated = !negated;
    }
    return Negated(Comparison(), negated);
}

NodePtr Parser::Negated(NodePtr node, bool negated) const {
    return negated ? Make(NodeKind::Not, std::move(node)) : std::move(node);
}

NodePtr Parser::Comparison() {
    NodePtr left = Binary(0);
    while (true) {
        const auto found = std::find_if(std::begin(ComparisonMarks), std::end(ComparisonMarks),
                                        [&](const ComparisonMark& mark) { return m_token.Is(mark.mark); });
        if (found != std::end(ComparisonMarks)) {
            Advance();
            left = Make(found->kind, std::move(left), Binary(0));
        } else if (!Suffix(left)) {
            return left;
        }
    }
}

bool Parser::Suffix(NodePtr& left) {
    if (Take("is")) {
        const bool negated = Take("not");
        Expect("null");
        left = Negated(Make(NodeKind::IsNull, std::move(left)), negated);
        return true;
    }
    const bool negated = Take("not");
    if (Take("in")) {
        left = Negated(Make(NodeKind::In, std::move(left), Choice()), negated);
    } else if (Take("like")) {
        left = Negated(Make(NodeKind::Like, std::move(left), Choice()), negated);
    } else if (Take("startswith")) {
        left = Negated(Make(NodeKind::StartsWith, std::move(left), Choice()), negated);
    } else if (negated) {
        Unexpected();
    } else {
        return false;
    }
    return true;
}

// [a, b to c], a to b, or one value, which may be a parameter with several.
NodePtr Parser::Choice() {
    NodePtr choice = Make(NodeKind::Choice);
    if (!Take("[")) {
        Adopt(*choice, Element());
        return choice;
    }
    do {
        Adopt(*choice, Element());
    } while (Take(","));
    Expect("]");
    return choice;
}

NodePtr Parser::Element() {
    if (const auto period = m_token.kind == TokenKind::Word ? FindPeriod(m_token.text) : std::nullopt) {
        Advance();
        return Make(NodeKind::Range, PeriodCall(PeriodStart(), *period), PeriodCall(PeriodEnd(), *period));
    }
    NodePtr from = Binary(0);
    return Take("to") ? Make(NodeKind::Range, std::move(from), Binary(0)) : std::move(from);
}

NodePtr Parser::PeriodCall(const FunctionInfo& function, int period) const {
    auto number = std::make_unique<Node>();
    number->value = Value::Integer(period);
    NodePtr node = Make(NodeKind::Call, std::move(number));
    node->function = &function;
    return node;
}

NodePtr Parser::Binary(int level) {
    if (level > TightestLevel) {
        return Sign();
    }
    NodePtr left = Binary(level + 1);
    while (true) {
        const auto found = std::find_if(
            std::begin(BinaryMarks), std::end(BinaryMarks),
            [&](const BinaryMark& mark) { return mark.level == level && m_token.Is(mark.mark); });
        if (found == std::end(BinaryMarks)) {
            return left;
        }
        Advance();
        left = Make(found->kind, std::move(left), Binary(level + 1));
    }
}

NodePtr Parser::Sign() {
    bool negative = false;
    while (m_token.Is("-") || m_token.Is("+")) {
        negative = negative != m_token.Is("-");
        Advance();
    }
    NodePtr node = Power();
    return negative ? Make(NodeKind::Negate, std::move(node)) : std::move(node);
}

// Left to right; the exponent may have a sign.
NodePtr Parser::Power() {
    NodePtr left = Primary();
    while (Take("^")) {
        const bool negative = Take("-");
        NodePtr right = Primary();
        left = Make(NodeKind::Power, std::move(left),
                    negative ? Make(NodeKind::Negate, std::move(right)) : std::move(right));
    }
    return left;
}

NodePtr Parser::Primary() {
    if (m_token.kind == TokenKind::Constant) {
        NodePtr node = std::make_unique<Node>();
        node->value = m_token.value;
        node->position = m_token.position;
        Advance();
        return node;
    }
    if (m_token.kind == TokenKind::Field || m_token.kind == TokenKind::Parameter) {
        return FieldOrParameter();
    }
    if (m_token.kind == TokenKind::Word) {
        return Word();
    }
    if (!Take("(")) {
        Unexpected();
    }
    NodePtr inner = Expression();
    Expect(")");
    return inner;
}

NodePtr Parser::FieldOrParameter() {
    const Token token = m_token;
    Advance();
    NodePtr node = std::make_unique<Node>();
    node->position = token.position;
    if (token.kind == TokenKind::Parameter) {
        node->kind = NodeKind::Parameter;
        const auto known = std::find_if(parameters.begin(), parameters.end(), [&](const ParameterName& one) {
            return SameName(one.name, token.text);
        });
        node->index = static_cast<int>(known - parameters.begin());
        if (known == parameters.end()) {
            parameters.push_back({token.text, token.position + 1});
        }
        return node;
    }
    node->kind = NodeKind::Field;
    const std::size_t dot = token.text.rfind('.');
    FieldName name{dot == std::string::npos ? "" : token.text.substr(0, dot),
                   dot == std::string::npos ? token.text : token.text.substr(dot + 1), token.position + 1};
    if (name.field.empty()) {
        FailAt(token.position, "{" + token.text + "} names no field");
    }
    const auto known = std::find_if(fields.begin(), fields.end(), [&](const FieldName& one) {
        return SameName(one.table, name.table) && SameName(one.field, name.field);
    });
    node->index = static_cast<int>(known - fields.begin());
    if (known == fields.end()) {
        fields.push_back(std::move(name));
    }
    return node;
}

NodePtr Parser::Word() {
    const Token name = m_token;
    if (name.Is("if")) {
        return Expression();
    }
    if (name.Is("true") || name.Is("false") || name.Is("null")) {
        Advance();
        NodePtr node = std::make_unique<Node>();
        node->value = name.Is("null") ? Value() : Value::Boolean(name.Is("true"));
        node->position = name.position;
        return node;
    }
    return Call(name);
}

NodePtr Parser::Call(const Token& name) {
    NodePtr node = Make(NodeKind::Call);
    node->position = name.position;
    node->function = FindFunction(name.text);
    if (!node->function) {
        for (const std::string_view word :
             {"and", "or", "not", "xor", "in", "to", "like", "startswith", "is", "then", "else", "mod"}) {
            if (name.Is(word)) {
                Unexpected();
            }
        }
        if (FindPeriod(name.text)) {
            FailAt(name.position, "\"" + name.text + "\" can only stand after in");
        }
        FailAt(name.position, "\"" + name.text + "\" is not known");
    }
    Advance();
    if (Take("(") && !Take(")")) {
        do {
            Adopt(*node, Expression());
        } while (Take(","));
        Expect(")");
    }
    const int count = static_cast<int>(node->children.size());
    if (count < node->function->least || count > node->function->most) {
        FailAt(name.position, "\"" + name.text + "\" does not take " + std::to_string(count) + " values");
    }
    return node;
}

}  // namespace rdl::formula
