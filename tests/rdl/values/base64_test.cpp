// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/base64.h"

#include <gtest/gtest.h>

namespace rdl {
namespace {

TEST(Base64, BytesOfEveryLengthComeBack) {
    EXPECT_EQ(ToBase64(""), "");
    EXPECT_EQ(ToBase64("A"), "QQ==");
    EXPECT_EQ(ToBase64("AB"), "QUI=");
    EXPECT_EQ(ToBase64("ABC"), "QUJD");
    EXPECT_EQ(ToBase64(std::string_view("\xFF\x00\xFE", 3)), "/wD+");
    EXPECT_EQ(FromBase64("/wD+"), std::string("\xFF\x00\xFE", 3));
    EXPECT_EQ(FromBase64("QQ=="), "A");
    EXPECT_EQ(FromBase64(""), "");
}

TEST(Base64, WhiteSpaceIsIgnoredAndPaddingMayBeMissing) {
    EXPECT_EQ(FromBase64(" QU\r\n\tJD "), "ABC");
    EXPECT_EQ(FromBase64("QUI"), "AB");
}

TEST(Base64, OtherTextIsNone) {
    for (const char* text : {"***", "QQ=A", "QQ==QQ==", "Q===", "QU-_", "\xC3\xA4"}) {
        EXPECT_EQ(FromBase64(text), std::nullopt) << text;
    }
}

}  // namespace
}  // namespace rdl
