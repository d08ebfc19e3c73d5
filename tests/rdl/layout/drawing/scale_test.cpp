// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/scale.h"

#include <gmock/gmock.h>

#include <cmath>

namespace rdl::layout {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;

ScaleRequest Of(double low, double high) {
    ScaleRequest request;
    request.low = low;
    request.high = high;
    request.any = true;
    request.mostTicks = 5;
    return request;
}

TEST(Scale, EndsAreRoundAndIncludeZero) {
    EXPECT_THAT(MakeScale(Of(37, 183)).ticks, ElementsAre(0, 50, 100, 150, 200));
}

TEST(Scale, WithoutZeroItStandsCloseToTheNumbers) {
    ScaleRequest request = Of(1012, 1044);
    request.includeZero = false;
    EXPECT_THAT(MakeScale(request).ticks, ElementsAre(1010, 1020, 1030, 1040, 1050));
}

TEST(Scale, NegativeNumbersHaveTicksOnBothSidesOfZero) {
    EXPECT_THAT(MakeScale(Of(-37, 60)).ticks, ElementsAre(-40, -20, 0, 20, 40, 60));
    EXPECT_THAT(MakeScale(Of(-90, -10)).ticks, ElementsAre(-100, -80, -60, -40, -20, 0));
}

TEST(Scale, EndsAndIntervalOfTheReportAreKept) {
    ScaleRequest request = Of(0, 100);
    request.minimum = -5;
    request.maximum = 25;
    request.interval = 10;
    const Scale scale = MakeScale(request);
    EXPECT_EQ(scale.low, -5);
    EXPECT_EQ(scale.high, 25);
    EXPECT_THAT(scale.ticks, ElementsAre(0, 10, 20));
    EXPECT_DOUBLE_EQ(scale.Share(10), 0.5);
}

TEST(Scale, IntervalWithFarTooManyTicksIsPassedOver) {
    ScaleRequest request = Of(0, 1e9);
    request.interval = 0.001;
    EXPECT_LT(MakeScale(request).ticks.size(), 12U);
}

TEST(Scale, EndsThatContradictEachOtherStillMakeAScale) {
    ScaleRequest request = Of(0, 10);
    request.minimum = 100;
    request.maximum = 50;
    const Scale scale = MakeScale(request);
    EXPECT_GT(scale.high, scale.low);
    EXPECT_TRUE(std::isfinite(scale.Share(75)));
}

TEST(Scale, OneNumberHasAScaleAroundIt) {
    for (const double number : {0.0, 7.0, -7.0, 1e300, 1e-300}) {
        ScaleRequest request = Of(number, number);
        for (const bool zero : {true, false}) {
            request.includeZero = zero;
            const Scale scale = MakeScale(request);
            EXPECT_GT(scale.high, scale.low) << number;
            EXPECT_GE(scale.Share(number), -1e-6) << number;
            EXPECT_LE(scale.Share(number), 1 + 1e-6) << number;
        }
    }
}

TEST(Scale, HugeNumbersStayFinite) {
    const Scale scale = MakeScale(Of(-1.7e308, 1.7e308));
    EXPECT_TRUE(std::isfinite(scale.low));
    EXPECT_TRUE(std::isfinite(scale.high));
    EXPECT_LT(scale.ticks.size(), 20U);
}

TEST(Scale, CountsHaveNoStepsBetweenWholeNumbers) {
    ScaleRequest request = Of(0, 2);
    EXPECT_EQ(MakeScale(request).step, 0.5);
    request.whole = true;
    EXPECT_EQ(MakeScale(request).step, 1);
}

TEST(Scale, HeadroomIsOneStepWhenTheHighestReachesTheEnd) {
    ScaleRequest request = Of(0, 200);
    request.headroom = true;
    EXPECT_EQ(MakeScale(request).high, 250);
    request.high = 160;
    EXPECT_EQ(MakeScale(request).high, 200);
}

TEST(Scale, LogarithmsHaveTicksAtPowers) {
    ScaleRequest request = Of(3, 4200);
    request.logarithmic = true;
    const Scale scale = MakeScale(request);
    EXPECT_THAT(scale.ticks, ElementsAre(DoubleNear(1, 1e-9), DoubleNear(10, 1e-9), DoubleNear(100, 1e-9),
                                         DoubleNear(1000, 1e-9), DoubleNear(10000, 1e-6)));
    EXPECT_DOUBLE_EQ(scale.Share(100), 0.5);
    EXPECT_TRUE(std::isnan(scale.Share(0)));
}

TEST(Scale, LogarithmsOfHugeNumbersEnd) {
    ScaleRequest request = Of(1e-320, 1e308);
    request.logarithmic = true;
    EXPECT_LT(MakeScale(request).ticks.size(), 20U);
    request.minimum = 1e308;
    const Scale scale = MakeScale(request);
    EXPECT_LT(scale.ticks.size(), 20U);
    EXPECT_TRUE(std::isfinite(scale.high));
}

TEST(Scale, DatesHaveTicksAtDaysWeeksAndFirstsOfMonths) {
    constexpr double January2024 = 738'885;  // days from 0001-01-01
    ScaleRequest request = Of(January2024, January2024 + 4);
    EXPECT_THAT(MakeDateScale(request).ticks,
                ElementsAre(January2024, January2024 + 1, January2024 + 2, January2024 + 3, January2024 + 4));
    request.high = January2024 + 30;
    EXPECT_THAT(MakeDateScale(request).ticks, ElementsAre(January2024, January2024 + 7, January2024 + 14,
                                                          January2024 + 21, January2024 + 28));
    request.high = January2024 + 100;  // 2024 is a leap year
    EXPECT_THAT(MakeDateScale(request).ticks,
                ElementsAre(January2024, January2024 + 31, January2024 + 60, January2024 + 91));
    request.high = 3.6e6;
    EXPECT_LT(MakeDateScale(request).ticks.size(), 12U);
}

}  // namespace
}  // namespace rdl::layout
