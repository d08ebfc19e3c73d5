// SPDX-License-Identifier: GPL-3.0-or-later
// The program as users and scripts use it: exit codes, one line for an error, no secret in any output.
#include "mail_program.h"
#include "support/smtp_server.h"

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST_F(MailProgram, HelpAndVersionNeedNothing) {
    const MailOutcome help = Run("--help");
    EXPECT_EQ(help.code, 0);
    EXPECT_THAT(help.output, HasSubstr("oxc-mail set KEY=VALUE..."));
    EXPECT_EQ(help.complaint, "");
    EXPECT_THAT(Run("--version").output, StartsWith("oxc-mail "));
}

TEST_F(MailProgram, WindowWithoutDisplayIsRefusedInOneLine) {
    const MailOutcome outcome = Run("");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.complaint,
              "oxc-mail: The window needs a display; oxc-mail --help lists the commands, which need none\n");
}

TEST_F(MailProgram, WrongUsageHasCodeTwoAndOneLine) {
    for (const char* arguments :
         {"fetch", "set", "set Host", "set Password=s3cret", "test", "password s3cret"}) {
        const MailOutcome outcome = Run(arguments);
        EXPECT_EQ(outcome.code, 2) << arguments;
        ExpectOneLine(outcome.complaint);
        EXPECT_THAT(outcome.complaint, HasSubstr("(see oxc-mail --help)"));
        EXPECT_THAT(outcome.complaint + outcome.output, Not(HasSubstr("s3cret")));
    }
    EXPECT_FALSE(std::filesystem::exists(File()));
}

TEST_F(MailProgram, CommandsWithoutAProfileTellHowToMakeIt) {
    for (const char* arguments : {"show", "check", "test ann@example.com"}) {
        const MailOutcome outcome = Run(arguments);
        EXPECT_EQ(outcome.code, 1) << arguments;
        ExpectOneLine(outcome.complaint);
        EXPECT_THAT(outcome.complaint, HasSubstr("make it with: oxc-mail set Transport=... From=..."));
    }
}

TEST_F(MailProgram, SetMakesAndChangesTheProfile) {
    EXPECT_EQ(Run("set Transport=outbox 'From=Reports <r@example.com>'").code, 0);
    EXPECT_EQ(Profile(), "[Profile]\nTransport=outbox\nFrom=Reports <r@example.com>\n");
    EXPECT_EQ(Run("set timeout=30 From=b@example.com").code, 0);
    EXPECT_EQ(Profile(), "[Profile]\nTransport=outbox\nFrom=b@example.com\nTimeout=30\n");
    EXPECT_EQ(Run("set Timeout=").code, 0);
    EXPECT_EQ(Profile(), "[Profile]\nTransport=outbox\nFrom=b@example.com\n");
}

TEST_F(MailProgram, SetThatMakesNoSenseChangesNothing) {
    Run("set Transport=outbox From=r@example.com");
    const std::string before = Profile();
    const MailOutcome outcome = Run("set Transport=smtp");
    EXPECT_EQ(outcome.code, 1);
    ExpectOneLine(outcome.complaint);
    EXPECT_THAT(outcome.complaint, HasSubstr("Host is missing"));
    EXPECT_EQ(Run("set \"From=a@example.com\nTransport=smtp\"").code, 1);
    EXPECT_EQ(Profile(), before);
}

TEST_F(MailProgram, PasswordComesFromStandardInputAndIsNeverShown) {
    Run("set Transport=smtp From=r@example.com Host=127.0.0.1 Port=1 User=ann");
    EXPECT_EQ(Run("show").output,
              "; " + File().string() +
                  "\nTransport=smtp\nFrom=r@example.com\nHost=127.0.0.1\nPort=1\nUser=ann\n"
                  "; Password: not set\n");
    const MailOutcome stored = Run("password", " s3cret ; \"x\" \r\n");
    EXPECT_EQ(stored.code, 0);
    EXPECT_EQ(stored.output, "The password is stored.\n");
    EXPECT_THAT(Profile(), HasSubstr("Password=\" s3cret ; \"x\" \"\n"));
    for (const char* command :
         {"show", "check", "test ann@example.com", "set Transport=pigeon", "set Port=0"}) {
        const MailOutcome outcome = Run(command);
        EXPECT_THAT(outcome.output + outcome.complaint, Not(HasSubstr("s3cret"))) << command;
    }
    EXPECT_THAT(Run("show").output, HasSubstr("; Password: set\n"));
    EXPECT_EQ(Run("password", "\n").output, "The password is taken away.\n");
    EXPECT_THAT(Profile(), Not(HasSubstr("Password")));
}

TEST_F(MailProgram, PasswordThatIsNoLineIsRefused) {
    Run("set Transport=outbox From=r@example.com");
    const std::string before = Profile();
    EXPECT_EQ(Run("password", "").complaint, "oxc-mail: No password was given\n");
    EXPECT_EQ(Run("password", "one\ntwo\n").complaint, "oxc-mail: The password must be one line\n");
    EXPECT_EQ(Run("password", std::string(5000, 'x')).complaint, "oxc-mail: The password is too long\n");
    const MailOutcome control = Run("password", "a\tb\n");
    EXPECT_EQ(control.code, 1);
    EXPECT_EQ(control.complaint,
              "oxc-mail: Password cannot hold a line feed, a tab or another control character\n");
    EXPECT_EQ(Profile(), before);
}

TEST_F(MailProgram, CheckAndTestOfAGoodServer) {
    const SmtpServer server({"--security", "tls", "--user", "ann", "--password", "right"});
    Run("set Transport=smtp From=r@example.com Host=127.0.0.1 Security=tls User=ann Port=" +
        std::to_string(server.Port()) + " CAFile=" + server.Authority().string());
    Run("password", "right\n");
    const MailOutcome check = Run("check");
    EXPECT_EQ(check.code, 0) << check.complaint;
    EXPECT_THAT(check.output, HasSubstr("takes mail from r@example.com: encrypted, logged on as \"ann\".\n"));
    EXPECT_TRUE(server.Messages().empty());
    const MailOutcome test = Run("test ann@example.com");
    EXPECT_EQ(test.code, 0) << test.complaint;
    EXPECT_THAT(test.output, HasSubstr("has taken the test message to ann@example.com.\n"));
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(MailProgram, CheckOfAWrongPasswordIsOneLineWithTheKeys) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    Run("set Transport=smtp From=r@example.com Host=127.0.0.1 Security=none User=ann Port=" +
        std::to_string(server.Port()));
    Run("password", "wr0ng\n");
    const MailOutcome check = Run("check");
    EXPECT_EQ(check.code, 1);
    ExpectOneLine(check.complaint);
    EXPECT_THAT(check.complaint, StartsWith("oxc-mail: User, Password: "));
    EXPECT_THAT(check.complaint + Run("test ann@example.com").complaint, Not(HasSubstr("wr0ng")));
}

TEST_F(MailProgram, TestToNobodyIsOneLine) {
    Run("set Transport=outbox From=r@example.com OutboxFolder=" + (m_folder / "out").string());
    const MailOutcome outcome = Run("test Bob");
    EXPECT_EQ(outcome.code, 1);
    EXPECT_EQ(outcome.complaint,
              "oxc-mail: The recipient \"Bob\" is no mail address and not in the address book.\n");
}

class MailCheckProgram : public MailProgram {
 public:
    void SetUp() override {
        MailProgram::SetUp();
        Run("set Transport=outbox From=r@example.com OutboxFolder=" + (m_folder / "out").string());
    }
    MailOutcome CheckWithAlertAddress(const std::string& alertWho) {
        WriteBytes(File().parent_path() / "settings.reg",
                   "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\Software\\Norvale\\Oxbow "
                   "Courier]\n\"AlertWho\"=\"" +
                       alertWho + "\"\n");
        return Run("check");
    }
};

TEST_F(MailCheckProgram, TellsWhoGetsAlerts) {
    const MailOutcome good = CheckWithAlertAddress("Boss <boss@example.com>;");
    EXPECT_EQ(good.code, 0) << good.complaint;
    EXPECT_THAT(good.output, HasSubstr("\nAlerts go to boss@example.com.\n"));
    const MailOutcome none = CheckWithAlertAddress("");
    EXPECT_EQ(none.code, 0) << none.complaint;
    EXPECT_THAT(none.output,
                HasSubstr("\nNo alert address is set in Options: nobody gets a mail when a report fails.\n"));
}

// Choosing twice from the address book leaves two names, which are read as one.
TEST_F(MailCheckProgram, AlertAddressOfTwoNamesIsNone) {
    const MailOutcome two = CheckWithAlertAddress("ann@example.com;boss@example.com;");
    EXPECT_EQ(two.code, 1);
    EXPECT_EQ(two.complaint,
              "oxc-mail: On error alert, in Options: Alerts cannot go out. "
              "\"ann@example.com;boss@example.com\" is not "
              "a mail address. Give one address, or one name of the address book.\n");
}

TEST_F(MailCheckProgram, PasswordThatOthersCanReadIsToldOnce) {
    Run("password", "s3cret\n");
    EXPECT_EQ(Run("check").code, 0);
    std::filesystem::permissions(File(), std::filesystem::perms(0640));
    const MailOutcome open = Run("check");
    EXPECT_EQ(open.code, 1);
    EXPECT_EQ(open.complaint,
              "oxc-mail: Password: The mail profile \"" + File().string() +
                  "\" has a password in it, and others may read it; make it readable for you only "
                  "(chmod 600).\n");
}
