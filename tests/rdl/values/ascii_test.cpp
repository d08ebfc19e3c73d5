// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/ascii.h"

#include <gtest/gtest.h>

namespace rdl {
namespace {

TEST(Ascii, TrimmingTakesAsciiWhiteSpaceFromBothEnds) {
    EXPECT_EQ(Trimmed(" \t\r\n\v\f a b \n"), "a b");
    EXPECT_EQ(Trimmed("ab"), "ab");
    EXPECT_EQ(Trimmed(" \n "), "");
    EXPECT_EQ(Trimmed(""), "");
    EXPECT_EQ(Trimmed("\xC2\xA0"
                      "a"),
              "\xC2\xA0"
              "a");  // a non-breaking space is not ASCII
}

TEST(Ascii, CaseIsOfAsciiLettersOnly) {
    EXPECT_EQ(LowerAscii("TITLE \xC3\x84 [@"), "title \xC3\x84 [@");
    EXPECT_EQ(UpperAscii("title \xC3\xA4 {`"), "TITLE \xC3\xA4 {`");
    EXPECT_TRUE(EqualNoCase("Title", "tITLE"));
    EXPECT_FALSE(EqualNoCase("Title", "Titles"));
    EXPECT_FALSE(EqualNoCase("\xC3\x84", "\xC3\xA4"));
}

TEST(Ascii, HexadecimalDigitsHaveTheirValue) {
    EXPECT_EQ(HexDigitValue('0'), 0);
    EXPECT_EQ(HexDigitValue('9'), 9);
    EXPECT_EQ(HexDigitValue('a'), 10);
    EXPECT_EQ(HexDigitValue('F'), 15);
    for (const char c : {'g', 'G', '/', ':', '@', '`', '\xC3'}) {
        EXPECT_EQ(HexDigitValue(c), -1) << c;
    }
}

}  // namespace
}  // namespace rdl
