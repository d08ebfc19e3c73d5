// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include "rdl/xml/pieces.h"

namespace rdl::xml {
namespace {

constexpr Limits Small{20, 1000, 50};

// Takes the children of each element "rows" and the text of each element "text".
class Taken : public PartHandler {
 public:
    Part PartOf(const std::vector<std::string>& path) override {
        asked += path.back() + " ";
        return path.back() == "rows" ? Part::Children : path.back() == "text" ? Part::Text : Part::None;
    }
    void TakeChildren(Document& piece, const Element& parent) override {
        root = std::string(piece.root.name).append(piece.root.AttributeOf("of"));
        EXPECT_EQ(parent.name, "rows");
        for (const Element& child : parent.children) {
            children += std::string(child.name) + "=" + std::string(child.text) + ";";
            for (const Attribute& attribute : child.attributes) {
                children += std::string(attribute.name) + ":" + std::string(attribute.value) + ";";
            }
            for (const Element& inner : child.children) {
                children += std::string(inner.name) + "(" + std::string(inner.text) + ")" +
                            std::to_string(inner.space);
            }
        }
    }
    bool TakeText(std::string_view piece) override {
        if (refusesText) {
            return false;
        }
        text += piece;
        ++textPieces;
        return true;
    }
    std::string Mark() override { return "\x01" + std::to_string(marks++); }

    bool refusesText = false;
    std::string asked, root, children, text;
    int textPieces = 0, marks = 0;
};

// Reads with pieces of any size of bytes that come one at a time.
Document ReadApart(const std::string& bytes, Taken& taken, std::size_t pieceSize = 1, std::size_t step = 1,
                   const Limits& limits = Small) {
    std::size_t at = 0;
    const std::size_t first = std::min<std::size_t>(bytes.size(), 60);  // holds the declaration
    PieceReader reader(
        [&](std::string& next) {
            next = bytes.substr(at, at == 0 ? first : step);
            at += next.size();
            return !next.empty();
        },
        limits, taken, pieceSize);
    while (reader.Read()) {
    }
    return reader.Tree();
}

bool IsRefused(const std::string& bytes, const Limits& limits = Small) {
    Taken taken;
    try {
        ReadApart(bytes, taken, 1, 1, limits);
    } catch (const Flaw&) {
        return true;
    }
    return false;
}

const std::string Rows =
    "<?xml version='1.0'?>\n<a of='x'>\n <b/>\n<rows k='v'>\n<r p='1>2' "
    "q=\"'\">one<s>&lt;in&amp;</s></r><!-- <r> -->\n"
    "<r><![CDATA[<two>]]>]]&gt;<?p > ?></r>\n<r/></rows>\n<c>end</c></a>";

TEST(XmlPieces, ChildrenAreTakenAndTheRestIsTheTree) {
    for (const std::size_t size : {1u, 30u, 1000u}) {
        for (const std::size_t step : {1u, 7u, 1000u}) {
            Taken taken;
            const Document document = ReadApart(Rows, taken, size, step);
            EXPECT_EQ(taken.children, "r=one;p:1>2;q:';s(<in&)0r=<two>]]>;r=;") << size << step;
            EXPECT_EQ(taken.root, "ax");
            EXPECT_EQ(taken.asked, "a b rows c ");
            EXPECT_EQ(document.root.Child("rows")->AttributeOf("k"), "v");
            EXPECT_TRUE(document.root.Child("rows")->IsLeaf());
            EXPECT_EQ(document.root.ChildText("rows"),
                      "\x01"
                      "0");
            EXPECT_EQ(document.root.Child("c")->text, "end");
        }
    }
}

TEST(XmlPieces, ElementsKeepTheirLines) {
    Taken taken;
    const Document document = ReadApart(Rows, taken);
    EXPECT_EQ(document.root.Child("b")->line, 3);
    EXPECT_EQ(document.root.Child("rows")->line, 4);
    EXPECT_EQ(document.root.Child("c")->line, 8);
    EXPECT_EQ(Parse(Rows, Small).root.Child("c")->line, 8);
}

TEST(XmlPieces, ChildrenHaveTheNamespacesAroundThem) {
    Taken taken;
    ReadApart("<a xmlns='u' xmlns:p='v'><p:rows><p:r>1<p:s/></p:r><r>2<s/></r></p:rows></a>", taken);
    EXPECT_EQ(taken.children, "r=1;s()3r=2;s()2");
}

TEST(XmlPieces, TextIsTakenAsItWouldBeInTheTree) {
    const std::string bytes =
        "<a><text>one\r\ntwo\rthree &lt;&#x20ac;&amp;<![CDATA[ <four>\r\n& ]]><!-- no "
        "-->\n\xC3\xA4\xF0\x9F\x98\x80</text><c/></a>";
    const std::string whole = std::string(Parse(bytes, Small).root.Child("text")->text);
    EXPECT_EQ(whole, "one\ntwo\nthree <\xE2\x82\xAC& <four>\n& \n\xC3\xA4\xF0\x9F\x98\x80");
    for (const std::size_t size : {1u, 2u, 5u, 17u}) {
        for (const std::size_t step : {1u, 2u, 3u, 11u, 1000u}) {
            Taken taken;
            const Document document = ReadApart(bytes, taken, size, step);
            EXPECT_EQ(taken.text, whole) << size << " " << step;
            EXPECT_EQ(document.root.ChildText("text"),
                      "\x01"
                      "0");
            EXPECT_EQ(document.root.Child("c")->line, Parse(bytes, Small).root.Child("c")->line);
        }
    }
}

TEST(XmlPieces, TextThatIsShortOrNotWantedStaysInTheTree) {
    Taken taken;
    EXPECT_EQ(
        ReadApart("<a><text>short &amp; <![CDATA[<x>]]></text></a>", taken, 1000).root.ChildText("text"),
        "short & <x>");
    taken.refusesText = true;
    EXPECT_EQ(ReadApart("<a><text>long &amp; <![CDATA[<x>]]>, long</text></a>", taken).root.ChildText("text"),
              "long & <x>, long");
    EXPECT_EQ(taken.text, "");
}

TEST(XmlPieces, EncodingsAreThoseOfTheWhole) {
    for (const std::string& bytes :
         {std::string("<?xml version='1.0' encoding='ISO-8859-1'?><a><rows><r>M\xFCller</r></rows></a>"),
          std::string("\xEF\xBB\xBF<a><rows><r>M\xC3\xBCller</r></rows></a>")}) {
        Taken taken;
        ReadApart(bytes, taken);
        EXPECT_EQ(taken.children, "r=M\xC3\xBCller;");
    }
    std::string wide = "\xFF\xFE";
    for (const char c : std::string("<a><rows><r>M") + "\xFC" + "ller</r></rows></a>") {
        wide += c;
        wide += '\0';
    }
    Taken taken;
    ReadApart(wide, taken);
    EXPECT_EQ(taken.children, "r=M\xC3\xBCller;");
}

TEST(XmlPieces, WhatTheWholeRefusesIsRefused) {
    for (const char* bytes : {"<a><rows><r></rows></r></a>",
                              "<a><rows><r><s></r></s></rows></a>",
                              "<a><rows><r>&nope;</r></rows></a>",
                              "<a><rows><r>x</r>",
                              "<a><rows><r>x</r></rows>",
                              "<a><rows></a></rows>",
                              "<a><text>12345<b/></text></a>",
                              "<a><text>a & b, c</text></a>",
                              "<a><text>12345<![CDATA[ 67890</text></a>",
                              "<a><rows><p:r/></rows></a>",
                              "<a><rows><r b=1/></rows></a>",
                              "<a><rows><r b='1' b='2'/></rows></a>",
                              "<a><rows>\x01</rows></a>",
                              "<a><rows>M\xFCller</rows></a>",
                              "<!DOCTYPE a><a/>",
                              "<a/><b/>",
                              "",
                              "<a><rows><!-- x </rows></a>",
                              "<a><rows><r b='</rows></a>",
                              "</a>",
                              "<a><rows><r/></rows></a>\xC3"}) {
        EXPECT_TRUE(IsRefused(bytes)) << bytes;
    }
    EXPECT_FALSE(IsRefused("<a><rows><r/><r/></rows></a>"));
    EXPECT_TRUE(IsRefused("<a><rows><r/><r/></rows></a>", {20, 3, 50}));
    EXPECT_FALSE(IsRefused("<a><rows><r/><r/></rows></a>", {20, 4, 50}));
    EXPECT_TRUE(IsRefused("<a><rows><r><s/></r></rows></a>", {3, 100, 50}));
    EXPECT_FALSE(IsRefused("<a><rows><r><s/></r></rows></a>", {4, 100, 50}));
}

}  // namespace
}  // namespace rdl::xml
