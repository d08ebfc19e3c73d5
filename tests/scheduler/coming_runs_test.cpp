// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/ComingRuns.h"

#include <gtest/gtest.h>

#include "platform/base/convert.h"
#include "scheduler/NextRun.h"
#include "store/TextConventions.h"

namespace {

using Texts = std::vector<std::string>;

// Each run as date, time, and number of runs; "!" marks a due one.
Texts Runs(const std::string& frequency, const std::string& nextRun, const std::string& until,
           const std::string& start = "2000-01-01", const std::string& end = "3000-12-31") {
    const auto next = [&frequency](DateValue stored) {
        DateValue after = stored;
        Global::NextSingleRun(frequency, stored, after);
        return after;
    };
    Texts texts;
    for (const Global::ComingRun& run :
         Global::ComingRuns({start, end, nextRun, "07:30", next}, CDate("2026-11-20 10:00"), CDate(until))) {
        texts.push_back(cmFunc::FormatDateText(run.moment) + " " + TimeText(run.moment) + " " +
                        std::to_string(run.count) + (run.isDue ? "!" : "") +
                        (run.isAtEveryPoll ? " at every poll" : ""));
    }
    return texts;
}

}  // namespace

TEST(ComingRuns, FollowTheRulesOfThePoll) {
    EXPECT_EQ(Runs("Weekdays", "2026-11-20", "2026-11-25"),
              (Texts{"2026-11-20 10:00:00 1!", "2026-11-23 07:30:00 1", "2026-11-24 07:30:00 1"}));
    EXPECT_EQ(Runs("Monthly", "2026-11-30", "2027-03-01"),
              (Texts{"2026-11-30 07:30:00 1", "2026-12-30 07:30:00 1", "2027-01-30 07:30:00 1",
                     "2027-02-28 07:30:00 1"}));
}

TEST(ComingRuns, MissedRunsAreMadeUpAtOnce) {
    EXPECT_EQ(Runs("Daily", "2026-11-17", "2026-11-22"),
              (Texts{"2026-11-20 10:00:00 4!", "2026-11-21 07:30:00 1"}));
}

TEST(ComingRuns, StayBetweenFirstAndLastDay) {
    EXPECT_EQ(Runs("Daily", "2026-11-21", "2026-12-20", "2026-11-22", "2026-11-23"),
              (Texts{"2026-11-22 07:30:00 2", "2026-11-23 07:30:00 1"}));
    EXPECT_EQ(Runs("Daily", "2026-11-01", "2026-12-20", "2026-11-01", "2026-11-19"), Texts{});
}

TEST(ComingRuns, AreAtEveryPollWithAnUnknownWord) {
    EXPECT_EQ(Runs("WeekDays", "2026-11-21", "2026-12-20"), (Texts{"2026-11-21 07:30:00 1 at every poll"}));
}
