// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_store/store_arguments.h"

#include <gtest/gtest.h>

namespace tools {
namespace {

std::string Refusal(const std::vector<std::string>& arguments) {
    try {
        ParseStoreArguments(arguments);
    } catch (const StoreUsageError& error) {
        return error.what();
    }
    return "none";
}

TEST(StoreArguments, CommandsTakeTheirOptions) {
    const StoreArguments create = ParseStoreArguments(
        {"create", "--to", "Host=h", "--editor", "a", "--editor", "b", "--scheduler", "c"});
    EXPECT_EQ(create.command, StoreCommand::Create);
    EXPECT_EQ(create.to, "Host=h");
    EXPECT_EQ(create.editors, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(create.schedulers, std::vector<std::string>{"c"});
    const StoreArguments link =
        ParseStoreArguments({"link", "live.dat", "--to", "Host=h", "--password-command", "pass show x"});
    EXPECT_EQ(link.place, "live.dat");
    EXPECT_EQ(link.passwordCommand, "pass show x");
    EXPECT_FALSE(link.isForced);
    EXPECT_TRUE(ParseStoreArguments({"link", "--force", "--to", "Host=h", "live.dat"}).isForced);
    EXPECT_TRUE(ParseStoreArguments({"unlink", "live.dat", "--force"}).isForced);
    EXPECT_EQ(ParseStoreArguments({"backup", "-o", "x"}).output, "x");
    EXPECT_EQ(ParseStoreArguments({"check"}).place, "");
    EXPECT_EQ(ParseStoreArguments({"--help"}).command, StoreCommand::Help);
}

TEST(StoreArguments, WrongUsageIsNamedWithoutAPassword) {
    EXPECT_EQ(Refusal({}), "a command is missing");
    EXPECT_EQ(Refusal({"make"}), "\"make\" is no command");
    EXPECT_EQ(Refusal({"create"}), "create needs --to");
    EXPECT_EQ(Refusal({"copy", "--to", "x"}), "copy needs --from");
    EXPECT_EQ(Refusal({"backup"}), "backup needs -o");
    EXPECT_EQ(Refusal({"check", "--force"}), "check has no option --force");
    EXPECT_EQ(Refusal({"link", "--to", "Host=h", "--password-command", "a\nHost=b"}),
              "the value of --password-command holds a control character");
    EXPECT_EQ(Refusal({"create", "--to", "Host=h", "--scheduler", "c", "--editor", "c"}),
              "the role c is either an editor or a scheduler");
    EXPECT_EQ(Refusal({"link", "--to"}), "--to needs a value");
    EXPECT_EQ(Refusal({"link", "--to", "a", "--to", "b"}), "--to is given twice");
    EXPECT_EQ(Refusal({"check", "a", "b"}), "check takes no more arguments");
    EXPECT_EQ(Refusal({"create", "Host=h;Password=secret"}), "create takes no more arguments");
    EXPECT_EQ(Refusal({"check", "--password=secret"}), "check has no option --password");
}

}  // namespace
}  // namespace tools
