// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/NextDue.h"

#include <gtest/gtest.h>

#include "platform/base/convert.h"
#include "store/TextConventions.h"
#include "support/run_fixture.h"

namespace {

class NextDue : public fakes::PackageRunFixture {
 protected:
    NextDue() : PackageRunFixture(fakes::At(2026, 11, 21, 14, 0, 0)) {}
    static std::string Found() {
        const std::optional<Global::NextDue> next = Global::FindNextDue();
        return next ? cmFunc::FormatDateText(next->moment) + " " + TimeText(next->moment) +
                          (next->kind == Global::RunKind::Schedule ? " schedule " : " package ") +
                          next->reportID + " " + next->title
                    : "nothing";
    }
};

}  // namespace

TEST_F(NextDue, NothingIsDueInEmptyTables) {
    EXPECT_EQ(Found(), "nothing");
}

TEST_F(NextDue, TheEarliestOfSchedulesAndPackages) {
    fakes::Insert(database, fakes::ScheduleRow{.runAt = "07:30", .nextRun = "2026-11-23"});
    fakes::Insert(database, fakes::ScheduleRow{.title = "Stock", .runAt = "07:00", .nextRun = "2026-11-23"});
    EXPECT_EQ(Found(), "2026-11-23 07:00:00 schedule 2 Stock");
    Package("T", "ann;", "2026-11-22", "23:00");
    EXPECT_EQ(Found(), "2026-11-22 23:00:00 package 1 Pack");
}

TEST_F(NextDue, WhatIsDueIsDueNow) {
    fakes::Insert(database, fakes::ScheduleRow{.runAt = "07:30", .nextRun = "2026-11-20"});
    EXPECT_EQ(Found(), "2026-11-21 14:00:00 schedule 1 Sales");
}

TEST_F(NextDue, NeitherTheEndedNorTheUnreadable) {
    fakes::Insert(database, fakes::ScheduleRow{.endDate = "2026-11-20", .nextRun = "2026-11-20"});
    fakes::Insert(database, fakes::ScheduleRow{.nextRun = "soon"});
    EXPECT_EQ(Found(), "nothing");
    fakes::Insert(database, fakes::ScheduleRow{.title = "Far", .nextRun = "2999-12-31"});
    EXPECT_EQ(Found(), "2999-12-31 00:00:00 schedule 3 Far");
}
