// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/item_grouping.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "designer/document/editing.h"
#include "designer/model/placing.h"
#include "designer/tables/tracks.h"

namespace designer {
namespace {

std::string Item(const std::string& kind, const std::string& name, const std::string& place,
                 const std::string& inner = {}) {
    return "<" + kind + " Name=\"" + name + "\">" + inner + place + "</" + kind + ">";
}

std::string At(int left, int top, int width, int height) {
    const auto size = [](const std::string& side, int points) {
        return "<" + side + ">" + std::to_string(points) + "pt</" + side + ">";
    };
    return size("Top", top) + size("Left", left) + size("Height", height) + size("Width", width);
}

// A table of one column and two rows, each 20 points high.
std::string Table(int left, int top) {
    const std::string row =
        "<TablixRow><Height>20pt</Height><TablixCells><TablixCell><CellContents>"
        "<Textbox Name=\"CELL\"><Value/></Textbox></CellContents></TablixCell></TablixCells>"
        "</TablixRow>";
    std::string first = row, second = row;
    first.replace(first.find("CELL"), 4, "C1");
    second.replace(second.find("CELL"), 4, "C2");
    return "<Tablix Name=\"T\"><TablixBody><TablixColumns><TablixColumn><Width>100pt</Width></TablixColumn>"
           "</TablixColumns><TablixRows>" +
           first + second +
           "</TablixRows></TablixBody><TablixColumnHierarchy><TablixMembers><TablixMember/></TablixMembers>"
           "</TablixColumnHierarchy><TablixRowHierarchy><TablixMembers><TablixMember/><TablixMember/>"
           "</TablixMembers></TablixRowHierarchy><Top>" +
           std::to_string(top) + "pt</Top><Left>" + std::to_string(left) + "pt</Left></Tablix>";
}

std::string Report(const std::string& items) {
    return "<Report xmlns=\"http://schemas.microsoft.com/sqlserver/reporting/2010/01/reportdefinition\">"
           "<ReportSections><ReportSection><Body><ReportItems>" +
           items +
           "</ReportItems><Height>200pt</Height></Body><Width>400pt</Width><Page><PageFooter><Height>50pt"
           "</Height><ReportItems><Textbox Name=\"Foot\">" +
           At(0, 0, 50, 20) +
           "</Textbox></ReportItems></PageFooter></Page></ReportSection></ReportSections></Report>";
}

class Groups : public testing::Test {
 protected:
    ElementId Id(const std::string& name) const {
        for (const ReportItem& item : ReadReportItems(m_document).items) {
            if (item.name == name) {
                return item.id;
            }
        }
        return NoElement;
    }
    // The place on the band.
    std::string Place(const std::string& name) const {
        for (const ReportItem& item : ReadReportItems(m_document).items) {
            if (item.name == name) {
                return std::to_string(std::lround(item.place.left)) + " " +
                       std::to_string(std::lround(item.place.top)) + " " +
                       std::to_string(std::lround(item.place.width)) + " " +
                       std::to_string(std::lround(item.place.height));
            }
        }
        return "-";
    }
    std::string Container(const std::string& name) const {
        for (const ReportItem& item : ReadReportItems(m_document).items) {
            if (item.name == name) {
                return m_document.Attribute(item.container, "Name").value_or(m_document.Name(item.container));
            }
        }
        return "-";
    }
    void Load(const std::string& items) { m_document = Document(Report(items)); }
    std::string Refusal(const std::vector<std::string>& names) {
        std::vector<ElementId> ids;
        for (const std::string& name : names) {
            ids.push_back(Id(name));
        }
        try {
            GroupItems(m_document, ReadReportItems(m_document), ids);
        } catch (const EditError& error) {
            return error.what();
        }
        return {};
    }
    void SetRow(double points) {
        const ReportItems items = ReadReportItems(m_document);
        SetTrackSize(m_document, Id("T"), Axis::Rows, 1, points);
        GrowBandOfTable(m_document, items, Id("T"));
    }

    Document m_document{Report(Item("Textbox", "A", At(50, 40, 100, 20)) +
                               Item("Line", "L", At(200, 90, -60, -40)) +
                               Item("Textbox", "B", At(10, 120, 30, 20)))};
};

TEST_F(Groups, ItemsStayWhereTheyAre) {
    const std::string before = m_document.Text();
    const ElementId rectangle = GroupItems(m_document, ReadReportItems(m_document), {Id("L"), Id("A")});
    EXPECT_EQ(m_document.Attribute(rectangle, "Name"), "Rectangle1");
    EXPECT_EQ(Place("Rectangle1"), "50 40 150 50");
    EXPECT_EQ(Place("A"), "50 40 100 20");
    EXPECT_EQ(Place("L"), "200 90 -60 -40");
    EXPECT_EQ(Container("A") + Container("L") + Container("B"), "Rectangle1Rectangle1Body");
    EXPECT_EQ(m_document.TextAt(Id("A"), "Left"), "0pt");
    EXPECT_EQ(m_document.UndoCount(), 1u);
    m_document.Undo();
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(Groups, WithinAGroupAndOutAgain) {
    GroupItems(m_document, ReadReportItems(m_document), {Id("A"), Id("L"), Id("B")});
    GroupItems(m_document, ReadReportItems(m_document), {Id("A"), Id("B")});
    EXPECT_EQ(Container("A") + " " + Container("Rectangle2"), "Rectangle2 Rectangle1");
    EXPECT_EQ(Place("A") + ", " + Place("B"), "50 40 100 20, 10 120 30 20");
    const ElementId a = Id("A");
    EXPECT_EQ(UngroupItems(m_document, ReadReportItems(m_document), {Id("Rectangle2")}),
              (std::vector{a, Id("B")}));
    UngroupItems(m_document, ReadReportItems(m_document), {Id("Rectangle1")});
    EXPECT_EQ(Container("A") + Container("L") + Container("B"), "BodyBodyBody");
    EXPECT_EQ(Place("A") + ", " + Place("L") + ", " + Place("B"),
              "50 40 100 20, 200 90 -60 -40, 10 120 30 20");
    EXPECT_EQ(Id("Rectangle1"), NoElement);
}

// The identifiers of what is moved stay, and so does every byte of it but its place.
TEST_F(Groups, AFileWithLinesIsLaidOutAsBefore) {
    const std::string box =
        "\n      <Textbox Name=\"A\">\n        <Top>10pt</Top><!-- a -->\n      </Textbox>"
        "\n      <Textbox Name=\"B\" />\n      <Textbox Name=\"C\">\n        <Left>5pt</Left>"
        "\n      </Textbox>\n    ";
    Load(box);
    const std::string before = m_document.Text();
    const std::vector<ElementId> ids{Id("A"), Id("B"), Id("C")};
    GroupItems(m_document, ReadReportItems(m_document), ids);
    EXPECT_EQ((std::vector{Id("A"), Id("B"), Id("C")}), ids);
    EXPECT_NE(m_document.Text().find("<!-- a -->"), std::string::npos);
    EXPECT_EQ(Container("A") + Container("B") + Container("C"), "Rectangle1Rectangle1Rectangle1");
    UngroupItems(m_document, ReadReportItems(m_document), {Id("Rectangle1")});
    EXPECT_EQ((std::vector{Id("A"), Id("B"), Id("C")}), ids);
    m_document.Undo();
    m_document.Undo();
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(Groups, OfDifferentBandsAreRefused) {
    const std::string before = m_document.Text();
    EXPECT_EQ(Refusal({"A", "Foot"}), "Only items that are in one band or rectangle become a group");
    EXPECT_EQ(Refusal({}), "No items are selected that could become a group");
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(Groups, ARectangleThatIsReferredToStays) {
    Load(Item("Rectangle", "R", At(10, 10, 100, 50),
              "<ReportItems>" + Item("Textbox", "A", At(5, 5, 50, 20)) + "</ReportItems>") +
         Item("Textbox", "B", At(10, 80, 50, 20), "<RepeatWith>R</RepeatWith>"));
    const std::string before = m_document.Text();
    EXPECT_THROW(UngroupItems(m_document, ReadReportItems(m_document), {Id("R")}), EditError);
    EXPECT_EQ(m_document.Text(), before);
}

TEST_F(Groups, ItemsBelowATableKeepTheirDistance) {
    Load(Table(0, 10) + Item("Textbox", "Below", At(50, 60, 100, 20)) +
         Item("Textbox", "Beside", At(200, 10, 100, 20)) + Item("Textbox", "BelowIt", At(120, 90, 100, 20)) +
         Item("Textbox", "Free", At(300, 90, 50, 20)));
    SetRow(50);
    EXPECT_EQ(Place("Below") + ", " + Place("BelowIt"), "50 90 100 20, 120 120 100 20");
    EXPECT_EQ(Place("Beside") + ", " + Place("Free"), "200 10 100 20, 300 90 50 20");
    SetRow(20);
    EXPECT_EQ(Place("Below") + ", " + Place("BelowIt"), "50 60 100 20, 120 90 100 20");
    SetRow(200);
    EXPECT_EQ(m_document.TextAt(ReadReportItems(m_document).bands[0].element, "Height"), "290pt");
}

// What is between stays between.
TEST_F(Groups, ATableThatShrinksPullsNothingOverOthers) {
    Load(Table(0, 10) + Item("Textbox", "Tall", At(110, 0, 50, 55)) +
         Item("Textbox", "Below", At(50, 60, 100, 20)));
    SetRow(5);
    EXPECT_EQ(Place("Below"), "50 55 100 20");
}

TEST_F(Groups, ARectangleGrowsWithItsTable) {
    Load(Item("Rectangle", "R", At(20, 20, 120, 60), "<ReportItems>" + Table(0, 10) + "</ReportItems>") +
         Item("Textbox", "Below", At(20, 100, 100, 20)));
    SetRow(50);
    EXPECT_EQ(Place("R") + ", " + Place("Below"), "20 20 120 80, 20 120 100 20");
}

}  // namespace
}  // namespace designer
