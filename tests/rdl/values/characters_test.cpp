// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/characters.h"

#include <gtest/gtest.h>

namespace rdl {
namespace {

TEST(Characters, CaseIsOfEveryScript) {
    EXPECT_EQ(Upper("stra\u00DFe \u00E4 \u0436 \u03B1 \xFF"), "STRA\u00DFE \u00C4 \u0416 \u0391 \uFFFD");
    EXPECT_EQ(Lower("I \u0130 \u00C4 \u0416 \u0391"), "i i \u00E4 \u0436 \u03B1");
    EXPECT_EQ(Lower(std::u32string(U"I \u00C4")), U"i \u00E4");
}

TEST(Characters, ComparisonIgnoresCaseAndOrdersByCharacter) {
    EXPECT_EQ(CompareNoCase("\u00C4b", "\u00E4B"), 0);
    EXPECT_LT(CompareNoCase("a", "B"), 0);
    EXPECT_LT(CompareNoCase("ab", "abc"), 0);
    EXPECT_GT(CompareNoCase("b", "Abc"), 0);
    EXPECT_LT(CompareNoCase("\uFFFDa", "\U0001F600"), 0);
}

TEST(Characters, SpacesAreThoseOfUnicode) {
    for (const char32_t space : U"\t\n\v\f\r \u0085\u00A0\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000") {
        EXPECT_EQ(IsSpace(space), space != 0) << static_cast<unsigned>(space);
    }
    EXPECT_FALSE(IsSpace(U'\u200B'));
    EXPECT_FALSE(IsSpace(U'x'));
}

}  // namespace
}  // namespace rdl
