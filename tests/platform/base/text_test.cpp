// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Texts, CompareWithoutRegardToCaseInEveryScript) {
    EXPECT_TRUE(SameText("Übersicht", "üBERSICHT"));
    EXPECT_TRUE(SameText("", ""));
    EXPECT_FALSE(SameText("Ubersicht", "Übersicht"));
    EXPECT_FALSE(SameText("a", "ab"));
}

TEST(Texts, SortLikeTheCharactersThatEveryDatabaseKnows) {
    EXPECT_LT(CompareText("a", "B"), 0);
    EXPECT_GT(CompareText("ab", "A"), 0);
    EXPECT_LT(CompareText("_", "A"), 0);
    EXPECT_LT(CompareText("z", "ä"), 0);
    EXPECT_LT(CompareText("Z", "Ä"), 0);
}

TEST(Texts, BytesThatAreNoTextCompareByThemselves) {
    EXPECT_TRUE(SameText("\xff", "\xff"));
    EXPECT_FALSE(SameText("\xff", "\xfe"));
    EXPECT_FALSE(SameText("\xc0\x80", std::string("\0", 1)));
    EXPECT_FALSE(SameText("\xed\xa0\x80", "\xed\xa0\x81"));
    EXPECT_EQ(UpperText("\xf4\x90\x80\x80\xe2\x82"), "\xf4\x90\x80\x80\xe2\x82");
}

TEST(Texts, PatternsHaveWildcards) {
    EXPECT_TRUE(LikeText("Übersicht", "ÜBER%"));
    EXPECT_TRUE(LikeText("Übersicht", "_bersich_"));
    EXPECT_TRUE(LikeText("aXbXc", "a%x%c"));
    EXPECT_TRUE(LikeText("mississippi", "m%iss%ippi"));
    EXPECT_TRUE(LikeText("", "%%"));
    EXPECT_TRUE(LikeText("a", "%a%"));
    EXPECT_FALSE(LikeText("", "_"));
    EXPECT_FALSE(LikeText("ab", "a"));
    EXPECT_FALSE(LikeText("ab", "%a"));
    EXPECT_FALSE(LikeText("a", ""));
    EXPECT_TRUE(LikeText("100%", "100!%", U'!'));
    EXPECT_FALSE(LikeText("1000", "100!%", U'!'));
    EXPECT_FALSE(LikeText(std::string(20'000, 'a'), "%a%a%a%a%a%a%a%b"));
}

TEST(Texts, BeginningsHoldWholeCharacters) {
    EXPECT_EQ(FirstCharacters("Übersicht", 2), "Üb");
    EXPECT_EQ(FirstCharacters("Ü", 5), "Ü");
    EXPECT_EQ(FirstCharacters("\xff\xfe"
                              "a",
                              2),
              "\xff\xfe");
    EXPECT_EQ(FirstCharacters("", 1), "");
    EXPECT_EQ(CutText("aÜb", 2), "a");
    EXPECT_EQ(CutText("aÜb", 3), "aÜ");
    EXPECT_EQ(CutText("aÜb", 4), "aÜb");
    EXPECT_EQ(CutText("aÜb", 9), "aÜb");
    EXPECT_EQ(CutText("\x80\x80\x80", 2), "");
}

TEST(Texts, BytesThatAreNoTextAreReplacedOneByOne) {
    EXPECT_TRUE(IsUtf8("aÜ\xF0\x9F\x98\x80"));
    EXPECT_TRUE(IsUtf8(std::string_view("\0", 1)));
    EXPECT_FALSE(IsUtf8("a\xC3"));
    EXPECT_FALSE(IsUtf8("\xED\xA0\x80"));
    EXPECT_EQ(ValidUtf8("a\xC3(\xFF\xFEÜ"), "a\xEF\xBF\xBD(\xEF\xBF\xBD\xEF\xBF\xBDÜ");
    EXPECT_EQ(ValidUtf8("\xED\xA0\x80"), "\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD");
}

}  // namespace
