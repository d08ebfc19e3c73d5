// SPDX-License-Identifier: GPL-3.0-or-later
// Rules of a map's layer: sorts the values of its shapes into buckets, each with its colour, size or marker.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "rdl/format/format.h"
#include "rdl/layout/model/style.h"

namespace rdl::layout {

struct MapBucket {
    double from = 0, to = 0;
    std::string text;  // of a category; empty for a range of numbers
};

struct MapBuckets {
    bool isNumeric = true;
    std::vector<MapBucket> list;
    std::vector<int> of;  // by value: its bucket; -1: none
};

struct MapDistribution {
    std::string type;  // Optimal, EqualInterval, EqualDistribution or Custom; any other is Optimal
    int count = 5;
    std::optional<double> start, end;  // values beyond these are in no bucket
    struct Range {
        Value start, end;
    };
    std::vector<Range> custom;
};

// Nulls and errors are in no bucket. Ranges are half open except the last one. If one value is no number,
// each different text is a category, in the order of the texts. EqualDistribution and Optimal give fewer
// buckets than asked for when there are fewer different values.
MapBuckets SortIntoBuckets(const std::vector<Value>& values, const MapDistribution& distribution,
                           const Culture& culture);

// Returns colours from `start` over `middle` to `end`, as many as `count`; without a middle colour
// (Transparent) straight from start to end.
std::vector<Color> RangeColors(Color start, Color middle, Color end, std::size_t count);
// Returns the sizes of `count` buckets from the smallest to the largest.
std::vector<double> RangeSizes(double start, double end, std::size_t count);

}  // namespace rdl::layout
