// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/rich_text.h"

#include <gtest/gtest.h>

#include "designer/document/report_items.h"

namespace designer {
namespace {

constexpr const char* First =
    "<Paragraph>\n<TextRuns><TextRun><Value>Dear </Value><Style><Color>Red</Color></Style></TextRun>"
    "<TextRun><Value>=Fields!Name.Value</Value><ToolTip>Who</ToolTip><Style><FontWeight>Bold</FontWeight>"
    "</Style></TextRun></TextRuns><Style><TextAlign>Right</TextAlign></Style></Paragraph>";
constexpr const char* Second =
    "<Paragraph><TextRuns><!-- kept --><TextRun><Value>Thanks</Value></TextRun></TextRuns></Paragraph>";

Document Letter() {
    return Document(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
        "<Body><ReportItems><Textbox Name=\"T\"><Paragraphs>" +
        std::string(First) + Second + "</Paragraphs></Textbox></ReportItems></Body></Report>");
}

ElementId Box(const Document& document) {
    return ReadReportItems(document).items.at(0).id;
}

TEST(RichTexts, HaveTheirRuns) {
    const Document document = Letter();
    const auto text = RichTextOf(document, Box(document));
    ASSERT_TRUE(text);
    ASSERT_EQ(text->size(), 2u);
    EXPECT_EQ((*text)[0].runs[0], (RichRun{"Dear ", 0, 0}));
    EXPECT_EQ((*text)[0].runs[1], (RichRun{"=Fields!Name.Value", 0, 1, true}));
    EXPECT_EQ((*text)[1].like, 1);
}

TEST(RichTexts, ThatAreTheSameChangeNothing) {
    Document document = Letter();
    PutRichText(document, Box(document), *RichTextOf(document, Box(document)));
    EXPECT_EQ(document.UndoCount(), 0u);
}

TEST(RichTexts, AChangedTextIsOnlyThat) {
    Document document = Letter();
    RichText text = *RichTextOf(document, Box(document));
    text[0].runs[0].text = "Hello ";
    std::string expected = document.Text();
    expected.replace(expected.find("Dear "), 5, "Hello ");
    PutRichText(document, Box(document), text);
    EXPECT_EQ(document.Text(), expected);
    EXPECT_EQ(document.UndoCount(), 1u);
}

TEST(RichTexts, AnotherRunKeepsWhatItIsMadeOf) {
    Document document = Letter();
    RichText text = *RichTextOf(document, Box(document));
    // "De" and "ar ", the latter in italics, and no bold name.
    text[0].runs[0].text = "De";
    text[0].runs.insert(text[0].runs.begin() + 1, RichRun{"ar ", 0, 0, false, true});
    text[0].runs[2].isBold = false;
    PutRichText(document, Box(document), text);
    const std::string run = "<TextRun><Value>";
    EXPECT_NE(
        document.Text().find(
            "<Paragraph><TextRuns>" + run + "De</Value><Style><Color>Red</Color></Style></TextRun>" + run +
            "ar </Value><Style><Color>Red</Color><FontStyle>Italic</FontStyle></Style></TextRun>" + run +
            "=Fields!Name.Value</Value><ToolTip>Who</ToolTip><Style></Style></TextRun></TextRuns><Style>"
            "<TextAlign>Right</TextAlign></Style></Paragraph>" +
            Second),
        std::string::npos)
        << document.Text();
}

TEST(RichTexts, ParagraphsComeAndGo) {
    Document document = Letter();
    RichText text = *RichTextOf(document, Box(document));
    text.insert(text.begin() + 1, RichParagraph{0, {{"new", 0, 0}}});
    PutRichText(document, Box(document), text);
    EXPECT_NE(document.Text().find(std::string(First) +
                                   "<Paragraph><TextRuns><TextRun><Value>new</Value><Style><Color>Red</Color>"
                                   "</Style></TextRun></TextRuns><Style><TextAlign>Right</TextAlign></Style>"
                                   "</Paragraph>" +
                                   Second),
              std::string::npos)
        << document.Text();
    text = *RichTextOf(document, Box(document));
    text.erase(text.begin(), text.begin() + 2);
    PutRichText(document, Box(document), text);
    EXPECT_NE(document.Text().find("<Paragraphs>" + std::string(Second) + "</Paragraphs>"), std::string::npos)
        << document.Text();
}

TEST(RichTexts, OfBoxesWithoutParagraphsAndOfOlderSchemas) {
    Document document(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\"><Body>"
        "<ReportItems><Textbox Name=\"T\"/></ReportItems></Body></Report>");
    RichText text = *RichTextOf(document, Box(document));
    ASSERT_EQ(text.size(), 1u);
    text[0].runs = {{"a"}, {"b", -1, -1, true, true, true}};
    PutRichText(document, Box(document), text);
    EXPECT_NE(document.Text().find("<Value>b</Value><Style><FontStyle>Italic</FontStyle><FontWeight>Bold"
                                   "</FontWeight><TextDecoration>Underline</TextDecoration></Style>"),
              std::string::npos)
        << document.Text();
    Document older(
        "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition\"><Body>"
        "<ReportItems><Textbox Name=\"T\"><Value>x</Value></Textbox></ReportItems></Body></Report>");
    EXPECT_FALSE(RichTextOf(older, Box(older)));
    EXPECT_THROW(PutRichText(older, Box(older), text), EditError);
}

}  // namespace
}  // namespace designer
