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

TEST(Ascii, BytesBecomeTwoHexadecimalDigits) {
    std::string text = "x";
    AppendHexByte('\xAF', text);
    AppendHexByte('\x05', text, SmallHexDigits);
    AppendHexByte('\xFE', text, SmallHexDigits);
    EXPECT_EQ(text, "xAF05fe");
}

TEST(Ascii, PercentEncodingKeepsThePlainBytes) {
    EXPECT_EQ(PercentEncoded("a b\xC3", IsAsciiLetter), "a%20b%C3");
    EXPECT_EQ(PercentEncoded("/", IsAsciiLetter, SmallHexDigits), "%2f");
}

TEST(Ascii, OneOfSeveralIsByteForByte) {
    EXPECT_TRUE(IsOneOf("b", {"a", "b"}));
    EXPECT_FALSE(IsOneOf("B", {"a", "b"}));
    EXPECT_FALSE(IsOneOf("", {"a", "b"}));
}

}  // namespace
}  // namespace rdl
