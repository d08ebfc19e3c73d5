// SPDX-License-Identifier: GPL-3.0-or-later
// Expressions of report files as other people write them.
#include <filesystem>
#include <fstream>
#include <sstream>

#include "rdl/expr/fixture.h"
#include "support/source_dir.h"

namespace rdl::expr {
namespace {

// Knows every name: what is left is the language.
struct OpenContext : CompileContext {
    OpenContext() { dataSet = "Any"; }
    std::optional<int> FieldSlot(const std::string&, std::string_view) const override { return 0; }
    std::optional<int> ParameterIndex(std::string_view) const override { return 0; }
    std::optional<std::string> DataSetOfScope(const std::string& scope) const override { return scope; }
};

std::string Decoded(std::string text) {
    const std::pair<const char*, const char*> entities[] = {
        {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&apos;", "'"}, {"&amp;", "&"}};
    for (const auto& [entity, character] : entities) {
        for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity, at + 1)) {
            text.replace(at, std::string(entity).size(), character);
        }
    }
    return text;
}

TEST(SampleExpressions, Compile) {
    const std::filesystem::path folder = std::filesystem::path(SourceDir()) / "../shared/rdl";
    if (!std::filesystem::exists(folder)) {
        GTEST_SKIP() << "no report files beside the sources";
    }
    int count = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (entry.path().extension() != ".rdl") {
            continue;
        }
        std::stringstream content;
        content << std::ifstream(entry.path()).rdbuf();
        const std::string text = content.str();
        for (std::size_t at = text.find(">="); at != std::string::npos; at = text.find(">=", at + 1)) {
            const std::string source = Decoded(text.substr(at + 1, text.find('<', at) - at - 1));
            OpenContext context;
            ++count;
            try {
                Compile(source, entry.path().filename().string(), context);
            } catch (const Error& error) {
                ADD_FAILURE() << error.what() << "\n" << source;
            }
        }
    }
    EXPECT_GT(count, 100);
}

}  // namespace
}  // namespace rdl::expr
