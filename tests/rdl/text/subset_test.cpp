// SPDX-License-Identifier: GPL-3.0-or-later
// Font programs cut down to the glyphs that a document uses.
#include <gmock/gmock.h>

#include <filesystem>
#include <map>

#include "rdl/text/machine_fonts.h"

namespace rdl::text::test {
namespace {

std::uint32_t Number(const std::string& bytes, std::size_t at, int count) {
    std::uint32_t number = 0;
    for (int i = 0; i < count; ++i) {
        number = number << 8 | static_cast<unsigned char>(bytes.at(at + static_cast<std::size_t>(i)));
    }
    return number;
}

// Tables of a font program: where they begin, by tag.
std::map<std::string, std::size_t> Tables(const std::string& program) {
    std::map<std::string, std::size_t> tables;
    for (std::size_t i = 0; i < Number(program, 4, 2); ++i) {
        const std::size_t entry = 12 + 16 * i;
        tables[program.substr(entry, 4)] = Number(program, entry + 8, 4);
    }
    return tables;
}

bool HasOutline(const std::string& program, std::uint16_t glyph) {
    auto tables = Tables(program);
    const bool wide = Number(program, tables.at("head") + 50, 2) != 0;
    const std::size_t step = wide ? 4 : 2, entry = tables.at("loca") + glyph * step;
    return Number(program, entry, wide ? 4 : 2) != Number(program, entry + step, wide ? 4 : 2);
}

class SubsetTest : public testing::Test {
 protected:
    void SetUp() override { NEEDS_FONT("Liberation Sans"); }
    const FontId m_font = Arial();
};

TEST_F(SubsetTest, HoldsTheGlyphsAskedForUnderTheirNumbers) {
    const auto ids = GlyphIds(Shaped("amz"));
    const std::string program = Subset(m_font, {ids.at(0), ids.at(2)});
    EXPECT_TRUE(HasOutline(program, ids.at(0)));
    EXPECT_FALSE(HasOutline(program, ids.at(1)));
    EXPECT_TRUE(HasOutline(program, ids.at(2)));
}

TEST_F(SubsetTest, PartsOfACompositeGlyphComeAlong) {
    const std::uint16_t letter = GlyphIds(Shaped("Ä")).at(0);
    const std::string alone = Subset(m_font, {letter});
    EXPECT_TRUE(HasOutline(alone, letter));
    EXPECT_GT(alone.size(), Subset(m_font, {GlyphIds(Shaped(" ")).at(0)}).size());
}

TEST_F(SubsetTest, IsFarSmallerThanTheFile) {
    const std::string program = Subset(m_font, GlyphIds(Shaped("Total")));
    EXPECT_LT(program.size(), std::filesystem::file_size(File(m_font).path) / 10);
}

TEST_F(SubsetTest, IsTheSameBytesForTheSameGlyphs) {
    const std::vector<std::uint16_t> forwards = GlyphIds(Shaped("abcä")),
                                     backwards(forwards.rbegin(), forwards.rend());
    EXPECT_EQ(Subset(m_font, forwards), Subset(m_font, forwards));
    EXPECT_EQ(Subset(m_font, forwards), Subset(m_font, backwards));
    EXPECT_NE(Subset(m_font, forwards), Subset(m_font, GlyphIds(Shaped("abc"))));
}

TEST_F(SubsetTest, GlyphsThatTheFontLacksDoNoHarm) {
    EXPECT_FALSE(Subset(m_font, {65535, 0}).empty());
    EXPECT_FALSE(Subset(m_font, {}).empty());
    EXPECT_EQ(GlyphAdvance(m_font, 65535), 0);
}

}  // namespace
}  // namespace rdl::text::test
