// SPDX-License-Identifier: GPL-3.0-or-later
#include <gmock/gmock.h>

#include "rdl/definition/rdl_text.h"
#include "rdl/definition/size.h"

namespace rdl::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

TEST(ReportSize, UnitsArePoints) {
    EXPECT_DOUBLE_EQ(*ParseSize("1in"), 72);
    EXPECT_DOUBLE_EQ(*ParseSize("2.54cm"), 72);
    EXPECT_DOUBLE_EQ(*ParseSize("25.4mm"), 72);
    EXPECT_DOUBLE_EQ(*ParseSize("12.5pt"), 12.5);
    EXPECT_DOUBLE_EQ(*ParseSize("1pc"), 12);
    EXPECT_DOUBLE_EQ(*ParseSize(" .5 in "), 36);
    EXPECT_DOUBLE_EQ(*ParseSize("-1pt"), -1);
}

TEST(ReportSize, WhatIsNoSize) {
    for (const char* text : {"", "in", "1", "1 px", "abc", "1,5in", "1inch", "nan in", "1e999pt", "--1in"}) {
        EXPECT_FALSE(ParseSize(text)) << text;
    }
}

TEST(ReportItem, BadSizeNamesItemPropertyAndLine) {
    EXPECT_THAT(ErrorOf(WithItems("<Textbox Name=\"Total\">\n<Width>wide</Width></Textbox>")),
                AllOf(HasSubstr("line 3"), HasSubstr("Textbox Total, Width"), HasSubstr("\"wide\"")));
}

TEST(ReportItem, SizeOutOfRangeIsAnError) {
    EXPECT_THAT(ErrorOf(WithItems("<Textbox><Width>1000000in</Width></Textbox>")), HasSubstr("out of range"));
    EXPECT_THAT(ErrorOf(WithItems("<Textbox><Width>-1in</Width></Textbox>")), HasSubstr("out of range"));
}

TEST(ReportItem, WithoutSizeItReachesToTheContainersEdge) {
    const Definition report = Parse(WithItems("<Textbox><Left>1in</Left><Top>2in</Top></Textbox>"));
    EXPECT_DOUBLE_EQ(OnlyItem<Textbox>(report).width, 5 * 72);
    EXPECT_DOUBLE_EQ(OnlyItem<Textbox>(report).height, 72);
}

TEST(ReportItem, LineMayGoUpAndLeft) {
    const Definition report = Parse(WithItems("<Line><Width>-1in</Width><Height>-10pt</Height></Line>"));
    EXPECT_DOUBLE_EQ(OnlyItem<Line>(report).width, -72);
    EXPECT_DOUBLE_EQ(OnlyItem<Line>(report).height, -10);
}

TEST(ReportItem, WhatCannotBeDrawnIsNamed) {
    for (const char* kind : {"Gauge"}) {
        const std::string element = kind;
        EXPECT_THAT(ErrorOf(WithItems("<" + element + " Name=\"Sales1\"/>", Ns2016)),
                    AllOf(HasSubstr(element + " Sales1"), HasSubstr("cannot be drawn")));
    }
}

TEST(ReportItem, PictureBehindAnItemThatTheReportDoesNotHaveIsNamed) {
    const auto withBackground = [](const std::string& value) {
        return WithItems("<Textbox Name=\"Total\"><Style><BackgroundImage><Source>Embedded</Source><Value>" +
                         value + "</Value></BackgroundImage></Style></Textbox>");
    };
    EXPECT_THAT(ErrorOf(withBackground("logo")),
                AllOf(HasSubstr("line 2"), HasSubstr("Textbox Total, BackgroundImage"),
                      HasSubstr("the report has no embedded image \"logo\"")));
    EXPECT_EQ(ErrorOf(withBackground("")), "");
}

TEST(ReportImage, OneFromTheNetworkIsRefusedWhenTheReportIsOpened) {
    const auto external = [](const std::string& value) {
        return WithItems("<Image Name=\"Logo\"><Source>External</Source><Value>" + value +
                         "</Value></Image>");
    };
    EXPECT_THAT(ErrorOf(external("https://example.com/a.png")),
                AllOf(HasSubstr("Image Logo"), HasSubstr("network")));
    EXPECT_EQ(ErrorOf(external("file:///srv/a.png")), "");
    EXPECT_EQ(ErrorOf(external("pictures/a.png")), "");
}

TEST(ReportItem, UnknownKindIsAnErrorNotAHole) {
    EXPECT_THAT(ErrorOf(WithItems("<Hologram Name=\"h\"/>")), HasSubstr("Hologram h"));
}

TEST(ReportItem, UnknownHarmlessElementsAreIgnored) {
    EXPECT_EQ(ErrorOf(Report("<Body><Sparkle>1</Sparkle></Body><DataElementName>x</DataElementName>")), "");
}

TEST(ReportItem, ForeignElementsAreIgnored) {
    const Definition report = Parse(
        WithItems("<Textbox xmlns:rd=\"urn:designer\"><rd:Value>no</rd:Value><Value>yes</Value></Textbox>"));
    EXPECT_EQ(TextOf(&OnlyItem<Textbox>(report)), "yes");
}

TEST(ReportExpression, ConstantsStayAndExpressionsAreNumbered) {
    const Definition report = Parse(WithItems(
        "<Textbox Name=\"a\"><Value>plain</Value></Textbox>"
        "<Textbox Name=\"b\"><Value> =1+1</Value><Style><Color>=\"Red\"</Color></Style></Textbox>"));
    const auto& first =
        dynamic_cast<const Textbox&>(*report.sections[0].items[0]).paragraphs[0].runs[0].value;
    const auto& second =
        dynamic_cast<const Textbox&>(*report.sections[0].items[1]).paragraphs[0].runs[0].value;
    EXPECT_FALSE(first.IsExpression());
    EXPECT_EQ(first.source, "plain");
    EXPECT_TRUE(second.IsExpression());
    EXPECT_EQ(second.source, "=1+1");
    EXPECT_EQ(second.where, "Textbox b, Value");
    EXPECT_EQ(report.expressionCount, 2);
    EXPECT_LT(second.id, 2);
}

TEST(ReportText, OlderTextboxIsOneParagraphWithOneRun) {
    const Definition report = Parse(
        WithItems("<Textbox><Value>x</Value><CanGrow>true</CanGrow><Style><FontSize>14pt</FontSize>"
                  "<TextAlign>Right</TextAlign><VerticalAlign>Middle</VerticalAlign></Style></Textbox>"));
    const auto& box = OnlyItem<Textbox>(report);
    ASSERT_EQ(box.paragraphs.size(), 1u);
    ASSERT_EQ(box.paragraphs[0].runs.size(), 1u);
    EXPECT_TRUE(box.canGrow);
    EXPECT_EQ(box.paragraphs[0].runs[0].style.Find(StyleProperty::FontSize)->source, "14pt");
    EXPECT_EQ(box.paragraphs[0].style.Find(StyleProperty::TextAlign)->source, "Right");
    EXPECT_EQ(box.style.Find(StyleProperty::VerticalAlign)->source, "Middle");
}

TEST(ReportText, ParametersAndGlobalsInBracesStandForTheirValues) {
    const auto value = [](const std::string& text) {
        return TextOf(&OnlyItem<Textbox>(Parse(
            Report("<ReportParameters><ReportParameter Name=\"Year\"/><ReportParameter Name=\"Towns\">"
                   "<MultiValue>true</MultiValue></ReportParameter></ReportParameters><Width>6in</Width>"
                   "<Body><Height>3in</Height><ReportItems><Textbox><Value>" +
                   text + "</Value></Textbox></ReportItems></Body>"))));
    };
    EXPECT_EQ(value("Sales of {?year}"), "=\"Sales of \" & {?year}");
    EXPECT_EQ(value("{?Year}"), "={?Year}");
    EXPECT_EQ(value("\"{? Year }\", {@PageNumber}."),
              "=\"\"\"\" & {?Year} & \"\"\", \" & {@PageNumber} & \".\"");
    EXPECT_EQ(value("{{?Year}}"), "=\"{\" & {?Year} & \"}\"");
    EXPECT_EQ(value("in {?Towns}"), "=\"in \" & Join({?Towns}, \", \")");
    for (const char* text : {"{?Nobody}", "{?Year", "{Year}", "{@Nothing}", "{?}", "{", "a {? b ?} c"}) {
        EXPECT_EQ(value(text), text);
    }
    EXPECT_EQ(value("={?Year}"), "={?Year}");
}

TEST(ReportText, NewerTextboxHasParagraphsAndRuns) {
    const Definition report = Parse(WithItems(
        "<Textbox><Paragraphs><Paragraph><TextRuns><TextRun><Value>a</Value><MarkupType>HTML</MarkupType>"
        "</TextRun><TextRun><Value>=b</Value><ActionInfo><Actions><Action><Hyperlink>http://x/</Hyperlink>"
        "</Action></Actions></ActionInfo></TextRun></TextRuns><ListStyle>Bulleted</ListStyle>"
        "<ListLevel>2</ListLevel></Paragraph><Paragraph/></Paragraphs></Textbox>",
        Ns2016));
    const auto& box = OnlyItem<Textbox>(report);
    ASSERT_EQ(box.paragraphs.size(), 2u);
    ASSERT_EQ(box.paragraphs[0].runs.size(), 2u);
    EXPECT_TRUE(box.paragraphs[0].runs[0].html);
    EXPECT_EQ(box.paragraphs[0].runs[1].action.hyperlink.source, "http://x/");
    EXPECT_EQ(box.paragraphs[0].listStyle, Paragraph::List::Bulleted);
    EXPECT_EQ(box.paragraphs[0].listLevel, 2);
}

TEST(ReportText, BlanksStayOnlyWhereAskedFor) {
    const auto text = [](const std::string& value) {
        return TextOf(&OnlyItem<Textbox>(Parse(WithItems("<Textbox>" + value + "</Textbox>"))));
    };
    EXPECT_EQ(text("<Value>\n   </Value>"), "");
    EXPECT_EQ(text("<Value xml:space=\"preserve\">  </Value>"), "  ");
    EXPECT_EQ(text("<Value>a  b </Value>"), "a  b ");
}

TEST(ReportText, DefaultFontGoesWhereNoneIsNamed) {
    const Definition report =
        Parse("<Report xmlns=\"" + Ns2016 +
              "\" "
              "xmlns:df=\"http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition/"
              "defaultfontfamily\">"
              "<df:DefaultFontFamily>Segoe "
              "UI</df:DefaultFontFamily><ReportSections><ReportSection><Body><ReportItems>"
              "<Rectangle><ReportItems><Textbox><Value>x</Value></Textbox><Textbox><Value>y</Value><Style>"
              "<FontFamily>Courier "
              "New</FontFamily></Style></Textbox></ReportItems></Rectangle></ReportItems></Body>"
              "</ReportSection></ReportSections></Report>");
    const auto& items = OnlyItem<Rectangle>(report).items;
    const auto font = [&](std::size_t i) {
        return dynamic_cast<const Textbox&>(*items[i])
            .paragraphs[0]
            .runs[0]
            .style.Find(StyleProperty::FontFamily)
            ->source;
    };
    EXPECT_EQ(font(0), "Segoe UI");
    EXPECT_EQ(font(1), "Courier New");
}

TEST(ReportStyle, BothSpellingsOfBordersComeToOne) {
    const char* older =
        "<Rectangle><Style><BorderStyle><Default>Solid</Default><Left>Dashed</Left></BorderStyle>"
        "<BorderWidth><Top>2pt</Top></BorderWidth><BorderColor><Bottom>Red</Bottom></BorderColor></Style></"
        "Rectangle>";
    const char* newer =
        "<Rectangle><Style><Border><Style>Solid</Style></Border><LeftBorder><Style>Dashed</Style></"
        "LeftBorder>"
        "<TopBorder><Width>2pt</Width></TopBorder><BottomBorder><Color>Red</Color></BottomBorder></Style></"
        "Rectangle>";
    for (const char* text : {older, newer}) {
        const Definition report = Parse(WithItems(text));
        const Style& style = OnlyItem<Rectangle>(report).style;
        EXPECT_EQ(style.properties.size(), 4u);
        EXPECT_EQ(style.Find(StyleProperty::BorderStyle)->source, "Solid");
        EXPECT_EQ(style.Find(StyleProperty::BorderStyleLeft)->source, "Dashed");
        EXPECT_EQ(style.Find(StyleProperty::BorderWidthTop)->source, "2pt");
        EXPECT_EQ(style.Find(StyleProperty::BorderColorBottom)->source, "Red");
    }
}

TEST(ReportStyle, EmptyPropertiesAreNotSet) {
    const Definition report =
        Parse(WithItems("<Rectangle><Style><BorderStyle/><Color/></Style></Rectangle>"));
    EXPECT_TRUE(OnlyItem<Rectangle>(report).style.properties.empty());
}

TEST(ReportStyle, PageBreaksOfBothSpellings) {
    const auto location = [](const std::string& inner) {
        return OnlyItem<Rectangle>(Parse(WithItems("<Rectangle>" + inner + "</Rectangle>")))
            .pageBreak.location;
    };
    using Location = PageBreak::Location;
    EXPECT_EQ(location("<PageBreakAtStart>true</PageBreakAtStart>"), Location::Start);
    EXPECT_EQ(location("<PageBreakAtStart>true</PageBreakAtStart><PageBreakAtEnd>true</PageBreakAtEnd>"),
              Location::StartAndEnd);
    EXPECT_EQ(location("<PageBreak><BreakLocation>Between</BreakLocation></PageBreak>"), Location::Between);
    EXPECT_EQ(location(""), Location::None);
    EXPECT_THAT(
        ErrorOf(WithItems(
            "<Rectangle Name=\"r\"><PageBreak><BreakLocation>Soon</BreakLocation></PageBreak></Rectangle>")),
        AllOf(HasSubstr("Rectangle r"), HasSubstr("\"Soon\"")));
}

TEST(ReportImage, SourceAndSizing) {
    const Definition report = Parse(WithItems(
        "<Image><Source>Database</Source><Value>=1</Value><Sizing>FitProportional</Sizing></Image>"));
    EXPECT_EQ(OnlyItem<Image>(report).source, Image::Source::Database);
    EXPECT_EQ(OnlyItem<Image>(report).sizing, Image::Sizing::FitProportional);
    EXPECT_THAT(ErrorOf(WithItems("<Image><Source>Moon</Source></Image>")), HasSubstr("\"Moon\""));
}

TEST(ReportImage, AnEmbeddedOneThatTheReportDoesNotHaveIsNamed) {
    EXPECT_EQ(ErrorOf(WithItems("<Image Name=\"Logo\"><Source>Embedded</Source><Value>x</Value></Image>")),
              "sales.rpt, line 2: Image Logo, Value: the report has no embedded image \"x\"");
}

TEST(ReportItems, ABackgroundPictureWithoutASourceIsAFile) {
    const Definition report = Parse(WithItems(
        "<Textbox "
        "Name=\"t\"><Value>x</Value><Style><BackgroundImage><Value>logo.png</Value></BackgroundImage>"
        "</Style></Textbox>"));
    EXPECT_EQ(OnlyItem<Textbox>(report).style.Find(StyleProperty::BackgroundImageValue)->source, "logo.png");
    EXPECT_THAT(
        ErrorOf(WithItems("<Textbox Name=\"t\"><Value>x</Value><Style><BackgroundImage><Source>Embedded"
                          "</Source><Value>logo</Value></BackgroundImage></Style></Textbox>")),
        testing::HasSubstr("logo"));
}

}  // namespace
}  // namespace rdl::test
