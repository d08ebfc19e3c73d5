// SPDX-License-Identifier: GPL-3.0-or-later
// What the guide to report files promises is there.
#include <cctype>
#include <fstream>
#include <sstream>

#include "rdl/expr/fixture.h"
#include "rdl/expr/library/functions.h"
#include "rdl/values/characters.h"
#include "support/source_dir.h"

namespace rdl::expr {
namespace {

std::string Guide() {
    std::stringstream content;
    content << std::ifstream(SourceDir() + "/docs/report-files.md").rdbuf();
    return content.str();
}

// What stands in backquotes.
std::vector<std::string> Quoted(std::string_view text) {
    std::vector<std::string> names;
    for (std::size_t at = text.find('`'); at != std::string_view::npos;) {
        const std::size_t end = text.find('`', at + 1);
        names.emplace_back(text.substr(at + 1, end - at - 1));
        at = end == std::string_view::npos ? end : text.find('`', end + 1);
    }
    return names;
}

TEST(DocumentedFunctions, AreAllKnown) {
    const std::string guide = Guide();
    const std::size_t begin = guide.find("<!-- functions -->");
    const std::size_t end = guide.find("<!-- end of functions -->");
    ASSERT_LT(begin, end);
    std::size_t count = 0;
    for (const std::string& name : Quoted(std::string_view(guide).substr(begin, end - begin))) {
        std::string lower = Lower(name);
        if (lower.starts_with("new ")) {
            lower.replace(0, 4, "new.");
        }
        const bool special = lower == "ctype" || lower == "directcast" || lower == "trycast" ||
                             lower == "math" || lower == "convert";
        EXPECT_TRUE(special || FindFunction(lower) || FindConstant(lower)) << name;
        ++count;
    }
    EXPECT_GT(count, 250u);
}

// A call of each plain function with as few and as many arguments as it takes compiles, and ends.
TEST(DocumentedFunctions, TakeNothingAndErrorsWithoutHarm) {
    const std::string guide = Guide();
    const std::size_t begin = guide.find("<!-- functions -->");
    const std::size_t end = guide.find("<!-- end of functions -->");
    for (const std::string& name : Quoted(std::string_view(guide).substr(begin, end - begin))) {
        const FunctionInfo* info = FindFunction(Lower(name));
        if (!info || name[0] == '.') {
            continue;
        }
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
