// SPDX-License-Identifier: GPL-3.0-or-later
// Valid and invalid profiles.
#include "platform/mail/profile/mail_profile.h"

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <iostream>

#include "mail_fixture.h"
#include "support/sanitizer.h"

namespace {

using mailer::PasswordOf;
using mailer::ReadMailProfile;

class Profile : public MailTest {
 public:
    std::int32_t NumberOf(const std::string& lines) {
        WriteProfile(lines);
        m_text = DescriptionRaisedBy([&] { ReadMailProfile(MailTest::Profile()); });
        return NumberRaisedBy([&] { ReadMailProfile(MailTest::Profile()); });
    }
    mailer::MailProfile Read(const std::string& lines) {
        WriteProfile(lines);
        return ReadMailProfile(MailTest::Profile());
    }
};

constexpr const char* Server = "Transport=smtp\nFrom=a@example.com\nHost=mail.example.com\n";

}  // namespace

TEST_F(Profile, MissingFileSaysWhereItIsExpected) {
    EXPECT_EQ(NumberRaisedBy([&] { Logon(); }), -2147221231);
    EXPECT_NE(DescriptionRaisedBy([&] { Logon(); }).find(MailTest::Profile().string()), std::string::npos);
}

TEST_F(Profile, CommentsCaseAndBlanksDoNotMatter) {
    const auto profile = Read(
        "; a comment\n# another\n TRANSPORT = SMTP   ; the way out\r\nfrom=Reports <r@example.com>\t; who\n"
        "Host=mail.example.com\nPort=2525 ; odd\nSecurity=tls\nUser=   ; nobody\nStrange=1\n");
    EXPECT_EQ(profile.transport, mailer::TransportKind::Smtp);
    EXPECT_EQ(profile.from, (mailer::Mailbox{"Reports", "r@example.com"}));
    EXPECT_EQ(profile.port, 2525);
    EXPECT_EQ(profile.security, mailer::Security::Tls);
    EXPECT_EQ(profile.user, "");
    EXPECT_TRUE(profile.verify);
}

TEST_F(Profile, QuotedValuesAreTakenAsTheyStand) {
    EXPECT_EQ(Read(std::string(Server) + "User=ann\nPassword=\" a ; b \"   ; secret\n").password, " a ; b ");
    EXPECT_EQ(Read(std::string(Server) + "User=ann\nPassword=a;b\"c\n").password, "a;b\"c");
}

TEST_F(Profile, PortFollowsTheSecurity) {
    EXPECT_EQ(Read(Server).port, 587);
    EXPECT_EQ(Read(Server).security, mailer::Security::StartTls);
    EXPECT_EQ(Read(std::string(Server) + "Security=tls\n").port, 465);
    EXPECT_EQ(Read(std::string(Server) + "Security=none\n").port, 25);
}

TEST_F(Profile, WhatMakesNoSenseNamesItsKey) {
    using Case = std::pair<std::string, std::string>;
    const std::string server = Server;
    for (const auto& [lines, key] :
         {Case{"From=a@example.com\n", "Transport"}, Case{"Transport=pigeon\nFrom=a@example.com\n", "pigeon"},
          Case{"Transport=outbox\n", "From"}, Case{"Transport=outbox\nFrom=nobody\n", "From"},
          Case{"Transport=smtp\nFrom=a@example.com\n", "Host"},
          Case{"Transport=smtp\nFrom=a@example.com\nHost=evil/../x@y\n", "Host"},
          Case{server + "Port=99999\n", "Port"}, Case{server + "Port=25x\n", "Port"},
          Case{server + "Security=maybe\n", "Security"}, Case{server + "Verify=perhaps\n", "Verify"},
          Case{server + "Timeout=0\n", "Timeout"}, Case{server + "CAFile=C:\\ca.pem\n", "CAFile"},
          Case{"Transport=outbox\nFrom=a@example.com\nOutboxFolder=Q:\\out\n", "OutboxFolder"},
          Case{server + "[AddressBook]\nVCard=C:\\book.vcf\n", "VCard: Path not found: \"C:\\book.vcf\""}}) {
        EXPECT_EQ(NumberOf(lines), mailer::ErrBadProfile) << lines;
        EXPECT_NE(m_text.find(key), std::string::npos) << m_text;
    }
}

TEST_F(Profile, PasswordCommandGivesItsLine) {
    EXPECT_EQ(PasswordOf(Read(std::string(Server) + "User=ann\nPasswordCommand=printf 'two words\\n'\n")),
              "two words");
}

TEST_F(Profile, ProgramThatAnotherUserMayHaveNamedIsNotRun) {
    const std::string command = std::string(Server) + "User=ann\nPasswordCommand=echo open\n";
    const std::string sendmail = "Transport=sendmail\nFrom=a@example.com\nSendmail=/bin/true\n";
    const auto path = Read(command).file;
    const std::string begin = "The mail profile \"" + path.string() + "\": it runs a program";
    const auto fault = [&] { return DescriptionRaisedBy([&] { mailer::ReadMailProfile(path); }); };
    namespace fs = std::filesystem;
    for (const std::string& text : {command, sendmail}) {
        Read(text);
        fs::permissions(path, fs::perms::others_write, fs::perm_options::add);
        EXPECT_EQ(fault(), begin + ", and everybody may write it; make it your own (chmod 600)");
        fs::permissions(path, fs::perms::others_write, fs::perm_options::remove);
        mailer::ReadMailProfile(path);
        if (geteuid() == 0) {
            constexpr uid_t Daemon = 1;
            ASSERT_EQ(chown(path.c_str(), Daemon, Daemon), 0);
            EXPECT_EQ(fault(), begin + " and belongs to daemon; make it your own (chown)");
            ASSERT_EQ(chown(path.c_str(), 0, 0), 0);
        }
    }
    Read(Server);
    fs::permissions(path, fs::perms::others_write, fs::perm_options::add);
    mailer::ReadMailProfile(path);
}

TEST_F(Profile, PasswordCommandThatFailsIsAnErrorWithoutItsOutput) {
    for (const auto& [command, word] :
         {std::pair("echo hidden; exit 3", "failed with exit code 3"),
          std::pair("echo hidden; kill -9 $$", "PasswordCommand was ended by signal 9 (Killed)"),
          std::pair("yes", "PasswordCommand wrote more than 4096 bytes"), std::pair("true", "no password")}) {
        const auto profile = Read(std::string(Server) + "User=ann\nPasswordCommand=" + command + "\n");
        EXPECT_EQ(NumberRaisedBy([&] { PasswordOf(profile); }), mailer::ErrBadProfile) << command;
        const std::string text = DescriptionRaisedBy([&] { PasswordOf(profile); });
        EXPECT_NE(text.find(word), std::string::npos) << text;
        EXPECT_EQ(text.find("hidden"), std::string::npos) << text;
    }
}

TEST_F(Profile, TooManyOpenFilesAreNotAFailureOfThePasswordCommand) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    const auto profile = Read(std::string(Server) + "User=ann\nPasswordCommand=echo s3cret\n");
    const auto askWithFewHandles = [&profile] {
        const int lowest = dup(0);
        close(lowest);
        const rlimit few{static_cast<rlim_t>(lowest + 1), 4096};
        setrlimit(RLIMIT_NOFILE, &few);
        const std::string text = DescriptionRaisedBy([&] { PasswordOf(profile); });
        std::cerr << text;
        std::_Exit(NumberRaisedBy([&] { PasswordOf(profile); }) == 67 ? 0 : 1);
    };
    EXPECT_EXIT(askWithFewHandles(), testing::ExitedWithCode(0), "PasswordCommand.*Too many open files");
}

TEST_F(Profile, TooManyOpenFilesAreNotAMissingProfile) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    WriteProfile(Server);
    const auto readWithoutHandles = [this] {
        const rlimit none{3, 3};
        setrlimit(RLIMIT_NOFILE, &none);
        std::cerr << DescriptionRaisedBy([this] { ReadMailProfile(MailTest::Profile()); });
        std::_Exit(NumberRaisedBy([this] { ReadMailProfile(MailTest::Profile()); }) == 67 ? 0 : 1);
    };
    EXPECT_EXIT(readWithoutHandles(), testing::ExitedWithCode(0), "Too many open files");
}

TEST_F(Profile, PasswordCommandIsNotRunAtLogon) {
    const auto mark = MailTest::Profile().parent_path() / "ran";
    const auto profile =
        Read(std::string(Server) + "User=ann\nPasswordCommand=touch \"" + mark.string() + "\"; exit 1\n");
    EXPECT_FALSE(std::filesystem::exists(mark));
    EXPECT_EQ(NumberRaisedBy([&] { PasswordOf(profile); }), mailer::ErrBadProfile);
    EXPECT_TRUE(std::filesystem::exists(mark));
}

TEST_F(Profile, OutboxLiesWithTheUsersDataUnlessToldOtherwise) {
    setenv("XDG_DATA_HOME", m_folder.Path().c_str(), 1);
    const auto profile = Read("Transport=outbox\nFrom=a@example.com\n");
    unsetenv("XDG_DATA_HOME");
    EXPECT_EQ(profile.outboxFolder, m_folder.Path() / "oxbow-courier" / "outbox");
}

TEST_F(Profile, UsersProfileLiesWithTheUsersSettings) {
    setenv("XDG_CONFIG_HOME", m_folder.Path().c_str(), 1);
    const auto path = mailer::MailProfilePath();
    unsetenv("XDG_CONFIG_HOME");
    EXPECT_EQ(path, m_folder.Path() / "oxbow-courier" / "mail.ini");
}

TEST_F(Profile, GreetingNameAndServerAreNamesOfMachines) {
    EXPECT_EQ(Read(Server).hello, "");
    EXPECT_EQ(Read(std::string(Server) + "Hello=reports.example.com\n").hello, "reports.example.com");
    EXPECT_EQ(Read(std::string(Server) + "Hello=[192.0.2.7]\n").hello, "[192.0.2.7]");
    EXPECT_EQ(NumberOf(std::string(Server) + "Hello=a/b\n"), mailer::ErrBadProfile);
    EXPECT_NE(m_text.find("Hello is \"a/b\", not the name or the address of a machine"), std::string::npos)
        << m_text;
    EXPECT_EQ(Read("Transport=smtp\nFrom=a@example.com\nHost=mail.bücher.example\n").host,
              "mail.xn--bcher-kva.example");
}

TEST_F(Profile, PasswordCommandThatLeavesAChildIsNotWaitedFor) {
    const auto profile = Read(std::string(Server) + "PasswordCommand=echo s3cret; sleep 3 & exit 0\n");
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(PasswordOf(profile), "s3cret");
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(2));
}

TEST_F(Profile, MailProgramHasTenMinutesUnlessToldOtherwise) {
    const std::string program = "Transport=sendmail\nFrom=a@example.com\n";
    EXPECT_EQ(Read(program).sendmailSeconds, 600);
    EXPECT_EQ(Read(program + "Timeout=45\n").sendmailSeconds, 45);
}
