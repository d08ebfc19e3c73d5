// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/document/names.h"

#include <gtest/gtest.h>

#include <string>

namespace designer {
namespace {

std::string RefusalOf(Document& document, ElementId id, const std::string& name) {
    try {
        Rename(document, id, name);
        return {};
    } catch (const EditError& error) {
        return error.what();
    }
}

TEST(Names, ReferencesToAnItemFollow) {
    Document document(
        R"(<R><Textbox Name="A"><Value>=ReportItems!A.Value + ReportItems!AB.Value &amp; "A"</Value></Textbox>)"
        R"(<Textbox Name="AB"><Value>ReportItems!A.Value</Value><ToggleItem>A</ToggleItem></Textbox>)"
        R"(<Line Name="L"><RepeatWith>AB</RepeatWith></Line></R>)");
    const ElementId box = document.Find(document.Root(), "Textbox");
    const std::vector<LeftReference> left = Rename(document, box, "Total");
    EXPECT_EQ(
        document.Text(),
        R"(<R><Textbox Name="Total"><Value>=ReportItems!Total.Value + ReportItems!AB.Value &amp; "A"</Value></Textbox>)"
        R"(<Textbox Name="AB"><Value>ReportItems!A.Value</Value><ToggleItem>Total</ToggleItem></Textbox>)"
        R"(<Line Name="L"><RepeatWith>AB</RepeatWith></Line></R>)");
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].element, document.Find(box, "Value"));
    EXPECT_EQ(document.UndoName(), "Rename A");
}

TEST(Names, ReferencesToDataParametersAndImagesFollow) {
    Document document(
        "<R><DataSources><DataSource Name='S'/></DataSources><DataSets><DataSet Name='D'><Query>"
        "<DataSourceName>S</DataSourceName></Query><Fields><Field Name='F'/></Fields></DataSet></DataSets>"
        "<ReportParameters><ReportParameter Name='P'/></ReportParameters>"
        "<Tablix><DataSetName>D</DataSetName><V>=Parameters!p.Value + Fields!F.Value</V></Tablix>"
        "<EmbeddedImages><EmbeddedImage Name='I'/></EmbeddedImages>"
        "<Image Name='X'><Source>Embedded</Source><Value>I</Value></Image>"
        "<Image Name='Y'><Source>External</Source><Value>I</Value></Image></R>");
    const ElementId root = document.Root();
    Rename(document, document.Find(root, "DataSources/DataSource"), "S2");
    Rename(document, document.Find(root, "DataSets/DataSet"), "D2");
    Rename(document, document.Find(root, "ReportParameters/ReportParameter"), "P2");
    Rename(document, document.Find(root, "EmbeddedImages/EmbeddedImage"), "I2");
    const auto left = Rename(document, document.Find(root, "DataSets/DataSet/Fields/Field"), "F2");
    EXPECT_EQ(
        document.Text(),
        "<R><DataSources><DataSource Name='S2'/></DataSources><DataSets><DataSet Name='D2'><Query>"
        "<DataSourceName>S2</DataSourceName></Query><Fields><Field Name='F2'/></Fields></DataSet></DataSets>"
        "<ReportParameters><ReportParameter Name='P2'/></ReportParameters>"
        "<Tablix><DataSetName>D2</DataSetName><V>=Parameters!P2.Value + Fields!F.Value</V></Tablix>"
        "<EmbeddedImages><EmbeddedImage Name='I2'/></EmbeddedImages>"
        "<Image Name='X'><Source>Embedded</Source><Value>I2</Value></Image>"
        "<Image Name='Y'><Source>External</Source><Value>I</Value></Image></R>");
    ASSERT_EQ(left.size(), 1u);
    EXPECT_EQ(left[0].text, "=Parameters!P2.Value + Fields!F.Value");
}

TEST(Names, RefusesNamesThatAreTakenOrNone) {
    Document document("<R><Textbox Name='A'/><Group Name='G'/><DataSource Name='S'/></R>");
    const ElementId box = document.Find(document.Root(), "Textbox");
    EXPECT_EQ(RefusalOf(document, box, "g"), "the name g is taken");
    EXPECT_EQ(
        RefusalOf(document, box, "1a"),
        "\"1a\" is not a valid name: names begin with a letter or _ and continue with letters, digits and _");
    EXPECT_EQ(
        RefusalOf(document, box, ""),
        "\"\" is not a valid name: names begin with a letter or _ and continue with letters, digits and _");
    EXPECT_EQ(RefusalOf(document, box, "a-b"),
              "\"a-b\" is not a valid name: names begin with a letter or _ and continue with letters, digits "
              "and _");
    EXPECT_EQ(RefusalOf(document, box, "S"), "");
    EXPECT_EQ(RefusalOf(document, box, "s"), "");
    EXPECT_EQ(RefusalOf(document, box,
                        "Gr\xC3\xB6\xC3\x9F"
                        "e"),
              "");
    EXPECT_EQ(RefusalOf(document, box, "\xE5\xB7\xA5"), "");
    EXPECT_EQ(RefusalOf(document, box, "a\xC2\xB7"),
              "\"a\xC2\xB7\" is not a valid name: names begin with a letter or _ and continue with letters, "
              "digits and _");
}

TEST(Names, FindsTheNextFreeName) {
    const Document document("<R><a Name='Box1'/><b Name='BOX2'/><c Name='Title'/></R>");
    EXPECT_EQ(UniqueName(document, "Box"), "Box");
    EXPECT_EQ(UniqueName(document, "Box1"), "Box3");
    EXPECT_EQ(UniqueName(document, "title"), "title1");
}

}  // namespace
}  // namespace designer
