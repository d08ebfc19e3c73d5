// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/editing.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>

#include "designer/document/item_size.h"

namespace designer {
namespace {

// With the line ends of `lineEnd` in place of line feeds.
std::string With(std::string text, const std::string& lineEnd) {
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += lineEnd.size()) {
        text.replace(at, 1, lineEnd);
    }
    return text;
}

const char* const Small = R"(<Report xmlns="u">
  <Body>
    <ReportItems>
      <Textbox Name="A">
        <Value>one</Value>
        <Top>1in</Top>
        <Width>2.5cm</Width>
        <Style />
      </Textbox>
    </ReportItems>
    <Height>2in</Height>
  </Body>
  <Width>6in</Width>
</Report>
)";

ElementId Textbox(const Document& document) {
    return document.Find(document.Root(), "Body/ReportItems/Textbox");
}

std::string Changed(const std::string& text, const std::string& from, const std::string& to) {
    std::string changed = text;
    return changed.replace(text.find(from), from.size(), to);
}

TEST(Editing, ChangesTheTextOfOneElementOnly) {
    Document document(Small);
    SetText(document, Textbox(document), "Value", "a < b & c > d\n2");
    EXPECT_EQ(document.Text(), Changed(Small, "one", "a &lt; b &amp; c &gt; d\n2"));
    EXPECT_EQ(document.TextAt(Textbox(document), "Value"), "a < b & c > d\n2");
    EXPECT_EQ(document.UndoName(), "Set Value");
    SetText(document, Textbox(document), "Value", "a < b & c > d\n2");
    EXPECT_EQ(document.UndoCount(), 1u);
    document.Undo();
    EXPECT_EQ(document.Text(), Small);
}

TEST(Editing, PlacesANewChildWhereTheSchemasHaveIt) {
    Document document(Small);
    SetText(document, Textbox(document), "Left", "1cm");
    SetText(document, Textbox(document), "CanGrow", "true");
    SetText(document, Textbox(document), "Style/Border/Color", "Red");
    SetText(document, Textbox(document), "Style/Color", "Blue");
    EXPECT_EQ(document.Text(), R"(<Report xmlns="u">
  <Body>
    <ReportItems>
      <Textbox Name="A">
        <CanGrow>true</CanGrow>
        <Value>one</Value>
        <Top>1in</Top>
        <Left>1cm</Left>
        <Width>2.5cm</Width>
        <Style>
          <Border>
            <Color>Red</Color>
          </Border>
          <Color>Blue</Color>
        </Style>
      </Textbox>
    </ReportItems>
    <Height>2in</Height>
  </Body>
  <Width>6in</Width>
</Report>
)");
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Text(), Small);
}

TEST(Editing, WritesWithTheLineEndsOfTheFile) {
    for (const std::string lineEnd : {"\r\n", "\r"}) {
        Document document(With(Small, lineEnd));
        SetText(document, Textbox(document), "Style/Color", "a\nb");
        EXPECT_EQ(document.Text(), With(Changed(Small, "<Style />",
                                                "<Style>\n          <Color>a\nb</Color>\n        </Style>"),
                                        lineEnd));
        EXPECT_EQ(document.TextAt(Textbox(document), "Style/Color"), "a\nb");
    }
}

TEST(Editing, AFileOfOneLineStaysOne) {
    Document document("<Report><Body><Height>1in</Height></Body><Width>6in</Width></Report>");
    SetText(document, document.Root(), "Page/Style/Color", "Red");
    InsertXml(document, document.Find(document.Root(), "Body"),
              "<ReportItems><Textbox Name='A'/></ReportItems>");
    EXPECT_EQ(document.Text(),
              "<Report><Body><ReportItems><Textbox Name='A'/></ReportItems><Height>1in</Height></Body>"
              "<Width>6in</Width><Page><Style><Color>Red</Color></Style></Page></Report>");
}

TEST(Editing, ANewElementHasThePrefixOfItsParent) {
    Document document("<r:Report xmlns:r='u' xmlns:rd='v'>\n\t<r:Width>6in</r:Width>\n</r:Report>");
    SetText(document, document.Root(), "Page/LeftMargin", "1in");
    InsertXml(document, document.Root(), "<DataSets><DataSet Name='D'><rd:X y='1'/></DataSet></DataSets>");
    EXPECT_EQ(
        document.Text(),
        "<r:Report xmlns:r='u' xmlns:rd='v'>\n"
        "\t<r:DataSets>\n\t\t<r:DataSet Name='D'>\n\t\t\t<rd:X y='1'/>\n\t\t</r:DataSet>\n\t</r:DataSets>\n"
        "\t<r:Width>6in</r:Width>\n"
        "\t<r:Page>\n\t\t<r:LeftMargin>1in</r:LeftMargin>\n\t</r:Page>\n</r:Report>");
    EXPECT_EQ(XmlOf(document, document.Find(document.Root(), "DataSets/DataSet")),
              "<DataSet xmlns:rd=\"v\" Name='D'>\n\t\t\t<rd:X y='1'/>\n\t\t</DataSet>");
}

TEST(Editing, DeclaresThePrefixOfDesignersWhenItIsMissing) {
    Document document("<Report xmlns='u'><F/></Report>");
    SetText(document, document.Find(document.Root(), "F"), "rd:TypeName", "System.Int32");
    EXPECT_EQ(document.Text(),
              "<Report xmlns='u' "
              "xmlns:rd=\"http://schemas.microsoft.com/SQLServer/reporting/reportdesigner\">"
              "<F><rd:TypeName>System.Int32</rd:TypeName></F></Report>");
    EXPECT_EQ(document.UndoCount(), 1u);
    document.Undo();
    EXPECT_EQ(document.Text(), "<Report xmlns='u'><F/></Report>");
}

TEST(Editing, KeepsCommentsAndSections) {
    Document document("<R><C><!-- a --><![CDATA[x < y]]><?p?></C><D>1<!-- b -->2</D><E/><F></F></R>");
    const ElementId root = document.Root();
    SetText(document, root, "C", "1 < 2");
    SetText(document, root, "D", "3");
    SetText(document, root, "E", "4");
    SetText(document, root, "F", "5");
    EXPECT_EQ(document.Text(),
              "<R><C><!-- a --><![CDATA[1 < 2]]><?p?></C><D>3<!-- b --></D><E>4</E><F>5</F></R>");
    SetText(document, root, "C", "]]>");
    EXPECT_EQ(document.TextAt(root, "C"), "]]>");
    EXPECT_THAT(document.Text(), testing::HasSubstr("<C><!-- a -->]]&gt;<?p?></C>"));
}

TEST(Editing, RefusesWhatCannotBeWritten) {
    Document document(Small);
    const auto message = [](auto action) {
        try {
            action();
            return std::string();
        } catch (const EditError& error) {
            return std::string(error.what());
        }
    };
    EXPECT_EQ(message([&] { SetText(document, document.Root(), "Body", "x"); }),
              "the element Body holds elements and no text");
    EXPECT_EQ(message([&] { SetText(document, document.Root(), "Width", std::string("\x01")); }),
              "the text has a control character, which a report cannot hold");
    EXPECT_EQ(
        message([&] { InsertXml(document, document.Root(), "<a><b></a>"); }),
        "an inserted element is damaged: this is not well-formed XML: the end tag \"a\" is not that of the "
        "element \"b\" of line 1");
    EXPECT_EQ(
        message([&] { InsertXml(document, document.Root(), "<x:a/>"); }),
        "an inserted element is damaged: this is not well-formed XML: the prefix \"x\" is declared nowhere");
    EXPECT_EQ(message([&] { InsertXml(document, document.Root(), "<a/><b/>"); }),
              "an inserted text is not one element");
    EXPECT_EQ(message([&] { InsertXml(document, document.Root(), ""); }),
              "an inserted text is not one element");
    EXPECT_EQ(message([&] { Remove(document, document.Root()); }), "the report itself cannot be removed");
    EXPECT_EQ(message([&] { Move(document, Textbox(document), Textbox(document)); }),
              "an element cannot be moved into itself");
    EXPECT_EQ(message([&] { SetText(document, 999, "a", "x"); }), "the element does not exist any more");
    EXPECT_EQ(document.Text(), Small);
    EXPECT_EQ(document.UndoCount(), 0u);
}

TEST(Editing, RemovesAnElementWithItsLineAndEmptyCollections) {
    Document document(Small);
    RemoveAt(document, Textbox(document), "Top");
    EXPECT_EQ(document.UndoName(), "Reset Top");
    EXPECT_EQ(document.Text(), Changed(Small, "        <Top>1in</Top>\n", ""));
    Remove(document, Textbox(document));
    EXPECT_EQ(document.UndoName(), "Remove A");
    EXPECT_EQ(document.Text(),
              "<Report xmlns=\"u\">\n  <Body>\n    <Height>2in</Height>\n  </Body>\n  "
              "<Width>6in</Width>\n</Report>\n");
    document.Undo();
    SetText(document, Textbox(document), "Style/Border/Color", "Red");
    RemoveAt(document, Textbox(document), "Style/Border/Color");
    EXPECT_EQ(document.Find(Textbox(document), "Style"), NoElement);
}

TEST(Editing, SetsAndRemovesAttributes) {
    Document document("<R a='1'  b=\"2\"><C/></R>");
    SetAttribute(document, document.Root(), "a", "it's \"<&\t");
    SetAttribute(document, document.Root(), "d", "4");
    SetAttribute(document, document.Find(document.Root(), "C"), "Name", "x");
    EXPECT_EQ(document.Text(), "<R a='it&apos;s \"&lt;&amp;&#x9;'  b=\"2\" d=\"4\"><C Name=\"x\"/></R>");
    EXPECT_EQ(document.Attribute(document.Root(), "a"), "it's \"<&\t");
    RemoveAttribute(document, document.Root(), "b");
    EXPECT_EQ(document.Text(), "<R a='it&apos;s \"&lt;&amp;&#x9;' d=\"4\"><C Name=\"x\"/></R>");
}

TEST(Editing, MovesAnElementWithItsIds) {
    Document document(R"(<Report>
  <Body>
    <ReportItems>
      <Rectangle Name="R">
        <ReportItems>
          <Textbox Name="A">
            <Top>1in</Top>
          </Textbox>
        </ReportItems>
      </Rectangle>
      <Line Name="L" />
    </ReportItems>
  </Body>
</Report>)");
    const std::string before = document.Text();
    const ElementId items = document.Find(document.Root(), "Body/ReportItems");
    const ElementId box = document.Find(items, "Rectangle/ReportItems/Textbox");
    const ElementId top = document.Find(box, "Top");
    Move(document, box, items, document.Find(items, "Line"));
    EXPECT_EQ(document.Text(), R"(<Report>
  <Body>
    <ReportItems>
      <Rectangle Name="R">
      </Rectangle>
      <Textbox Name="A">
        <Top>1in</Top>
      </Textbox>
      <Line Name="L" />
    </ReportItems>
  </Body>
</Report>)");
    EXPECT_EQ(document.Find(items, "Textbox"), box);
    EXPECT_EQ(document.Find(box, "Top"), top);
    EXPECT_EQ(document.UndoCount(), 1u);
    document.Undo();
    EXPECT_EQ(document.Text(), before);
    EXPECT_EQ(document.Find(items, "Rectangle/ReportItems/Textbox/Top"), top);
}

TEST(Editing, ADuplicateHasNamesOfItsOwn) {
    Document document(R"(<Report>
  <Tablix Name="T">
    <Group Name="G1" />
    <Textbox Name="Box9">
      <Value>=Sum(Fields!a.Value, "G1") + ReportItems!Box9.Value</Value>
    </Textbox>
    <ToggleItem>Box9</ToggleItem>
  </Tablix>
</Report>)");
    const std::string before = document.Text();
    const ElementId copy = Duplicate(document, document.Find(document.Root(), "Tablix"));
    EXPECT_EQ(XmlOf(document, copy), R"(<Tablix Name="T1">
    <Group Name="G2" />
    <Textbox Name="Box1">
      <Value>=Sum(Fields!a.Value, "G2") + ReportItems!Box1.Value</Value>
    </Textbox>
    <ToggleItem>Box1</ToggleItem>
  </Tablix>)");
    EXPECT_EQ(document.UndoName(), "Duplicate T");
    document.Undo();
    EXPECT_EQ(document.Text(), before);
}

TEST(Editing, ChangesManyTextsAsOneStep) {
    Document document(Small);
    const ElementId box = Textbox(document);
    SetTexts(document,
             {{box, "Width", "3cm"},
              {box, "Left", "1in"},
              {box, "Value", "a"},
              {box, "Value", "two"},
              {box, "Top", "1in"}},
             "Many");
    EXPECT_EQ(document.Text(), Changed(Changed(Changed(Small, "one", "two"), "2.5cm", "3cm"),
                                       "<Top>1in</Top>", "<Top>1in</Top>\n        <Left>1in</Left>"));
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_THROW(SetTexts(document, {{box, "Width", "4cm"}, {box, "", "x"}}, "Fails"), EditError);
    EXPECT_EQ(document.UndoCount(), 1u);
    SetSizes(document, {{box, "Width", 72}, {box, "Top", 72}, {box, "Left", 36}}, "Resize");
    EXPECT_EQ(document.TextAt(box, "Width"), "2.54cm");
    EXPECT_EQ(document.TextAt(box, "Left"), "0.5in");
    EXPECT_EQ(document.UndoName(), "Resize");
    document.Undo();
    document.Undo();
    EXPECT_EQ(document.Text(), Small);
}

TEST(Editing, KeepsTheUnitOfASize) {
    Document document(Small);
    SetSize(document, Textbox(document), "Width", 72);
    EXPECT_EQ(document.TextAt(Textbox(document), "Width"), "2.54cm");
    SetSize(document, Textbox(document), "Height", 36);
    EXPECT_EQ(document.TextAt(Textbox(document), "Height"), "0.5in");
    SetSize(document, Textbox(document), "Top", 72.00001);
    EXPECT_EQ(document.TextAt(Textbox(document), "Top"), "1in");
    EXPECT_EQ(document.UndoCount(), 2u);
    EXPECT_EQ(SizeText(0.1 + 0.2, "1 PT"), "0.3PT");
    EXPECT_EQ(SizeText(-1e-9, "1mm"), "0mm");
    EXPECT_EQ(PointsOf(" 2.54 CM "), 72.0);
    EXPECT_EQ(PointsOf("2"), std::nullopt);
    EXPECT_EQ(PointsOf("1e3in"), std::nullopt);
    EXPECT_EQ(PointsOf("=1"), std::nullopt);
}

// Rectangle R holds the boxes A and B; one of them is written as one tag.
TEST(Editing, ManyTextsAreMadeAndRemovedAsOneEdit) {
    const std::string before =
        "<Report xmlns=\"u\">\n  <Body>\n    <ReportItems>\n      <Rectangle Name=\"R\">\n        "
        "<ReportItems>\n"
        "          <Textbox Name=\"A\" />\n          <Textbox Name=\"B\">\n            <Top>1cm</Top>\n"
        "          </Textbox>\n        </ReportItems>\n      </Rectangle>\n    </ReportItems>\n  "
        "</Body>\n</Report>\n";
    Document document(before);
    const ElementId rectangle = document.Find(document.Root(), "Body/ReportItems/Rectangle");
    const std::vector<ElementId> boxes = document.Children(document.Find(rectangle, "ReportItems"));
    std::vector<TextChange> changes;
    std::vector<TextPlace> places;
    for (const ElementId id : {boxes[1], rectangle, boxes[0]}) {
        changes.push_back({id, "Style/Color", "red"});
        places.push_back({id, "Style/Color"});
    }
    SetTexts(document, changes, "Colour");
    EXPECT_EQ(document.Text(),
              "<Report xmlns=\"u\">\n  <Body>\n    <ReportItems>\n      <Rectangle Name=\"R\">\n"
              "        <ReportItems>\n          <Textbox Name=\"A\">\n            <Style>\n"
              "              <Color>red</Color>\n            </Style>\n          </Textbox>\n"
              "          <Textbox Name=\"B\">\n            <Top>1cm</Top>\n            <Style>\n"
              "              <Color>red</Color>\n            </Style>\n          </Textbox>\n"
              "        </ReportItems>\n        <Style>\n          <Color>red</Color>\n        </Style>\n"
              "      </Rectangle>\n    </ReportItems>\n  </Body>\n</Report>\n");
    const std::string coloured = document.Text();
    changes = {{boxes[0], "Style/Border/Width", "1pt"}, {boxes[0], "Style/Border/Color", "blue"}};
    SetTexts(document, changes, "Border");
    EXPECT_EQ(document.TextAt(boxes[0], "Style/Border/Width"), "1pt");
    EXPECT_EQ(document.TextAt(boxes[0], "Style/Border/Color"), "blue");
    RemoveAllAt(document, {{boxes[0], "Style/Border/Width"}, {boxes[0], "Style/Border/Color"}}, "None");
    EXPECT_EQ(document.Text(), coloured);
    RemoveAllAt(document, places, "Plain");
    EXPECT_EQ(document.Find(rectangle, "Style"), NoElement);
    EXPECT_EQ(document.Find(boxes[1], "Style"), NoElement);
    EXPECT_EQ(document.UndoCount(), 4u);
    while (document.Undo()) {
    }
    EXPECT_EQ(document.Text(), before);
}

TEST(Editing, RemovesManyElementsInOneEdit) {
    std::string items;
    for (int number = 0; number < 100; ++number) {
        items += "\n      <Line Name=\"L" + std::to_string(number) + "\" />";
    }
    const std::string before = Changed(Small, "\n      <Textbox", items + "\n      <Textbox");
    Document document(before);
    std::vector<ElementId> all = document.Children(document.Parent(Textbox(document)));
    std::vector<ElementId> lines(all.begin(), all.end() - 1);
    std::reverse(lines.begin(), lines.end());
    RemoveAll(document, lines, "Delete");
    EXPECT_EQ(document.Text(), Small);
    EXPECT_EQ(document.Revision(), 1u);
    document.Undo();
    EXPECT_EQ(document.Text(), before);
    RemoveAll(document, all, "Delete");
    EXPECT_EQ(document.Find(document.Root(), "Body/ReportItems"), NoElement);
    EXPECT_EQ(document.UndoCount(), 1u);
    RemoveAll(document, {}, "Delete");
    EXPECT_THROW(RemoveAll(document, {document.Root()}, "Delete"), EditError);
    EXPECT_EQ(document.UndoCount(), 1u);
}

}  // namespace
}  // namespace designer
