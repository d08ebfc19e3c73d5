// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/model/markup.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "rdl/layout/report_kit.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

// Shows runs as "text" with b, i, u, s and @link after a colon; list paragraphs start with * or #.
std::string Told(const std::string& html) {
    std::string told;
    for (const MarkupParagraph& paragraph : ParseMarkup(html)) {
        told += told.empty() ? "" : "/";
        if (paragraph.list != MarkupParagraph::List::None) {
            told += paragraph.list == MarkupParagraph::List::Bulleted ? "*" : "#";
            told += std::to_string(paragraph.listLevel);
        }
        for (const MarkupRun& run : paragraph.runs) {
            told += "[" + run.text + ":" + (run.bold ? "b" : "") + (run.italic ? "i" : "");
            if (run.decoration) {
                told += *run.decoration == Decoration::Underline ? "u" : "s";
            }
            told += (run.hyperlink.empty() ? "" : "@" + run.hyperlink) + "]";
        }
    }
    return told;
}

TEST(Markup, TagsStyleTheirText) {
    EXPECT_EQ(Told("a <b>b <i>c</i></b><u>d</u><s>e</s>"), "[a:][ :][b:b][ :b][c:bi][d:u][e:s]");
    EXPECT_EQ(Told("<STRONG>x</STRONG><em>y</em>"), "[x:b][y:i]");
    EXPECT_EQ(Told("<b>x<i>y</b>z"), "[x:b][y:bi][z:]");
    EXPECT_EQ(Told("<i>a</i> <u>b</u> c <u> d</u>"), "[a:i][ :][b:u][ c:][ :][d:u]");
}

TEST(Markup, BlocksAndBreaksBeginParagraphs) {
    EXPECT_EQ(Told("<p>one</p>\n<p>two</p>"), "[one:]/[two:]");
    EXPECT_EQ(Told("one<br/>two<br>three"), "[one:]/[two:]/[three:]");
    EXPECT_EQ(Told("one<br><br>two"), "[one:]//[two:]");
    EXPECT_EQ(Told("<h1>Head</h1>text"), "[Head:b]/[text:]");
}

TEST(Markup, ListsHaveLevels) {
    EXPECT_EQ(Told("<ul><li>a<ol><li>b</li></ol></li><li>c</li></ul>d"), "*1[a:]/#2[b:]/*1[c:]/[d:]");
}

TEST(Markup, BlanksRunTogetherAndEntitiesAreCharacters) {
    EXPECT_EQ(Told("  a \n\t b&nbsp;&lt;c&gt; &#65;&#x42;&uuml; R&D &bogus; "),
              "[a b\u00A0<c> AB\u00FC R&D &bogus;:]");
}

TEST(Markup, AllNamedEntitiesOfHtml4AreCharacters) {
    EXPECT_EQ(
        Told("&Eacute;&eacute;&iexcl;&yuml;&OElig;&scaron;&fnof;&Alpha;&omega;&thetasym;&rarr;&lArr;&infin;"
             "&ne;&le;&hearts;&permil;&zwnj;&apos;"),
        Told("Éé¡ÿŒšƒΑωϑ→⇐∞≠≤♥‰\xE2\x80\x8C'"));
    EXPECT_EQ(Told("&eAcute;&Euro;"), Told("&amp;eAcute;&amp;Euro;"));
}

TEST(Markup, WhatIsNoTagStays) {
    EXPECT_EQ(Told("1 < 2 and 3 > 2"), "[1 < 2 and 3 > 2:]");
    EXPECT_EQ(Told("cut off <b"), "[cut off <b:]");
    EXPECT_EQ(Told("<blink>x</blink><!-- no --><script>alert(1)</script>y"), "[x:][y:]");
}

TEST(Markup, FontsAndLinks) {
    const auto paragraphs = ParseMarkup("<font color=\"#FF0000\" face='Courier New'>x</font>");
    EXPECT_EQ(paragraphs.at(0).runs.at(0).color, 0xFFFF0000U);
    EXPECT_EQ(paragraphs.at(0).runs.at(0).family, "Courier New");
    EXPECT_EQ(Told("<a href=\"https://example.com/?a=1&amp;b=2\">x</a>y"),
              "[x:@https://example.com/?a=1&b=2][y:]");
}

TEST(Markup, HostileTextsEnd) {
    std::string deep, open, breaks;
    for (int i = 0; i < 100'000; ++i) {
        deep += "<b>";
        open += "<!-";
        breaks += "<br>";
    }
    EXPECT_EQ(Told(deep + "x"), "[x:b]");
    EXPECT_EQ(ParseMarkup(open + ">").size(), 1U);
    EXPECT_LE(ParseMarkup(breaks + "end").size(), 10'001U);
    EXPECT_EQ(ParseMarkup(breaks + "end").back().runs.back().text.back(), 'd');
    EXPECT_EQ(ParseMarkup("").size(), 1U);
}

std::string HtmlBox(const std::string& value) {
    return "<Textbox Name=\"t\"><CanGrow>true</CanGrow><Paragraphs><Paragraph><TextRuns><TextRun><Value>" +
           value +
           "</Value><MarkupType>HTML</MarkupType></TextRun></TextRuns></Paragraph></Paragraphs></Textbox>";
}

TEST(Markup, IsDrawnInsteadOfItsTags) {
    const auto kit = BuildKit(Report(HtmlBox("=&quot;&lt;p&gt;Dear &lt;b&gt;Ann&lt;/b&gt;&lt;/p&gt;&lt;a "
                                             "href='javascript:x'&gt;no&lt;/a&gt;&quot;")),
                              Sales({}));
    const Instance& item = kit.report->sections.front()->items.front();
    ASSERT_EQ(item.paragraphs.size(), 2U);
    EXPECT_EQ(item.PlainText(), "Dear Ann\nno");
    EXPECT_EQ(item.value.AsText(), "Dear Ann\nno");
    EXPECT_TRUE(item.paragraphs[0].runs.back().style->bold);
    EXPECT_EQ(item.paragraphs[1].runs[0].hyperlink, "");
    EXPECT_THAT(PagesOf(kit).bodies.at(0), ElementsAre("Dear", " ", "Ann", "no"));
}

}  // namespace
}  // namespace rdl::layout
