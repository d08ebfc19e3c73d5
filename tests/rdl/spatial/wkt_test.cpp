// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes as well-known text.
#include <gmock/gmock.h>

#include "rdl/spatial/shape_kit.h"

namespace rdl::spatial::test {
namespace {

std::string Read(const std::string& text) {
    Allowance allowance;
    return TextOf(ReadText(text, allowance));
}

std::string Error(const std::string& text) {
    return ErrorRaisedBy([&] { Read(text); });
}

TEST(WellKnownText, EachKindIsRead) {
    EXPECT_EQ(Read("POINT (1.5 -2)"), "points 1.5,-2");
    EXPECT_EQ(Read("LINESTRING (0 0, 10 0, 10 5)"), "line 0,0 10,0 10,5");
    EXPECT_EQ(Read("POLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))"), "ring 0,0 4,0 4,4 0,4");
    EXPECT_EQ(Read("MULTIPOINT (1 2, 3 4)"), "points 1,2 3,4");
    EXPECT_EQ(Read("MULTIPOINT ((1 2), (3 4))"), "points 1,2 3,4");
    EXPECT_EQ(Read("MULTILINESTRING ((0 0, 1 1), (2 2, 3 3))"), "line 0,0 1,1; line 2,2 3,3");
    EXPECT_EQ(Read("MULTIPOLYGON (((0 0, 1 0, 1 1)), ((5 5, 6 5, 6 6)))"),
              "ring 0,0 1,0 1,1; ring 5,5 6,5 6,6");
    EXPECT_EQ(Read("GEOMETRYCOLLECTION (POINT (1 1), LINESTRING (0 0, 2 2))"), "line 0,0 2,2; points 1,1");
}

TEST(WellKnownText, SpellingsOfDatabasesAreRead) {
    EXPECT_EQ(Read(" point(1 2) "), "points 1,2");
    EXPECT_EQ(Read("SRID=4326;POINT(1 2)"), "points 1,2");
    EXPECT_EQ(Read("POINT Z (1 2 3)"), "points 1,2");
    EXPECT_EQ(Read("POINTZM(1 2 3 4)"), "points 1,2");
    EXPECT_EQ(Read("POINT (+1e1 -.5)"), "points 10,-0.5");
}

TEST(WellKnownText, EmptyShapesHaveNothing) {
    for (const char* text : {"", "  ", "POINT EMPTY", "POLYGON EMPTY", "GEOMETRYCOLLECTION EMPTY",
                             "MULTIPOLYGON Z EMPTY", "POLYGON (EMPTY)", "MULTIPOINT (EMPTY)"}) {
        EXPECT_EQ(Read(text), "") << text;
    }
}

TEST(WellKnownText, HolesRunAgainstOuterRings) {
    EXPECT_EQ(Read("POLYGON ((0 0, 0 9, 9 9, 9 0, 0 0), (1 1, 2 1, 2 2, 1 1))"),
              "ring 9,0 9,9 0,9 0,0; ring 2,2 2,1 1,1");
}

TEST(WellKnownText, RingsWithoutAnAreaAreOmitted) {
    EXPECT_EQ(Read("POLYGON ((1 1, 1 1, 1 1, 1 1))"), "");
    EXPECT_EQ(Read("POLYGON ((0 0, 5 5, 0 0))"), "");
    EXPECT_EQ(Read("LINESTRING (1 1)"), "");
}

TEST(WellKnownText, ErrorsSayWhatIsWrongAndWhere) {
    EXPECT_EQ(Error("POINT (1)"), "its text should have a number at character 9");
    EXPECT_EQ(Error("POINT (\u00FC)"), "its text should have a number at character 8");
    EXPECT_EQ(Error("SRID=\u00FC;POINT (1)"), "its text should have a number at character 16");
    EXPECT_EQ(Error("POINT (1 2"), "its text should have ) at character 11");
    EXPECT_EQ(Error("POLYGON (1 2)"), "its text should have ( at character 10");
    EXPECT_EQ(Error("POINT (1 2) POINT (3 4)"), "its text should have the end of the shape at character 13");
    EXPECT_EQ(Error("(1 2)"), "its text should have the kind of a shape at character 1");
    EXPECT_EQ(Error("CIRCULARSTRING (0 0, 1 1, 2 0)"), "a shape of the kind CIRCULARSTRING cannot be drawn");
    EXPECT_EQ(Error("POINT (nan 1)"), "a coordinate is not a number or beyond every map");
    EXPECT_EQ(Error("POINT (1 2e9)"), "a coordinate is not a number or beyond every map");
}

TEST(WellKnownText, CollectionsWithinEachOtherAreLimited) {
    const auto nested = [](int depth) {
        std::string text = "POINT (1 2)";
        for (int i = 0; i < depth; ++i) {
            text = "GEOMETRYCOLLECTION (" + text + ")";
        }
        return text;
    };
    EXPECT_EQ(Read(nested(10)), "points 1,2");
    EXPECT_EQ(Error(nested(11)), "its collections are nested too deeply");
    std::string deep;
    for (int i = 0; i < 100'000; ++i) {
        deep += "GEOMETRYCOLLECTION(";
    }
    EXPECT_EQ(Error(deep), "its collections are nested too deeply");
}

TEST(WellKnownText, PointsOfAMapAreLimited) {
    Allowance allowance;
    allowance.TakePositions(Allowance::MostPositions - 1);
    ReadText("POINT (1 2)", allowance);
    EXPECT_EQ(ErrorRaisedBy([&] { ReadText("POINT (1 2)", allowance); }),
              "its shapes have more than 1000000 points");
}

}  // namespace
}  // namespace rdl::spatial::test
