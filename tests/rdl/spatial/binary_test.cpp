// SPDX-License-Identifier: GPL-3.0-or-later
// Shapes as bytes: well-known binary, and the serialized form of geometry columns.
#include <gmock/gmock.h>

#include <limits>

#include "rdl/spatial/shape_kit.h"
#include "rdl/values/base64.h"

namespace rdl::spatial::test {
namespace {

std::string Read(const std::string& bytes) {
    Allowance allowance;
    return TextOf(ReadBinary(bytes, allowance));
}

std::string Error(const std::string& bytes) {
    return ErrorRaisedBy([&] { Read(bytes); });
}

std::string ReadAsText(const std::string& text) {
    Allowance allowance;
    return TextOf(ReadText(text, allowance));
}

std::string WellKnown(std::uint32_t kind, const std::string& content) {
    return "\x01" + Little(kind) + content;
}

// A shape of one part, all of whose points are one figure.
std::string Serialized(std::uint32_t reference, char figure, char kind,
                       std::initializer_list<double> numbers) {
    return Little(reference) + std::string("\x01\x04", 2) +
           Little(static_cast<std::uint32_t>(numbers.size() / 2)) + Reals(numbers) + Little(1U) + figure +
           Little(0U) + Little(1U) + Little(0xFFFFFFFFU) + Little(0U) + kind;
}

TEST(WellKnownBinary, EachKindIsRead) {
    EXPECT_EQ(Read(WellKnown(1, Reals({1, 2}))), "points 1,2");
    EXPECT_EQ(Read(WellKnown(2, Little(2U) + Reals({1, 2, 3, 4}))), "line 1,2 3,4");
    EXPECT_EQ(Read(WellKnown(3, Little(1U) + Little(4U) + Reals({0, 0, 4, 0, 4, 4, 0, 0}))),
              "ring 0,0 4,0 4,4");
    EXPECT_EQ(Read(WellKnown(4, Little(1U) + WellKnown(1, Reals({1, 2})))), "points 1,2");
    EXPECT_EQ(Read(WellKnown(7, Little(2U) + WellKnown(1, Reals({1, 2})) +
                                    WellKnown(2, Little(2U) + Reals({1, 2, 3, 4})))),
              "line 1,2 3,4; points 1,2");
    EXPECT_EQ(Read(""), "");
}

TEST(WellKnownBinary, TheOtherOrderOfBytesIsRead) {
    EXPECT_EQ(ReadAsText("00000000013FF00000000000004000000000000000"), "points 1,2");
    EXPECT_EQ(ReadAsText("0x000000000200000002"
                         "3FF0000000000000400000000000000040080000000000004010000000000000"),
              "line 1,2 3,4");
}

TEST(WellKnownBinary, HeightsAndReferencesAreSkipped) {
    EXPECT_EQ(Read(WellKnown(1001, Reals({1, 2, 3}))), "points 1,2");
    EXPECT_EQ(Read(WellKnown(3001, Reals({1, 2, 3, 4}))), "points 1,2");
    EXPECT_EQ(Read(WellKnown(0xA0000001, Little(4326U) + Reals({1, 2, 3}))), "points 1,2");
}

TEST(WellKnownBinary, AnEmptyPointIsNothing) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Read(WellKnown(1, Reals({nan, nan}))), "");
}

TEST(WellKnownBinary, HostileBytesAreErrors) {
    const double nan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_EQ(Error(WellKnown(2, Little(0x80000000U) + Reals({1, 2}))),
              "it has room for less than the 2147483648 parts that it announces");
    EXPECT_EQ(Error(WellKnown(3, Little(0xFFFFFFFFU))),
              "it has room for less than the 4294967295 parts that it announces");
    EXPECT_EQ(Error(WellKnown(1, "abc")), "it ends in the middle of a value");
    EXPECT_EQ(Error("\x01"), "it ends in the middle of a value");
    EXPECT_EQ(Error("Hello"), "it is neither well-known text nor a binary shape");
    EXPECT_EQ(Error(WellKnown(8, "")), "a shape of the kind 8 cannot be drawn");
    EXPECT_EQ(Error(WellKnown(2, Little(2U) + Reals({1, 2, nan, 4}))),
              "a coordinate is not a number or beyond every map");
    std::string deep;
    for (int i = 0; i < 1000; ++i) {
        deep += WellKnown(7, Little(1U));
    }
    EXPECT_EQ(Error(deep + std::string(100, '\0')), "its collections are nested too deeply");
}

TEST(SerializedShape, PointsAndLinesAreRead) {
    EXPECT_EQ(Read(Little(0U) + std::string("\x01\x0C", 2) + Reals({10, 50})), "points 10,50");
    EXPECT_EQ(Read(Little(0U) + std::string("\x01\x14", 2) + Reals({1, 2, 3, 4})), "line 1,2 3,4");
    EXPECT_EQ(Read(Little(0U) + std::string("\x01\x0F", 2) + Reals({10, 50, 7, 8})), "points 10,50");
}

TEST(SerializedShape, PolygonsAreReadFromBase64) {
    const std::string square = Serialized(0, 2, 3, {0, 0, 4, 0, 4, 4, 0, 4, 0, 0});
    EXPECT_EQ(Read(square), "ring 0,0 4,0 4,4 0,4");
    EXPECT_EQ(ReadAsText(ToBase64(square)), "ring 0,0 4,0 4,4 0,4");
}

TEST(SerializedShape, HolesAndSeveralPolygonsAreRead) {
    const std::string bytes = Little(0U) + std::string("\x01\x04", 2) + Little(9U) +
                              Reals({0, 0, 9, 0, 9, 9, 1, 1, 2, 1, 2, 2, 20, 0, 29, 0, 29, 9}) + Little(3U) +
                              '\x02' + Little(0U) + std::string(1, '\0') + Little(3U) + '\x02' + Little(6U) +
                              Little(3U) + Little(0xFFFFFFFFU) + Little(0U) + '\x06' + Little(0U) +
                              Little(0U) + '\x03' + Little(0U) + Little(2U) + '\x03';
    EXPECT_EQ(Read(bytes), "ring 0,0 9,0 9,9; ring 2,2 2,1 1,1; ring 20,0 29,0 29,9");
}

TEST(SerializedShape, GeographicOnesHaveTheLatitudeFirst) {
    EXPECT_EQ(Read(Little(4326U) + std::string("\x01\x0C", 2) + Reals({50, 10})), "points 10,50");
    EXPECT_EQ(Read(Little(4326U) + std::string("\x01\x0C", 2) + Reals({120, 10})), "points 120,10");
}

TEST(SerializedShape, HostileBytesAreErrors) {
    EXPECT_EQ(Error(Little(0U) + std::string("\x01\x04", 2) + Little(0x80000000U)),
              "it has room for less than the 2147483648 parts that it announces");
    EXPECT_EQ(Error(Little(0U) + std::string("\x01\x04", 2) + Little(1U) + Reals({1, 2}) + Little(1U) +
                    '\x02' + Little(7U) + Little(1U) + Little(0U) + Little(0U) + '\x03'),
              "a figure of the shape lies outside its points");
    EXPECT_EQ(Error(Serialized(0, 2, 8, {0, 0, 1, 0, 1, 1})), "a shape of the kind 8 cannot be drawn");
}

}  // namespace
}  // namespace rdl::spatial::test
