// SPDX-License-Identifier: GPL-3.0-or-later
// Texts as positioned glyphs.
#include <gmock/gmock.h>

#include <algorithm>
#include <cmath>

#include "rdl/text/machine_fonts.h"

namespace rdl::text::test {
namespace {

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

constexpr const char* Alef = "\u05D0";
constexpr const char* ArabicBeh = "\u0628";

TEST(Shape, WidthsAddUp) {
    for (const char* text :
         {"Total 1,234.50", "Größe: 12 µm", "e\u0301te\u0301", "abc \u05D0\u05D1\u05D2 def",
          "\u0645\u0631\u062D\u0628\u0627", "\u4E2D\u6587 and \u2603"}) {
        const std::vector<GlyphRun> runs = Shaped(text, Arial(), 12);
        double sum = 0;
        for (const GlyphRun& run : runs) {
            double ofRun = 0;
            for (const Glyph& glyph : run.glyphs) {
                ofRun += static_cast<double>(glyph.advance);
            }
            EXPECT_NEAR(ofRun, run.width, 1e-4) << text;
            sum += ofRun;
        }
        EXPECT_GT(sum, 0) << text;
        EXPECT_NEAR(TextWidth(text, Arial(), 12), sum, 1e-4) << text;
        EXPECT_NEAR(TextWidth(text, Arial(), 24), 2 * sum, 1e-3) << text;
    }
}

TEST(Shape, WidthOfATextIsThatOfItsLetters) {
    EXPECT_NEAR(TextWidth("AVATAR", Arial(), 10),
                3 * TextWidth("A", Arial(), 10) + TextWidth("V", Arial(), 10) + TextWidth("T", Arial(), 10) +
                    TextWidth("R", Arial(), 10),
                1e-6);
}

TEST(Shape, NothingHasNoGlyphs) {
    EXPECT_THAT(Shaped(""), IsEmpty());
    EXPECT_EQ(TextWidth("", Arial(), 10), 0);
}

TEST(Shape, ClustersAreTheBytesThatGlyphsStandFor) {
    EXPECT_THAT(Clusters(Shaped("aäb")), ElementsAre(0, 1, 3));
    const std::vector<GlyphRun> runs = Shaped("aäb");
    ASSERT_THAT(runs, SizeIs(1));
    EXPECT_EQ(runs[0].begin, 0u);
    EXPECT_EQ(runs[0].end, 4u);
}

TEST(Shape, AppendsToWhatIsThere) {
    std::vector<GlyphRun> runs = Shaped("a");
    Shape("b", Arial(), 10, false, runs);
    EXPECT_THAT(runs, SizeIs(2));
}

TEST(Shape, ControlCharactersHaveNoGlyph) {
    EXPECT_EQ(GlyphIds(Shaped("a\tb\r\nc\x01\x7F")), GlyphIds(Shaped("abc")));
    EXPECT_EQ(GlyphIds(Shaped("ü\u200B\u00AD\uFEFFb")), GlyphIds(Shaped("üb")));
    EXPECT_EQ(GlyphIds(Shaped(std::string("ab\0", 3))), GlyphIds(Shaped("ab")));
}

TEST(Shape, ControlCharactersHaveNoGlyphAmongShapedTextEither) {
    NEEDS_FONT("DejaVu Sans");
    const FontId font = FindFont({"DejaVu Sans"});
    const std::string text = std::string(Alef) + "\x01\t\x7F" + Alef;
    EXPECT_EQ(GlyphIds(Shaped(text, font)), GlyphIds(Shaped(std::string(Alef) + Alef, font)));
    EXPECT_NEAR(TextWidth(text, font, 10), 2 * TextWidth(Alef, font, 10), 1e-4);
}

TEST(Shape, MissingCharactersComeFromAnotherFont) {
    NEEDS_FONT("Liberation Sans");
    NEEDS_FONT("DejaVu Sans");
    const std::vector<GlyphRun> runs = Shaped("ab\u2603cd");  // a snowman
    ASSERT_THAT(runs, SizeIs(3));
    EXPECT_EQ(runs[0].font, Arial());
    EXPECT_NE(runs[1].font, Arial());
    EXPECT_EQ(runs[2].font, Arial());
    EXPECT_NE(runs[1].glyphs.at(0).id, 0);
    EXPECT_EQ(runs[1].begin, 2u);
    EXPECT_EQ(runs[1].end, 5u);
}

TEST(Shape, FallbackKeepsTheStyle) {
    NEEDS_FONT("Liberation Sans");
    NEEDS_FONT("DejaVu Sans");
    const std::vector<GlyphRun> runs = Shaped("\u0416\u2660\u05D0", FindFont({"Arial", true}));
    for (const GlyphRun& run : runs) {
        EXPECT_TRUE(File(run.font).bold || File(run.font).syntheticBold) << File(run.font).path;
    }
}

TEST(Shape, ACharacterThatNoFontHasIsTheMissingGlyphOfTheFontAskedFor) {
    const std::vector<GlyphRun> runs = Shaped(
        "a\U0010FFFD"
        "b");
    ASSERT_THAT(runs, SizeIs(1));
    EXPECT_EQ(runs[0].font, Arial());
    ASSERT_THAT(runs[0].glyphs, SizeIs(3));
    EXPECT_EQ(runs[0].glyphs[1].id, 0);
}

TEST(Shape, RightToLeftTextStandsFromTheRight) {
    NEEDS_FONT("DejaVu Sans");
    const std::vector<GlyphRun> runs = Shaped("\u05D0\u05D1\u05D2", FindFont({"DejaVu Sans"}));
    ASSERT_THAT(runs, SizeIs(1));
    EXPECT_TRUE(runs[0].rightToLeft);
    EXPECT_THAT(Clusters(runs), ElementsAre(4, 2, 0));
}

TEST(Shape, ForeignWordsAreTurnedWithinTheirParagraph) {
    NEEDS_FONT("DejaVu Sans");
    const FontId font = FindFont({"DejaVu Sans"});
    const char* text = "ab \u05D0\u05D1 cd";
    EXPECT_THAT(Clusters(Shaped(text, font)), ElementsAre(0, 1, 2, 5, 3, 7, 8, 9));
    EXPECT_THAT(Clusters(Shaped(text, font, 10, true)), ElementsAre(8, 9, 7, 5, 3, 2, 0, 1));
}

TEST(Shape, NumbersKeepTheirOrderInRightToLeftText) {
    NEEDS_FONT("DejaVu Sans");
    // An alef, a space and 123: the number stands left of the word and reads from the left.
    EXPECT_THAT(Clusters(Shaped("\u05D0 123", FindFont({"DejaVu Sans"}), 10, true)),
                ElementsAre(3, 4, 5, 2, 0));
}

TEST(Shape, BracketsAreMirroredInRightToLeftText) {
    NEEDS_FONT("DejaVu Sans");
    const FontId font = FindFont({"DejaVu Sans"});
    const std::uint16_t open = GlyphIds(Shaped("(", font)).at(0), close = GlyphIds(Shaped(")", font)).at(0);
    const std::vector<std::uint16_t> ids = GlyphIds(Shaped("(\u05D0)", font, 10, true));
    ASSERT_THAT(ids, SizeIs(3));
    EXPECT_EQ(ids[0], open);
    EXPECT_EQ(ids[2], close);
}

TEST(Shape, ArabicLettersJoin) {
    NEEDS_FONT("DejaVu Sans");
    const FontId font = FindFont({"DejaVu Sans"});
    const std::uint16_t alone = GlyphIds(Shaped(ArabicBeh, font)).at(0);
    const auto three = GlyphIds(Shaped(std::string(ArabicBeh) + ArabicBeh + ArabicBeh, font));
    ASSERT_THAT(three, SizeIs(3));
    EXPECT_THAT(three, Each(Not(alone)));
    EXPECT_NE(three[0], three[1]);
    EXPECT_NE(three[1], three[2]);
}

TEST(Shape, EachScriptIsShapedByItsOwnRules) {
    NEEDS_FONT("DejaVu Sans");
    const FontId font = FindFont({"DejaVu Sans"});
    const std::string arabic = std::string(ArabicBeh) + ArabicBeh;
    const auto alone = GlyphIds(Shaped(arabic, font));
    auto behindHebrew = GlyphIds(Shaped(Alef + arabic, font));
    ASSERT_THAT(behindHebrew, SizeIs(3));
    behindHebrew.pop_back();  // the alef stands rightmost
    EXPECT_EQ(behindHebrew, alone);
}

TEST(Shape, MarksStandOnTheirLetter) {
    const double letter = TextWidth("e", Arial(), 10);
    EXPECT_NEAR(TextWidth("e\u0301", Arial(), 10), letter, 1e-4);
    EXPECT_NEAR(TextWidth("\u1EB9\u0301", Arial(), 10), TextWidth("\u1EB9", Arial(), 10), 1e-4);
    EXPECT_THAT(Clusters(Shaped("e\u0301")), Each(0u));
}

TEST(Shape, ALetterAndItsMarkAreOneSignWhereTheFontHasIt) {
    NEEDS_FONT("Liberation Sans");
    EXPECT_EQ(GlyphIds(Shaped("e\u0301")), GlyphIds(Shaped("é")));
    EXPECT_EQ(GlyphIds(Shaped("o\u0302")), GlyphIds(Shaped("ô")));
}

TEST(Shape, AMarkThatTheFontLacksTakesItsLetterAlong) {
    NEEDS_FONT("Liberation Sans");
    NEEDS_FONT("DejaVu Sans");
    const std::vector<GlyphRun> runs = Shaped("ax\u0363b");  // a small a above
    for (const GlyphRun& run : runs) {
        EXPECT_TRUE(run.begin != 2) << "letter and mark in two fonts";
    }
    // One sign of another font, not a sign of this one and a mark of the other.
    EXPECT_EQ(GlyphIds(Shaped("o\u0302\u0301")), GlyphIds(Shaped("\u1ED1")));
}

TEST(Shape, JoinedSignsThatNoFontHasDoNoHarm) {
    for (const char* text :
         {"\U0001F468\u200D\U0001F469\u200D\U0001F467", "\U0001F1E9\U0001F1EA", "\u2764\uFE0F",
          "\u0915\u094D\u0937\u093F", "\u0E01\u0E33", "\u202E\u05D0abc\u202C", "\u2067\u2067\u2069"}) {
        EXPECT_TRUE(std::isfinite(TextWidth(text, Arial(), 10))) << text;
    }
}

void ExpectSound(const std::string& text, bool rightToLeft) {
    const std::vector<GlyphRun> runs = Shaped(text, Arial(), 10, rightToLeft);
    for (const GlyphRun& run : runs) {
        ASSERT_LE(run.begin, run.end);
        ASSERT_LE(run.end, text.size());
        ASSERT_TRUE(std::isfinite(run.width));
        for (const Glyph& glyph : run.glyphs) {
            ASSERT_GE(glyph.cluster, run.begin);
            ASSERT_LT(glyph.cluster, run.end);
        }
    }
}

TEST(Shape, BrokenUtf8IsHarmless) {
    for (const char* text :
         {"\xFF", "a\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC0\x80", "\xED\xA0\x80", "\xF4\x90\x80\x80",
          "\x80\x80", "\xD7\x90\xD7", "\xD8\xA8\xFF\xD8\xA8", "e\xCC\x81\xCC"}) {
        ExpectSound(text, false);
        ExpectSound(text, true);
    }
    // Each broken byte shows as one replacement character.
    EXPECT_EQ(GlyphIds(Shaped("a\xFF\xFE"
                              "b")),
              GlyphIds(Shaped("a\uFFFD\uFFFDb")));
}

TEST(Shape, RandomBytesAreHarmless) {
    std::uint32_t seed = 12345;
    const auto next = [&seed] { return (seed = seed * 1664525u + 1013904223u) >> 8; };
    for (int round = 0; round < 3000; ++round) {
        std::string text(1 + next() % 40, ' ');
        // Leads of right-to-left and combining characters often, so that the shaper is reached.
        std::generate(text.begin(), text.end(), [&] {
            constexpr unsigned char Often[] = {0xD7, 0x90, 0xD8, 0xA8, 0xCC, 0x81,
                                               0xE2, 0x80, 0x8D, 0xF0, '('};
            return static_cast<char>(next() % 3 ? Often[next() % sizeof Often] : next() & 0xFF);
        });
        ExpectSound(text, round % 2 != 0);
        if (HasFatalFailure()) {
            FAIL() << "round " << round;
        }
    }
}

TEST(Shape, LongTextsWithDeepNestingEnd) {
    std::string text;
    for (int i = 0; i < 20'000; ++i) {
        text += i % 2 ? "\u202B" : "\u05D0";
    }
    ExpectSound(text, false);
    std::string marks = "a";
    for (int i = 0; i < 20'000; ++i) {
        marks += "\u0301";
    }
    ExpectSound(marks, false);
}

}  // namespace
}  // namespace rdl::text::test
