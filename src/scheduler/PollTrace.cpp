// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollTrace.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/posix/small_file.h"
#include "shared/Global.h"

namespace Global {

namespace {

std::filesystem::path TraceFile() {
    return paths::ToMachine(AppPath()) / "PressroomLive.polled";
}

}  // namespace

// Renamed into its place, so that a reader finds a whole line. Not forced to the disk: polls come every few
// seconds.
void WritePollTrace() {
    try {
        const std::filesystem::path file = TraceFile();
        const std::filesystem::path fresh = file.string() + ".new";
        std::ofstream out(fresh, std::ios::binary | std::ios::trunc);
        out << std::to_string(TheClock().Moment().seconds) + " " + std::to_string(PollSeconds) + "\n";
        out.close();
        if (out) {
            std::filesystem::rename(fresh, file);
        }
    } catch (...) {
        return;
    }
}

std::optional<PollTrace> ReadPollTrace() {
    constexpr std::size_t Longest = 100;
    const std::optional<std::string> text = ReadSmallFile(TraceFile(), Longest);
    if (!text) {
        return std::nullopt;
    }
    PollTrace trace;
    const char* const end = text->data() + text->size();
    const auto moment = std::from_chars(text->data(), end, trace.moment);
    if (moment.ec != std::errc() || moment.ptr == end || *moment.ptr != ' ') {
        return std::nullopt;
    }
    const auto seconds = std::from_chars(moment.ptr + 1, end, trace.seconds);
    return seconds.ec == std::errc() && seconds.ptr != end && *seconds.ptr == '\n' ? std::optional(trace)
                                                                                   : std::nullopt;
}

}  // namespace Global
