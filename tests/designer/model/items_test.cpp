// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtest/gtest.h>

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/model/item_clipboard.h"
#include "designer/model/item_text.h"
#include "designer/model/new_items.h"
#include "designer/model/placing.h"

namespace designer {
namespace {

constexpr const char* Report =
    R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition">
  <ReportSections>
    <ReportSection>
      <Body>
        <ReportItems>
          <Textbox Name="Title">
            <Paragraphs><Paragraph><TextRuns><TextRun><Value>Sales</Value></TextRun></TextRuns></Paragraph></Paragraphs>
            <Top>1cm</Top>
            <Left>1cm</Left>
            <Height>1cm</Height>
            <Width>5cm</Width>
          </Textbox>
          <Rectangle Name="Frame">
            <ReportItems>
              <Textbox Name="Inner">
                <Top>0.5cm</Top>
                <Left>0.5cm</Left>
                <Height>1cm</Height>
                <Width>2cm</Width>
              </Textbox>
            </ReportItems>
            <Top>3cm</Top>
            <Left>2cm</Left>
            <Height>3cm</Height>
            <Width>4cm</Width>
          </Rectangle>
        </ReportItems>
        <Height>8cm</Height>
      </Body>
      <Width>17cm</Width>
      <Page>
        <PageFooter>
          <Height>10mm</Height>
        </PageFooter>
      </Page>
    </ReportSection>
  </ReportSections>
</Report>
)";
constexpr double Cm = 72 / 2.54;

class DesignedItems : public testing::Test {
 protected:
    ElementId Id(const std::string& name) const {
        const ReportItems items = ReadReportItems(m_document);
        const auto found = std::find_if(items.items.begin(), items.items.end(),
                                        [&](const ReportItem& item) { return item.name == name; });
        return found == items.items.end() ? NoElement : found->id;
    }
    ReportBand Band(std::size_t index) const { return ReadReportItems(m_document).bands.at(index); }
    std::string Place(const std::string& name) const {
        std::string text;
        for (const char* side : {"Left", "Top", "Width", "Height"}) {
            text += (text.empty() ? "" : " ") + m_document.TextAt(Id(name), side).value_or("-");
        }
        return text;
    }
    void MoveTo(const std::string& name, double left, double top, double width, double height) {
        designer::Place(m_document, ReadReportItems(m_document),
                        {{Id(name), {left * Cm, top * Cm, width * Cm, height * Cm}}});
    }

    Document m_document{Report};
};

TEST_F(DesignedItems, PlaceIsWrittenInTheUnitOfTheFile) {
    MoveTo("Title", 2, 1, 5, 1);
    EXPECT_EQ(Place("Title"), "2cm 1cm 5cm 1cm");
    EXPECT_EQ(m_document.UndoCount(), 1u);  // one size is one edit: the others were not touched
}

TEST_F(DesignedItems, AnItemInARectangleIsPlacedFromItsCorner) {
    MoveTo("Inner", 4, 5, 2, 1);
    EXPECT_EQ(Place("Inner"), "2cm 2cm 2cm 1cm");
    MoveTo("Inner", 0, 0, 2, 1);
    EXPECT_EQ(Place("Inner"), "0cm 0cm 2cm 1cm");
}

TEST_F(DesignedItems, TheBandGrowsForItsItem) {
    MoveTo("Title", 14, 9, 5, 1);
    EXPECT_EQ(m_document.TextAt(Band(0).element, "Height"), "10cm");
    EXPECT_EQ(m_document.TextAt(m_document.Parent(Band(0).element), "Width"), "19cm");
}

TEST_F(DesignedItems, OfContainerAndContentOnlyTheContainerMoves) {
    const ReportItems items = ReadReportItems(m_document);
    EXPECT_EQ(Movable(items, {Id("Inner"), Id("Frame"), Id("Title")}),
              (std::vector{Id("Frame"), Id("Title")}));
}

TEST_F(DesignedItems, AnItemMovesToAnotherBand) {
    const ElementId title = Id("Title");
    PlaceInBand(m_document, ReadReportItems(m_document), {title, {Cm, 0.5 * Cm, 5 * Cm, Cm}}, Band(1));
    EXPECT_EQ(m_document.Name(m_document.Parent(m_document.Parent(title))), "PageFooter");
    EXPECT_EQ(Place("Title"), "1cm 0.5cm 5cm 1cm");
    EXPECT_EQ(m_document.TextAt(Band(1).element, "Height"), "15mm");
}

TEST_F(DesignedItems, ToFrontAndToBack) {
    BringToFront(m_document, ReadReportItems(m_document), {Id("Title")});
    EXPECT_EQ(m_document.TextAt(Id("Title"), "ZIndex"), "1");
    SendToBack(m_document, ReadReportItems(m_document), {Id("Title")});
    EXPECT_EQ(m_document.TextAt(Id("Title"), "ZIndex"), "0");
    EXPECT_EQ(m_document.TextAt(Id("Frame"), "ZIndex"), "1");
    // There is room already.
    SendToBack(m_document, ReadReportItems(m_document), {Id("Title")});
    EXPECT_EQ(m_document.TextAt(Id("Frame"), "ZIndex"), "1");
}

TEST_F(DesignedItems, TextOfOneParagraphKeepsItsLines) {
    SetTextOfItem(m_document, Id("Title"), "Sales\n<2026>");
    EXPECT_EQ(TextOfItem(m_document, Id("Title")), "Sales\n<2026>");
    EXPECT_EQ(m_document.Children(m_document.Find(Id("Title"), "Paragraphs")).size(), 1u);
}

TEST_F(DesignedItems, TextOfAnEmptyBoxMakesItsParagraph) {
    EXPECT_EQ(TextOfItem(m_document, Id("Inner")), "");
    SetTextOfItem(m_document, Id("Inner"), "Net");
    EXPECT_EQ(m_document.TextAt(Id("Inner"), "Paragraphs/Paragraph/TextRuns/TextRun/Value"), "Net");
}

TEST_F(DesignedItems, LinesAreParagraphsWhereThereAreSeveral) {
    const ElementId paragraphs = m_document.Find(Id("Title"), "Paragraphs");
    Duplicate(m_document, m_document.Children(paragraphs).front());
    EXPECT_EQ(TextOfItem(m_document, Id("Title")), "Sales\nSales");
    SetTextOfItem(m_document, Id("Title"), "a\nb\nc");
    EXPECT_EQ(m_document.Children(paragraphs).size(), 3u);
    EXPECT_EQ(TextOfItem(m_document, Id("Title")), "a\nb\nc");
    SetTextOfItem(m_document, Id("Title"), "a");
    EXPECT_EQ(m_document.Children(paragraphs).size(), 1u);
}

TEST_F(DesignedItems, RunsWithFormatsOfTheirOwnAreRefused) {
    Duplicate(m_document, m_document.Find(Id("Title"), "Paragraphs/Paragraph/TextRuns/TextRun"));
    EXPECT_EQ(TextOfItem(m_document, Id("Title")), std::nullopt);
    try {
        SetTextOfItem(m_document, Id("Title"), "lost");
        FAIL();
    } catch (const EditError& error) {
        EXPECT_STREQ(error.what(), "The text has runs with formats of their own");
    }
}

TEST_F(DesignedItems, CopiesHaveNamesOfTheirOwn) {
    const auto items = ItemsIn(ItemsText(m_document, {Id("Title"), Id("Frame")}));
    ASSERT_TRUE(items);
    const auto ids = PasteItems(m_document, Band(1).element, *items, Cm);
    ASSERT_EQ(ids.size(), 2u);
    EXPECT_EQ(m_document.Attribute(ids[0], "Name"), "Title1");
    EXPECT_EQ(m_document.TextAt(ids[0], "Left"), "2cm");
    EXPECT_NE(Id("Inner1"), NoElement);
}

TEST(ItemsIn, AnyOtherTextIsNone) {
    for (const char* text :
         {"", "Sales", "<ReportItems>", "<p>Sales</p>", "<ReportItems><p/></ReportItems>"}) {
        EXPECT_EQ(ItemsIn(text), std::nullopt) << text;
    }
}

TEST(BlankReports, TakeEveryKind) {
    for (const NewItem kind : {NewItem::TextBox, NewItem::Line, NewItem::Rectangle, NewItem::Image}) {
        Document document{BlankReport()};
        const ReportItems before = ReadReportItems(document);
        ASSERT_EQ(before.bands.size(), 3u);
        const ElementId id = InsertItem(document, before.bands[1], kind, {Cm, Cm, 2 * Cm, 9 * Cm});
        EXPECT_EQ(document.Name(id), ElementOf(kind));
        EXPECT_EQ(document.Attribute(id, "Name"), std::string(ElementOf(kind)) + "1");
        EXPECT_EQ(document.TextAt(id, "Height"), "9cm");
        EXPECT_EQ(document.TextAt(before.bands[1].element, "Height"), "10cm");
    }
}

TEST(BlankReports, TakeAPicture) {
    Document document{BlankReport()};
    const ElementId image =
        InsertItem(document, ReadReportItems(document).bands[1], NewItem::Image, {0, 0, 10, 10});
    EmbedPicture(document, image, "image/png", "abc", "logo");
    EXPECT_EQ(document.TextAt(image, "Value"), "logo");
    EXPECT_EQ(document.TextAt(document.Root(), "EmbeddedImages/EmbeddedImage/ImageData"), "YWJj");
}

TEST(OldSchemas, ATextBoxHasOneValue) {
    Document document{
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\">"
        "<Body><Height>2in</Height></Body><Width>5in</Width></Report>"};
    const ElementId id =
        InsertItem(document, ReadReportItems(document).bands[0], NewItem::TextBox, {72, 0, 72, 18});
    SetTextOfItem(document, id, "Net");
    EXPECT_EQ(document.TextAt(id, "Value"), "Net");
    EXPECT_EQ(document.TextAt(id, "Left"), "1in");
}

TEST_F(DesignedItems, ManyArePastedInAFewEdits) {
    std::string text = "<ReportItems>";
    for (int number = 0; number < 300; ++number) {
        text +=
            "<Rectangle Name=\"Frame\"><ReportItems><Textbox Name=\"Inner\"/></ReportItems><RepeatWith>Inner"
            "</RepeatWith><Top>0cm</Top><Left>1cm</Left></Rectangle>";
    }
    const auto items = ItemsIn(text + "</ReportItems>");
    ASSERT_TRUE(items);
    const std::uint64_t before = m_document.Revision();
    const auto ids = PasteItems(m_document, Band(0).element, *items, Cm);
    EXPECT_LT(m_document.Revision() - before, 10u);
    ASSERT_EQ(ids.size(), 300u);
    EXPECT_EQ(m_document.Attribute(ids[0], "Name"), "Frame1");
    EXPECT_EQ(m_document.Attribute(ids[299], "Name"), "Frame300");
    EXPECT_EQ(m_document.TextAt(ids[299], "RepeatWith"), "Inner300");
    EXPECT_EQ(m_document.TextAt(ids[299], "Left"), "2cm");
}

}  // namespace
}  // namespace designer
