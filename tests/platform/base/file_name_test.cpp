// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/file_name.h"

#include <gtest/gtest.h>

#include "platform/contracts/runtime.h"

namespace {

// Returns "number: description", or an empty text if the name is accepted.
std::string Refusal(std::string_view name) {
    try {
        RequireFileName(name);
    } catch (const RuntimeError& error) {
        return std::to_string(error.Number()) + ": " + error.Description();
    }
    return {};
}

TEST(SafeFileName, LeavesNothingThatAFileSystemRefuses) {
    EXPECT_EQ(SafeFileName("Sales 2025"), "Sales 2025");
    EXPECT_EQ(SafeFileName("../../etc/passwd"), "_.._etc_passwd");
    EXPECT_EQ(SafeFileName("a\\b:c*d?e\"f<g>h|i\n"), "a_b_c_d_e_f_g_h_i_");
    EXPECT_EQ(SafeFileName(std::string_view("a\0b", 3)), "a_b");
    EXPECT_EQ(SafeFileName("Umsatz über alles. "), "Umsatz über alles");
}

TEST(SafeFileName, OfNothingIsAWord) {
    EXPECT_EQ(SafeFileName(""), "Report");
    EXPECT_EQ(SafeFileName(" .. "), "Report");
    EXPECT_EQ(SafeFileName(" ", "Untitled"), "Untitled");
}

TEST(SafeFileName, LongTitlesEndBetweenCharacters) {
    std::string title = "a";
    for (int i = 0; i < 200; ++i) {
        title += "€";
    }
    EXPECT_EQ(SafeFileName(title), title.substr(0, 1 + 39 * 3));
}

TEST(RequiredFileName, NamesAFileInItsFolder) {
    for (const char* name :
         {"a", "a b.htm", "...a", "a..", "a:b", "Z:a.htm", "Größe.htm", "sub/a.htm", "sub\\a.htm"}) {
        EXPECT_EQ(Refusal(name), "") << name;
    }
    EXPECT_EQ(Refusal(std::string(255, 'a')), "");
}

TEST(RequiredFileName, NeverNamesAnotherPlace) {
    for (const char* name : {"", "..", ".", "../a", "a/..", "a/../b", "..\\a", "a\\..\\b", "/a", "a/", "a//b",
                             "Z:\\a", "z:/a", "a/./b", ".../a"}) {
        EXPECT_EQ(Refusal(name), "76: Path not found: \"" + std::string(name) + "\" is not a file name");
    }
}

TEST(RequiredFileName, HoldsNoControlCharacters) {
    EXPECT_EQ(Refusal("a\nb"), "76: Path not found: \"a?b\" is not a file name");
    EXPECT_EQ(Refusal(std::string_view("a\0b", 3)), "76: Path not found: \"a?b\" is not a file name");
    EXPECT_EQ(Refusal("a\x7F"), "76: Path not found: \"a?\" is not a file name");
}

TEST(RequiredFileName, IsNoLongerThanAFileSystemTakes) {
    EXPECT_EQ(Refusal(std::string(256, 'a')),
              "76: Path not found: \"" + std::string(80, 'a') + "...\" is not a file name");
}

}  // namespace
