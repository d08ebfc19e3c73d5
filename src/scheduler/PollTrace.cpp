// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollTrace.h"

#include <charconv>
#include <filesystem>
#include <string>

#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/small_file.h"
#include "scheduler/RunLog.h"
#include "shared/Global.h"

namespace Global {

namespace {

std::filesystem::path PolledFile() {
    return paths::ToMachine(AppPath()) / "PressroomLive.polled";
}

}  // namespace

// A reader finds a whole line. Nobody waits for the disk: polls come every few seconds.
void WritePollTrace() {
    try {
        AtomicFile file(PolledFile(), AtomicFile::IfThere::Replace, AtomicFile::Readers::Mask,
                        AtomicFile::Lasting::Brief);
        file.Write(std::to_string(TheClock().Moment().seconds) + " " + std::to_string(PollSeconds) + " " +
                   std::to_string(RunLog::Instance().UndeliveredInPoll()) + "\n");
        file.Commit();
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
