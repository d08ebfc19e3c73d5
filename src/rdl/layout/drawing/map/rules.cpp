// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/layout/drawing/map/rules.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <set>

#include "rdl/layout/drawing/part_styles.h"
#include "rdl/values/ascii.h"

namespace rdl::layout {
namespace {

constexpr int MostBuckets = 100;

// The values that begin a bucket, in ascending order.
using Begins = std::vector<double>;

Begins EqualIntervals(double low, double high, int count) {
    Begins begins;
    for (int i = 0; i < (high > low ? count : 1); ++i) {
        begins.push_back(low + (high - low) * i / count);
    }
    return begins;
}

// Returns buckets with the same number of values each. Equal values stay together.
Begins EqualShares(const std::vector<double>& sorted, int count) {
    Begins begins;
    for (int i = 0; i < count; ++i) {
        const double begin =
            sorted[sorted.size() * static_cast<std::size_t>(i) / static_cast<std::size_t>(count)];
        if (begins.empty() || begin > begins.back()) {
            begins.push_back(begin);
        }
    }
    return begins;
}

// The distribution with the least squared deviations from the buckets' means (natural breaks), by dynamic
// programming over the different values. More than 1000 values are sampled at equal ranks.
class NaturalBreaks {
 public:
    explicit NaturalBreaks(const std::vector<double>& sorted) {
        constexpr std::size_t Most = 1000;
        const std::size_t step = std::max<std::size_t>((sorted.size() + Most - 1) / Most, 1);
        for (std::size_t i = 0; i < sorted.size(); i += step) {
            const double value = sorted[i];
            if (m_values.empty() || value > m_values.back()) {
                m_values.push_back(value);
                m_counts.push_back(0);
            }
            ++m_counts.back();
        }
        m_sums.assign(1, {});
        for (std::size_t i = 0; i < m_values.size(); ++i) {
            const double offset = m_values[i] - m_values.front();
            const Sum& before = m_sums.back();
            m_sums.push_back({before.count + m_counts[i], before.first + m_counts[i] * offset,
                              before.second + m_counts[i] * offset * offset});
        }
    }

    Begins Find(int count) const {
        const std::size_t size = m_values.size();
        const std::size_t buckets = std::min(static_cast<std::size_t>(count), size);
        std::vector<double> least(size + 1, std::numeric_limits<double>::infinity());
        least[0] = 0;
        std::vector<std::vector<std::size_t>> chosen;
        for (std::size_t bucket = 0; bucket < buckets; ++bucket) {
            std::vector<double> next(size + 1, std::numeric_limits<double>::infinity());
            std::vector<std::size_t>& begins = chosen.emplace_back(size + 1, 0);
            for (std::size_t end = bucket + 1; end <= size; ++end) {
                for (std::size_t begin = bucket; begin < end; ++begin) {
                    const double cost = least[begin] + Deviation(begin, end);
                    if (cost < next[end]) {
                        next[end] = cost;
                        begins[end] = begin;
                    }
                }
            }
            least = std::move(next);
        }
        Begins found(buckets);
        std::size_t end = size;
        for (std::size_t bucket = buckets; bucket-- > 0;) {
            end = chosen[bucket][end];
            found[bucket] = m_values[end];
        }
        return found;
    }

 private:
    struct Sum {
        double count = 0, first = 0, second = 0;
    };
    double Deviation(std::size_t begin, std::size_t end) const {
        const Sum &from = m_sums[begin], &to = m_sums[end];
        const double count = to.count - from.count, sum = to.first - from.first;
        return to.second - from.second - sum * sum / count;
    }

    std::vector<double> m_values, m_counts;
    std::vector<Sum> m_sums;
};

bool IsMissing(const Value& value) {
    return value.IsNull() || value.IsError() || (value.IsText() && Trimmed(value.AsText()).empty());
}

MapBuckets Categories(const std::vector<Value>& values, const MapDistribution& distribution,
                      const Culture& culture) {
    MapBuckets buckets;
    buckets.isNumeric = false;
    std::set<std::string> texts;
    if (EqualNoCase(distribution.type, "Custom")) {
        for (const MapDistribution::Range& range : distribution.custom) {
            buckets.list.push_back({0, 0, ToText(range.start, culture)});
        }
    } else {
        for (const Value& value : values) {
            if (!IsMissing(value)) {
                texts.insert(ReadableText(ToText(value, culture)));
            }
        }
        for (const std::string& text : texts) {
            buckets.list.push_back({0, 0, text});
        }
    }
    std::map<std::string, int> places;
    for (std::size_t i = 0; i < buckets.list.size(); ++i) {
        places.emplace(buckets.list[i].text, static_cast<int>(i));
    }
    for (const Value& value : values) {
        const auto found =
            IsMissing(value) ? places.end() : places.find(ReadableText(ToText(value, culture)));
        buckets.of.push_back(found == places.end() ? -1 : found->second);
    }
    return buckets;
}

void CustomRanges(const MapDistribution& distribution, const std::vector<double>& sorted,
                  MapBuckets& buckets) {
    for (const MapDistribution::Range& range : distribution.custom) {
        MapBucket bucket{sorted.front(), sorted.back(), {}};
        double number = 0;
        if (NumberOf(range.start, number)) {
            bucket.from = number;
        }
        if (NumberOf(range.end, number)) {
            bucket.to = number;
        }
        buckets.list.push_back(bucket);
    }
}

void ComputedRanges(const MapDistribution& distribution, const std::vector<double>& sorted,
                    MapBuckets& buckets) {
    const int count = std::clamp(distribution.count, 1, MostBuckets);
    const double low = distribution.start.value_or(sorted.front());
    const double high = std::max(low, distribution.end.value_or(sorted.back()));
    Begins begins;
    if (EqualNoCase(distribution.type, "EqualInterval")) {
        begins = EqualIntervals(low, high, count);
    } else if (EqualNoCase(distribution.type, "EqualDistribution")) {
        begins = EqualShares(sorted, count);
    } else {
        begins = NaturalBreaks(sorted).Find(count);
    }
    begins.front() = low;
    for (std::size_t i = 0; i < begins.size(); ++i) {
        buckets.list.push_back({begins[i], i + 1 < begins.size() ? begins[i + 1] : high, {}});
    }
}

int BucketOf(double number, const std::vector<MapBucket>& buckets) {
    int last = -1;
    for (std::size_t i = 0; i < buckets.size(); ++i) {
        if (number >= buckets[i].from && number < buckets[i].to) {
            return static_cast<int>(i);
        }
        if (number >= buckets[i].from && number == buckets[i].to) {
            last = static_cast<int>(i);
        }
    }
    return last;
}

Color Mixed(Color from, Color to, double share) {
    Color mixed = 0;
    for (const int shift : {0, 8, 16, 24}) {
        const double low = from >> shift & 0xFF, high = to >> shift & 0xFF;
        mixed |= static_cast<Color>(std::lround(low + (high - low) * share)) << shift;
    }
    return mixed;
}

double ShareOf(std::size_t index, std::size_t count) {
    return count > 1 ? static_cast<double>(index) / static_cast<double>(count - 1) : 0;
}

}  // namespace

MapBuckets SortIntoBuckets(const std::vector<Value>& values, const MapDistribution& distribution,
                           const Culture& culture) {
    std::vector<double> sorted;
    double number = 0;
    for (const Value& value : values) {
        if (IsMissing(value)) {
            continue;
        }
        if (!NumberOf(value, number)) {
            return Categories(values, distribution, culture);
        }
        if (number >= distribution.start.value_or(number) && number <= distribution.end.value_or(number)) {
            sorted.push_back(number);
        }
    }
    MapBuckets buckets;
    buckets.of.assign(values.size(), -1);
    if (sorted.empty()) {
        return buckets;
    }
    std::sort(sorted.begin(), sorted.end());
    EqualNoCase(distribution.type, "Custom") ? CustomRanges(distribution, sorted, buckets)
                                             : ComputedRanges(distribution, sorted, buckets);
    for (std::size_t i = 0; i < values.size(); ++i) {
        if (!IsMissing(values[i]) && NumberOf(values[i], number)) {
            buckets.of[i] = BucketOf(number, buckets.list);
        }
    }
    return buckets;
}

std::vector<Color> RangeColors(Color start, Color middle, Color end, std::size_t count) {
    std::vector<Color> colors;
    for (std::size_t i = 0; i < count; ++i) {
        const double share = ShareOf(i, count);
        if (!IsVisible(middle)) {
            colors.push_back(Mixed(start, end, share));
        } else {
            colors.push_back(share < 0.5 ? Mixed(start, middle, share * 2)
                                         : Mixed(middle, end, share * 2 - 1));
        }
    }
    return colors;
}

std::vector<double> RangeSizes(double start, double end, std::size_t count) {
    std::vector<double> sizes;
    for (std::size_t i = 0; i < count; ++i) {
        sizes.push_back(start + (end - start) * ShareOf(i, count));
    }
    return sizes;
}

}  // namespace rdl::layout
