// SPDX-License-Identifier: GPL-3.0-or-later
// An environment with one data set, so that a test is one line: what an expression shows.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <map>
#include <string>
#include <vector>

#include "rdl/expr/language/expression.h"
#include "rdl/raises.h"

namespace rdl::expr {

inline bool SameName(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return std::tolower(x) == std::tolower(y); });
}

struct TestContext : CompileContext {
    TestContext() { dataSet = "Sales"; }
    std::optional<int> FieldSlot(const std::string& set, std::string_view field) const override {
        const auto found = fields.find(set);
        for (std::size_t i = 0; found != fields.end() && i < found->second.size(); ++i) {
            if (SameName(found->second[i], field)) {
                return static_cast<int>(i);
            }
        }
        return std::nullopt;
    }
    std::optional<int> ParameterIndex(std::string_view name) const override {
        return SameName(name, "Region")  ? std::optional(0)
               : SameName(name, "Years") ? std::optional(1)
                                         : std::nullopt;
    }
    std::optional<std::string> DataSetOfScope(const std::string& scope) const override {
        if (scope == "Sales" || scope == "ByYear") {
            return "Sales";
        }
        return scope == "Other" ? std::optional<std::string>("Other") : std::nullopt;
    }
    std::vector<std::string> FieldNames(const std::string& set) const override {
        const auto found = fields.find(set);
        return found == fields.end() ? std::vector<std::string>() : found->second;
    }
    std::optional<std::string> SourceProperty(std::string_view collection, std::string_view name,
                                              std::string_view property) const override {
        return collection == "datasources" && name == "db" && property == "type"
                   ? std::optional<std::string>("SQLITE")
                   : std::nullopt;
    }
    std::map<std::string, std::vector<std::string>> fields = {
        {"Sales", {"Name", "Amount", "Day", "Gone", "Empty"}}, {"Other", {"Id", "Label"}}};
};

struct TestEnvironment : Environment {
    Value Field(int slot) override { return row.at(static_cast<std::size_t>(slot)); }
    bool FieldMissing(int slot) override { return slot == 3; }
    Value Parameter(int index) override {
        return index == 0 ? Value::Text("North") : Value::List({Value::Integer(2023), Value::Integer(2024)});
    }
    Value ParameterLabel(int index) override {
        return index == 0 ? Value::Text("The north") : Value::List({Value::Text("y23"), Value::Text("y24")});
    }
    Value Global(GlobalName name) override {
        return name == GlobalName::PageNumber         ? Value::Integer(3)
               : name == GlobalName::UserID           ? Value::Text("ann")
               : name == GlobalName::RenderFormatName ? Value::Text("PDF")
                                                      : Value::Integer(12);
    }
    Value ReportItem(const std::string& name) override { return Value::Text("item " + name); }
    Value Variable(const std::string& name) override { return Value::Text("variable " + name); }
    Value Aggregate(const AggregateCall& call) override {
        lastScope = call.scope;
        lastRecursive = call.recursive;
        if (!call.argument) {
            return Value::Integer(42);
        }
        return call.argument->Evaluate(*this);
    }
    Value Lookup(const LookupCall& call) override { return Value::Text("from " + call.dataSet); }
    bool InScope(const std::string& scope) override { return scope == "ByYear"; }
    int Level(const std::string&) override { return 2; }
    std::int64_t DataSetRowCount(const std::string&) override { return 7; }
    const Culture& CurrentCulture() override { return *culture; }
    std::int64_t NowTicks() override { return MakeTicks(2024, 2, 29, 13, 45, 30); }
    Value* ItemValue() override { return &item; }

    std::vector<Value> row = {Value::Text("Smith"), Value::Real(1234.5),
                              Value::DateTime(MakeTicks(2024, 1, 31, 10, 30)), Value(), Value()};
    const Culture* culture = &FindCulture("en-US");
    Value item = Value::Text("me");
    std::string lastScope;
    bool lastRecursive = false;
};

inline Value Result(const std::string& source, const char* culture = "en-US") {
    TestContext context;
    TestEnvironment environment;
    environment.culture = &FindCulture(culture);
    return Compile(source, "Here", context)->Evaluate(environment);
}

// The value as text, with its kind in front of what is not text: "5", "Real 5", "Boolean True".
inline std::string Show(const std::string& source, const char* culture = "en-US") {
    const Value value = Result(source, culture);
    if (value.IsError()) {
        return "#Error";
    }
    if (value.kind() == Kind::List) {
        std::string text = "[";
        for (const Value& part : value.AsList()) {
            text += (text.size() > 1 ? "|" : "") + ToText(part, FindCulture(culture));
        }
        return text + "]";
    }
    return ToText(value, FindCulture(culture));
}

struct Case {
    const char* source;
    const char* shown;
};

// A table of expressions and what each shows.
inline void Expect(std::initializer_list<Case> cases) {
    for (const auto& [source, shown] : cases) {
        EXPECT_EQ(Show(source), shown) << source;
    }
}

// Why an expression does not compile.
inline std::string Refusal(const std::string& source) {
    TestContext context;
    const std::string error = ErrorRaisedBy([&] { Compile(source, "Here", context); });
    return error.empty() ? "compiled" : error;
}

}  // namespace rdl::expr
