// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/csv/shared_values.h"

#include <algorithm>
#include <iterator>

namespace rdl::writers {

void CsvPlaces::Add(const CsvShared& value) {
    const std::uint32_t number = m_count++;
    if (value.from < 0) {
        m_everywhere.push_back(number);
        return;
    }
    const auto from = static_cast<std::size_t>(value.from);
    const auto to = static_cast<std::size_t>(std::max(value.from, value.to));
    if (m_places.size() < to) {
        m_places.resize(to);
    }
    for (std::size_t place = from; place < to; ++place) {
        m_places[place].push_back(number);
    }
}

const CsvPlaces::Numbers& CsvPlaces::Only(std::int32_t place) const {
    static const Numbers None;
    return place < 0 || static_cast<std::size_t>(place) >= m_places.size()
               ? None
               : m_places[static_cast<std::size_t>(place)];
}

CsvPlaces::Numbers CsvPlaces::Holding(std::int32_t place) const {
    const Numbers& only = Only(place);
    Numbers all;
    all.reserve(m_everywhere.size() + only.size());
    std::merge(m_everywhere.begin(), m_everywhere.end(), only.begin(), only.end(), std::back_inserter(all));
    return all;
}

}  // namespace rdl::writers
