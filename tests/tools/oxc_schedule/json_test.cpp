// SPDX-License-Identifier: GPL-3.0-or-later
// What the commands that change something print with --json.
#include "schedule_program.h"

namespace {

using Json = ScheduleProgram;

std::string Compact(std::string text) {
    std::erase_if(text, [](char c) { return c == ' ' || c == '\n'; });
    return text;
}

}  // namespace

TEST_F(Json, EveryChangeIsAnObject) {
    EXPECT_EQ(Compact(Output("init --json")), "{\"folder\":\"" + (m_folder / "app").string() + "\"}");
    EXPECT_EQ(Compact(Output("folder add Old --json")), R"({"in":"Desktop","name":"Old"})");
    EXPECT_EQ(Compact(Output("folder rename Old New --json")),
              R"({"former":"Old","in":"Desktop","name":"New"})");
    EXPECT_EQ(Compact(Output(std::string(AddPlain) + " --json")),
              R"({"folder":"Desktop","id":1,"next":"2990-01-01","title":"Plain"})");
    EXPECT_EQ(Compact(Output("set Plain --title Other --move-to New --json")),
              R"({"folder":"New","id":1,"next":"2990-01-01","title":"Other"})");
    EXPECT_EQ(Compact(Output("refresh Other --json")),
              R"({"folder":"New","id":1,"next":"2990-01-01","title":"Other"})");
    const std::string package = R"({"id":1,"name":"P","next":"2990-01-01"})";
    EXPECT_EQ(
        Compact(Output("package add P --report plain.rpt --report sales.rpt -p Region=West --output out "
                       "--no-mail --at 06:00 --start 2990-01-01 --json")),
        package);
    EXPECT_EQ(Compact(Output("package set P --report 2 -p Year=2026 --json")),
              R"({"id":1,"name":"P","next":"2990-01-01","report":"2>sales.rpt"})");
    EXPECT_EQ(Compact(Output("package run P --json")), package);
    EXPECT_EQ(Compact(Output("options set --poll 30 --json")), R"({"alert":"","poll":30})");
    EXPECT_EQ(Compact(Output("options show --json")), R"({"alert":"","poll":30})");
    EXPECT_EQ(Compact(Output("export all.json --json")), R"({"file":"all.json"})");
    EXPECT_EQ(Compact(Output("package remove P --json")), package);
    EXPECT_EQ(Compact(Output("remove Other --json")),
              R"({"folder":"New","id":1,"next":"2990-01-01","title":"Other"})");
    EXPECT_EQ(Compact(Output("folder remove New --json")), R"({"in":"Desktop","name":"New"})");
    const std::string items = R"("items":[{"kind":"folder","name":"New","step":"add"},)"
                              R"({"folder":"New","kind":"schedule","step":"add","title":"Other"},)"
                              R"({"kind":"package","name":"P","step":"add"}]})";
    EXPECT_EQ(Compact(Output("import all.json --dry-run --json")), "{\"changed\":false," + items);
    EXPECT_EQ(Compact(Output("import all.json --json")), "{\"changed\":true," + items);
}
