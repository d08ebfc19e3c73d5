// SPDX-License-Identifier: GPL-3.0-or-later
// The fuzzers' dictionaries: names of the engine's tables, and what is grammar in tests/fuzz/dictionaries.
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <set>

#include "fuzz/targets.h"
#include "rdl/values/ascii.h"
#include "support/source_dir.h"

namespace fuzz {
namespace {

TEST(FuzzWords, AreThoseOfTheTables) {
    const auto has = [](const Words& words, std::string_view word) {
        return std::find(words.begin(), words.end(), word) != words.end();
    };
    for (const char* word : {"left(", "new string(", ".substring(", ".length", "today", "vbcrlf",
                             "Globals!pagenumber", "User!userid", "runningvalue(", "lookup(", "typeof "}) {
        EXPECT_TRUE(has(ExpressionWords(), word)) << word;
    }
    EXPECT_TRUE(has(CodeWords(), "left("));
    EXPECT_TRUE(has(CodeWords(), "As stringbuilder"));
    EXPECT_FALSE(has(CodeWords(), "runningvalue("));
    EXPECT_FALSE(has(CodeWords(), "lookup("));
    EXPECT_TRUE(has(FormulaWords(), "uppercase("));
    EXPECT_TRUE(has(FormulaWords(), "today"));
    EXPECT_TRUE(has(FormulaWords(), "last7days"));
    EXPECT_TRUE(has(FormatWords(), "de"));
    EXPECT_TRUE(has(FormatWords(), "de-AT\n"));
}

TEST(FuzzWords, AreQuotedAsADictionaryIsRead) {
    EXPECT_EQ(DictionaryLine("de-AT\n"), "\"de-AT\\x0a\"");
    EXPECT_EQ(DictionaryLine("a\"b\\"), "\"a\\x22b\\x5c\"");
    EXPECT_EQ(DictionaryLine("\xC3\xA9"), "\"\\xc3\\xa9\"");
}

// A name of a table in a dictionary written by hand would outlive the table's row.
TEST(FuzzWords, AreNotWrittenByHand) {
    for (const Target& target : Targets) {
        if (!target.words) {
            continue;
        }
        std::set<std::string> names;
        for (const std::string& word : target.words()) {
            names.insert(rdl::LowerAscii(DictionaryLine(word)));
        }
        std::ifstream grammar(SourceDir() + "/tests/fuzz/dictionaries/" + std::string(target.name) + ".dict");
        ASSERT_TRUE(grammar) << target.name;
        for (std::string line; std::getline(grammar, line);) {
            EXPECT_EQ(names.count(rdl::LowerAscii(line)), 0u) << target.name << ": " << line;
        }
    }
}

}  // namespace
}  // namespace fuzz
