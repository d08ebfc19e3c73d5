// SPDX-License-Identifier: GPL-3.0-or-later
// The guide to report files lists every name of the expressions and no other.
#include <algorithm>
#include <regex>

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

// If has two rows with different arguments, as it has two meanings; TypeOf is an operator.
TEST(DocumentedNames, AreTheSpecialForms) {
    std::set<std::string> listed, shown;
    for (const Signature& signature : GuideSignatures("forms")) {
        AddOnce(shown, signature.shown);
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

// A call as the language writes it, every argument the same. A member is called on the first one.
std::string CallOf(const Signature& signature, const std::string& argument, int count) {
    std::string source = "=" + signature.shown.substr(0, signature.shown.find('('));
    int given = 0;
    if (signature.name[0] == '.') {
        source.insert(1, "(" + argument + ")");
        ++given;
    }
    std::string list;
    for (; given < count; ++given) {
        list += (list.empty() ? "" : ", ") + argument;
    }
    return source + "(" + list + ")";
}

// Every call of the guide's functions with the argument, with as few and with more values than it must have.
std::vector<std::pair<std::string, const FunctionInfo*>> CallsWith(const std::string& argument) {
    std::vector<std::pair<std::string, const FunctionInfo*>> calls;
    for (const Signature& signature : GuideSignatures("functions")) {
        const FunctionInfo* info = FindFunction(signature.name);
        if (info) {
            for (const int count : {info->least, std::min(info->most, info->least + 2)}) {
                calls.emplace_back(CallOf(signature, argument, count), info);
            }
        }
    }
    return calls;
}

// An error says in a sentence what is wrong, without the mark that would end a text of a statement.
TEST(DocumentedFunctions, GiveAValueOrASentenceForAnyArgument) {
    const std::regex sentence("[A-Z][^']* [^']*[^' .]");
    for (const char* argument : {"Nothing", "\"x\"", "-1", "1E300", "{1, \"a\"}", "#1/1/2024#"}) {
        for (const auto& [source, info] : CallsWith(argument)) {
            const Value value = Result(source);
            EXPECT_TRUE(!value.IsError() || std::regex_match(std::string(value.AsText()), sentence))
                << source << ": " << value.AsText();
        }
    }
}

TEST(DocumentedFunctions, GiveTheErrorOfAnArgument) {
    for (const auto& [source, info] : CallsWith("(1 \\ 0)")) {
        if (!info->takesErrors && source.find("(1 \\ 0)") != std::string::npos) {
            const Value value = Result(source);
            ASSERT_TRUE(value.IsError()) << source;
            EXPECT_EQ(value.AsText(), "Division by zero") << source;
        }
    }
}

}  // namespace
}  // namespace rdl::expr
