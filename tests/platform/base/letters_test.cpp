#include "platform/base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace {

TEST(Letters, CompareWithoutRegardToCaseInEveryScript) {
    EXPECT_TRUE(SameLetters("Übersicht", "üBERSICHT"));
    EXPECT_TRUE(SameLetters("", ""));
    EXPECT_FALSE(SameLetters("Ubersicht", "Übersicht"));
    EXPECT_FALSE(SameLetters("a", "ab"));
}

TEST(Letters, SortLikeTheLettersThatEveryDatabaseKnows) {
    EXPECT_LT(CompareLetters("a", "B"), 0);
    EXPECT_GT(CompareLetters("ab", "A"), 0);
    EXPECT_LT(CompareLetters("_", "A"), 0);
    EXPECT_LT(CompareLetters("z", "ä"), 0);
    EXPECT_LT(CompareLetters("Z", "Ä"), 0);
}

TEST(Letters, BytesThatAreNoTextCompareByThemselves) {
    EXPECT_TRUE(SameLetters("\xff", "\xff"));
    EXPECT_FALSE(SameLetters("\xff", "\xfe"));
    EXPECT_FALSE(SameLetters("\xc0\x80", std::string("\0", 1)));
    EXPECT_FALSE(SameLetters("\xed\xa0\x80", "\xed\xa0\x81"));
    EXPECT_EQ(UpperLetters("\xf4\x90\x80\x80\xe2\x82"), "\xf4\x90\x80\x80\xe2\x82");
}

TEST(Letters, PatternsHaveWildcards) {
    EXPECT_TRUE(LikeLetters("Übersicht", "ÜBER%"));
    EXPECT_TRUE(LikeLetters("Übersicht", "_bersich_"));
    EXPECT_TRUE(LikeLetters("aXbXc", "a%x%c"));
    EXPECT_TRUE(LikeLetters("mississippi", "m%iss%ippi"));
    EXPECT_TRUE(LikeLetters("", "%%"));
    EXPECT_TRUE(LikeLetters("a", "%a%"));
    EXPECT_FALSE(LikeLetters("", "_"));
    EXPECT_FALSE(LikeLetters("ab", "a"));
    EXPECT_FALSE(LikeLetters("ab", "%a"));
    EXPECT_FALSE(LikeLetters("a", ""));
    EXPECT_TRUE(LikeLetters("100%", "100!%", U'!'));
    EXPECT_FALSE(LikeLetters("1000", "100!%", U'!'));
    EXPECT_FALSE(LikeLetters(std::string(20'000, 'a'), "%a%a%a%a%a%a%a%b"));
}

}  // namespace
