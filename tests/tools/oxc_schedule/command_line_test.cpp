// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/command_line.h"

#include <gmock/gmock.h>

#include "support/source_dir.h"
#include "support/temporary_folder.h"
#include "tools/oxc_schedule/commands.h"

using tools::CommandLine;
using tools::ParseCommandLine;

namespace {

using Texts = std::vector<std::string>;

std::string Refusal(const Texts& arguments) {
    try {
        ParseCommandLine(arguments);
    } catch (const tools::ScheduleUsageError& error) {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(ScheduleCommandLine, TakesNamesAndOptionsInAnyOrder) {
    const CommandLine line = ParseCommandLine({"add", "--at", "07:30", "sales.rpt", "--to=ann@example.com",
                                               "-p", "Region=West", "-p", "Year=", "--weekly"});
    EXPECT_EQ(line.command, "add");
    EXPECT_EQ(line.names, (Texts{"sales.rpt"}));
    EXPECT_EQ(line.Value("at"), "07:30");
    EXPECT_EQ(line.Value("to"), "ann@example.com");
    EXPECT_EQ(line.All("p"), (Texts{"Region=West", "Year="}));
    EXPECT_TRUE(line.Has("weekly"));
    EXPECT_FALSE(line.Has("daily"));
    EXPECT_EQ(line.ValueOr("folder", "Desktop"), "Desktop");
}

TEST(ScheduleCommandLine, TakesCommandsOfTwoWords) {
    const CommandLine line = ParseCommandLine({"folder", "rename", "Old", "New"});
    EXPECT_EQ(line.command, "folder rename");
    EXPECT_EQ(line.names, (Texts{"Old", "New"}));
}

TEST(ScheduleCommandLine, TakesEveryArgumentAfterTwoHyphensAsName) {
    EXPECT_EQ(ParseCommandLine({"show", "--json", "--", "--odd"}).names, (Texts{"--odd"}));
}

TEST(ScheduleCommandLine, RefusesWhatTheCommandDoesNotUnderstand) {
    const std::vector<std::pair<Texts, std::string>> refusals = {
        {{}, "no command is given"},
        {{"fetch"}, "\"fetch\" is no command"},
        {{"package"}, "package needs a command of its own, such as package list"},
        {{"package", "fetch"}, "\"package fetch\" is no command"},
        {{"list", "--at", "07:30"}, "list has no option --at"},
        {{"list", "-x"}, "list has no option -x"},
        {{"add", "a.rpt", "--p", "A=B"}, "add has no option --p"},
        {{"list", "Sales"}, "list cannot use \"Sales\""},
        {{"list", "--json", "--json"}, "--json is given twice"},
        {{"list", "--json=1"}, "--json takes no value"},
        {{"list", "--folder"}, "--folder needs a value"},
        {{"add"}, "add needs a report file"},
        {{"import"}, "import needs a file"},
        {{"folder", "rename", "Old"}, "folder rename needs the old name and the new name"},
        {{"show"}, "show needs a name"},
        {{"show", "Sales", "--id", "3"}, "a name and --id are given; one of them is enough"},
        {{"add", "a.rpt", "-p", "Region"}, "-p needs NAME=VALUE, not \"Region\""},
        {{"add", "a.rpt", "-p", "=West"}, "-p needs NAME=VALUE, not \"=West\""},
    };
    for (const auto& [arguments, text] : refusals) {
        EXPECT_EQ(Refusal(arguments), text);
    }
}

TEST(ScheduleCommandLine, ReadsWholeNumbersInTheirRange) {
    EXPECT_EQ(ParseCommandLine({"next", "--days", "30"}).Number("days", 1, 60), 30);
    EXPECT_EQ(ParseCommandLine({"next"}).Number("days", 1, 60), std::nullopt);
    for (const char* text : {"0", "61", "-1", "7x", "", "99999999999999999999"}) {
        const CommandLine line = ParseCommandLine({"next", "--days=" + std::string(text)});
        try {
            line.Number("days", 1, 60);
            ADD_FAILURE() << text;
        } catch (const tools::ScheduleUsageError& error) {
            EXPECT_EQ(error.what(),
                      "--days needs a whole number from 1 to 60, not \"" + std::string(text) + "\"");
        }
    }
}

TEST(ScheduleCommandLine, UsageNamesEveryCommand) {
    const std::string usage = tools::ScheduleUsage();
    for (const char* word :
         {"init ",    "refresh NAME", "options show", "add REPORT",   "set NAME",
          "list |",   "show NAME",    "remove NAME",  "run NAME",     "next ",
          "history ", "package add",  "package set",  "folder list",  "export ",
          "import ",  "status ",      "--dry-run",    "--prometheus", "--with-passwords"}) {
        EXPECT_THAT(usage, testing::HasSubstr(word));
    }
}

// Options of the table and commands in two words, both as the guide writes them.
TEST(ScheduleCommandLine, GuideDescribesEveryCommandAndOption) {
    const std::string guide = ReadBytes(SourceDir() + "/docs/schedule.md");
    for (const tools::KnownCommand& command : tools::KnownCommands()) {
        if (command.words.starts_with("--")) {
            continue;
        }
        EXPECT_NE(guide.find("`" + command.words), std::string::npos) << command.words;
        for (const std::string& option : command.options) {
            const std::string word = option == "p" ? "`-p" : "--" + option;
            EXPECT_NE(guide.find(word), std::string::npos) << command.words << " " << word;
        }
    }
}

// Before a folder or a database is made.
TEST(ScheduleCommandLine, ACommandThatIsNotInTheTableIsRefused) {
    const CommandLine line{"folder show", {}, {}};
    EXPECT_THROW(tools::RunScheduleCommand(line), tools::ScheduleUsageError);
}
