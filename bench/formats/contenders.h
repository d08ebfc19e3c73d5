// Who makes which format from the same rows, and how far oxc-report is to be from them.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "bench/formats/measure.h"

namespace bench {

struct Contender {
    std::string name;
    Command command;
    double target;  // a peer takes at least so many times as long as oxc-report
};

inline constexpr double MostMegabytes = 64;
// Over a million rows.
inline constexpr double MostMegabytesLong = 1024;
// libharu draws the cells and lays nothing out: oxc-report may take so many times as long.
inline constexpr double MostTimesFloor = 4;

Contender OxcReport(const std::filesystem::path& report, const std::string& format);

// The floor of PDF.
Contender Libharu(const std::filesystem::path& folder);

// Writes the peers' input into the folder.
std::vector<Contender> PeersOf(const std::string& format, const std::filesystem::path& folder);

}  // namespace bench
