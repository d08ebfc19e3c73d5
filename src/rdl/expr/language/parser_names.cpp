// SPDX-License-Identifier: GPL-3.0-or-later
// Members of Parser: the collections that an expression names, Fields!X.Value and its like.
#include <utility>

#include "rdl/expr/language/code_functions.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/language/near_name.h"
#include "rdl/expr/language/nodes.h"
#include "rdl/expr/language/parser.h"
#include "rdl/expr/language/reach.h"
#include "rdl/values/characters.h"

namespace rdl::expr {
namespace {

constexpr std::string_view Collections[] = {"fields",      "parameters", "globals",  "user",
                                            "reportitems", "variables",  "datasets", "datasources"};

// What data providers of some kinds say about a field besides its value; ours never do.
constexpr std::string_view ExtendedProperties[] = {
    "backgroundcolor", "color",          "fontfamily", "fontsize",    "fontweight",       "fontstyle",
    "textdecoration",  "formattedvalue", "key",        "levelnumber", "parentuniquename", "uniquename",
};

template <std::size_t N>
bool Contains(const std::string_view (&names)[N], std::string_view name) {
    for (const std::string_view candidate : names) {
        if (candidate == name) {
            return true;
        }
    }
    return false;
}

bool IsPageGlobal(GlobalName name) {
    return name <= GlobalName::PageName;
}

Value ListCount(Machine&, const Value& value) {
    return Value::Integer(value.kind() == Kind::List ? static_cast<std::int64_t>(value.AsList().size()) : 1);
}

}  // namespace

bool Parser::StartsCollection() const {
    const Token& next = Peek(1);
    const std::string& lower = Peek().lower;
    if (lower == "me") {
        return true;
    }
    if (lower == "value") {
        return !next.Is("(") && !m_code;
    }
    if (lower == "report" || lower == "code") {
        return next.Is(".");
    }
    return Contains(Collections, lower) && (next.Is("!") || next.Is("(") || next.Is("."));
}

NodePtr Parser::Collection(const std::string& lower) {
    if (lower == "report") {
        Expect(".");
        if (!Contains(Collections, Peek().lower)) {
            Fail("a report has no \"" + Peek().text + "\"");
        }
        return Collection(std::string(Take().lower));
    }
    if (lower == "fields") {
        return Fields();
    }
    if (lower == "parameters") {
        return Parameters();
    }
    if (lower == "globals" || lower == "user") {
        return Globals(lower == "user");
    }
    if (lower == "reportitems") {
        return ReportItems();
    }
    if (lower == "variables") {
        return Variables();
    }
    if (lower == "datasets" || lower == "datasources") {
        return DataSets(lower);
    }
    if (lower == "code") {
        return Code();
    }
    if (lower == "me") {
        Expect(".");
        if (!TakeWord("value")) {
            Fail("\"Me\" has only a value");
        }
    }
    return MakeAsk([](Machine& machine) {
        const Value* value = machine.environment.ItemValue();
        return value ? *value : Value::Error("There is no item whose value could be taken");
    });
}

std::string Parser::ItemName(NodePtr& computed) {
    if (TakeSymbol("!")) {
        return Name("a name");
    }
    if (TakeSymbol(".")) {
        if (!(Peek().IsWord("item") && Peek(1).Is("("))) {
            return Name("a name");
        }
        Take();
    }
    Expect("(");
    NodePtr name = Expression();
    Expect(")");
    if (const auto* literal = dynamic_cast<LiteralNode*>(name.get()); literal && literal->value.IsText()) {
        return std::string(literal->value.AsText());
    }
    computed = std::move(name);
    return "";
}

// Returns the property after an item's name in lower case; Value if there is none.
std::string Parser::Property() {
    const bool property = Peek().Is(".") && Peek(1).type == Token::Type::Word;
    if (property && (Peek(1).lower == "value" || !FindFunction("." + Peek(1).lower))) {
        Take();
        return Take().lower;
    }
    return "value";
}

void Parser::TakeEmptyBrackets() {
    if (Peek().Is("(") && Peek(1).Is(")")) {
        Take();
        Take();
    }
}

void Parser::RefuseBrackets(const Token& token) const {
    if (Peek().Is("(")) {
        FailAt(token, "\"" + token.text + "\" takes no brackets");
    }
}

NodePtr Parser::Fields() {
    NodePtr computed;
    const Token& token = Peek(1);
    const std::string name = ItemName(computed);
    if (computed) {
        return DynamicField(std::move(computed));
    }
    const auto slot = m_context.FieldSlot(m_context.dataSet, name);
    // Whether there is such a field may be asked of any name.
    if (!slot && Peek().Is(".") && Peek(1).IsWord("ismissing")) {
        Take();
        Take();
        return std::make_unique<LiteralNode>(Value::Boolean(true));
    }
    if (!slot) {
        FailAt(token, m_context.dataSet.empty()
                          ? "the field \"" + name + "\" stands outside every data set"
                          : "there is no field \"" + name + "\" in data set \"" + m_context.dataSet + "\"");
    }
    const Token& at = Peek(1);
    const std::string property = Property();
    if (property == "value") {
        TakeEmptyBrackets();
        return std::make_unique<FieldNode>(*slot);
    }
    if (property == "ismissing") {
        return MakeAsk([slot = *slot](Machine& machine) {
            return Value::Boolean(machine.environment.FieldMissing(slot));
        });
    }
    if (!Contains(ExtendedProperties, property)) {
        FailAt(at, "a field has no \"" + property + "\"");
    }
    return std::make_unique<LiteralNode>(Value());
}

NodePtr Parser::DynamicField(NodePtr name) {
    std::unordered_map<std::string, int> slots;
    for (const std::string& field : m_context.FieldNames(m_context.dataSet)) {
        if (const auto slot = m_context.FieldSlot(m_context.dataSet, field)) {
            slots.emplace(Lower(field), *slot);
        }
    }
    const std::string property = Property();
    if (property != "value" && property != "ismissing") {
        Fail("a field chosen by an expression has no \"" + property + "\"");
    }
    return MakeAskByName(std::move(name), [slots = std::move(slots), missing = property == "ismissing"](
                                              Machine& machine, const std::string& field) {
        const auto found = slots.find(Lower(field));
        if (missing) {
            return Value::Boolean(found == slots.end() || machine.environment.FieldMissing(found->second));
        }
        return found == slots.end() ? Value::Error("There is no field \"" + field + "\"")
                                    : machine.environment.Field(found->second);
    });
}

NodePtr Parser::ParameterValue(const std::string& name, const Token& token) const {
    const auto index = m_context.ParameterIndex(name);
    if (!index) {
        FailAt(token, "there is no parameter \"" + name + "\"");
    }
    return MakeAsk([index = *index](Machine& machine) { return machine.environment.Parameter(index); });
}

// {?Parameter} or {@Global}; the brace is taken.
NodePtr Parser::InBraces() {
    const bool isParameter = Take().Is("?");
    const Token& token = Peek();
    const std::string name = Name(isParameter ? "the name of a parameter" : "the name of a global");
    if (!TakeSymbol("}")) {
        FailAt(token, std::string("{") + (isParameter ? "?" : "@") + name + " has no closing }");
    }
    if (isParameter) {
        return ParameterValue(name, token);
    }
    const NamedGlobal* global = FindNamed(GlobalNames, Lower(name));
    if (!global) {
        FailAt(token, "there is no Globals!" + name);
    }
    return GlobalValue(global->global);
}

NodePtr Parser::Parameters() {
    NodePtr computed;
    const Token& token = Peek(1);
    const std::string name = ItemName(computed);
    if (computed) {
        FailAt(token, "the name of a parameter must be a constant");
    }
    NodePtr value = ParameterValue(name, token);
    const auto index = m_context.ParameterIndex(name);
    if (!Peek().Is(".") || Peek(1).type != Token::Type::Word) {
        return value;
    }
    const Token& property = Peek(1);
    if (property.lower == "value" || property.lower == "label" || property.lower == "count" ||
        property.lower == "ismultivalue") {
        Take();
        Take();
        TakeEmptyBrackets();
    }
    if (property.lower == "label") {
        return MakeAsk(
            [index = *index](Machine& machine) { return machine.environment.ParameterLabel(index); });
    }
    if (property.lower == "count") {
        return MakeChange(std::move(value), ListCount);
    }
    if (property.lower == "ismultivalue") {
        return MakeChange(std::move(value),
                          [](Machine&, const Value& v) { return Value::Boolean(v.kind() == Kind::List); });
    }
    return value;
}

NodePtr Parser::GlobalValue(GlobalName name) {
    m_facts.pageGlobals = m_facts.pageGlobals || IsPageGlobal(name);
    return MakeAsk([name](Machine& machine) { return machine.environment.Global(name); });
}

NodePtr Parser::Globals(bool user) {
    NodePtr computed;
    const Token& token = Peek(1);
    const std::string name = ItemName(computed);
    const std::string lower = Lower(name);
    for (const auto& [known, global] : GlobalNames) {
        if (known != lower || user != IsOfUser(global)) {
            continue;
        }
        GlobalName asked = global;
        if (global == GlobalName::RenderFormatName && TakeSymbol(".")) {
            if (TakeWord("isinteractive")) {
                asked = GlobalName::RenderFormatIsInteractive;
            } else if (!TakeWord("name")) {
                Fail("a render format has no \"" + Peek().text + "\"");
            }
        } else if (Peek().Is(".") && Peek(1).IsWord("value")) {
            Take();
            Take();
        }
        RefuseBrackets(token);
        return GlobalValue(asked);
    }
    FailAt(token, std::string("there is no ") + (user ? "User!" : "Globals!") + name);
}

NodePtr Parser::ReportItems() {
    NodePtr computed;
    const std::string name = ItemName(computed);
    m_facts.reportItems = true;
    if (Peek().Is(".") && Peek(1).IsWord("value")) {
        Take();
        Take();
    }
    if (computed) {
        return MakeAskByName(std::move(computed), [](Machine& machine, const std::string& item) {
            return machine.environment.ReportItem(item);
        });
    }
    return MakeAsk([name](Machine& machine) { return machine.environment.ReportItem(name); });
}

NodePtr Parser::Variables() {
    NodePtr computed;
    const std::string name = ItemName(computed);
    if (Peek().Is(".") && Peek(1).IsWord("value")) {
        Take();
        Take();
    }
    if (computed) {
        return MakeAskByName(std::move(computed), [](Machine& machine, const std::string& item) {
            return machine.environment.Variable(item);
        });
    }
    return MakeAsk([name](Machine& machine) { return machine.environment.Variable(name); });
}

// DataSets!X.RowCount changes while the report runs; the other properties stand in its definition.
NodePtr Parser::DataSets(const std::string& collection) {
    NodePtr computed;
    const Token& token = Peek(1);
    const std::string name = ItemName(computed);
    if (computed) {
        FailAt(token, "the name of a data set or data source must be a constant");
    }
    if (collection == "datasets") {
        DataSetOf(name, token);
    }
    Expect(".");
    if (collection == "datasets" && TakeWord("rowcount")) {
        return MakeAsk(
            [name](Machine& machine) { return Value::Integer(machine.environment.DataSetRowCount(name)); });
    }
    const Token& property = Peek();
    const auto text = m_context.SourceProperty(collection, Lower(name), property.lower);
    if (!text) {
        FailAt(property, "\"" + name + "\" has no \"" + property.text + "\" that could be asked for");
    }
    Take();
    return std::make_unique<LiteralNode>(Value::Text(*text));
}

NodePtr Parser::Code() {
    Expect(".");
    const Token& token = Peek();
    Name("a function of the code of the report");
    return CodeCall(token, token.lower);
}

// A call of the code of the report; its name is taken.
NodePtr Parser::CodeCall(const Token& token, const std::string& lower) {
    Nodes arguments = Peek().Is("(") ? Arguments() : Nodes();
    std::string why = "the report has no code of its own";
    NodePtr node = m_context.code ? m_context.code->Use(lower, std::move(arguments), why) : nullptr;
    if (!node) {
        const std::string near =
            m_context.code && m_context.assemblies.empty() ? NearestOwn(lower, *m_context.code) : "";
        FailAt(token, why + (near.empty() ? NotLoaded() : "; the nearest is \"" + near + "\""));
    }
    m_facts.pageGlobals = m_facts.pageGlobals || m_context.code->UsesPageGlobals();
    m_facts.reportItems = m_facts.reportItems || m_context.code->UsesReportItems();
    return Checked(std::move(node));
}

}  // namespace rdl::expr
