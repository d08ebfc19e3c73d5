// SPDX-License-Identifier: GPL-3.0-or-later
// The programs that write each format from the same rows, and the ratio to oxc-report that each must reach.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/formats/measure.h"

namespace bench {

struct Contender {
    std::string name;
    Command command;
    double target;  // a peer must take at least this many times as long as oxc-report
};

inline constexpr double MostMegabytes = 64;
// For a report of more than a million rows.
inline constexpr double MostMegabytesLong = 1024;
// libharu and libxlsxwriter write the cells without any layout: oxc-report may take this many times as long.
inline constexpr double MostTimesFloor = 4;

Contender OxcReport(const std::filesystem::path& report, const std::string& format);

// The least work for a PDF.
Contender Libharu(const std::filesystem::path& folder);

// The least work for a workbook.
Contender Libxlsxwriter(const std::filesystem::path& folder);

// Writes the peers' input files into the folder and returns the peers.
std::vector<Contender> PeersOf(const std::string& format, const std::filesystem::path& folder);

}  // namespace bench
