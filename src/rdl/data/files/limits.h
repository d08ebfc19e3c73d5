// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace rdl::data {

// Limits on the rows of one data file.
constexpr std::size_t MostCells = 50'000'000;
constexpr std::size_t MostColumns = 4'096;

}  // namespace rdl::data
