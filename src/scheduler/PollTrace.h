// SPDX-License-Identifier: GPL-3.0-or-later
// The trace of the last poll: the file PressroomLive.polled in the application's folder. A monitor reads it
// to see whether the scheduler polls, since a poll without a due item leaves nothing in the database.
#pragma once

#include <cstdint>
#include <optional>

namespace Global {

struct PollTrace {
    std::int64_t moment = 0;   // the end of the last poll, in seconds since 1970-01-01 00:00 UTC
    std::int64_t seconds = 0;  // from one poll to the next
    // Schedules whose mail failed in this poll, or whose format is not known: they leave no row in the
    // history. A trace of an earlier version does not have it.
    std::int64_t undelivered = 0;
};

// Writes the trace of a poll that ends now. A failure does not end the poll: the trace stays old, and the
// monitor reports that.
void WritePollTrace();

// Returns nullopt if there is no trace or if its file holds something else.
std::optional<PollTrace> ReadPollTrace();

}  // namespace Global
