// SPDX-License-Identifier: GPL-3.0-or-later
// Checks whether the profile works, without sending.
#include "platform/mail/check.h"

#include <gmock/gmock.h>

#include <chrono>
#include <thread>

#include "mail_fixture.h"
#include "support/smtp_server.h"

namespace {

using mailer::CheckMail;
using mailer::ReadMailProfile;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class MailCheck : public MailTest {
 public:
    std::vector<mailer::Finding> Check(const std::string& lines) {
        WriteProfile("From=Reports <reports@example.com>\n" + lines);
        return CheckMail(ReadMailProfile(Profile()));
    }
    // Returns the only finding.
    mailer::Finding CheckOne(const std::string& lines) {
        const auto findings = Check(lines);
        EXPECT_EQ(findings.size(), 1u);
        return findings.empty() ? mailer::Finding{false, ""} : findings.back();
    }
    static std::string At(int port, const std::string& more) {
        return "Transport=smtp\nHost=127.0.0.1\nTimeout=5\nPort=" + std::to_string(port) + "\n" + more;
    }
    static std::string Port(int port) {
        return "The mail server \"127.0.0.1\", port " + std::to_string(port) + ",";
    }
    static int ClosedPort() {
        const SmtpServer gone({});
        return gone.Port();
    }
};

}  // namespace

TEST_F(MailCheck, GoodServerIsToldAndGetsNoMessage) {
    const SmtpServer server({"--security", "starttls", "--user", "ann", "--password", "right"});
    const auto finding =
        CheckOne(At(server.Port(), "User=ann\nPassword=right\nCAFile=" + server.Authority().string() + "\n"));
    EXPECT_TRUE(finding.isFine);
    EXPECT_EQ(finding.text,
              Port(server.Port()) + " takes mail from reports@example.com: encrypted, logged on as \"ann\".");
    EXPECT_TRUE(server.Messages().empty());
    EXPECT_THAT(server.Talk(), HasSubstr("MAIL reports@example.com"));
    EXPECT_THAT(server.Talk(), Not(HasSubstr("RCPT")));
}

TEST_F(MailCheck, ServerWithoutLoginOrEncryptionIsFine) {
    const SmtpServer server({});
    EXPECT_EQ(
        CheckOne(At(server.Port(), "Security=none\n")).text,
        Port(server.Port()) + " takes mail from reports@example.com: without encryption, without a login.");
}

TEST_F(MailCheck, WrongPasswordNamesUserAndPassword) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    const auto finding = CheckOne(At(server.Port(), "Security=none\nUser=ann\nPassword=wr0ng\n"));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("User, Password: "));
    EXPECT_THAT(finding.text, HasSubstr("Give the user name and the password again."));
    EXPECT_THAT(finding.text, Not(HasSubstr("wr0ng")));
}

TEST_F(MailCheck, MissingLoginIsFound) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    const auto finding = CheckOne(At(server.Port(), "Security=none\n"));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("User: "));
    EXPECT_THAT(finding.text, HasSubstr("The server needs a login: give User and a password."));
}

TEST_F(MailCheck, ServerWithoutEncryptionNamesSecurity) {
    const SmtpServer server({});
    const auto finding = CheckOne(At(server.Port(), ""));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("Security, CAFile: "));
}

TEST_F(MailCheck, CertificateThatIsNotTrustedNamesSecurityAndAuthority) {
    const SmtpServer server({"--security", "tls"});
    const auto finding = CheckOne(At(server.Port(), "Security=tls\n"));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("Security, CAFile: "));
    EXPECT_THAT(CheckOne(At(server.Port(), "Security=tls\nVerify=no\n")).text,
                HasSubstr(": encrypted but not verified, without a login."));
}

TEST_F(MailCheck, RefusedPortNamesHostAndPort) {
    const auto finding = CheckOne(At(ClosedPort(), ""));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("Host, Port: "));
    EXPECT_THAT(finding.text, HasSubstr("cannot be reached: nothing answers there."));
}

TEST_F(MailCheck, RefusedSenderNamesFrom) {
    const SmtpServer server({"--mode", "reject-sender"});
    const auto finding = CheckOne(At(server.Port(), "Security=none\n"));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("From: "));
}

TEST_F(MailCheck, AddressBookAndTransportAreBothTold) {
    WriteFile("people.vcf", "BEGIN:VCARD\nFN:Ann\nEMAIL:ann@example.com\nEND:VCARD\n");
    const auto book = (m_folder / "people.vcf").string();
    const std::string outbox =
        "Transport=outbox\nOutboxFolder=" + Outbox().string() + "\n[AddressBook]\nVCard=";
    auto findings = Check(outbox + book + "\n");
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_EQ(findings[0].text, "The address book \"" + book + "\" has 1 entry.");
    EXPECT_EQ(findings[1].text, "The outbox \"" + Outbox().string() + "\" can be written.");
    EXPECT_TRUE(FilesIn(Outbox()).empty());

    findings = Check(outbox + "/no/such.vcf\n");
    ASSERT_EQ(findings.size(), 2u);
    EXPECT_FALSE(findings[0].isFine);
    EXPECT_EQ(findings[0].text,
              "VCard: The address book \"/no/such.vcf\" is missing or cannot be read. Name a vCard file that "
              "you may "
              "read, or none.");
    EXPECT_TRUE(findings[1].isFine);
}

TEST_F(MailCheck, OutboxThatCannotBeWrittenNamesTheFolder) {
    const auto finding = CheckOne("Transport=outbox\nOutboxFolder=/proc/outbox\n");
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, StartsWith("OutboxFolder: The outbox \"/proc/outbox\" cannot be written: "));
    EXPECT_THAT(finding.text, HasSubstr(". Choose a folder that you may write to and that has room."));
}

TEST_F(MailCheck, MailProgramThatCannotBeRunNamesSendmail) {
    EXPECT_TRUE(CheckOne("Transport=sendmail\nSendmail=/bin/true\n").isFine);
    EXPECT_TRUE(CheckOne("Transport=sendmail\nSendmail=true\n").isFine);
    WriteFile("no_program", "text");
    for (const std::string& program : {(m_folder / "no_program").string(), std::string("/no/such/sendmail"),
                                       m_folder.Path().string(), std::string("no-such-sendmail")}) {
        EXPECT_EQ(CheckOne("Transport=sendmail\nSendmail=" + program + "\n").text,
                  "Sendmail: The mail program \"" + program +
                      "\" is missing or may not be run. Install a mail program, or give the path of the one "
                      "there is.");
    }
}

TEST_F(MailCheck, FailingPasswordCommandIsAFinding) {
    const auto finding = CheckOne(At(1, "User=ann\nPasswordCommand=exit 3\n"));
    EXPECT_FALSE(finding.isFine);
    EXPECT_THAT(finding.text, HasSubstr("PasswordCommand failed with exit code 3."));
}

TEST_F(MailCheck, CheckOfASilentServerIsStoppedSoon) {
    const SmtpServer server({"--mode", "hang"});
    WriteProfile("From=r@example.com\n" + At(server.Port(), "Security=none\n"));
    const auto profile = ReadMailProfile(Profile());
    const auto begun = std::chrono::steady_clock::now();
    std::stop_source stop;
    std::thread other([&] {
        std::this_thread::sleep_for(std::chrono::milliseconds(200));
        stop.request_stop();
    });
    EXPECT_EQ(NumberRaisedBy([&] { CheckMail(profile, stop.get_token()); }), err::MailUserCancel);
    other.join();
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(3));
}

TEST_F(MailCheck, StoppedPasswordCommandEndsSoon) {
    WriteProfile("From=r@example.com\n" + At(1, "User=ann\nPasswordCommand=sleep 20\n"));
    std::stop_source stop;
    stop.request_stop();
    const auto begun = std::chrono::steady_clock::now();
    EXPECT_EQ(NumberRaisedBy([&] { CheckMail(ReadMailProfile(Profile()), stop.get_token()); }),
              err::MailUserCancel);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(3));
}

TEST_F(MailCheck, TestMessageGoesTheWayOfReports) {
    const SmtpServer server({});
    WriteProfile("From=Reports <reports@example.com>\n" + At(server.Port(), "Security=none\n"));
    EXPECT_EQ(mailer::SendTestMessage(ReadMailProfile(Profile()), "Ann <ann@example.com>"),
              Port(server.Port()) + " has taken the test message to ann@example.com.");
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_THAT(server.Messages()[0], HasSubstr("X-Envelope-To: ann@example.com"));
    EXPECT_THAT(server.Messages()[0], HasSubstr("Subject: Test message"));
}

TEST_F(MailCheck, TestMessageOfTheOtherTransportsIsTold) {
    WriteOutboxProfile();
    EXPECT_EQ(mailer::SendTestMessage(ReadMailProfile(Profile()), "ann@example.com"),
              "The test message to ann@example.com is in the outbox \"" + Outbox().string() + "\".");
    EXPECT_EQ(FilesIn(Outbox()).size(), 1u);
    WriteProfile("Transport=sendmail\nSendmail=/bin/true\nFrom=r@example.com\n");
    EXPECT_EQ(mailer::SendTestMessage(ReadMailProfile(Profile()), "ann@example.com"),
              "The test message to ann@example.com was taken by the mail program \"/bin/true\".");
}

TEST_F(MailCheck, AdviceOnARecipientIsLeftToTheErrorItself) {
    const RuntimeError error(mailer::ErrUnknownRecipient, "The recipient \"Bob\" is nobody");
    for (const char* transport : {"smtp\nHost=h", "outbox", "sendmail"}) {
        WriteProfile("From=r@example.com\nTransport=" + std::string(transport) + "\n");
        EXPECT_EQ(mailer::Advise(error, ReadMailProfile(Profile())), "The recipient \"Bob\" is nobody.");
    }
}

TEST_F(MailCheck, StoppedMailProgramIsEndedAndNotTakenForALostServer) {
    WriteFile("slow", "#!/bin/sh\nsleep 20\n");
    std::filesystem::permissions(m_folder / "slow", std::filesystem::perms::owner_all);
    WriteProfile("Transport=sendmail\nFrom=r@example.com\nSendmail=" + (m_folder / "slow").string() + "\n");
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(NumberRaisedBy([&] {
                  mailer::SendTestMessage(ReadMailProfile(Profile()), "ann@example.com", stop.get_token());
              }),
              err::MailUserCancel);
}
