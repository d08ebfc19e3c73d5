// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/utf16.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

TEST(Utf16, LettersOfEveryPlaneAreKept) {
    EXPECT_EQ(Utf16OfUtf8("Aü€"), "A\0\xfc\0\xac\x20"s);
    EXPECT_EQ(Utf16OfUtf8("😀"), "\x3d\xd8\x00\xde"s);
    EXPECT_EQ(Utf8OfUtf16(Utf16OfUtf8("Aü€😀")), "Aü€😀");
}

TEST(Utf16, BrokenBytesBecomeTheReplacementLetter) {
    EXPECT_EQ(Utf8OfUtf16("A\0\x3d\xd8"s), "A\xef\xbf\xbd");
    EXPECT_EQ(Utf8OfUtf16("\x00\xde"
                          "A\0"s),
              "\xef\xbf\xbd"
              "A");
    EXPECT_EQ(Utf8OfUtf16("A"), "\xef\xbf\xbd");
    EXPECT_EQ(Utf16OfUtf8("\xff"), "\xfd\xff"s);
}

}  // namespace
