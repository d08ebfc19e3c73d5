// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_characters.h"

#include <gtest/gtest.h>

#include "rdl/screen/page_kit.h"

namespace rdl::screen::test {
namespace {

std::string TextOf(const layout::Page& page) {
    std::string text;
    for (const PageCharacter& character : CharactersOf(page)) {
        text += character.text + (character.endsLine ? "\n" : "");
    }
    return text;
}

TEST(PageCharacters, CellsOfALineAreReadFromTheLeftWithABlankBetween) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "second", 100, 20);
    AddText(page, "below", 10, 40);
    AddText(page, "first", 10, 21);
    EXPECT_EQ(TextOf(page), "first second\nbelow\n");
}

TEST(PageCharacters, TextsThatTouchAreOneWord) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "bold", 10, 20, {"Arial", true});
    AddText(page, "ness", 10 + text::TextWidth("bold", text::FindFont({"Arial", true}), 10), 20);
    EXPECT_EQ(TextOf(page), "boldness\n");
}

TEST(PageCharacters, AreasLieAroundTheCharacters) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "Hi", 10, 20);
    const std::vector<PageCharacter> characters = CharactersOf(page);
    ASSERT_EQ(characters.size(), 2U);
    EXPECT_EQ(characters[0].area.x, 10);
    EXPECT_LT(characters[0].area.y, 13);
    EXPECT_GT(characters[0].area.y + characters[0].area.height, 20);
    EXPECT_NEAR(characters[1].area.x, characters[0].area.x + characters[0].area.width, 0.001);
    EXPECT_TRUE(characters[1].endsLine);
}

TEST(PageCharacters, TurnedTextIsALineOfItsOwn) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "level", 10, 50);
    AddText(page, "up", 150, 50, {}, 10, 270);
    EXPECT_EQ(TextOf(page), "level\nup\n");
    const PageCharacter up = CharactersOf(page).at(5);
    EXPECT_LT(up.area.x, 143) << "its box lies to the left of the baseline";
    EXPECT_LT(up.area.y, 50);
}

TEST(PageCharacters, MarksThatCombineStayWithTheirLetter) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "e\u0301a", 10, 20);
    const std::vector<PageCharacter> characters = CharactersOf(page);
    std::string all;
    for (const PageCharacter& character : characters) {
        all += character.text;
    }
    EXPECT_EQ(all, "e\u0301a");
}

TEST(PageCharacters, APageWithoutTextHasNone) {
    EXPECT_TRUE(CharactersOf(EmptyPage()).empty());
}

}  // namespace
}  // namespace rdl::screen::test
