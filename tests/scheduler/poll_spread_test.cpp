// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollSpread.h"

#include <gtest/gtest.h>

#include <set>

#include "shared/Global.h"
#include "support/database.h"
#include "support/team_store.h"

TEST(PollSpread, OnlySchedulersOfASharedStoreBeginAtAnyMoment) {
    const fakes::TestDatabase database;
    Global::PollSeconds = 60;
    std::set<int> seen;
    for (int i = 0; i < 50; ++i) {
        Global::PollCountdown = Global::PollSeconds;
        Global::SpreadPolls();
        EXPECT_GE(Global::PollCountdown, 1);
        EXPECT_LE(Global::PollCountdown, 60);
        seen.insert(Global::PollCountdown);
    }
    if (fakes::TestsUseServer()) {
        EXPECT_GT(seen.size(), 5U);
    } else {
        EXPECT_EQ(seen, std::set<int>{60});
    }
    Global::PollSeconds = 0;
    Global::PollCountdown = 0;
}
