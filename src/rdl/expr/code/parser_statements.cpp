// SPDX-License-Identifier: GPL-3.0-or-later
// Members of CodeParser: statements and the blocks that they make.
#include <algorithm>
#include <utility>

#include "rdl/expr/code/parser.h"
#include "rdl/expr/code/statements.h"

namespace rdl::expr {
namespace {

constexpr int MaxNesting = 50;

}  // namespace

bool CodeParser::AtWords(Words words) const {
    std::size_t i = 0;
    return std::all_of(words.begin(), words.end(),
                       [&](std::string_view word) { return m_parser.Peek(i++).IsWord(word); });
}

bool CodeParser::AtEndOfStatement() const {
    const Token& token = m_parser.Peek();
    return token.type == Token::Type::NewLine || token.type == Token::Type::End || token.Is(":");
}

void CodeParser::EndStatement() {
    if (!AtEndOfStatement()) {
        m_parser.Fail("the end of the statement was expected instead of \"" + m_parser.Peek().text + "\"");
    }
    SkipEnds();
}

void CodeParser::SkipEnds() {
    while (m_parser.Peek().type == Token::Type::NewLine || m_parser.Peek().Is(":")) {
        m_parser.Take();
    }
}

// Statements up to one of the ends, which stays; a scope of its own.
Block CodeParser::BlockUntil(std::initializer_list<Words> ends) {
    if (++m_nesting > MaxNesting) {
        m_parser.Fail("statements are nested too deeply");
    }
    m_scopes.emplace_back();
    Block block;
    for (SkipEnds();; SkipEnds()) {
        if (std::any_of(ends.begin(), ends.end(), [&](Words words) { return AtWords(words); })) {
            break;
        }
        if (m_parser.AtEnd()) {
            m_parser.Fail("\"" + std::string(*ends.begin()->begin()) + "\" is missing at the end");
        }
        One(block);
        EndStatement();
    }
    m_scopes.pop_back();
    --m_nesting;
    return block;
}

// The statements after Then on the same line.
Block CodeParser::SingleLine() {
    if (++m_nesting > MaxNesting) {
        m_parser.Fail("statements are nested too deeply");
    }
    m_scopes.emplace_back();
    Block block;
    do {
        if (!m_parser.Peek().IsWord("else") && m_parser.Peek().type != Token::Type::NewLine) {
            One(block);
        }
    } while (m_parser.TakeSymbol(":"));
    m_scopes.pop_back();
    --m_nesting;
    return block;
}

void CodeParser::One(Block& block) {
    const std::size_t before = m_parser.Position();
    const std::size_t count = block.size();
    if (m_parser.TakeWord("dim") || AtWords({"const"}) || AtWords({"static"})) {
        Declarations(block);
    } else if (m_parser.TakeWord("redim")) {
        ReDim(block);
    } else {
        block.push_back(Known());
    }
    // Long statements take more of the steps than short ones.
    const int cost = 1 + static_cast<int>((m_parser.Position() - before) / 8);
    for (std::size_t i = count; i < block.size(); ++i) {
        block[i]->cost = cost;
    }
}

std::unique_ptr<Statement> CodeParser::Known() {
    if (m_parser.TakeWord("if")) {
        return If();
    }
    if (m_parser.TakeWord("select")) {
        return Select();
    }
    if (m_parser.TakeWord("for")) {
        return For();
    }
    if (m_parser.TakeWord("while")) {
        return While();
    }
    if (m_parser.TakeWord("do")) {
        return Do();
    }
    if (m_parser.TakeWord("try")) {
        return Try();
    }
    if (m_parser.TakeWord("with")) {
        return With();
    }
    if (AtWords({"exit"}) || AtWords({"continue"})) {
        return Jump();
    }
    if (m_parser.TakeWord("return")) {
        auto statement = std::make_unique<ReturnStatement>();
        statement->conversion = m_function->conversion;
        statement->value = AtEndOfStatement() || m_parser.Peek().IsWord("else") ? nullptr : Expression();
        return statement;
    }
    if (m_parser.TakeWord("throw")) {
        auto statement = std::make_unique<ThrowStatement>();
        statement->message = AtEndOfStatement() ? nullptr : Expression();
        return statement;
    }
    return AssignOrCall();
}

void CodeParser::Declarations(Block& block) {
    const bool constant = m_parser.TakeWord("const");
    const Lifetime lifetime = m_parser.TakeWord("static") ? Lifetime::Report : Lifetime::Call;
    // Dim a, b As Integer gives the type to both.
    std::vector<std::string> untyped;
    do {
        const std::string lower = m_parser.Peek().lower;
        const Declared declared = Declare(lifetime, constant);
        if (declared.variable.conversion) {
            for (const std::string& name : std::exchange(untyped, {})) {
                expr::Variable& variable = m_scopes.back()[name];
                variable.conversion = declared.variable.conversion;
                auto first = std::make_unique<AssignStatement>();
                first->target = variable;
                m_pending.push_back(std::move(first));
            }
        } else if (m_parser.Peek().Is(",")) {
            untyped.push_back(lower);
        }
    } while (m_parser.TakeSymbol(","));
    for (auto& statement : m_pending) {
        block.push_back(std::move(statement));
    }
    m_pending.clear();
}

void CodeParser::ReDim(Block& block) {
    const bool preserve = m_parser.TakeWord("preserve");
    do {
        const Token& name = m_parser.Peek();
        m_parser.Name("the name of a list");
        const expr::Variable* variable = Lookup(name.lower);
        if (!variable || variable->constant) {
            m_parser.FailAt(name, "there is no variable \"" + name.text + "\"");
        }
        auto statement = std::make_unique<SizeStatement>();
        statement->target = *variable;
        statement->preserve = preserve;
        m_parser.Expect("(");
        statement->upper = Expression();
        m_parser.Expect(")");
        block.push_back(std::move(statement));
    } while (m_parser.TakeSymbol(","));
}

std::unique_ptr<Statement> CodeParser::If() {
    auto statement = std::make_unique<IfStatement>();
    NodePtr condition = Expression();
    m_parser.TakeWord("then");
    if (m_parser.Peek().type != Token::Type::NewLine) {
        statement->branches.emplace_back(std::move(condition), SingleLine());
        if (m_parser.TakeWord("else")) {
            statement->otherwise = SingleLine();
        }
        return statement;
    }
    const std::initializer_list<Words> ends = {{"end", "if"}, {"endif"}, {"elseif"}, {"else"}};
    statement->branches.emplace_back(std::move(condition), BlockUntil(ends));
    for (;;) {
        const bool elseIf = AtWords({"elseif"}) || AtWords({"else", "if"});
        if (elseIf) {
            if (m_parser.Take().lower == "else") {
                m_parser.Take();
            }
            condition = Expression();
            m_parser.TakeWord("then");
            statement->branches.emplace_back(std::move(condition), BlockUntil(ends));
        } else if (m_parser.TakeWord("else")) {
            statement->otherwise = BlockUntil({{"end", "if"}, {"endif"}});
        } else {
            break;
        }
    }
    if (m_parser.Take().lower == "end") {
        m_parser.Take();
    }
    return statement;
}

std::unique_ptr<Statement> CodeParser::Select() {
    static constexpr std::pair<std::string_view, Comparison> comparisons[] = {
        {"=", Comparison::Equal},      {"<>", Comparison::NotEqual}, {"<", Comparison::Less},
        {"<=", Comparison::LessEqual}, {">", Comparison::Greater},   {">=", Comparison::GreaterEqual},
    };
    auto statement = std::make_unique<SelectStatement>();
    m_parser.TakeWord("case");
    statement->value = Expression();
    EndStatement();
    while (m_parser.TakeWord("case")) {
        if (m_parser.TakeWord("else")) {
            statement->otherwise = BlockUntil({{"end", "select"}});
            break;
        }
        std::vector<CaseTest> tests;
        do {
            CaseTest& test = tests.emplace_back();
            m_parser.TakeWord("is");
            for (const auto& [symbol, comparison] : comparisons) {
                if (m_parser.TakeSymbol(symbol)) {
                    test.comparison = comparison;
                    break;
                }
            }
            test.value = Expression();
            if (m_parser.TakeWord("to")) {
                test.upper = Expression();
            }
        } while (m_parser.TakeSymbol(","));
        statement->cases.emplace_back(std::move(tests), BlockUntil({{"end", "select"}, {"case"}}));
    }
    if (!AtWords({"end", "select"})) {
        m_parser.Fail("\"End Select\" was expected instead of \"" + m_parser.Peek().text + "\"");
    }
    m_parser.Take();
    m_parser.Take();
    return statement;
}

std::unique_ptr<Statement> CodeParser::For() {
    const bool each = m_parser.TakeWord("each");
    const Token& name = m_parser.Peek();
    m_parser.Name("the name of a variable");
    // As Type makes a variable of the loop's own; so does a name that is not known yet.
    Declared declared;
    bool given = false;
    AsType(declared, given);
    m_scopes.emplace_back();
    const expr::Variable* known = given ? nullptr : Lookup(name.lower);
    const expr::Variable variable =
        known ? *known : NewVariable(name.lower, Lifetime::Call, declared.variable.conversion, name);
    std::unique_ptr<Statement> made;
    Block* body = nullptr;
    if (each) {
        auto statement = std::make_unique<ForEachStatement>();
        statement->element = variable;
        if (!m_parser.TakeWord("in")) {
            m_parser.Fail("\"In\" was expected instead of \"" + m_parser.Peek().text + "\"");
        }
        statement->list = Expression();
        body = &statement->body;
        made = std::move(statement);
    } else {
        auto statement = std::make_unique<ForStatement>();
        statement->counter = variable;
        m_parser.Expect("=");
        statement->from = Expression();
        if (!m_parser.TakeWord("to")) {
            m_parser.Fail("\"To\" was expected instead of \"" + m_parser.Peek().text + "\"");
        }
        statement->to = Expression();
        statement->step = m_parser.TakeWord("step") ? Expression() : nullptr;
        body = &statement->body;
        made = std::move(statement);
    }
    EndStatement();
    *body = BlockUntil({{"next"}});
    m_parser.Take();
    if (m_parser.Peek().type == Token::Type::Word) {
        m_parser.Take();
    }
    m_scopes.pop_back();
    return made;
}

std::unique_ptr<Statement> CodeParser::While() {
    auto statement = std::make_unique<LoopStatement>();
    statement->condition = Expression();
    EndStatement();
    statement->body = BlockUntil({{"end", "while"}, {"wend"}});
    if (m_parser.Take().lower == "end") {
        m_parser.Take();
    }
    return statement;
}

std::unique_ptr<Statement> CodeParser::Do() {
    auto statement = std::make_unique<LoopStatement>();
    statement->isDo = true;
    const auto condition = [&] {
        if (AtWords({"while"}) || AtWords({"until"})) {
            statement->until = m_parser.Take().lower == "until";
            statement->condition = Expression();
        }
    };
    condition();
    EndStatement();
    statement->body = BlockUntil({{"loop"}});
    m_parser.Take();
    if (!statement->condition) {
        condition();
        statement->atEnd = true;
    }
    return statement;
}

std::unique_ptr<Statement> CodeParser::Try() {
    auto statement = std::make_unique<TryStatement>();
    EndStatement();
    statement->body = BlockUntil({{"end", "try"}, {"catch"}, {"finally"}});
    while (m_parser.TakeWord("catch")) {
        CatchClause& clause = statement->clauses.emplace_back();
        m_scopes.emplace_back();
        if (!AtEndOfStatement() && !m_parser.Peek().IsWord("when")) {
            const Token& name = m_parser.Peek();
            m_parser.Name("the name of a variable");
            if (m_parser.TakeWord("as") && !m_parser.TypeName().ends_with("exception")) {
                m_parser.Fail("only an Exception can be caught");
            }
            clause.message = NewVariable(name.lower, Lifetime::Call, nullptr, name);
        }
        clause.condition = m_parser.TakeWord("when") ? Expression() : nullptr;
        clause.body = BlockUntil({{"end", "try"}, {"catch"}, {"finally"}});
        m_scopes.pop_back();
    }
    if (m_parser.TakeWord("finally")) {
        statement->finally = BlockUntil({{"end", "try"}});
    }
    if (!AtWords({"end", "try"})) {
        m_parser.Fail("\"End Try\" was expected instead of \"" + m_parser.Peek().text + "\"");
    }
    m_parser.Take();
    m_parser.Take();
    return statement;
}

std::unique_ptr<Statement> CodeParser::Jump() {
    static constexpr std::pair<std::string_view, Flow> exits[] = {
        {"for", Flow::ExitFor},       {"do", Flow::ExitDo},       {"while", Flow::ExitWhile},
        {"select", Flow::ExitSelect}, {"function", Flow::Return}, {"sub", Flow::Return},
    };
    static constexpr std::pair<std::string_view, Flow> continues[] = {
        {"for", Flow::ContinueFor},
        {"do", Flow::ContinueDo},
        {"while", Flow::ContinueWhile},
    };
    const bool exit = m_parser.Take().lower == "exit";
    const Token& what = m_parser.Peek();
    const auto* begin = exit ? std::begin(exits) : std::begin(continues);
    const auto* end = exit ? std::end(exits) : std::end(continues);
    const auto* found = std::find_if(begin, end, [&](const auto& jump) { return what.IsWord(jump.first); });
    if (found == end) {
        m_parser.Fail("there is nothing of the kind \"" + what.text + "\" to leave or to go on with");
    }
    m_parser.Take();
    return std::make_unique<JumpStatement>(found->second);
}

}  // namespace rdl::expr
