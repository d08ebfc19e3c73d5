// SPDX-License-Identifier: GPL-3.0-or-later
// The arguments that oxc-mail accepts, and its errors for others.
#include "tools/oxc_mail/mail_arguments.h"

#include <gtest/gtest.h>

#include <sstream>

namespace {

using Assigned = std::pair<mailer::KnownKey, std::string>;
using tools::MailCommand;
using tools::ParseMailArguments;

std::string ComplaintAbout(const std::vector<std::string>& arguments) {
    try {
        ParseMailArguments(arguments);
    } catch (const tools::MailUsageError& error) {
        return error.what();
    }
    return {};
}

}  // namespace

TEST(MailArguments, NoArgumentsMeanTheWindow) {
    EXPECT_EQ(ParseMailArguments({}).command, MailCommand::Window);
}

TEST(MailArguments, CommandsAreKnownByTheirWords) {
    EXPECT_EQ(ParseMailArguments({"--help"}).command, MailCommand::Help);
    EXPECT_EQ(ParseMailArguments({"-h"}).command, MailCommand::Help);
    EXPECT_EQ(ParseMailArguments({"--version"}).command, MailCommand::Version);
    EXPECT_EQ(ParseMailArguments({"show"}).command, MailCommand::Show);
    EXPECT_EQ(ParseMailArguments({"password"}).command, MailCommand::Password);
    EXPECT_EQ(ParseMailArguments({"check"}).command, MailCommand::Check);
    EXPECT_EQ(ParseMailArguments({"test", "ann@example.com"}).recipient, "ann@example.com");
    EXPECT_EQ(ComplaintAbout({"mail"}), "\"mail\" is no command");
}

TEST(MailArguments, SetTakesKeysInAnyCaseAndValuesAsTheyStand) {
    const auto arguments = ParseMailArguments({"set", "HOST=mail.example.com", "from=a=b ; c", "Port="});
    ASSERT_EQ(arguments.values.size(), 3u);
    EXPECT_EQ(arguments.values[0], (Assigned(mailer::KnownKey("Host"), "mail.example.com")));
    EXPECT_EQ(arguments.values[1], (Assigned(mailer::KnownKey("From"), "a=b ; c")));
    EXPECT_EQ(arguments.values[2], (Assigned(mailer::KnownKey("Port"), "")));
}

TEST(MailArguments, PasswordOnTheLineIsRefusedAndNotRepeated) {
    EXPECT_EQ(ComplaintAbout({"set", "paSSword=s3cret"}),
              "a password on the command line can be read by others; use: oxc-mail password");
    EXPECT_EQ(ComplaintAbout({"set", "Pasword=s3cret"}), "the mail profile has no key \"Pasword\"");
    EXPECT_EQ(ComplaintAbout({"set", "s3cret"}), "set needs Key=Value");
    EXPECT_EQ(ComplaintAbout({"password", "s3cret"}), "\"password\" takes no arguments");
}

TEST(MailArguments, MissingOrSurplusArgumentsAreTold) {
    EXPECT_EQ(ComplaintAbout({"set"}), "set needs Key=Value");
    EXPECT_EQ(ComplaintAbout({"set", "=x"}), "set needs Key=Value");
    EXPECT_EQ(ComplaintAbout({"test"}), "test needs one recipient");
    EXPECT_EQ(ComplaintAbout({"test", ""}), "test needs one recipient");
    EXPECT_EQ(ComplaintAbout({"test", "a@b.c", "d@e.f"}), "test needs one recipient");
    EXPECT_EQ(ComplaintAbout({"check", "now"}), "\"check\" takes no arguments");
}

TEST(MailArguments, UsageNamesEveryKeyThatSetTakes) {
    const std::string usage = tools::MailUsage();
    const std::string keys = usage.substr(usage.find("Keys:"));
    for (const mailer::ProfileKey& key : mailer::ProfileKeys) {
        const std::string name(key.name);
        const bool isTaken = ComplaintAbout({"set", name + "=x"}).empty();
        EXPECT_EQ(keys.find(" " + name + ",") != std::string::npos ||
                      keys.find(" " + name + "\n") != std::string::npos ||
                      keys.find(" " + name + " (" + Alternatives(key) + ")") != std::string::npos,
                  isTaken)
            << name << "\n"
            << keys;
        EXPECT_EQ(isTaken, name != "Password");
    }
    EXPECT_NE(usage.find("oxc-mail password "), std::string::npos);
}

TEST(MailArguments, LinesOfTheUsageFitATerminal) {
    std::istringstream usage(tools::MailUsage());
    for (std::string line; std::getline(usage, line);) {
        EXPECT_LE(line.size(), 100u) << line;
    }
    EXPECT_NE(tools::MailUsage().find("      smtp: Host, Port, Security (none, starttls or tls), Verify"),
              std::string::npos);
}
