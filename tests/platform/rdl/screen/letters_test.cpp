#include "platform/rdl/screen/letters.h"

#include <gtest/gtest.h>

#include "platform/rdl/screen/page_kit.h"

namespace rdl::screen::test {
namespace {

std::string TextOf(const layout::Page& page) {
    std::string text;
    for (const report::Letter& letter : LettersOf(page)) {
        text += letter.text + (letter.endsLine ? "\n" : "");
    }
    return text;
}

TEST(Letters, CellsOfALineAreReadFromTheLeftWithABlankBetween) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "second", 100, 20);
    AddText(page, "below", 10, 40);
    AddText(page, "first", 10, 21);
    EXPECT_EQ(TextOf(page), "first second\nbelow\n");
}

TEST(Letters, TextsThatTouchAreOneWord) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "bold", 10, 20, {"Arial", true});
    AddText(page, "ness", 10 + text::TextWidth("bold", text::FindFont({"Arial", true}), 10), 20);
    EXPECT_EQ(TextOf(page), "boldness\n");
}

TEST(Letters, AreasLieAroundTheLetters) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "Hi", 10, 20);
    const std::vector<report::Letter> letters = LettersOf(page);
    ASSERT_EQ(letters.size(), 2U);
    EXPECT_EQ(letters[0].area.x, 10);
    EXPECT_LT(letters[0].area.y, 13);
    EXPECT_GT(letters[0].area.y + letters[0].area.height, 20);
    EXPECT_NEAR(letters[1].area.x, letters[0].area.x + letters[0].area.width, 0.001);
    EXPECT_TRUE(letters[1].endsLine);
}

TEST(Letters, TurnedTextIsALineOfItsOwn) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "level", 10, 50);
    AddText(page, "up", 150, 50, {}, 10, 270);
    EXPECT_EQ(TextOf(page), "level\nup\n");
    const report::Letter up = LettersOf(page).at(5);
    EXPECT_LT(up.area.x, 143) << "its box lies to the left of the baseline";
    EXPECT_LT(up.area.y, 50);
}

TEST(Letters, MarksThatCombineStayWithTheirLetter) {
    layout::Page page = EmptyPage(300, 100);
    AddText(page, "e\u0301a", 10, 20);
    const std::vector<report::Letter> letters = LettersOf(page);
    std::string all;
    for (const report::Letter& letter : letters) {
        all += letter.text;
    }
    EXPECT_EQ(all, "e\u0301a");
}

TEST(Letters, APageWithoutTextHasNone) {
    EXPECT_TRUE(LettersOf(EmptyPage()).empty());
}

}  // namespace
}  // namespace rdl::screen::test
