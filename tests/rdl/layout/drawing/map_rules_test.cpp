// SPDX-License-Identifier: GPL-3.0-or-later
// Buckets, colours and sizes of a map's rules, and the projections.
#include <gmock/gmock.h>

#include "rdl/layout/drawing/map/projection.h"
#include "rdl/layout/drawing/map/rules.h"

namespace rdl::layout {
namespace {

using testing::ElementsAre;

std::vector<Value> Numbers(std::initializer_list<int> numbers) {
    std::vector<Value> values;
    for (const int number : numbers) {
        values.push_back(Value::Integer(number));
    }
    return values;
}

MapBuckets Sorted(const std::vector<Value>& values, const std::string& type, int count) {
    return SortIntoBuckets(values, {type, count, {}, {}, {}}, FindCulture(""));
}

std::vector<double> BeginsOf(const MapBuckets& buckets) {
    std::vector<double> begins;
    for (const MapBucket& bucket : buckets.list) {
        begins.push_back(bucket.from);
    }
    return begins;
}

TEST(MapRules, EqualIntervalsHaveOneLength) {
    const MapBuckets buckets = Sorted(Numbers({0, 1, 2, 30, 100}), "EqualInterval", 4);
    EXPECT_THAT(BeginsOf(buckets), ElementsAre(0, 25, 50, 75));
    EXPECT_EQ(buckets.list.back().to, 100);
    EXPECT_THAT(buckets.of, ElementsAre(0, 0, 0, 1, 3));
}

TEST(MapRules, EqualDistributionsHaveOneCount) {
    const MapBuckets buckets = Sorted(Numbers({1, 2, 3, 10, 50, 100}), "EqualDistribution", 3);
    EXPECT_THAT(BeginsOf(buckets), ElementsAre(1, 3, 50));
    EXPECT_THAT(buckets.of, ElementsAre(0, 0, 1, 1, 2, 2));
    EXPECT_THAT(BeginsOf(Sorted(Numbers({5, 5, 5, 9}), "EqualDistribution", 4)), ElementsAre(5, 9));
}

TEST(MapRules, OptimalBucketsAreNaturalGroups) {
    const MapBuckets buckets = Sorted(Numbers({1, 2, 3, 50, 51, 52, 98, 100}), "Optimal", 3);
    EXPECT_THAT(BeginsOf(buckets), ElementsAre(1, 50, 98));
    EXPECT_THAT(buckets.of, ElementsAre(0, 0, 0, 1, 1, 1, 2, 2));
    EXPECT_THAT(BeginsOf(Sorted(Numbers({7, 7, 9}), "", 5)), ElementsAre(7, 9));
    EXPECT_THAT(Sorted(Numbers({7, 7}), "", 5).of, ElementsAre(0, 0));
}

TEST(MapRules, StartAndEndCutTheRange) {
    const MapBuckets buckets =
        SortIntoBuckets(Numbers({-5, 0, 5, 10, 99}), {"EqualInterval", 2, 0, 10, {}}, FindCulture(""));
    EXPECT_THAT(BeginsOf(buckets), ElementsAre(0, 5));
    EXPECT_THAT(buckets.of, ElementsAre(-1, 0, 1, 1, -1));
}

TEST(MapRules, MissingValuesAreInNoBucket) {
    const MapBuckets buckets = Sorted(
        {Value(), Value::Integer(1), Value::Error("x"), Value::Text(" "), Value::Text("2.5")}, "Optimal", 2);
    EXPECT_TRUE(buckets.isNumeric);
    EXPECT_THAT(buckets.of, ElementsAre(-1, 0, -1, -1, 1));
    EXPECT_TRUE(Sorted({Value()}, "Optimal", 5).list.empty());
}

TEST(MapRules, ManyValuesAreSortedInReasonableTime) {
    std::vector<Value> values;
    for (int i = 0; i < 100'000; ++i) {
        values.push_back(Value::Integer(i < 90'000 ? i % 1000 : 5000 + i % 7));
    }
    EXPECT_THAT(BeginsOf(Sorted(values, "Optimal", 2)), ElementsAre(0, 5000));
}

TEST(MapRules, ColoursRunFromStartToEnd) {
    EXPECT_THAT(RangeColors(0xFF000000, Transparent, 0xFF6432C8, 3),
                ElementsAre(0xFF000000, 0xFF321964, 0xFF6432C8));
    EXPECT_THAT(RangeColors(0xFF000000, 0xFFFFFFFF, 0xFF0000FF, 5),
                ElementsAre(0xFF000000, 0xFF808080, 0xFFFFFFFF, 0xFF8080FF, 0xFF0000FF));
    EXPECT_THAT(RangeColors(0xFF123456, 0xFFFFFFFF, 0xFF0000FF, 1), ElementsAre(0xFF123456));
    EXPECT_THAT(RangeSizes(4, 12, 3), ElementsAre(4, 8, 12));
}

struct Expected {
    const char* name;
    double x, y;  // of 60 degrees east, 45 north
};

TEST(MapProjection, PlacesOfEachProjection) {
    // By the formulas of each projection on the unit sphere, in degrees.
    for (const Expected& expected :
         {Expected{"Equirectangular", 60, 45}, Expected{"Mercator", 60, 50.49899},
          Expected{"Robinson", 45.63630, 43.16471}, Expected{"Fahey", 44.73453, 43.17337},
          Expected{"Eckert1", 41.45930, 41.45930}, Expected{"Eckert3", 47.27443, 38.00144},
          Expected{"HammerAitoff", 45.12217, 45.12217}, Expected{"Wagner3", 51.96152, 45},
          Expected{"Bonne", 38.65418, 15.00322}, Expected{"Other", 60, 45}}) {
        const spatial::Position place = Project(ProjectionNamed(expected.name), {60, 45}, {0, 0});
        EXPECT_NEAR(place.x, expected.x, 0.00001) << expected.name;
        EXPECT_NEAR(place.y, expected.y, 0.00001) << expected.name;
    }
}

TEST(MapProjection, EachHasItsCentreAtZeroAndStaysFinite) {
    for (const char* name : {"Equirectangular", "Mercator", "Robinson", "Fahey", "Eckert1", "Eckert3",
                             "HammerAitoff", "Wagner3", "Bonne"}) {
        const spatial::Position center = Project(ProjectionNamed(name), {10, 0}, {10, 0});
        EXPECT_NEAR(center.x, 0, 1e-9) << name;
        for (const double latitude : {-90.0, -89.9, 89.9, 90.0, 1e9}) {
            for (const double longitude : {-1e9, -180.0, 180.0, 360.0}) {
                const spatial::Position far = Project(ProjectionNamed(name), {longitude, latitude}, {0, 0});
                EXPECT_LT(std::abs(far.x) + std::abs(far.y), 1000) << name;
            }
        }
    }
}

TEST(MapProjection, DistancesAreOnTheGround) {
    EXPECT_NEAR(GroundDistance({0, 0}, {1, 0}), 111.19, 0.01);
    EXPECT_NEAR(GroundDistance({0, 60}, {1, 60}), 55.6, 0.01);
}

}  // namespace
}  // namespace rdl::layout
