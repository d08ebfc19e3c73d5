// SPDX-License-Identifier: GPL-3.0-or-later
// The guide to report files lists every name of the expressions and no other.
#include <algorithm>

#include "rdl/expr/fixture.h"
#include "rdl/expr/language/names.h"
#include "rdl/expr/library/functions.h"
#include "rdl/guide.h"

namespace rdl::expr {
namespace {

TEST(DocumentedNames, AreTheFunctions) {
    EXPECT_EQ(GuideNames("functions"), NamesOfAll(FunctionTables()));
}

TEST(DocumentedNames, HaveTheArgumentsThatTheFunctionsTake) {
    for (const Signature& signature : GuideSignatures("functions")) {
        const FunctionInfo* info = FindFunction(signature.name);
        ASSERT_NE(info, nullptr) << signature.shown;
        const int object = signature.name[0] == '.' ? 1 : 0;
        EXPECT_EQ(signature.least + object, info->least) << signature.shown;
        EXPECT_EQ(signature.takesAnyNumber, info->most == Any) << signature.shown;
        if (!signature.takesAnyNumber) {
            EXPECT_EQ(signature.most + object, info->most) << signature.shown;
        }
    }
}

// If has two rows, as it has two meanings; TypeOf is an operator.
TEST(DocumentedNames, AreTheSpecialForms) {
    std::set<std::string> listed;
    for (const Signature& signature : GuideSignatures("forms")) {
        listed.insert(signature.name.substr(0, signature.name.find(' ')));
    }
    EXPECT_EQ(listed, NamesOf(SpecialForms));
}

TEST(DocumentedNames, AreTheAggregates) {
    EXPECT_EQ(GuideNames("aggregates"), NamesOf(AggregateNames));
}

TEST(DocumentedNames, AreTheTypes) {
    EXPECT_EQ(GuideNames("types"), NamesOf(TypeNames));
}

TEST(DocumentedNames, AreTheGlobals) {
    std::set<std::string> listed;
    for (const std::string& name : GuideNames("globals")) {
        listed.insert(name.substr(0, name.find('.')));
        EXPECT_FALSE(Result("=" + name).IsError()) << name;
    }
    std::set<std::string> known;
    for (const NamedGlobal& row : GlobalNames) {
        AddOnce(known, (IsOfUser(row.global) ? "user!" : "globals!") + std::string(row.name));
    }
    EXPECT_EQ(listed, known);
}

// Each row has names after those of the classes that they belong to; constants alone have no class.
TEST(DocumentedNames, AreTheConstants) {
    std::set<std::string> listed;
    for (const std::string& line : GuideLines("constants")) {
        const std::size_t bar = line.find('|', 1);
        std::vector<std::string> classes = Quoted(line.substr(0, bar));
        if (classes.empty()) {
            classes.emplace_back();
        }
        for (const std::string& owner : classes) {
            for (const std::string& name : Quoted(line.substr(bar))) {
                AddOnce(listed, LowerAscii(owner + (owner.empty() ? "" : ".") + name));
            }
        }
    }
    const std::set<std::string> known = NamesOf(Constants());
    EXPECT_EQ(listed, known);
    for (const std::string& name : known) {
        EXPECT_EQ(FindFunction(name), nullptr) << name << " is a function as well";
    }
}

// A call of each plain function with as few and as many arguments as it takes compiles, and ends.
TEST(DocumentedFunctions, TakeNothingAndErrorsWithoutHarm) {
    for (const Signature& signature : GuideSignatures("functions")) {
        const FunctionInfo* info = FindFunction(signature.name);
        if (!info || signature.name[0] == '.') {
            continue;
        }
        const std::string name = signature.shown.substr(0, signature.shown.find('('));
        for (const char* argument : {"Nothing", "\"x\"", "-1", "1E300", "{1, \"a\"}", "#1/1/2024#"}) {
            for (const int count : {info->least, std::min(info->most, info->least + 2)}) {
                std::string source = "=" + name + "(";
                for (int i = 0; i < count; ++i) {
                    source += std::string(i == 0 ? "" : ", ") + argument;
                }
                const Value value = Result(source + ")");
                EXPECT_TRUE(!value.IsError() || !value.AsText().empty()) << source;
                EXPECT_TRUE(!value.IsError() || value.AsText().find('\'') == std::string_view::npos)
                    << source;
            }
        }
    }
}

}  // namespace
}  // namespace rdl::expr
