// SPDX-License-Identifier: GPL-3.0-or-later
// Shapefiles and their tables.
#include "rdl/spatial/shapefile.h"

#include <gmock/gmock.h>

#include <limits>

#include "rdl/spatial/shape_files.h"

namespace rdl::spatial::test {
namespace {

Shapes Read(const std::string& file, const std::string& table = {}) {
    Allowance allowance;
    return ReadShapefile(file, table, allowance);
}

std::string Error(const std::string& file, const std::string& table = {}) {
    return ErrorRaisedBy([&] { Read(file, table); });
}

std::string One(const std::string& record) {
    return TextOf(Read(ShapeFile({record})).shapes.at(0).geometry);
}

TEST(Shapefile, EachKindIsRead) {
    EXPECT_EQ(One(Little(0U)), "");
    EXPECT_EQ(One(Little(1U) + Reals({10, 50})), "points 10,50");
    EXPECT_EQ(One(Little(11U) + Reals({10, 50, 3, 4})), "points 10,50");
    EXPECT_EQ(One(Little(21U) + Reals({10, 50, 3})), "points 10,50");
    EXPECT_EQ(One(Little(8U) + std::string(32, '\0') + Little(2U) + Reals({1, 2, 3, 4})), "points 1,2 3,4");
    EXPECT_EQ(One(Parts(3, {0, 2}, 4, Reals({0, 0, 1, 1, 5, 5, 6, 6}))), "line 0,0 1,1; line 5,5 6,6");
}

TEST(Shapefile, OuterRingsOfAPolygonAreClockwiseInTheFile) {
    EXPECT_EQ(One(Parts(5, {0, 5}, 9, Reals({0, 0, 0, 9, 9, 9, 9, 0, 0, 0, 1, 1, 2, 1, 2, 2, 1, 1}))),
              "ring 9,0 9,9 0,9 0,0; ring 2,2 2,1 1,1");
}

TEST(Shapefile, PolygonsThatAllRunTheOtherWayHaveNoHoles) {
    EXPECT_EQ(One(Parts(5, {0}, 4, Reals({0, 0, 9, 0, 9, 9, 0, 0}))), "ring 0,0 9,0 9,9");
}

TEST(Shapefile, TheTableGivesTheFields) {
    const Shapes shapes =
        Read(ShapeFile({Little(1U) + Reals({1, 2}), Little(1U) + Reals({3, 4}), Little(0U)}),
             ShapeTable({"North    12", "Caf\xE9   1.5 "}));
    EXPECT_THAT(shapes.fieldNames, testing::ElementsAre("NAME", "COUNT"));
    EXPECT_EQ(shapes.shapes[0].values[0].AsText(), "North");
    EXPECT_EQ(shapes.shapes[0].values[1].AsDouble(), 12);
    EXPECT_EQ(shapes.shapes[1].values[0].AsText(), "Caf\xC3\xA9");
    EXPECT_EQ(shapes.shapes[1].values[1].AsDouble(), 1.5);
    EXPECT_TRUE(shapes.shapes[2].values.empty());
}

TEST(Shapefile, TruncatedFilesAreErrors) {
    EXPECT_EQ(Error(""), "it is not a shapefile");
    EXPECT_EQ(Error(std::string(100, '\0')), "it is not a shapefile");
    EXPECT_EQ(Error(ShapeFile({}).substr(0, 99)), "it is not a shapefile");
    const std::string file =
        ShapeFile({Little(1U) + Reals({1, 2}), Parts(5, {0}, 4, Reals({0, 0, 9, 0, 9, 9, 0, 0}))});
    for (std::size_t size = 100; size < file.size(); ++size) {
        const std::string error = Error(file.substr(0, size));
        EXPECT_TRUE(error.empty() || error.starts_with("it ends within its shape ")) << size << ": " << error;
    }
    EXPECT_EQ(Error(file.substr(0, file.size() - 1)), "it ends within its shape 2");
}

TEST(Shapefile, CountsThatAreTooLargeAreErrors) {
    EXPECT_EQ(Error(ShapeFile({Parts(5, {0}, 0x80000000U, "")})),
              "a shape has room for less than the 2147483648 points that it announces");
    EXPECT_EQ(Error(ShapeFile({Little(5U) + std::string(32, '\0') + Little(0x80000000U) + Little(4U)})),
              "a shape has room for less than the 2147483648 parts that it announces");
    EXPECT_EQ(Error(ShapeFile({Parts(5, {7}, 1, Reals({1, 2}))})),
              "a part of a shape lies outside its points");
    EXPECT_EQ(Error(ShapeFile({Parts(5, {1, 0}, 2, Reals({1, 2, 3, 4}))})),
              "a part of a shape lies outside its points");
    EXPECT_EQ(Error(ShapeFile({Little(31U)})), "a shape of the kind 31 cannot be drawn");
    EXPECT_EQ(Error(ShapeFile({std::string("ab")})), "it ends in the middle of a value");
}

TEST(Shapefile, CoordinatesThatAreNoNumbersAreErrors) {
    EXPECT_EQ(Error(ShapeFile({Little(1U) + Reals({std::numeric_limits<double>::quiet_NaN(), 2})})),
              "a coordinate is not a number or beyond every map");
    EXPECT_EQ(Error(ShapeFile({Little(1U) + Reals({1, std::numeric_limits<double>::infinity()})})),
              "a coordinate is not a number or beyond every map");
}

TEST(Shapefile, DamagedTablesAreErrorsAndNoCrash) {
    const std::string file = ShapeFile({Little(0U)});
    const std::string table = ShapeTable({"North    12"});
    for (std::size_t size = 1; size < table.size(); ++size) {
        Error(file, table.substr(0, size));
    }
    EXPECT_EQ(Error(file, table.substr(0, 20)), "it ends in the middle of a value");
    std::string wide = table;
    wide[32 + 16] = '\x7F';  // a column wider than its row
    EXPECT_EQ(Error(file, wide), "it ends in the middle of a value");
    wide[32 + 16] = '\0';
    EXPECT_EQ(Error(file, wide), "its table has a column without room or more than 255 columns");
}

}  // namespace
}  // namespace rdl::spatial::test
