// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the moments of history rows. Polls write them year-month-day, a run on demand in the form of the
// region of who ran it; a reader may be in another region.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/contracts/clock.h"
#include "platform/contracts/dates.h"

namespace tools {

// Returns the moment that the text holds. If regions read it differently, the newest reading that is not
// later than tomorrow counts, as rows are of the last weeks; without such a reading, the oldest one. Returns
// nullopt for a text that holds no moment.
std::optional<DateValue> HistoryMoment(const std::string& text, DateValue now);

// Keeps the newest rows of a history, the newest first. Rows of one moment stay in the order in which they
// come; a row without a readable moment is older than all others.
template <typename Row>
class NewestRows {
 public:
    explicit NewestRows(std::int64_t limit) : m_limit(static_cast<std::size_t>(limit)) {}

    void Add(const std::string& moment, Row row) {
        constexpr std::size_t Spare = 1000;  // rows between two sorts
        m_rows.emplace_back(HistoryMoment(moment, m_now), std::move(row));
        if (m_rows.size() > m_limit + std::max(m_limit, Spare)) {
            Sort();
        }
    }
    std::vector<Row> Take() {
        Sort();
        std::vector<Row> rows;
        for (auto& [moment, row] : m_rows) {
            rows.push_back(std::move(row));
        }
        return rows;
    }

 private:
    void Sort() {
        std::stable_sort(m_rows.begin(), m_rows.end(),
                         [](const auto& one, const auto& other) { return one.first > other.first; });
        if (m_rows.size() > m_limit) {
            m_rows.erase(m_rows.begin() + static_cast<std::ptrdiff_t>(m_limit), m_rows.end());
        }
    }

    std::size_t m_limit;
    DateValue m_now = Now();
    std::vector<std::pair<std::optional<DateValue>, Row>> m_rows;
};

}  // namespace tools
