// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/source_tree.h"

#include <gtest/gtest.h>

#include <string>

#include "designer/document/file_text.h"

namespace designer {
namespace {

// "line:column text" of the flaw; empty if there is none.
std::string FlawOf(const std::string& text, const SourceLimits& limits = {}) {
    try {
        const SourceTree tree(text, limits);
        return {};
    } catch (const SourceFlaw& flaw) {
        return std::to_string(flaw.Place().line) + ":" + std::to_string(flaw.Place().column) + " " +
               flaw.what();
    }
}

TEST(SourceTree, KnowsWhereThePartsOfAnElementLie) {
    const SourceTree tree("<?xml version='1.0'?>\n<a:Report xmlns:a = 'u' b=\"1\" >x<c/>y</a:Report >\n");
    ASSERT_EQ(tree.Count(), 2);
    EXPECT_EQ(tree.At(tree[0].whole), "<a:Report xmlns:a = 'u' b=\"1\" >x<c/>y</a:Report >");
    EXPECT_EQ(tree.At(tree[0].StartTag()), "<a:Report xmlns:a = 'u' b=\"1\" >");
    EXPECT_EQ(tree.At(tree[0].Name()), "a:Report");
    EXPECT_EQ(tree.At(tree[0].Content()), "x<c/>y");
    EXPECT_EQ(tree.At(tree[0].EndTag()), "</a:Report >");
    EXPECT_EQ(tree.LocalName(0), "Report");
    EXPECT_EQ(tree.Prefix(0), "a");
    EXPECT_EQ(tree.SpaceOf(0), "u");
    EXPECT_EQ(tree.At(tree.FindAttribute(0, "b")->value), "1");
    EXPECT_EQ(tree.At(tree.FindAttribute(0, "xmlns:a")->value), "u");
    EXPECT_TRUE(tree[1].IsOneTag());
    EXPECT_EQ(tree.SpaceOf(1), "");
    EXPECT_FALSE(tree.IsOfReport(1));
    EXPECT_EQ(tree.TextOf(0), "xy");
}

TEST(SourceTree, ResolvesReferencesLineEndsAndSections) {
    const SourceTree tree(
        "<a b='&lt;&#65;\t&#x9;\"'>1&amp;2\r\n3<!-- no -->\r<![CDATA[<&amp;\r\n]]><?no no?>4</a>");
    EXPECT_EQ(tree.TextOf(0), "1&2\n3\n<&amp;\n4");
    EXPECT_EQ(tree.AttributeOf(0, "b"), "<A \t\"");
    EXPECT_EQ(tree.AttributeOf(0, "c"), std::nullopt);
}

TEST(SourceTree, FollowsPathsInTheNamespaceOfTheReport) {
    const SourceTree tree("<R xmlns='u' xmlns:rd='v'><rd:F/><F><rd:TypeName>t</rd:TypeName><N>n</N></F></R>");
    EXPECT_EQ(tree.TextOf(tree.Find(0, "F/N")), "n");
    EXPECT_EQ(tree.TextOf(tree.Find(0, "F/rd:TypeName")), "t");
    EXPECT_EQ(tree.Find(0, "F/TypeName"), NoIndex);
    EXPECT_EQ(tree.Find(0, "F/N/M"), NoIndex);
    EXPECT_EQ(tree.Find(0, ""), 0);
}

TEST(SourceTree, FindsTheElementAroundAByte) {
    const SourceTree tree("<a>1<b>2</b><c/>3</a> ");
    EXPECT_EQ(tree.ElementAt(3), 0);
    EXPECT_EQ(tree.ElementAt(7), 1);
    EXPECT_EQ(tree.ElementAt(11), 1);
    EXPECT_EQ(tree.ElementAt(12), 2);
    EXPECT_EQ(tree.ElementAt(16), 0);
    EXPECT_EQ(tree.ElementAt(21), NoIndex);
}

TEST(SourceTree, SaysWhereATextIsNotWellFormed) {
    const std::string bad = "this is not well-formed XML: ";
    EXPECT_EQ(FlawOf(""), "1:1 " + bad + "there is no element");
    EXPECT_EQ(FlawOf("<a>\r\n<b>\r</a>"),
              "3:1 " + bad + "the end tag \"a\" is not that of the element \"b\" of line 2");
    EXPECT_EQ(FlawOf("<a>\n <b"), "2:2 " + bad + "a tag is damaged");
    EXPECT_EQ(FlawOf("<a>\n"), "2:1 " + bad + "the file ends within the element \"a\" that begins in line 1");
    EXPECT_EQ(FlawOf("<a/>\n<b/>"), "2:1 " + bad + "there is more than one root element");
    EXPECT_EQ(FlawOf("<a/>\n\xC3\xA4x"), "2:1 " + bad + "there is text outside of the root element");
    EXPECT_EQ(FlawOf("<a>\xC3\xA4&b;</a>"), "1:5 " + bad + "a & that begins no reference to a character");
    EXPECT_EQ(FlawOf("<a>& b</a>"), "1:4 " + bad + "a & that begins no reference to a character");
    EXPECT_EQ(FlawOf("<a>&#0;</a>"), "1:4 " + bad + "a & that begins no reference to a character");
    EXPECT_EQ(FlawOf("<a b='1' b=\"2\"/>"), "1:1 " + bad + "an element has the attribute \"b\" twice");
    EXPECT_EQ(FlawOf("<a xmlns:x='u' xmlns:y='u' x:b='1' y:b='2'/>"),
              "1:1 " + bad + "an element has the attribute \"b\" twice");
    EXPECT_EQ(FlawOf("<a b=1/>"),
              "1:4 " + bad + "an attribute has no value in quotes, or one that does not end");
    EXPECT_EQ(FlawOf("<a b='<'/>"), "1:4 " + bad + "the value of the attribute \"b\" holds a <");
    EXPECT_EQ(FlawOf("<a b='1'c='2'/>"), "1:1 " + bad + "a tag is damaged");
    EXPECT_EQ(FlawOf("<x:a/>"), "1:1 " + bad + "the prefix \"x\" is declared nowhere");
    EXPECT_EQ(FlawOf("<a:b:c/>"), "1:2 " + bad + "\"a:b:c\" is no name");
    EXPECT_EQ(FlawOf("<a><!-- a -- b --></a>"), "");
    EXPECT_EQ(FlawOf("<a>]]></a>"), "1:4 " + bad + "a text holds ]]>");
    EXPECT_EQ(FlawOf("<a><![CDATA[</a>"), "1:4 " + bad + "a CDATA section does not end");
    EXPECT_EQ(FlawOf("\n<?xml version='1.0'?><a/>"), "");
    EXPECT_EQ(FlawOf("<?xml version=1.0?><a/>"), "1:1 " + bad + "the declaration is damaged");
    EXPECT_EQ(FlawOf("<a/><?xml version='1.0'?>"),
              "1:5 " + bad + "a declaration that is not at the beginning of the file");
    EXPECT_EQ(FlawOf("<a>\x01</a>"), "1:4 " + bad + "a character that XML does not have");
    EXPECT_EQ(FlawOf("<a>\xC3</a>"), "1:4 " + bad + "bytes that are no text in UTF-8");
    EXPECT_EQ(FlawOf("</a>"), "1:1 " + bad + "an end tag without an element: \"a\"");
}

TEST(SourceTree, KeepsADocumentTypeAndExpandsNothingOfIt) {
    const SourceTree tree("<!DOCTYPE a [ <!ENTITY b \"<c>]>\"> <!-- ' --> ]>\n<a d='&b;'>&b;&b;&amp;</a>");
    EXPECT_EQ(tree.Count(), 1);
    EXPECT_EQ(tree.TextOf(0), "&b;&b;&");
    EXPECT_EQ(tree.AttributeOf(0, "d"), "&b;");
    EXPECT_EQ(FlawOf("<!DOCTYPE a [ <a/>"), "1:1 this is not well-formed XML: a document type does not end");
    EXPECT_EQ(FlawOf("<a><!DOCTYPE a></a>"),
              "1:4 this is not well-formed XML: a document type that does not stand before the root element");
}

TEST(SourceTree, BoundsDepthElementsAttributesAndBytes) {
    std::string deep, end;
    for (int i = 0; i < 200; ++i) {
        deep += "<a>";
        end += "</a>";
    }
    EXPECT_EQ(FlawOf(deep + end), "");
    EXPECT_EQ(FlawOf(deep + "<a/>" + end), "1:601 elements are nested more than 200 deep");
    EXPECT_EQ(FlawOf("<a><b/><b/></a>", {.elements = 2}), "1:8 there are more than 2 elements");
    EXPECT_EQ(FlawOf("<a b='' c=''/>", {.attributes = 1}), "1:9 an element has more than 1 attributes");
    EXPECT_EQ(FlawOf("<a/>" + std::string(std::size_t{64} << 20, ' ')),
              "1:1 it is larger than a report may be (64 MB)");
    // The scanner does not recurse: without a limit a hundred thousand elements need no stack.
    std::string text, tail;
    for (int i = 0; i < 100'000; ++i) {
        text += "<a>";
        tail += "</a>";
    }
    EXPECT_EQ(FlawOf(text + tail, {.depth = 2'000'000}), "");
}

TEST(SourceTree, ScansALongText) {
    std::string text = "<a>";
    for (int i = 0; i < 100'000; ++i) {
        text += "<b c='1'>text</b>\n";
    }
    EXPECT_EQ(FlawOf(text + "</a>"), "");
}

TEST(FileText, KeepsTheBytesOfEveryEncoding) {
    const std::string plain = "<?xml version='1.0'?><a>\xC3\xA4\xE2\x82\xAC</a>";
    const std::string marked = "\xEF\xBB\xBF" + plain;
    const std::string wide("\xFF\xFE<\0a\0>\0\xAC\x20<\0/\0a\0>\0", 18);
    const std::string big("\0<\0a\0/\0>", 8);
    const std::string windows = "<?xml version=\"1.0\" encoding=\"windows-1252\"?><a>\xE4\x80</a>";
    for (const std::string& bytes : {plain, marked, wide, big, windows}) {
        const FileText file = ReadFileText(bytes);
        EXPECT_EQ(WriteFileText(file.text, file.encoding), bytes);
    }
    EXPECT_EQ(ReadFileText(marked).text, plain);
    EXPECT_EQ(ReadFileText(wide).text, "<a>\xE2\x82\xAC</a>");
    EXPECT_EQ(ReadFileText(big).text, "<a/>");
    EXPECT_EQ(SourceTree(ReadFileText(windows).text).TextOf(0), "\xC3\xA4\xE2\x82\xAC");
}

std::string RefusalOf(const std::string& bytes) {
    try {
        ReadFileText(bytes);
        return {};
    } catch (const SourceFlaw& flaw) {
        return flaw.what();
    }
}

TEST(FileText, RefusesWhatItCouldNotWriteAgain) {
    EXPECT_EQ(RefusalOf("<?xml version='1.0' encoding='klingon'?><a/>"),
              "its encoding \"klingon\" is not known");
    EXPECT_EQ(RefusalOf(std::string("\xFF\xFE<\0a", 5)),
              "this is not well-formed XML: bytes that are no text in \"UTF-16LE\"");
    const FileText file = ReadFileText("<?xml version='1.0' encoding='windows-1252'?>\n<a/>");
    try {
        WriteFileText(file.text + "\n\xD0\x96", file.encoding);
        ADD_FAILURE();
    } catch (const SourceFlaw& flaw) {
        EXPECT_STREQ(flaw.what(),
                     "the encoding \"windows-1252\" of the file does not have the character \xD0\x96");
        EXPECT_EQ(flaw.Place().line, 3u);
        EXPECT_EQ(flaw.Place().column, 1u);
    }
}

}  // namespace
}  // namespace designer
