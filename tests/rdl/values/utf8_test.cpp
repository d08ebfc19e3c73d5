// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/utf8.h"

#include <gtest/gtest.h>

#include <vector>

namespace rdl {
namespace {

TEST(Utf8, CharactersOfEveryLengthComeBack) {
    const std::u32string characters = U"a\u00E4\u20AC\U0001F600\uFFFD\U0010FFFF";
    EXPECT_EQ(ToUtf8(characters), "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80\xEF\xBF\xBD\xF4\x8F\xBF\xBF");
    EXPECT_EQ(ToUtf32(ToUtf8(characters)), characters);
    EXPECT_EQ(ToUtf32(std::string_view("\0b", 2)), std::u32string(U"\0b", 2));
}

TEST(Utf8, EachByteThatIsNotPartOfACharacterIsAReplacementCharacter) {
    struct Malformed {
        std::string_view bytes;
        std::size_t count;
    };
    for (const Malformed& one : std::vector<Malformed>{
             {"\x80", 1},              // continues nothing
             {"\xC3", 1},              // ends in its middle
             {"\xE2\x82", 2},          // the same, with two of three bytes
             {"\xF0\x9F\x98", 3},      // the same, with three of four bytes
             {"\xC0\xAF", 2},          // overlong
             {"\xE0\x80\xAF", 3},      // overlong
             {"\xF0\x80\x80\xAF", 4},  // overlong
             {"\xED\xA0\x80", 3},      // a surrogate
             {"\xF4\x90\x80\x80", 4},  // after the last character
             {"\xF5\x80\x80\x80", 4},  // no such lead byte
             {"\xFF", 1},
         }) {
        std::u32string expected(one.count, ReplacementCharacter);
        EXPECT_EQ(ToUtf32(one.bytes), expected);
        EXPECT_EQ(ToUtf32(std::string(one.bytes) + "z"), expected + U"z");
        EXPECT_EQ(CharacterCount(one.bytes), one.count);
    }
    EXPECT_EQ(ToUtf32("\xE2\x82z"), U"\uFFFD\uFFFDz");
}

TEST(Utf8, AMalformedByteMovesByOneAndTheReplacementCharacterItselfByThree) {
    std::size_t at = 0;
    EXPECT_EQ(NextCharacter("\xFF", at), ReplacementCharacter);
    EXPECT_EQ(at, 1U);
    at = 0;
    EXPECT_EQ(NextCharacter("\xEF\xBF\xBD", at), ReplacementCharacter);
    EXPECT_EQ(at, 3U);
}

TEST(Utf8, PositionsAreOfCharactersAndOfBytes) {
    const std::string_view text = "a\xC3\xA4\xE2\x82\xACz";
    EXPECT_EQ(CharacterCount(text), 4U);
    EXPECT_EQ(CharacterIndex(text, 3), 2U);
    EXPECT_EQ(ByteIndex(text, 2), 3U);
    EXPECT_EQ(ByteIndex(text, 9), text.size());
    EXPECT_EQ(Slice(text, 1, 2), "\xC3\xA4\xE2\x82\xAC");
    EXPECT_EQ(Slice(text, 3, 9), "z");
    EXPECT_EQ(Slice(text, 9, 1), "");
}

TEST(Utf8, ATextIsCutBetweenTwoCharacters) {
    const std::string_view text = "a\xF0\x9F\x98\x80z";
    EXPECT_EQ(WholeCharacters(text, 0), "");
    EXPECT_EQ(WholeCharacters(text, 1), "a");
    EXPECT_EQ(WholeCharacters(text, 2), "a");
    EXPECT_EQ(WholeCharacters(text, 4), "a");
    EXPECT_EQ(WholeCharacters(text, 5), "a\xF0\x9F\x98\x80");
    EXPECT_EQ(WholeCharacters(text, 6), text);
    EXPECT_EQ(WholeCharacters(text, 99), text);
}

}  // namespace
}  // namespace rdl
