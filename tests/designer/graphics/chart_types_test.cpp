// SPDX-License-Identifier: GPL-3.0-or-later
// The types of charts that the designer offers and those that the engine draws.
#include "designer/graphics/chart_types.h"

#include <algorithm>
#include <map>
#include <set>
#include <tuple>

#include "designer/graphics/new_graphics.h"
#include "rdl/definition/chart_reader.h"
#include "rdl/definition/parse.h"
#include "sales_report.h"

namespace designer::test {
namespace {

using Words = std::pair<std::string, std::string>;
using Look = std::tuple<rdl::ChartKind, rdl::ChartStack, rdl::ChartCurve, bool, bool, bool>;

// How the engine draws a new chart of the type.
Look LookOf(const ChartType& type, const std::string& year) {
    Document document(SalesReport({}, year));
    InsertGraphic(document, ReadReportItems(document).bands.front(), {0, 0, 200, 150}, NewGraphic::Chart,
                  {.chart = &type});
    const rdl::Definition report = rdl::ParseDefinition(document.Bytes(), "sales.rdl");
    const auto& chart = dynamic_cast<const rdl::Chart&>(*report.sections.at(0).items.at(0));
    const rdl::ChartSeries& series = chart.series.at(0);
    return {series.kind, series.stack, series.curve, series.exploded, series.joined, series.range};
}

std::set<Words> DrawnTypes() {
    std::set<Words> drawn;
    for (const rdl::ChartType& row : rdl::ChartTypes()) {
        drawn.emplace(row.type, row.subtype);
    }
    return drawn;
}

TEST(ChartTypes, EachIsDrawnAndLooksLikeNoOther) {
    const std::set<Words> drawn = DrawnTypes();
    std::map<Look, std::string> looks;
    for (const ChartType& type : ChartTypes()) {
        const std::string title(type.title);
        EXPECT_EQ(drawn.count(Words(type.type, type.subtype)), 1u) << title;
        const Look look = LookOf(type, "2016");
        const auto [other, isNew] = looks.emplace(look, title);
        EXPECT_TRUE(isNew) << title << " is drawn as " << other->second;
        if (!type.olderType.empty()) {
            EXPECT_EQ(drawn.count(Words(type.olderType, type.olderSubtype)), 1u) << title;
            EXPECT_TRUE(LookOf(type, "2005") == look) << title;
        }
    }
}

TEST(ChartTypes, WhatIsDrawnIsOfferedOrLeftToTheProperties) {
    const std::set<Words> left = {
        {"Shape", "Plain"},             // a pie by another name
        {"Shape", "CalloutPie"},        // is drawn as a pie
        {"Shape", "ExplodedDoughnut"},  // from here on variants of types that are offered
        {"Doughnut", "Exploded"},
        {"Area", "Smooth"},
        {"Scatter", "SmoothLine"},
        {"Range", "Smooth"},
        {"Range", "Bar"},
        {"Stock", "HighLowClose"},
        {"Polar", "Plain"},  // has angles, which the dialog does not ask for
    };
    std::set<Words> offered;
    for (const ChartType& type : ChartTypes()) {
        offered.emplace(type.type, type.subtype);
        offered.emplace(type.olderType, type.olderSubtype);
    }
    std::set<Words> others;
    for (const Words& words : DrawnTypes()) {
        if (offered.count(words) == 0) {
            others.insert(words);
        }
    }
    EXPECT_EQ(others, left);
}

}  // namespace
}  // namespace designer::test
