// SPDX-License-Identifier: GPL-3.0-or-later
// Compares oxc-report with other programs that write such files, over the same rows in one run: whole
// processes, by wall time, processor time and memory. Then runs longer reports, whose time must grow in
// proportion and whose memory must stay below the limits given here.
//
// usage: bench_formats [--runs N] [--long]
#include <unistd.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "bench/formats/contenders.h"
#include "bench/formats/measure.h"
#include "bench/long_report.h"

namespace {

namespace fs = std::filesystem;
using bench::Usage;

constexpr std::array Formats = {"pdf", "xls", "xlsx", "html", "rtf", "docx"};

struct Options {
    int runs = 3;
    bool isLong = false;
};

const char* Verdict(bool isMet) {
    return isMet ? "met" : "MISSED";
}

void PrintUsage(const std::string& name, const Usage& usage) {
    std::printf("  %-20s %9.3f s %9.3f s %7.0f MB", name.c_str(), usage.wall, usage.cpu, usage.megabytes);
}

void PrintTitle(int rows) {
    std::printf("\n%d rows of 6 columns\n  %-20s %11s %11s %10s   %s\n", rows, "", "wall", "processor",
                "memory", "time, in oxc-report's (by wall, by processor)");
}

void PrintOwn(const std::string& format, const Usage& own, double mostMegabytes) {
    PrintUsage("oxc-report " + format, own);
    std::printf("   memory: at most %.0f MB: %s\n", mostMegabytes, Verdict(own.megabytes <= mostMegabytes));
}

// Other work on the machine stretches the wall time of some runs, so the processor time decides too.
void PrintPeer(const bench::Contender& peer, const std::optional<Usage>& usage, const Usage& own) {
    if (!usage) {
        std::printf("  %-20s %s\n", peer.name.c_str(),
                    peer.command.words.empty() ? "is not installed (packaging/install bench)" : "failed");
        return;
    }
    PrintUsage(peer.name, *usage);
    const double byWall = usage->wall / own.wall;
    const double byProcessor = usage->cpu / own.cpu;
    std::printf("   %.2f, %.2f; at least %.2f: %s\n", byWall, byProcessor, peer.target,
                Verdict(byWall >= peer.target && byProcessor >= peer.target));
}

// Runs oxc-report and its peers by turns. Returns the usage of oxc-report.
std::optional<Usage> Compare(const fs::path& report, const std::string& format,
                             const std::vector<bench::Contender>& peers, int runs, double mostMegabytes) {
    std::vector<bench::Command> commands = {bench::OxcReport(report, format).command};
    for (const bench::Contender& peer : peers) {
        commands.push_back(peer.command);
    }
    const std::vector<std::optional<Usage>> usages = bench::BestOf(runs, commands);
    if (!usages[0]) {
        std::printf("  oxc-report %s failed\n", format.c_str());
        return std::nullopt;
    }
    PrintOwn(format, *usages[0], mostMegabytes);
    for (std::size_t i = 0; i < peers.size(); ++i) {
        PrintPeer(peers[i], usages[i + 1], *usages[0]);
    }
    std::fflush(stdout);
    return usages[0];
}

// Makes LibreOffice's profile and loads every program's files into the disk cache.
void WarmUp(const fs::path& folder) {
    bench::WriteLongReport(folder, 10);
    for (const char* format : Formats) {
        for (const bench::Contender& peer : bench::PeersOf(format, folder)) {
            bench::BestOf(1, {peer.command});
        }
    }
    fs::remove(bench::LongReportData(folder));
}

using UsageByFormat = std::map<std::string, Usage>;

UsageByFormat AgainstPeers(const fs::path& folder, int runs) {
    const fs::path report = bench::WriteLongReport(folder);
    PrintTitle(bench::LongReportRows);
    UsageByFormat result;
    for (const std::string format : Formats) {
        if (const auto own =
                Compare(report, format, bench::PeersOf(format, folder), runs, bench::MostMegabytes)) {
            result[format] = *own;
        }
    }
    return result;
}

void Longer(const fs::path& folder, int rows, const UsageByFormat& shorter) {
    fs::create_directory(folder);
    const fs::path report = bench::WriteLongReport(folder, rows);
    PrintTitle(rows);
    for (const auto& [format, before] : shorter) {
        std::vector<bench::Contender> floor;
        if (format == "pdf") {
            floor.push_back(bench::Libharu(folder));
        }
        if (const auto own = Compare(report, format, floor, 1, bench::MostMegabytesLong)) {
            std::printf("  %20s %.1f times the processor time of %d rows for %d times the rows\n", "",
                        own->cpu / before.cpu, bench::LongReportRows, rows / bench::LongReportRows);
        }
    }
    fs::remove_all(folder);
}

std::optional<Options> OptionsOf(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string_view word = argv[i];
        if (word == "--long") {
            options.isLong = true;
        } else if (word == "--runs" && i + 1 < argc && std::atoi(argv[i + 1]) > 0) {
            options.runs = std::atoi(argv[++i]);
        } else {
            return std::nullopt;
        }
    }
    return options;
}

}  // namespace

int main(int argc, char** argv) {
    const std::optional<Options> options = OptionsOf(argc, argv);
    if (!options) {
        std::fputs("usage: bench_formats [--runs N] [--long]\n", stderr);
        return 2;
    }
    std::string name = (fs::temp_directory_path() / "oxc-bench-formats-XXXXXX").string();
    if (!mkdtemp(name.data())) {
        return 1;
    }
    const fs::path folder = name;
    WarmUp(folder);
    const UsageByFormat usages = AgainstPeers(folder, options->runs);
    Longer(folder / "longer", 100'000, usages);
    if (options->isLong) {
        Longer(folder / "longest", 1'000'000, usages);
    }
    fs::remove_all(folder);
    return 0;
}
