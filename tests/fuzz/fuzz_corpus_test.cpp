// SPDX-License-Identifier: GPL-3.0-or-later
// The inputs that once broke something, and the fuzzers' seeds: each is fed again.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <ostream>
#include <string>
#include <vector>

#include "fuzz/targets.h"
#include "support/source_dir.h"

namespace fuzz {

// The tests' names hold it.
static void PrintTo(const Target& target, std::ostream* stream) {
    *stream << target.name;
}

namespace {

std::string BytesOf(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<std::filesystem::path> FilesOf(std::string_view folder, std::string_view target) {
    std::vector<std::filesystem::path> files;
    const auto place = std::filesystem::path(SourceDir()) / "tests" / "fuzz" / folder / target;
    std::error_code missing;
    for (const auto& entry : std::filesystem::directory_iterator(place, missing)) {
        files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

class FuzzCorpus : public testing::TestWithParam<Target> {
 protected:
    void RunAll(std::string_view folder) {
        for (const auto& file : FilesOf(folder, GetParam().name)) {
            SCOPED_TRACE(file.string());
            EXPECT_NO_THROW(GetParam().run(BytesOf(file)));
        }
    }
};

TEST_P(FuzzCorpus, WhatOnceBrokeSomethingIsReadOrRefused) {
    RunAll("crashes");
}

TEST_P(FuzzCorpus, SeedsAreThereAndRunToTheirEnd) {
    EXPECT_FALSE(FilesOf("corpus", GetParam().name).empty());
    RunAll("corpus");
}

TEST(FuzzReports, SeedsRunInEveryFormat) {
    for (const auto& file : FilesOf("corpus", "report")) {
        const std::string report = BytesOf(file);
        for (std::size_t format = 0; format < FormatCount(); ++format) {
            const std::string marked = WithFormat(report, format);
            SCOPED_TRACE(file.string() + marked.substr(marked.rfind("<!--")));
            EXPECT_EQ(WithFormat(marked, format), marked);
            EXPECT_NO_THROW(RunReport(marked));
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Targets, FuzzCorpus, testing::ValuesIn(Targets),
                         [](const auto& target) { return std::string(target.param.name); });

}  // namespace
}  // namespace fuzz
