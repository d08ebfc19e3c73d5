// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/model/arranging.h"

#include <gtest/gtest.h>

#include <sstream>

namespace designer {
namespace {

std::string Text(const std::vector<Placement>& items) {
    std::ostringstream text;
    for (const Placement& item : items) {
        const Rect& place = item.place;
        text << (item.id == items.front().id ? "" : " ") << place.left << ',' << place.top << ','
             << place.width << ',' << place.height;
    }
    return text.str();
}

std::vector<Placement> Three() {
    return {{1, {10, 20, 30, 10}}, {2, {100, 50, 40, 20}}, {3, {60, 80, 20, 30}}};
}

std::string After(Arrangement arrangement) {
    return Text(Arranged(Three(), arrangement));
}

TEST(Arranging, TheLastOneGivesTheEdge) {
    EXPECT_EQ(After(Arrangement::AlignLeft), "60,20,30,10 60,50,40,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::AlignCentre), "55,20,30,10 50,50,40,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::AlignRight), "50,20,30,10 40,50,40,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::AlignTop), "10,80,30,10 100,80,40,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::AlignMiddle), "10,90,30,10 100,85,40,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::AlignBottom), "10,100,30,10 100,90,40,20 60,80,20,30");
}

TEST(Arranging, TheLastOneGivesTheSize) {
    EXPECT_EQ(After(Arrangement::SameWidth), "10,20,20,10 100,50,20,20 60,80,20,30");
    EXPECT_EQ(After(Arrangement::SameHeight), "10,20,30,30 100,50,40,30 60,80,20,30");
    EXPECT_EQ(After(Arrangement::SameSize), "10,20,20,30 100,50,20,30 60,80,20,30");
}

TEST(Arranging, GapsBecomeEqualAndTheOuterOnesStay) {
    // 130 points from 10 to 140, 90 of them taken: gaps of 20.
    EXPECT_EQ(After(Arrangement::DistributeAcross), "10,20,30,10 100,50,40,20 60,80,20,30");
    std::vector<Placement> items = Three();
    items[2].place.left = 41;
    EXPECT_EQ(Text(Arranged(items, Arrangement::DistributeAcross)), "10,20,30,10 100,50,40,20 60,80,20,30");
    // 90 points from 20 to 110, 60 of them taken: gaps of 15.
    EXPECT_EQ(After(Arrangement::DistributeDown), "10,20,30,10 100,45,40,20 60,80,20,30");
}

TEST(Arranging, TooFewItemsStay) {
    const std::vector<Placement> two{{1, {10, 20, 30, 10}}, {2, {100, 50, 40, 20}}};
    EXPECT_EQ(Text(Arranged(two, Arrangement::DistributeAcross)), "10,20,30,10 100,50,40,20");
    EXPECT_EQ(Text(Arranged({two[0]}, Arrangement::AlignRight)), "10,20,30,10");
}

TEST(Arranging, AreaIsAroundLinesThatGoUpwards) {
    EXPECT_EQ(Text({{0, AreaOf({{1, {10, 50, 30, -20}}, {2, {5, 40, 10, 5}}})}}), "5,30,35,20");
}

}  // namespace
}  // namespace designer
