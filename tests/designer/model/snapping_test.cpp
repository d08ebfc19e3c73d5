// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/canvas/snapping.h"

#include <gtest/gtest.h>

#include <sstream>

#include "designer/canvas/handles.h"

namespace designer {
namespace {

constexpr SnapRules Rules{10, 3};

std::string Text(const Snapped& snapped) {
    std::ostringstream text;
    text << snapped.dx << ',' << snapped.dy;
    for (const SnapLine& line : snapped.lines) {
        text << (line.isUpright ? " x" : " y") << line.at << ':' << line.begin << '-' << line.end;
    }
    return text.str();
}

std::string Text(const Rect& place) {
    std::ostringstream text;
    text << place.left << ',' << place.top << ',' << place.width << ',' << place.height;
    return text.str();
}

TEST(Snapping, FarFromOthersTheCornerStopsAtTheGrid) {
    EXPECT_EQ(Text(Snap({12, 7, 30, 10}, 14, 1, {}, {{200, 200, 20, 20}}, Rules)), "18,3");
}

TEST(Snapping, NearAnEdgeItStopsThereAndShowsIt) {
    // The left edge comes to 52 and stops at 50, the edge of the other one.
    EXPECT_EQ(Text(Snap({12, 0, 30, 10}, 40, 100, {}, {{50, 41, 80, 20}}, Rules)), "38,100 x50:41-110");
}

TEST(Snapping, CentresMeetCentres) {
    EXPECT_EQ(Text(Snap({0, 0, 20, 10}, 29, 0, {}, {{0, 100, 80, 10}}, {0, 3})), "30,0 x40:0-110");
}

TEST(Snapping, TheNearestOfTwoEdgesWins) {
    EXPECT_EQ(Text(Snap({0, 0, 20, 10}, 51, 0, {}, {{53, 40, 5, 5}, {52, 60, 5, 5}}, {0, 3})),
              "52,0 x52:0-65");
}

TEST(Snapping, OnlyAnEdgeThatMovesStops) {
    EXPECT_EQ(Text(Snap({12, 0, 30, 10}, 7, 0, {false, false, true, false}, {{50, 41, 80, 20}}, Rules)),
              "8,0 x50:0-61");
    EXPECT_EQ(Text(Snap({12, 0, 30, 10}, 2, 5, {false, false, true, false}, {}, Rules)), "-2,0");
}

TEST(Snapping, WithoutRulesItFollowsThePointer) {
    EXPECT_EQ(Text(Snap({12, 7, 30, 10}, 1.25, -2.5, {}, {{13, 4, 20, 20}}, {})), "1.25,-2.5");
}

TEST(Handles, OppositeEdgeStays) {
    EXPECT_EQ(Text(Resized({10, 20, 30, 40}, Handle::TopLeft, 5, -5)), "15,15,25,45");
    EXPECT_EQ(Text(Resized({10, 20, 30, 40}, Handle::Right, 5, 7)), "10,20,35,40");
    EXPECT_EQ(Text(Resized({10, 20, 30, 40}, Handle::Bottom, 5, 7)), "10,20,30,47");
}

TEST(Handles, NoSizeBelowNothing) {
    EXPECT_EQ(Text(Resized({10, 20, 30, 40}, Handle::TopLeft, 100, 100)), "40,60,0,0");
    EXPECT_EQ(Text(Resized({10, 20, 30, 40}, Handle::BottomRight, -100, -100)), "10,20,0,0");
}

TEST(Handles, TheEndsOfALineMayPassEachOther) {
    EXPECT_EQ(Text(Resized({10, 20, 30, 0}, Handle::LineEnd, -50, -5)), "10,20,-20,-5");
    EXPECT_EQ(Text(Resized({10, 20, 30, 0}, Handle::LineStart, 5, 5)), "15,25,25,-5");
}

}  // namespace
}  // namespace designer
