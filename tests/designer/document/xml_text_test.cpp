// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/xml_text.h"

#include <gtest/gtest.h>

namespace designer {
namespace {

TEST(XmlText, IsEscapedSoThatItReadsBack) {
    EXPECT_EQ(EscapedText("a < b & \"c\" > d\re\nf", "\r\n"), "a &lt; b &amp; \"c\" &gt; d&#xD;e\r\nf");
    EXPECT_EQ(EscapedValue("\"a\"\t'b'\nc", '"'), "&quot;a&quot;&#x9;'b'&#xA;c");
    EXPECT_EQ(EscapedValue("\"a\" 'b'", '\''), "\"a\" &apos;b&apos;");
}

TEST(XmlText, HasOnlyCharactersOfXml) {
    EXPECT_EQ(EscapedText("a\x01\xEF\xBF\xBF"
                          "b",
                          "\n"),
              "ab");
    EXPECT_EQ(EscapedText("a\xFF"
                          "b\xF0\x9F\x98\x80",
                          "\n"),
              "ab\xF0\x9F\x98\x80");
}

}  // namespace
}  // namespace designer
