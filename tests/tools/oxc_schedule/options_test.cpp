// SPDX-License-Identifier: GPL-3.0-or-later
// The settings that the window Options edits.
#include "schedule_program.h"

namespace {

using Options = StartedProgram;

}  // namespace

TEST_F(Options, AreShownAndStored) {
    EXPECT_EQ(Output("options show"), "Polling interval:  15 seconds\nOn error alert:    nobody\n");
    EXPECT_EQ(Output("options set --poll 60 --alert ann@example.com"),
              "The options are stored. A running scheduler takes them at its next start, or with SIGHUP.\n");
    EXPECT_EQ(Output("options show"), "Polling interval:  60 seconds\nOn error alert:    ann@example.com\n");
    Output("options set --alert ''");
    EXPECT_EQ(Output("options show"), "Polling interval:  60 seconds\nOn error alert:    nobody\n");
}

TEST_F(Options, AreRefusedWhereTheSystemCouldNotUseThem) {
    EXPECT_EQ(Refusal("options", 2),
              "options needs a command of its own, such as options show (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("options set", 2), "options set needs --poll or --alert (see oxc-schedule --help)");
    EXPECT_EQ(Refusal("options set --poll 32768", 2),
              "--poll needs a whole number from 0 to 32767, not \"32768\" (see oxc-schedule --help)");
    EXPECT_THAT(Refusal("options set --poll 20 --alert Bob"), testing::HasSubstr("Bob"));
    EXPECT_THAT(Output("options show"), testing::StartsWith("Polling interval:  15 seconds\n"));
}
