// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollTrace.h"

#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>

#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/posix/small_file.h"
#include "scheduler/RunLog.h"
#include "shared/Global.h"

namespace Global {

namespace {

std::filesystem::path PolledFile() {
    return paths::ToMachine(AppPath()) / "PressroomLive.polled";
}

}  // namespace

// Renamed into its place, so that a reader finds a whole line. Not forced to the disk: polls come every few
// seconds.
void WritePollTrace() {
    try {
        const std::filesystem::path file = PolledFile();
        const std::filesystem::path fresh = file.string() + ".new";
        std::ofstream out(fresh, std::ios::binary | std::ios::trunc);
        out << std::to_string(TheClock().Moment().seconds) + " " + std::to_string(PollSeconds) + " " +
                   std::to_string(RunLog::Instance().UndeliveredInPoll()) + "\n";
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
    const std::optional<std::string> text = ReadSmallFile(PolledFile(), Longest);
    if (!text) {
        return std::nullopt;
    }
    PollTrace trace;
    const char* const end = text->data() + text->size();
    const char* at = text->data();
    const auto read = [&at, end](std::int64_t& number) {
        const auto result = std::from_chars(at, end, number);
        at = result.ptr;
        return result.ec == std::errc() && at != end;
    };
    if (!read(trace.moment) || *at++ != ' ' || !read(trace.seconds)) {
        return std::nullopt;
    }
    if (*at == ' ' && (++at == end || !read(trace.undelivered))) {
        return std::nullopt;
    }
    // More numbers may follow in a later version.
    return *at == '\n' || *at == ' ' ? std::optional(trace) : std::nullopt;
}

}  // namespace Global
