// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstddef>

namespace rdl::data {

// Of what one data file gives.
constexpr std::size_t MostCells = 50'000'000;
constexpr std::size_t MostColumns = 4'096;

}  // namespace rdl::data
