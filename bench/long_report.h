// SPDX-License-Identifier: GPL-3.0-or-later
// A plain table with a repeated header and page numbers over rows of 6 columns in a database file: about 200
// pages for 10,000 rows.
#pragma once

#include <filesystem>

namespace bench {

inline constexpr int LongReportRows = 10'000;

// Writes both into the folder; returns the report's path.
std::filesystem::path WriteLongReport(const std::filesystem::path& folder, int rowCount = LongReportRows);
std::filesystem::path LongReportData(const std::filesystem::path& folder);

}  // namespace bench
