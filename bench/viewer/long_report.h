// A report of some 200 pages over 10,000 rows of 6 columns in a database file.
#pragma once

#include <filesystem>

namespace bench {

inline constexpr int LongReportRows = 10'000;

// Writes both into the folder; returns the report's path.
std::filesystem::path WriteLongReport(const std::filesystem::path& folder);
std::filesystem::path LongReportData(const std::filesystem::path& folder);

}  // namespace bench
