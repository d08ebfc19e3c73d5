// SPDX-License-Identifier: GPL-3.0-or-later
// Gauge panels as they are read.
#include "rdl/definition/gauge.h"

#include <gmock/gmock.h>

#include <algorithm>

#include "rdl/definition/rdl_text.h"

namespace rdl::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;

std::string Panel(const std::string& inner, const std::string& uri = Ns2016) {
    return WithItems("<GaugePanel Name=\"Targets\">" + inner + "</GaugePanel>", uri);
}

std::string PointerWith(const std::string& inner) {
    return "<RadialGauges><RadialGauge Name=\"Dial\"><GaugeScales><RadialScale Name=\"Scale\"><GaugePointers>"
           "<RadialPointer Name=\"Needle\"><GaugeInputValue><Value>=Sum(Fields!Total.Value)</Value>" +
           inner +
           "</GaugeInputValue></RadialPointer></GaugePointers></RadialScale></GaugeScales></RadialGauge>"
           "</RadialGauges>";
}

const GaugePanel& PanelOf(const Definition& report) {
    return OnlyItem<GaugePanel>(report);
}

TEST(GaugeDefinition, ItemsOfAllKindsAreRead) {
    const Definition report = Parse(
        Panel("<RadialGauges><RadialGauge Name=\"A\"/></RadialGauges><LinearGauges><LinearGauge Name=\"B\"/>"
              "</LinearGauges><StateIndicators><StateIndicator Name=\"C\"/></StateIndicators>"
              "<NumericIndicators><NumericIndicator Name=\"D\"/></NumericIndicators><GaugeImages><GaugeImage "
              "Name=\"E\"/></GaugeImages><GaugeLabels><GaugeLabel Name=\"F\"/></GaugeLabels>"));
    const auto& items = PanelOf(report).items;
    ASSERT_EQ(items.size(), 6U);
    constexpr GaugeItemKind Kinds[] = {GaugeItemKind::Radial,         GaugeItemKind::Linear,
                                       GaugeItemKind::StateIndicator, GaugeItemKind::NumericIndicator,
                                       GaugeItemKind::Image,          GaugeItemKind::Label};
    for (std::size_t i = 0; i < items.size(); ++i) {
        EXPECT_EQ(items[i].kind, Kinds[i]);
        EXPECT_EQ(items[i].name, std::string(1, static_cast<char>('A' + i)));
    }
}

TEST(GaugeDefinition, SchemasSince2008HaveThem) {
    for (const std::string& uri : {Ns2008, Ns2016}) {
        const Definition report = Parse(Panel(PointerWith(""), uri));
        const GaugePointer& pointer = PanelOf(report).items.at(0).scales.at(0).pointers.at(0);
        EXPECT_EQ(pointer.value.value.source, "=Sum(Fields!Total.Value)");
        EXPECT_EQ(pointer.value.value.where,
                  "GaugePanel Targets, RadialGauge Dial, RadialScale Scale, RadialPointer Needle, "
                  "GaugeInputValue, Value");
    }
}

TEST(GaugeDefinition, PropertiesAreKeptByTheirNames) {
    const Definition report =
        Parse(Panel("<RadialGauges><RadialGauge "
                    "Name=\"Dial\"><PivotY>75</PivotY><Left>=1+1</Left></RadialGauge></RadialGauges>"));
    const GaugeItem& dial = PanelOf(report).items.at(0);
    EXPECT_EQ(dial["PivotY"].source, "75");
    EXPECT_TRUE(dial["Left"].IsExpression());
    EXPECT_FALSE(dial["PivotX"].IsSet());
}

TEST(GaugeDefinition, GroupsStandWithinEachOther) {
    const Definition report =
        Parse(Panel("<GaugeMember><Group Name=\"Year\"><GroupExpressions><GroupExpression>=1"
                    "</GroupExpression></GroupExpressions></Group><GaugeMember><Group Name=\"Month\"/>"
                    "</GaugeMember></GaugeMember>"));
    const auto& members = PanelOf(report).data.rowMembers;
    ASSERT_EQ(members.size(), 1U);
    EXPECT_EQ(members[0].group->name, "Year");
    EXPECT_EQ(members[0].members.at(0).group->name, "Month");
}

TEST(GaugeDefinition, FormulaThatCannotBeWorkedOutIsNamed) {
    for (const char* formula : {"Percentile", "OpenClose", "RateOfChange", "Integral"}) {
        EXPECT_THAT(ErrorOf(Panel(PointerWith("<Formula>" + std::string(formula) + "</Formula>"))),
                    AllOf(HasSubstr("line 2"), HasSubstr("RadialPointer Needle, GaugeInputValue, Formula"),
                          HasSubstr("the formula \"" + std::string(formula) + "\" cannot be computed")));
    }
    EXPECT_EQ(ErrorOf(Panel(PointerWith("<Formula>Average</Formula>"))), "");
}

TEST(GaugeDefinition, ParentIsFoundByItsNameWithOrWithoutItsCollection) {
    const auto parent = [](const std::string& name) {
        return PanelOf(Parse(Panel("<RadialGauges><RadialGauge Name=\"Dial\"/></RadialGauges><GaugeLabels>"
                                   "<GaugeLabel Name=\"L\"><ParentItem>" +
                                   name + "</ParentItem></GaugeLabel></GaugeLabels>")))
            .items.at(1)
            .parent;
    };
    EXPECT_EQ(parent("RadialGauges.Dial"), 0);
    EXPECT_EQ(parent("Dial"), 0);
    EXPECT_EQ(parent(""), -1);
    EXPECT_EQ(parent("RadialGauges.Other"), -1);
}

TEST(GaugeDefinition, ItemsThatLieInEachOtherAreAnError) {
    EXPECT_THAT(ErrorOf(Panel("<RadialGauges><RadialGauge Name=\"A\"><ParentItem>RadialGauges.B</ParentItem>"
                              "</RadialGauge><RadialGauge Name=\"B\"><ParentItem>RadialGauges.A</ParentItem>"
                              "</RadialGauge></RadialGauges>")),
                AllOf(HasSubstr("GaugePanel Targets"), HasSubstr("lies within itself")));
}

TEST(GaugeDefinition, NumberOfItsPartsIsBounded) {
    std::string gauges, ranges;
    for (int i = 0; i < 101; ++i) {
        gauges += "<RadialGauge Name=\"G" + std::to_string(i) + "\"/>";
        ranges += "<ScaleRange Name=\"A\"/><ScaleRange Name=\"B\"/>";
    }
    EXPECT_THAT(ErrorOf(Panel("<RadialGauges>" + gauges + "</RadialGauges>")),
                HasSubstr("it has more than 100 gauges"));
    EXPECT_THAT(
        ErrorOf(Panel("<RadialGauges><RadialGauge Name=\"D\"><GaugeScales><RadialScale Name=\"S\">"
                      "<ScaleRanges>" +
                      ranges + "</ScaleRanges></RadialScale></GaugeScales></RadialGauge></RadialGauges>")),
        HasSubstr("more than 200 elements ScaleRange"));
}

TEST(GaugeDefinition, EveryExpressionIsVisitedOnce) {
    const Definition report = Parse(Panel(
        PointerWith("<Multiplier>=2</Multiplier>") +
        "<StateIndicators><StateIndicator Name=\"I\"><GaugeInputValue><Value>=1</Value></GaugeInputValue>"
        "<IndicatorStates><IndicatorState Name=\"S\"><StartValue><Value>=0</Value></StartValue>"
        "<Color>=\"Red\"</Color></IndicatorState></IndicatorStates></StateIndicator></StateIndicators>"));
    std::vector<int> ids;
    WalkGauge(PanelOf(report), [&ids](const Expr& source) {
        if (source.IsExpression()) {
            ids.push_back(source.id);
        }
    });
    std::sort(ids.begin(), ids.end());
    ASSERT_EQ(static_cast<int>(ids.size()), report.expressionCount);
    EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());
}

}  // namespace
}  // namespace rdl::test
