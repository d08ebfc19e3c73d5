// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/hidden_arguments.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace tools {
namespace {

std::vector<std::string> Hidden(std::vector<std::string> arguments) {
    std::vector<char*> pointers;
    for (std::string& argument : arguments) {
        pointers.push_back(argument.data());
    }
    HideSecrets(static_cast<int>(pointers.size()), pointers.data());
    return arguments;
}

TEST(HiddenArguments, PasswordIsAsterisksAndTheRestStays) {
    EXPECT_EQ(Hidden({"oxc-report", "--user", "ann", "--password", "s3cret", "-o", "x"}),
              (std::vector<std::string>{"oxc-report", "--user", "ann", "--password", "******", "-o", "x"}));
    EXPECT_EQ(Hidden({"oxc-report", "--password"}), (std::vector<std::string>{"oxc-report", "--password"}));
}

TEST(HiddenArguments, PasswordOfAConnectStringIsAsterisksToTheEnd) {
    const auto hidden = [](const std::string& text) {
        return Hidden({"oxc-report", "--data-source", text})[2];
    };
    EXPECT_EQ(hidden("db=PG;Server=x;Password=a;Port=1"), "db=PG;Server=x;Password=********");
    EXPECT_EQ(hidden("db=ODBC;DSN=x;PWD = {a;b}"), "db=ODBC;DSN=x;PWD =******");
    EXPECT_EQ(hidden("db=ODBC;User Password=a"), "db=ODBC;User Password=*");
    EXPECT_EQ(hidden("db=SQLITE;Data Source=/pwd/x.db"), "db=SQLITE;Data Source=/pwd/x.db");
}

TEST(HiddenArguments, AnyArgumentMayBeAConnectString) {
    std::string to = "--to";
    std::string connect = "Host=h;Password=a;Port=1";
    std::string program = "oxc-store";
    char* pointers[] = {program.data(), to.data(), connect.data()};
    HideConnectStrings(3, pointers);
    EXPECT_EQ(connect, "Host=h;Password=********");
    EXPECT_EQ(to, "--to");
}

TEST(HiddenArguments, AConnectStringWithAPasswordIsKnown) {
    EXPECT_TRUE(HoldsPassword("Host=h;Password=a"));
    EXPECT_TRUE(HoldsPassword("DSN=x;PWD = a"));
    EXPECT_FALSE(HoldsPassword("Data Source=/pwd/password.db"));
    EXPECT_FALSE(HoldsPassword(""));
}

TEST(HiddenArguments, VariableIsTakenOutOfTheEnvironment) {
    setenv("OXC_TEST_SECRET", "s3cret", 1);
    const char* const place = std::getenv("OXC_TEST_SECRET");
    EXPECT_EQ(TakeFromEnvironment("OXC_TEST_SECRET"), "s3cret");
    EXPECT_EQ(std::getenv("OXC_TEST_SECRET"), nullptr);
    EXPECT_NE(std::string(place), "s3cret");
    EXPECT_EQ(TakeFromEnvironment("OXC_TEST_SECRET"), "");
}

}  // namespace
}  // namespace tools
