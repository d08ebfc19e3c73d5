// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/properties/properties.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>
#include <string>

#include "support/source_dir.h"
#include "support/temporary_folder.h"

namespace designer {
namespace {

const Property& Find(std::string_view element, std::string_view name, Schemas schemas = Schemas::Newer) {
    for (const Property* property : PropertiesOf(element, schemas)) {
        if (property->name == name) {
            return *property;
        }
    }
    throw std::runtime_error("no property " + std::string(name) + " of " + std::string(element));
}

const char* const Newer =
    R"(<Report xmlns="http://schemas.microsoft.com/sqlserver/reporting/2016/01/reportdefinition">
  <Body>
    <ReportItems>
      <Textbox Name="A">
        <Paragraphs>
          <Paragraph>
            <TextRuns>
              <TextRun>
                <Value>one</Value>
                <Style>
                  <FontSize>12pt</FontSize>
                </Style>
              </TextRun>
              <TextRun>
                <Value>two</Value>
              </TextRun>
            </TextRuns>
          </Paragraph>
        </Paragraphs>
      </Textbox>
      <Textbox Name="B" />
    </ReportItems>
  </Body>
</Report>)";

TEST(Properties, OfATextBoxAreThoseOfItsRuns) {
    Document document(Newer);
    const ElementId box = document.Find(document.Root(), "Body/ReportItems/Textbox");
    const Property& size = Find("Textbox", "Font size");
    PropertyValue value = ValueOf(document, box, size);
    EXPECT_EQ(value.text, "12pt");
    EXPECT_TRUE(value.isSet);
    EXPECT_TRUE(value.isMixed);
    SetValue(document, box, size, "9pt");
    EXPECT_EQ(document.UndoCount(), 1u);
    EXPECT_EQ(document.UndoName(), "Set Font size");
    value = ValueOf(document, box, size);
    EXPECT_EQ(value.text, "9pt");
    EXPECT_FALSE(value.isMixed);
    ResetValue(document, box, size);
    value = ValueOf(document, box, size);
    EXPECT_EQ(value.text, "10pt");
    EXPECT_FALSE(value.isSet);
    EXPECT_EQ(document.Text().find("Style"), std::string::npos);
    document.Undo();
    document.Undo();
    EXPECT_EQ(document.Text(), Newer);
    EXPECT_EQ(ValueOf(document, box, Find("Textbox", "Value")).text, "one");
}

TEST(Properties, OfEachParagraphHaveTheirElementInIt) {
    Document document(
        "<Report "
        "xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\"><Textbox>"
        "<Paragraphs><Paragraph><TextRuns/></Paragraph><Paragraph><TextRuns/></Paragraph></Paragraphs>"
        "</Textbox></Report>");
    const std::string before = document.Text();
    const ElementId box = document.Find(document.Root(), "Textbox");
    const Property& list = Find("Textbox", "List");
    EXPECT_EQ(ValueOf(document, box, list).text, "None");
    SetValue(document, box, list, "Bulleted");
    EXPECT_EQ(
        document.Text(),
        "<Report "
        "xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\"><Textbox>"
        "<Paragraphs><Paragraph><TextRuns/><ListStyle>Bulleted</ListStyle></Paragraph><Paragraph><TextRuns/>"
        "<ListStyle>Bulleted</ListStyle></Paragraph></Paragraphs></Textbox></Report>");
    EXPECT_EQ(ValueOf(document, box, list).text, "Bulleted");
    EXPECT_FALSE(ValueOf(document, box, list).isMixed);
    ResetValue(document, box, list);
    EXPECT_EQ(document.Text(), before);
}

TEST(Properties, AreMadeWithTheirPath) {
    Document document(Newer);
    const ElementId box = document.Children(document.Find(document.Root(), "Body/ReportItems"))[1];
    SetValue(document, box, Find("Textbox", "Font size"), "9pt");
    SetValue(document, box, Find("Textbox", "Border style"), "Solid");
    EXPECT_EQ(document.TextAt(box, "Paragraphs/Paragraph/TextRuns/TextRun/Style/FontSize"), "9pt");
    EXPECT_EQ(document.TextAt(box, "Style/Border/Style"), "Solid");
}

TEST(Properties, OfTheOlderSchemasAreWhereTheseHaveThem) {
    Document document(
        "<Report xmlns='http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition'>"
        "<Body><ReportItems><Textbox Name='A'><Value>x</Value></Textbox></ReportItems></Body></Report>");
    ASSERT_TRUE(IsOlderSchema(document));
    const ElementId box = document.Find(document.Root(), "Body/ReportItems/Textbox");
    SetValue(document, box, Find("Textbox", "Font size", Schemas::Older), "9pt");
    SetValue(document, box, Find("Textbox", "Left border colour", Schemas::Older), "Red");
    SetValue(document, box, Find("Textbox", "Value", Schemas::Older), "=1");
    SetValue(document, document.Root(), Find("Report", "Page width", Schemas::Older), "20cm");
    EXPECT_EQ(document.Text(),
              "<Report xmlns='http://schemas.microsoft.com/sqlserver/reporting/2005/01/reportdefinition'>"
              "<Body><ReportItems><Textbox "
              "Name='A'><Value>=1</Value><Style><BorderColor><Left>Red</Left></BorderColor>"
              "<FontSize>9pt</FontSize></Style></Textbox></ReportItems></Body><PageWidth>20cm</PageWidth></"
              "Report>");
    EXPECT_EQ(ValueOf(document, box, Find("Textbox", "Left border colour", Schemas::Older)).text, "Red");
    for (const Property* property : PropertiesOf("Rectangle", Schemas::Older)) {
        EXPECT_NE(property->name, "Page break");
    }
}

TEST(Properties, ANameChangesWhatRefersToIt) {
    Document document("<R><Textbox Name='A'/><Line><RepeatWith>A</RepeatWith></Line></R>");
    SetValue(document, document.Find(document.Root(), "Textbox"), Find("Textbox", "Name"), "B");
    EXPECT_EQ(document.Text(), "<R><Textbox Name='B'/><Line><RepeatWith>B</RepeatWith></Line></R>");
    EXPECT_THROW(ResetValue(document, document.Find(document.Root(), "Textbox"), Find("Textbox", "Name")),
                 EditError);
}

TEST(Properties, RefuseValuesThatAreNone) {
    EXPECT_EQ(FaultOf(Find("Textbox", "Left"), "2"),
              "\"2\" is no value of Left: a size is a number with in, cm, mm, pt or pc: 2.5cm");
    EXPECT_EQ(FaultOf(Find("Textbox", "Left"), "=1"),
              "\"=1\" is no value of Left: it cannot be an expression");
    EXPECT_EQ(FaultOf(Find("Textbox", "Left"), " 2 CM "), "");
    EXPECT_EQ(FaultOf(Find("Textbox", "Text colour"), "#12345"),
              "\"#12345\" is no value of Text colour: a colour is a name or #RRGGBB");
    EXPECT_EQ(FaultOf(Find("Textbox", "Text colour"), "blurple"),
              "\"blurple\" is no value of Text colour: a colour is a name or #RRGGBB");
    EXPECT_EQ(FaultOf(Find("Textbox", "Text colour"), "#123456"), "");
    EXPECT_EQ(FaultOf(Find("Textbox", "Text colour"), "=IIf(True, \"Red\", \"Blue\")"), "");
    EXPECT_EQ(FaultOf(Find("Textbox", "Vertical alignment"), "Centre"),
              "\"Centre\" is no value of Vertical alignment: it is one of Default Top Middle Bottom");
    EXPECT_EQ(FaultOf(Find("Textbox", "Can grow"), "yes"),
              "\"yes\" is no value of Can grow: it is true or false");
    EXPECT_EQ(FaultOf(Find("Textbox", "Order"), "1.5"), "\"1.5\" is no value of Order: it is a whole number");
    EXPECT_EQ(FaultOf(Find("ChartAxis", "Minimum"), "low"), "\"low\" is no value of Minimum: it is a number");
    EXPECT_EQ(FaultOf(Find("Group", "Parent"), "Region"),
              "\"Region\" is no value of Parent: it is an expression, which begins with =");
    Document document("<R><Textbox Name='A'/></R>");
    EXPECT_THROW(SetValue(document, document.Find(document.Root(), "Textbox"), Find("Textbox", "Left"), "2"),
                 EditError);
    EXPECT_EQ(document.UndoCount(), 0u);
}

TEST(Properties, RefuseSizesThatNothingCanHave) {
    for (const char* name : {"Left", "Top"}) {
        EXPECT_EQ(FaultOf(Find("Textbox", name), "-1mm", "Textbox"),
                  "\"-1mm\" is no value of " + std::string(name) + ": it is 0in to 455in");
    }
    EXPECT_EQ(FaultOf(Find("Textbox", "Width"), "-5cm", "Textbox"),
              "\"-5cm\" is no value of Width: it is 0in to 455in");
    EXPECT_EQ(FaultOf(Find("Textbox", "Width"), "99999cm", "Textbox"),
              "\"99999cm\" is no value of Width: it is 0in to 455in");
    EXPECT_EQ(FaultOf(Find("Textbox", "Width"), "455in", "Textbox"), "");
    EXPECT_EQ(FaultOf(Find("Line", "Height"), "-5cm", "Line"), "");
    EXPECT_EQ(FaultOf(Find("Line", "Height"), "-456in", "Line"),
              "\"-456in\" is no value of Height: it is -455in to 455in");
    for (const char* size : {"-5pt", "0pt", "0.9pt", "99999pt", "201pt"}) {
        EXPECT_EQ(FaultOf(Find("Textbox", "Font size"), size),
                  "\"" + std::string(size) + "\" is no value of Font size: it is 1pt to 200pt");
        EXPECT_NE(FaultOf(Find("ChartTitle", "Font size"), size), "");
    }
    EXPECT_EQ(FaultOf(Find("Textbox", "Font size"), "200pt"), "");
    EXPECT_EQ(FaultOf(Find("Textbox", "Left padding"), "-1pt"),
              "\"-1pt\" is no value of Left padding: it is 0pt to 1000pt");
    EXPECT_EQ(FaultOf(Find("Textbox", "Left border width"), "21pt"),
              "\"21pt\" is no value of Left border width: it is 0pt to 20pt");
    EXPECT_EQ(FaultOf(Find("Textbox", "Hanging indent"), "-1cm"), "");
    EXPECT_NE(FaultOf(Find("Textbox", "Left indent"), "-1cm"), "");
    Document document("<R><Line Name='L'/><Textbox Name='A'/></R>");
    const ElementId line = document.Find(document.Root(), "Line"),
                    box = document.Find(document.Root(), "Textbox");
    EXPECT_THROW(SetValueOfAll(document, {line, box}, Find("Textbox", "Width"), "-5cm"), EditError);
    EXPECT_EQ(document.UndoCount(), 0u);
    SetValue(document, line, Find("Line", "Width"), "-5cm");
    EXPECT_EQ(document.TextAt(line, "Width"), "-5cm");
}

TEST(Properties, OfAnElementHaveNamesAndPathsOfTheirOwn) {
    for (const std::string_view element : ElementsWithProperties()) {
        for (const bool isOlder : {false, true}) {
            std::set<std::string> names, paths;
            for (const Property* property :
                 PropertiesOf(element, isOlder ? Schemas::Older : Schemas::Newer)) {
                const std::string category(property->category);
                EXPECT_TRUE(names.insert(category + "/" + std::string(property->name)).second)
                    << element << ": " << property->name;
                const std::string path(isOlder && !property->olderPath.empty() ? property->olderPath
                                                                               : property->path);
                EXPECT_TRUE(paths.insert(path).second) << element << ": " << path;
                EXPECT_EQ(property->kind == PropertyKind::Words, !property->words.empty())
                    << element << ": " << property->name;
                if (!property->missing.empty() && property->expressions != Expressions::Only) {
                    EXPECT_EQ(FaultOf(*property, property->missing), "") << element << ": " << property->name;
                }
            }
        }
    }
}

// Names of elements that the engine's readers take from a file. They hold others, or belong to lists that
// have panes of their own.
const std::set<std::string> NoProperties = {"Body",
                                            "Page",
                                            "PageHeader",
                                            "PageFooter",
                                            "ReportItems",
                                            "ReportSections",
                                            "DataSources",
                                            "DataSets",
                                            "Fields",
                                            "Rows",
                                            "Filters",
                                            "FilterValues",
                                            "Variables",
                                            "Values",
                                            "ValidValues",
                                            "DefaultValue",
                                            "ReportParameters",
                                            "ParameterValues",
                                            "EmbeddedImages",
                                            "ImageData",
                                            "CustomProperties",
                                            "CodeModules",
                                            "Classes",
                                            "ClassName",
                                            "ConnectionProperties",
                                            "QueryParameters",
                                            "Query",
                                            "SharedDataSet",
                                            "DataSetReference",
                                            "SortExpressions",
                                            "Sorting",
                                            "GroupExpressions",
                                            "Grouping",
                                            "Group",
                                            "Parameters",
                                            "Style",
                                            "BackgroundImage",
                                            "Paragraphs",
                                            "TextRuns",
                                            "Action",
                                            "ActionInfo",
                                            "Actions",
                                            "Visibility",
                                            "PageBreak",
                                            "TablixBody",
                                            "TablixColumns",
                                            "TablixRows",
                                            "TablixCells",
                                            "TablixHeader",
                                            "TablixCorner",
                                            "TablixCornerRows",
                                            "TablixColumnHierarchy",
                                            "TablixRowHierarchy",
                                            "TablixMembers",
                                            "CellContents",
                                            "TableColumns",
                                            "TableGroups",
                                            "TableRows",
                                            "TableCells",
                                            "Header",
                                            "Footer",
                                            "Details",
                                            "Corner",
                                            "ColumnGroupings",
                                            "RowGroupings",
                                            "DynamicColumns",
                                            "DynamicRows",
                                            "StaticColumns",
                                            "StaticRows",
                                            "Subtotal",
                                            "MatrixColumns",
                                            "MatrixRows",
                                            "MatrixCells",
                                            "ChartData",
                                            "ChartSeriesHierarchy",
                                            "ChartCategoryHierarchy",
                                            "ChartMembers",
                                            "ChartAreas",
                                            "ChartLegends",
                                            "ChartTitles",
                                            "ChartNoDataMessage",
                                            "ChartCustomPaletteColors",
                                            "ChartSeriesCollection",
                                            "ChartDerivedSeriesCollection",
                                            "ChartDataPoints",
                                            "ChartDataPointValues",
                                            "ChartDataLabel",
                                            "ChartMarker",
                                            "ChartItemInLegend",
                                            "ChartLegendTitle",
                                            "ChartCategoryAxes",
                                            "ChartValueAxes",
                                            "ChartAxisTitle",
                                            "ChartMajorGridLines",
                                            "ChartMinorGridLines",
                                            "ChartMajorTickMarks",
                                            "ChartMinorTickMarks",
                                            "DataPoints",
                                            "DataValues",
                                            "DataLabel",
                                            "Marker",
                                            "PlotArea",
                                            "Axis",
                                            "Legend",
                                            "Title",
                                            "MajorGridLines",
                                            "MinorGridLines",
                                            "Code"};

TEST(Properties, AreAllThatTheEngineReads) {
    std::set<std::string> steps;
    for (const std::string_view element : ElementsWithProperties()) {
        for (const bool isOlder : {false, true}) {
            for (const Property* property :
                 PropertiesOf(element, isOlder ? Schemas::Older : Schemas::Newer)) {
                std::string path(isOlder && !property->olderPath.empty() ? property->olderPath
                                                                         : property->path);
                std::replace(path.begin(), path.end(), ':', '/');
                std::replace(path.begin(), path.end(), '@', '/');
                for (std::size_t at = 0; at != std::string::npos;) {
                    const std::size_t slash = path.find('/', at);
                    steps.insert(path.substr(at, slash - at));
                    at = slash == std::string::npos ? slash : slash + 1;
                }
            }
        }
    }
    const std::regex read(
        "(?:ChildExpr|ChildText|ChildConnection|Flag|Number|Size|SignedSize|Choose|Of|Child|Label|Lines|Grid|"
        "Ticks)\\("
        "[^\"();]*\"([A-Z][A-Za-z]+)\"");
    for (const char* const file :
         {"item_reader", "textbox_reader", "tablix_reader", "table_reader", "matrix_reader", "regions",
          "group_reader", "data_reader", "parse", "chart_reader_newer", "chart_reader_older"}) {
        const std::string source = ReadBytes(SourceDir() + "/src/rdl/definition/" + file + ".cpp");
        ASSERT_FALSE(source.empty()) << file;
        for (std::sregex_iterator match(source.begin(), source.end(), read), end; match != end; ++match) {
            const std::string name = (*match)[1];
            EXPECT_TRUE(steps.contains(name) || NoProperties.contains(name)) << file << ": " << name;
        }
    }
    const std::string style = ReadBytes(SourceDir() + "/src/rdl/definition/style_reader.cpp");
    const std::regex row("\\{\"([A-Z][A-Za-z]+)\", P::");
    int rows = 0;
    for (std::sregex_iterator match(style.begin(), style.end(), row), end; match != end; ++match, ++rows) {
        EXPECT_TRUE(steps.contains((*match)[1])) << (*match)[1];
    }
    EXPECT_EQ(rows, 29);
}

}  // namespace
}  // namespace designer
