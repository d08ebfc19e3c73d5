// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include <fstream>
#include <new>

#include "rdl/xml/parse.h"
#include "support/growth.h"
#include "support/sanitizer.h"

namespace rdl::xml {
namespace {

constexpr Limits Small{20, 1000, 50};

Document Read(const std::string& text, const Limits& limits = Small) {
    return Parse(text, limits);
}

// "line: what"; empty when there is nothing wrong.
std::string Wrong(const std::string& text, const Limits& limits = Small) {
    try {
        Parse(text, limits);
    } catch (const Flaw& flaw) {
        return std::to_string(flaw.Line()) + ": " + flaw.what();
    }
    return {};
}

std::string Malformed(int line, const std::string& what) {
    return std::to_string(line) + ": this is not well-formed XML: " + what;
}

std::string Wide(const std::string& ascii, bool bigEndian, int width) {
    std::string text;
    for (const char c : ascii) {
        const std::string zeros(static_cast<std::size_t>(width) - 1, '\0');
        text += bigEndian ? zeros + c : c + zeros;
    }
    return text;
}

TEST(Xml, ElementsHaveNamesTextsAttributesAndLines) {
    const Document document = Read("<?xml version='1.0'?>\n<a p='1' q=\"2\">\n  <b>x</b>\n\n  <c/></a>\n");
    EXPECT_EQ(document.root.name, "a");
    EXPECT_EQ(document.root.text, "");
    EXPECT_EQ(document.root.line, 2);
    EXPECT_EQ(document.root.AttributeOf("p"), "1");
    EXPECT_EQ(document.root.AttributeOf("q"), "2");
    EXPECT_EQ(document.root.AttributeOf("r"), "");
    ASSERT_EQ(document.root.children.size(), 2u);
    EXPECT_EQ(document.root.ChildText("b"), "x");
    EXPECT_EQ(document.root.Child("b")->line, 3);
    EXPECT_EQ(document.root.Child("c")->line, 5);
    EXPECT_EQ(document.root.Child("d"), nullptr);
}

TEST(Xml, TextIsTheSumOfItsPieces) {
    const Document document =
        Read("<a><b>1<!-- no --> 2<![CDATA[<3>]]><?x no?>4</b><c> \r\n </c><d>1<e/> 2</d></a>");
    EXPECT_EQ(document.root.Child("b")->text, "1 2<3>4");
    EXPECT_EQ(document.root.Child("c")->text, " \n ");
    EXPECT_EQ(document.root.Child("d")->text, "1 2");
}

TEST(Xml, ReferencesStandForTheirCharacters) {
    const Document document =
        Read("<a b='&quot;&#10;x\ny&apos;'>&lt;&amp;lt;&gt; &#65;&#x20ac;&#x1F600;<![CDATA[&lt;]]></a>");
    EXPECT_EQ(document.root.text, "<&lt;> A\xE2\x82\xAC\xF0\x9F\x98\x80&lt;");
    EXPECT_EQ(document.root.AttributeOf("b"), "\"\nx y'");
}

TEST(Xml, ReferenceToNothingIsRefused) {
    const std::string what = "a & that begins no reference to a character";
    for (const char* text : {"&nope;", "&#0;", "&#1;", "&#xD800;", "&#x110000;", "&#;", "&#x;", "&;", "a & b",
                             "&lt", "&#xFFFFFFFFFFF41;", "&#-65;"}) {
        EXPECT_EQ(Wrong("<a>\n<b>" + std::string(text) + "</b></a>"), Malformed(2, what)) << text;
        EXPECT_EQ(Wrong("<a>\n<b c='" + std::string(text) + "'/></a>"), Malformed(2, what)) << text;
    }
}

TEST(Xml, NamespacesAreResolvedByPrefix) {
    const Document document = Read(
        "<a xmlns='urn:1' xmlns:p='urn:2'><p:b p:c='x'/><d xmlns='urn:3'/><p:e xmlns:p='urn:4'/><f "
        "xmlns=''/></a>");
    const auto uri = [&](const char* name) {
        return document.spaces[static_cast<std::size_t>(document.root.Child(name)->space)];
    };
    EXPECT_EQ(document.spaces[static_cast<std::size_t>(document.root.space)], "urn:1");
    EXPECT_EQ(uri("b"), "urn:2");
    EXPECT_EQ(uri("d"), "urn:3");
    EXPECT_EQ(uri("e"), "urn:4");
    EXPECT_EQ(uri("f"), "");
    EXPECT_EQ(document.root.Child("b")->AttributeOf("c"), "");
    EXPECT_EQ(document.root.Child("b")->attributes.at(0).value, "x");
}

TEST(Xml, PrefixThatIsNotDeclaredIsRefused) {
    EXPECT_EQ(Wrong("<a>\n<p:b/></a>"), Malformed(2, "the prefix \"p\" is declared nowhere"));
    EXPECT_EQ(Wrong("<a>\n<b p:c='1'/></a>"), Malformed(2, "the prefix \"p\" is declared nowhere"));
    EXPECT_EQ(Wrong("<a><b xmlns:p='urn:1'/><p:c/></a>"),
              Malformed(1, "the prefix \"p\" is declared nowhere"));
    EXPECT_EQ(Wrong("<a xmlns:p='u'><p:b:c/></a>"), Malformed(1, "\"p:b:c\" is no name"));
    EXPECT_EQ(Wrong("<a xml:space='preserve'/>"), "");
}

TEST(Xml, NilIsAMarkWithAPrefix) {
    const std::string xsi = " xmlns:i='http://www.w3.org/2001/XMLSchema-instance'";
    EXPECT_TRUE(Read("<a i:nil='true'" + xsi + "/>").root.IsNil());
    EXPECT_FALSE(Read("<a i:nil='false'" + xsi + "/>").root.IsNil());
    EXPECT_FALSE(Read("<a nil='true'/>").root.IsNil());
}

TEST(Xml, AttributeThatStandsTwiceIsRefused) {
    EXPECT_EQ(Wrong("<a>\n<b c='1' d='2' c='3'/></a>"),
              Malformed(2, "an element has the attribute \"c\" twice"));
    EXPECT_EQ(Wrong("<a xmlns:p='u' xmlns:q='u' p:c='1' q:c='2'/>"),
              Malformed(1, "an element has the attribute \"c\" twice"));
    EXPECT_EQ(Wrong("<a xmlns:p='u' p:c='1' c='2'/>"), "");
}

TEST(Xml, WhatIsOutsideOfTheRootIsRefused) {
    EXPECT_EQ(Wrong("<a/>\nand more"), Malformed(1, "there is text outside of the root element"));
    EXPECT_EQ(Wrong("\n<a/>\n<b/>"), Malformed(3, "there is more than one root element"));
    EXPECT_EQ(Wrong("<a/><![CDATA[x]]>"), Malformed(1, "there is text outside of the root element"));
    EXPECT_EQ(Wrong("x<a/>"), Malformed(1, "there is text outside of the root element"));
    EXPECT_EQ(Wrong("<!-- x --><a/>\n<!-- y -->\n<?z?>\n"), "");
}

TEST(Xml, TagsThatDoNotMatchAreRefused) {
    EXPECT_EQ(Wrong("<a>\n<b>\n</c></a>"),
              Malformed(3, "an end tag is not that of the element that is open"));
    EXPECT_EQ(Wrong("<a b=1/>"),
              Malformed(1, "an attribute has no value in quotes, or one that does not end"));
    EXPECT_EQ(Wrong("<a b='1'c='2'/>"),
              Malformed(1, "an attribute has no value in quotes, or one that does not end"));
    EXPECT_EQ(Wrong("<a b='x><c d='y'/></a>"),
              Malformed(1, "an attribute has no value in quotes, or one that does not end"));
    EXPECT_EQ(Wrong("<a b='<c>'/>"), Malformed(1, "the value of the attribute \"b\" holds a <"));
    EXPECT_EQ(Wrong("<a><1/></a>"), Malformed(1, "a tag is damaged"));
}

TEST(Xml, TextThatEndsTooSoonSaysWithWhat) {
    EXPECT_EQ(Wrong("<a>\n<b>x"), "2: it is cut off; the last element that it begins is \"b\"");
    EXPECT_EQ(Wrong("<a>\n<b>x</b>\n"), "3: it is cut off; the last element that it begins is \"b\"");
    EXPECT_EQ(Wrong("<?xml version='1.0'?>\n"), "2: it is cut off before its first element");
    EXPECT_EQ(Wrong("<a><!-- x\n"), "2: it is cut off; the last element that it begins is \"a\"");
    EXPECT_EQ(Wrong("<a><![CDATA[ x\n"), "2: it is cut off; the last element that it begins is \"a\"");
}

TEST(Xml, CharactersThatXmlDoesNotHaveAreRefused) {
    const std::string what = "a character that XML does not have";
    EXPECT_EQ(Wrong(std::string("<a>\nx\0y</a>", 11)), Malformed(2, what));
    EXPECT_EQ(Wrong(std::string("<a/>\0<b/>", 9)), Malformed(1, what));
    EXPECT_EQ(Wrong("<a>\x01</a>"), Malformed(1, what));
    EXPECT_EQ(Wrong("<a>\xEF\xBF\xBE</a>"), Malformed(1, what));
}

TEST(Xml, BytesThatAreNoUtf8AreRefused) {
    for (const char* bytes :
         {"M\xFCller", "\xC0\x80", "\xE2\x82", "\x80", "\xF4\x90\x80\x80", "\xED\xA0\x80"}) {
        EXPECT_EQ(Wrong("<a>\n" + std::string(bytes) + "</a>"),
                  Malformed(2, "bytes that are no text in UTF-8"))
            << bytes;
    }
}

TEST(Xml, EncodingIsToldByTheBytesOrTheDeclaration) {
    const std::string text = "<?xml version=\"1.0\"?><a b='1'>x</a>";
    for (const int width : {2, 4}) {
        for (const bool bigEndian : {false, true}) {
            EXPECT_EQ(Read(Wide(text, bigEndian, width)).root.text, "x") << width << bigEndian;
            EXPECT_EQ(Wrong(Wide("<a>\n\n</b>", bigEndian, width)),
                      Malformed(3, "an end tag is not that of the element that is open"));
        }
    }
    EXPECT_EQ(Read("\xEF\xBB\xBF" + text).root.text, "x");
    EXPECT_EQ(Read("\xFF\xFE" + Wide(text, false, 2)).root.text, "x");
    EXPECT_EQ(Read("\xFE\xFF" + Wide(text, true, 2)).root.text, "x");
    EXPECT_EQ(Read("<?xml version='1.0' encoding='ISO-8859-1'?><a>M\xFCller</a>").root.text, "M\xC3\xBCller");
    EXPECT_EQ(Read("<?xml version='1.0' encoding='windows-1252'?><a>\x80</a>").root.text, "\xE2\x82\xAC");
    EXPECT_EQ(Read("<?xml version='1.0' encoding='utf-16'?><a>M\xC3\xBCller</a>").root.text, "M\xC3\xBCller");
    EXPECT_EQ(Wrong("<?xml version='1.0' encoding='klingon'?><a/>"),
              "1: its encoding \"klingon\" is not known");
    EXPECT_EQ(Wrong("\xFF\xFE" + Wide("<a>\n", false, 2) + "\x3D\xD8" + Wide("</a>", false, 2)),
              Malformed(2, "bytes that are no text in \"UTF-16LE\""));
}

TEST(Xml, DocumentTypesAreRefused) {
    const std::string refused = "a document type is not allowed: nothing that is read here needs one";
    EXPECT_EQ(Wrong("<!DOCTYPE a><a/>"), "1: " + refused);
    EXPECT_EQ(Wrong("\n<!DOCTYPE a [<!ENTITY b \"c\">]><a>&b;</a>"), "2: " + refused);
    EXPECT_EQ(Wrong("\n<!DOCTYPE a [<!ENTITY b"), "2: " + refused);
    EXPECT_EQ(Wrong("<a>\n<!DOCTYPE b></a>"), "2: " + refused);
}

TEST(Xml, LimitsNameTheLine) {
    const auto nested = [](int depth) {
        std::string text;
        for (int i = 0; i < depth; ++i) {
            text += "<a>\n";
        }
        return text;
    };
    std::string closed = nested(21);
    for (int i = 0; i < 21; ++i) {
        closed += "</a>";
    }
    EXPECT_EQ(Wrong(closed), "21: elements are nested more than 20 deep");
    EXPECT_EQ(Wrong(nested(100'000)), "21: elements are nested more than 20 deep");
    std::string many = "<a>";
    for (int i = 0; i < 1000; ++i) {
        many += "\n<b/>";
    }
    EXPECT_EQ(Wrong(many + "</a>"), "1001: there are more than 1000 elements");
    std::string attributes;
    for (int i = 0; i < 51; ++i) {
        attributes += "\na" + std::to_string(i) + "=''";
    }
    EXPECT_EQ(Wrong("<a" + attributes + "/>"), "52: an element has more than 50 attributes");
}

TEST(Xml, MemoryIsBoundBeforeTheElementsAreCounted) {
    std::string many = "<a>";
    for (int i = 0; i < 500'000; ++i) {
        many += "<b/>";
    }
    EXPECT_EQ(Wrong(many + "</a>"),
              "1: there are more elements, attributes and texts in it than 1000 elements have");
    EXPECT_EQ(Wrong("<a/>"), "");
}

TEST(Xml, MissingMemoryIsNotBlamedOnTheFile) {
    if (UnderSanitizers) {
        GTEST_SKIP() << "the sanitizers take memory of their own";
    }
    std::string many = "<a>";
    for (int i = 0; i < 900'000; ++i) {
        many += "<b/>";
    }
    many += "</a>";
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    rlimit before{};
    getrlimit(RLIMIT_AS, &before);
    const rlimit bound{pages * static_cast<std::size_t>(getpagesize()) + (std::size_t{16} << 20),
                       before.rlim_max};
    setrlimit(RLIMIT_AS, &bound);
    EXPECT_THROW(Parse(many, Limits{20, 1'000'000, 50}), std::bad_alloc);
    setrlimit(RLIMIT_AS, &before);
}

TEST(Xml, TimeIsInStepWithTheSize) {
    const auto withAttributes = [](int count) {
        std::string attributes = "<?x '?><a";
        for (int i = 0; i < count; ++i) {
            attributes += " a" + std::to_string(i) + "=''";
        }
        const double begun = ThreadSeconds();
        EXPECT_EQ(Wrong(attributes + "/>", {20, 1'000'000, 256}),
                  "1: an element has more than 256 attributes");
        EXPECT_EQ(Wrong(attributes + "/>", {20, 1'000'000, static_cast<std::size_t>(count)}), "");
        return ThreadSeconds() - begun;
    };
    const auto withPieces = [](int count) {
        std::string pieces = "<a xmlns:p='u'>";
        for (int i = 0; i < count; ++i) {
            pieces += "x<p:b>y<c/>z</p:b><![CDATA[w]]>";
        }
        const double begun = ThreadSeconds();
        EXPECT_EQ(Read(pieces + "</a>", {20, 1'000'000, 256}).root.text.size(),
                  2 * static_cast<std::size_t>(count));
        return ThreadSeconds() - begun;
    };
    // A square where each attribute is compared with each, or each piece copies those before it.
    EXPECT_LT(CostOfTenTimes(40'000, withAttributes), SquareBegins);
    EXPECT_LT(CostOfTenTimes(10'000, withPieces), SquareBegins);
}

TEST(Xml, ADocumentAdoptedByAnotherLivesInIt) {
    Document outer = Read("<a/>");
    {
        Document inner = Read("<b c='1'>x<![CDATA[y]]></b>");
        outer.root.children.push_back(outer.Adopt(std::move(inner)));
    }
    const Document moved = std::move(outer);
    EXPECT_EQ(moved.root.ChildText("b"), "xy");
    EXPECT_EQ(moved.root.Child("b")->AttributeOf("c"), "1");
}

}  // namespace
}  // namespace rdl::xml
