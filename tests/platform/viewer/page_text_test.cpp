// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/page_text.h"

#include <gtest/gtest.h>

namespace viewer::test {
namespace {

// Characters are 6 points wide, lines 12 points high.
PageText TextOf(const std::vector<std::string>& lines) {
    std::vector<report::Character> characters;
    double y = 0;
    for (const std::string& line : lines) {
        double x = 0;
        for (const char c : line) {
            characters.push_back({std::string(1, c), {x, y, 6, 12}, false});
            x += 6;
        }
        characters.back().endsLine = true;
        y += 12;
    }
    return PageText(characters);
}

TEST(PageText, WordsAreFoundWithoutRegardToCase) {
    const PageText text = TextOf({"One two", "TWO three"});
    EXPECT_EQ(text.Find("two"), (std::vector<CharacterRange>{{4, 3}, {7, 3}}));
    EXPECT_TRUE(text.Find("four").empty());
    EXPECT_TRUE(text.Find("").empty());
}

TEST(PageText, WordsAreFoundOverTheEndOfALine) {
    const PageText text = TextOf({"One two", "three"});
    const std::vector<CharacterRange> found = text.Find("two three");
    ASSERT_EQ(found.size(), 1U);
    EXPECT_EQ(text.Text(found[0]), "two\nthree");
    EXPECT_EQ(text.Areas(found[0]), (std::vector<QRectF>{{24, 0, 18, 12}, {0, 12, 30, 12}}));
}

TEST(PageText, LettersOutsideOfTheBasicPlaneKeepTheirPlaces) {
    std::vector<report::Character> characters = {
        {"\xF0\x9F\x98\x80", {0, 0, 6, 12}, false}, {"a", {6, 0, 6, 12}, false}, {"b", {12, 0, 6, 12}, true}};
    const PageText text(characters);
    EXPECT_EQ(text.Find("ab"), (std::vector<CharacterRange>{{1, 2}}));
    EXPECT_EQ(text.Text({0, 2}), QString::fromUtf8("\xF0\x9F\x98\x80"
                                                   "a"));
}

TEST(PageText, PlacesAreTheNearest) {
    const PageText text = TextOf({"abc", "def"});
    EXPECT_EQ(text.PlaceAt({1, 5}), 0);
    EXPECT_EQ(text.PlaceAt({5, 5}), 1);
    EXPECT_EQ(text.PlaceAt({500, 14}), 6);
    EXPECT_EQ(text.PlaceAt({-5, 500}), 3);
    EXPECT_FALSE(text.IsOnText({500, 5}));
    EXPECT_EQ(PageText({}).PlaceAt({5, 5}), 0);
}

TEST(PageText, AWordEndsAtBlanksAndLines) {
    const PageText text = TextOf({"one two", "three"});
    EXPECT_EQ(text.WordAt(5), (CharacterRange{4, 3}));
    EXPECT_EQ(text.WordAt(0), (CharacterRange{0, 3}));
    EXPECT_EQ(text.WordAt(7), (CharacterRange{7, 5}));
}

TEST(PageText, AllOfItHasItsLines) {
    const PageText text = TextOf({"one", "two"});
    EXPECT_EQ(text.Text({0, text.Count()}), "one\ntwo");
}

}  // namespace
}  // namespace viewer::test
