// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/base/ascii.h"

#include <gtest/gtest.h>

namespace {

TEST(Ascii, CaseOfOtherCharactersStays) {
    EXPECT_EQ(ToLower("AZ[Ü`"), "az[Ü`");
    EXPECT_EQ(ToUpper("az{ü@"), "AZ{ü@");
    EXPECT_TRUE(SameAscii("Host", "hOST"));
    EXPECT_FALSE(SameAscii("Ü", "ü"));
    EXPECT_FALSE(SameAscii("Host", "Hos"));
    EXPECT_FALSE(SameAscii("@", "`"));
}

TEST(Ascii, TrimStripsWhatItIsTold) {
    EXPECT_EQ(Trim(" \t a b\r\n"), "a b");
    EXPECT_EQ(Trim(" \t a b\r\n", " \t"), "a b\r\n");
    EXPECT_EQ(Trim("\v a"), "\v a");
    EXPECT_EQ(Trim(" \n"), "");
    EXPECT_EQ(Trim(""), "");
}

TEST(Ascii, ControlsAreOneByteEach) {
    EXPECT_TRUE(HasControls("a\x7F"));
    EXPECT_FALSE(HasControls("aÜ"));
    EXPECT_EQ(WithoutControls(std::string_view("a\0\n\x1F"
                                               "bÜ",
                                               7)),
              "a   bÜ");
}

}  // namespace
