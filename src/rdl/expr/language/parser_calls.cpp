// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Parser: calls by name, functions and what looks like one but is part of the language.
#include <algorithm>
#include <utility>

#include "rdl/expr/language/code_functions.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/language/near_name.h"
#include "rdl/expr/language/nodes.h"
#include "rdl/expr/language/parser.h"
#include "rdl/expr/language/reach.h"
#include "rdl/expr/language/variables.h"
#include "rdl/values/characters.h"

namespace rdl::expr {
namespace {

// Namespaces and modules that may qualify a name.
constexpr std::string_view Qualifiers[] = {
    "global",      "system",     "microsoft",     "visualbasic",        "strings", "dateandtime",
    "financial",   "conversion", "information",   "interaction",        "vbmath",  "constants",
    "conversions", "text",       "globalization", "regularexpressions", "web",     "net",
    "collections", "generic"};

bool IsQualifier(std::string_view name) {
    for (const std::string_view qualifier : Qualifiers) {
        if (qualifier == name) {
            return true;
        }
    }
    return false;
}

constexpr int MaxAggregateNesting = 10;

// Whether a value has a type, given by its name in lower case.
bool IsOfType(const Value& value, std::string_view type) {
    const auto oneOf = [&](std::initializer_list<std::string_view> names) {
        return std::find(names.begin(), names.end(), type) != names.end();
    };
    switch (value.kind()) {
        case Kind::Null:
            return false;
        case Kind::Boolean:
            return oneOf({"boolean", "object"});
        case Kind::Integer:
            return oneOf({"integer", "int32", "long", "int64", "short", "int16", "byte", "object"});
        case Kind::Real:
            return oneOf({"double", "single", "object"});
        case Kind::Decimal:
            return oneOf({"decimal", "object"});
        case Kind::DateTime:
            return oneOf({"date", "datetime", "object"});
        case Kind::TimeSpan:
            return oneOf({"timespan", "object"});
        case Kind::Text:
            return oneOf({"string", "char", "object"});
        case Kind::Object: {
            const std::string_view name = value.AsObject().TypeName();
            return type == "object" || Lower(name.substr(name.rfind('.') + 1)) == type;
        }
        default:
            return oneOf({"array", "object"});
    }
}

}  // namespace

NodePtr Parser::NamedCall(std::string name) {
    const Token& token = m_tokens[m_at - 1];
    std::string lower = Lower(name);
    while (IsQualifier(lower) && Peek().Is(".") && Peek(1).type == Token::Type::Word) {
        Take();
        name = Take().text;
        lower = Lower(name);
    }
    if (Peek().Is(".") && Peek(1).IsWord("tryparse")) {
        return TryParse(lower);
    }
    if (Peek().Is(".") && Peek(1).type == Token::Type::Word) {
        const std::string qualified = lower + "." + Peek(1).lower;
        if (FindConstant(qualified) || FindFunction(qualified)) {
            Take();
            name += "." + Take().text;
            lower = qualified;
        }
    }
    if (const Value* constant = FindConstant(lower); constant && !Peek().Is("(")) {
        return std::make_unique<LiteralNode>(*constant);
    }
    if (m_code && m_code->HasFunction(lower)) {
        return Checked(m_code->Function(lower, Peek().Is("(") ? Arguments() : Nodes()));
    }
    if (NodePtr node = AggregateOrForm(lower)) {
        return Checked(std::move(node));
    }
    const FunctionInfo* info = FindFunction(lower);
    if (!info) {
        if (NodePtr node = ConstantOrOwnFunction(token, lower)) {
            return node;
        }
        FailUnknown(token, name);
    }
    Nodes arguments = Peek().Is("(") && !(info->most == 0 && !Peek(1).Is(")")) ? Arguments() : Nodes();
    const int count = static_cast<int>(arguments.size());
    if (count < info->least || count > info->most) {
        FailAt(token, "\"" + name + "\" does not take " + std::to_string(count) +
                          (count == 1 ? " argument" : " arguments"));
    }
    return Checked(std::make_unique<CallNode>(*info, std::move(arguments)));
}

// A constant with brackets, or a function of the code of the report without "Code."; null for any other name.
NodePtr Parser::ConstantOrOwnFunction(const Token& token, const std::string& lower) {
    if (const Value* constant = FindConstant(lower)) {
        Take();
        if (!TakeSymbol(")")) {
            FailAt(token, "\"" + token.text + "\" is a constant, which takes no arguments");
        }
        return std::make_unique<LiteralNode>(*constant);
    }
    if (m_code || !m_context.code) {
        return nullptr;
    }
    const std::vector<std::string> own = m_context.code->FunctionNames();
    return std::find(own.begin(), own.end(), lower) == own.end() ? nullptr : CodeCall(token, lower);
}

std::string Parser::NotLoaded() const {
    return m_context.assemblies.empty()
               ? ""
               : "; the report names custom assemblies (" + m_context.assemblies + "), which are not loaded";
}

void Parser::FailUnknown(const Token& token, std::string name) const {
    // Thing.Part(...) is shown whole, unless the part is a member that any value has.
    for (std::size_t at = 0; Peek(at).Is(".") && Peek(at + 1).type == Token::Type::Word; at += 2) {
        if (FindFunction("." + Peek(at + 1).lower)) {
            break;
        }
        name += "." + Peek(at + 1).text;
    }
    const std::string what = "the name \"" + name + "\" is not known";
    std::string near = m_context.assemblies.empty() ? NearestName(Lower(name), m_context.code) : "";
    if (m_context.FieldSlot(m_context.dataSet, name)) {
        near = "Fields!" + name + ".Value";
    }
    FailAt(token, what + (near.empty() ? NotLoaded() : "; the nearest is \"" + near + "\""));
}

NodePtr Parser::AggregateOrForm(std::string_view lower) {
    const Token& token = m_tokens[m_at - 1];
    const NamedAggregate* aggregate = FindNamed(AggregateNames, lower);
    const NamedForm* special = FindNamed(SpecialForms, lower);
    if (m_code && (aggregate || (special && ReadsADataSet(special->form)))) {
        FailAt(token, "\"" + token.text + "\" has no place in the code of a report");
    }
    return aggregate ? Aggregate(aggregate->kind) : special ? Form(special->form) : nullptr;
}

NodePtr Parser::Form(SpecialForm form) {
    const Token& token = m_tokens[m_at - 1];
    switch (form) {
        case SpecialForm::Lookup:
            return Lookup(LookupCall::Form::First);
        case SpecialForm::LookupSet:
            return Lookup(LookupCall::Form::Set);
        case SpecialForm::MultiLookup:
            return Lookup(LookupCall::Form::Multi);
        case SpecialForm::InScope:
            return Scope(false);
        case SpecialForm::Level:
            return Scope(true);
        case SpecialForm::Cast:
            return Cast();
        case SpecialForm::Condition:
            return Condition(token);
        case SpecialForm::Switch:
            return Switch(token);
        case SpecialForm::Choose:
            return Choose(token);
        case SpecialForm::TypeOf:
            return TypeTest();
    }
    return nullptr;
}

// If(value, other) gives the other for Nothing; IIf takes three values only.
NodePtr Parser::Condition(const Token& name) {
    Nodes parts = Arguments();
    if (parts.size() == 2 && name.lower == "if") {
        return std::make_unique<CoalesceNode>(std::move(parts[0]), std::move(parts[1]));
    }
    if (parts.size() != 3) {
        FailAt(name, "\"" + name.text + "\" takes a condition and two values");
    }
    return std::make_unique<ConditionNode>(std::move(parts[0]), std::move(parts[1]), std::move(parts[2]));
}

NodePtr Parser::Choose(const Token& name) {
    Nodes parts = Arguments();
    if (parts.size() < 2) {
        FailAt(name, "\"Choose\" takes an index and at least one value");
    }
    return std::make_unique<ChooseNode>(std::move(parts));
}

NodePtr Parser::Switch(const Token& name) {
    Nodes parts = Arguments();
    if (parts.empty() || parts.size() % 2 != 0) {
        FailAt(name, "\"Switch\" takes pairs of a condition and a value");
    }
    return std::make_unique<SwitchNode>(std::move(parts));
}

std::vector<NodePtr> Parser::Arguments() {
    Nodes arguments;
    Expect("(");
    if (TakeSymbol(")")) {
        return arguments;
    }
    do {
        if (Peek().Is(",") || Peek().Is(")")) {
            arguments.push_back(std::make_unique<LiteralNode>(Value()));
        } else {
            arguments.push_back(Expression());
        }
        if (arguments.size() > static_cast<std::size_t>(Any)) {
            Fail("a call has too many arguments");
        }
    } while (TakeSymbol(","));
    Expect(")");
    return arguments;
}

NodePtr Parser::Cast() {
    Expect("(");
    NodePtr value = Expression();
    Expect(",");
    const Token& token = Peek();
    bool known = false;
    const FunctionInfo* info = Conversion(TypeName(), known);
    if (!known) {
        FailAt(token, "the type \"" + token.text + "\" is not known");
    }
    Expect(")");
    if (!info) {
        return value;
    }
    Nodes arguments;
    arguments.push_back(std::move(value));
    return std::make_unique<CallNode>(*info, std::move(arguments));
}

// TypeOf value Is type, TypeOf value IsNot type.
NodePtr Parser::TypeTest() {
    NodePtr value = Expression(AboveComparison);
    const bool negated = Peek().IsWord("isnot");
    if (!negated && !Peek().IsWord("is")) {
        Fail("\"Is\" was expected after \"TypeOf\"");
    }
    Take();
    const std::string type = TypeName();
    return MakeChange(std::move(value), [type, negated](Machine&, const Value& v) {
        return Value::Boolean(IsOfType(v, type) != negated);
    });
}

// Integer.TryParse(text, variable): the last argument takes the value, or the first value of its type.
NodePtr Parser::TryParse(const std::string& type) {
    const FunctionInfo* parse = FindFunction(type + ".parse");
    bool known = false;
    const FunctionInfo* conversion = Conversion(type, known);
    const Token& name = Peek(1);
    if (!parse) {
        FailAt(name, "the type \"" + type + "\" cannot be parsed");
    }
    Take();
    Take();
    Nodes arguments = Arguments();
    if (arguments.size() < 2) {
        FailAt(name, "\"TryParse\" takes a text and a variable");
    }
    auto node = std::make_unique<TryParseNode>(*parse, conversion, std::move(arguments[0]));
    if (const auto* variable = dynamic_cast<const VariableNode*>(arguments.back().get());
        variable && !variable->variable.constant) {
        node->target = variable->variable;
    }
    return node;
}

NodePtr Parser::Scope(bool level) {
    std::string scope;
    if (TakeSymbol("(")) {
        scope = Peek().Is(")") ? "" : ScopeName();
        Expect(")");
    }
    if (level) {
        return MakeAsk(
            [scope](Machine& machine) { return Value::Integer(machine.environment.Level(scope)); });
    }
    return MakeAsk([scope](Machine& machine) { return Value::Boolean(machine.environment.InScope(scope)); });
}

// A scope is a constant text; Nothing is the current one.
std::string Parser::ScopeName() {
    if (TakeWord("nothing")) {
        return "";
    }
    if (Peek().type == Token::Type::Word && (Peek(1).Is(",") || Peek(1).Is(")"))) {
        Fail("the name of a scope is a text in quotes: \"" + Peek().text + "\"");
    }
    if (Peek().type != Token::Type::Literal || !Peek().literal.IsText()) {
        Fail("the name of a scope was expected, a text in quotes");
    }
    return std::string(Take().literal.AsText());
}

std::string Parser::DataSetOf(const std::string& scope, const Token& token) {
    if (scope.empty()) {
        return m_context.dataSet;
    }
    const auto dataSet = m_context.DataSetOfScope(scope);
    if (!dataSet) {
        FailAt(token, "there is no group, data region or data set \"" + scope + "\"");
    }
    return *dataSet;
}

// Returns the token ranges of the arguments of the call whose ( comes next. The scope of an aggregate follows
// its expression but is needed to compile it, so arguments are not parsed in order.
std::vector<std::pair<std::size_t, std::size_t>> Parser::ArgumentRanges() const {
    std::vector<std::pair<std::size_t, std::size_t>> ranges;
    int depth = 0;
    std::size_t begin = m_at + 1;
    for (std::size_t i = m_at; i < m_tokens.size(); ++i) {
        const Token& token = m_tokens[i];
        if (token.Is("(") || token.Is("{")) {
            ++depth;
        } else if ((token.Is(")") || token.Is("}")) && --depth == 0) {
            if (!ranges.empty() || i > begin) {
                ranges.emplace_back(begin, i);
            }
            return ranges;
        } else if (token.Is(",") && depth == 1) {
            ranges.emplace_back(begin, i);
            begin = i + 1;
        }
    }
    FailAt(m_tokens[m_at], "a bracket is not closed");
}

void Parser::NoteAggregates(const Facts& inner) {
    m_facts.pageGlobals = m_facts.pageGlobals || inner.pageGlobals;
    m_facts.reportItems = m_facts.reportItems || inner.reportItems;
    m_facts.aggregates.insert(m_facts.aggregates.end(), inner.aggregates.begin(), inner.aggregates.end());
}

// Compiles a range of tokens into a separate program over a data set; the position moves after the range.
std::shared_ptr<Program> Parser::Inner(std::size_t begin, std::size_t end, std::string dataSet) {
    if (++m_aggregateNesting > MaxAggregateNesting) {
        FailAt(m_tokens[begin], "aggregates are nested too deeply");
    }
    Facts outer = std::exchange(m_facts, Facts());
    const std::string outerSet = std::exchange(m_context.dataSet, std::move(dataSet));
    m_at = begin;
    NodePtr root;
    try {
        root = Expression();
    } catch (...) {
        m_context.dataSet = outerSet;
        throw;
    }
    m_context.dataSet = outerSet;
    if (m_at != end) {
        Fail("\",\" or \")\" was expected");
    }
    const Facts inner = std::exchange(m_facts, std::move(outer));
    NoteAggregates(inner);
    --m_aggregateNesting;
    return Compiler::Finish(std::move(root), inner);
}

NodePtr Parser::Aggregate(AggregateKind kind) {
    const Token& name = m_tokens[m_at - 1];
    if (!Peek().Is("(")) {
        FailAt(name, "\"" + name.text + "\" needs its brackets");
    }
    const auto ranges = ArgumentRanges();
    const std::size_t close = ranges.empty() ? m_at + 1 : ranges.back().second;
    auto node = std::make_unique<AggregateNode>();
    node->call.kind = kind;
    const bool argued = kind != AggregateKind::CountRows && kind != AggregateKind::RowNumber;
    std::size_t next = argued ? 1 : 0;
    const std::size_t most = next + 2;
    if (ranges.size() < next || ranges.size() > most) {
        FailAt(name, "\"" + name.text + "\" does not take " + std::to_string(ranges.size()) + " arguments");
    }
    if (kind == AggregateKind::RunningValue) {
        const NamedAggregate* running =
            ranges.size() < 2 ? nullptr : FindNamed(AggregateNames, m_tokens[ranges[1].first].lower);
        if (!running || running->kind > AggregateKind::VarP) {
            FailAt(name, "\"RunningValue\" needs the name of an aggregate function after its expression");
        }
        node->call.running = running->kind;
        ++next;
    }
    std::string dataSet = m_context.dataSet;
    if (next < ranges.size()) {
        m_at = ranges[next].first;
        const Token& scope = Peek();
        node->call.scope = ScopeName();
        dataSet = DataSetOf(node->call.scope, scope);
        ++next;
    }
    if (next < ranges.size()) {
        m_at = ranges[next].first;
        node->call.recursive = Peek().IsWord("recursive");
        if (!node->call.recursive && !Peek().IsWord("simple")) {
            Fail("\"Recursive\" or \"Simple\" was expected");
        }
    }
    if (argued) {
        node->call.argument = Inner(ranges[0].first, ranges[0].second, dataSet);
    }
    m_at = close;
    Expect(")");
    node->call.id = m_context.nextAggregateId++;
    m_facts.aggregates.push_back(&node->call);
    return node;
}

NodePtr Parser::Lookup(LookupCall::Form form) {
    const Token& name = m_tokens[m_at - 1];
    const auto ranges =
        Peek().Is("(") ? ArgumentRanges() : std::vector<std::pair<std::size_t, std::size_t>>();
    if (ranges.size() != 4) {
        FailAt(name, "\"" + name.text + "\" takes a source, a destination, a result and a data set");
    }
    auto node = std::make_unique<LookupNode>();
    node->call.form = form;
    m_at = ranges[3].first;
    const Token& set = Peek();
    node->call.dataSet = ScopeName();
    const std::string dataSet = DataSetOf(node->call.dataSet, set);
    node->call.source = Inner(ranges[0].first, ranges[0].second, m_context.dataSet);
    node->call.destination = Inner(ranges[1].first, ranges[1].second, dataSet);
    node->call.result = Inner(ranges[2].first, ranges[2].second, dataSet);
    m_at = ranges[3].second;
    Expect(")");
    node->call.id = m_context.nextLookupId++;
    return node;
}

}  // namespace rdl::expr
