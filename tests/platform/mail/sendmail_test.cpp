// SPDX-License-Identifier: GPL-3.0-or-later
// The machine's mail program, played by a shell script.
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "mail_fixture.h"
#include "platform/contracts/system_error.h"
#include "support/sanitizer.h"

namespace {

class Sendmail : public MailTest {
 public:
    void UseProgram(const std::string& script) {
        const auto program = m_folder / "sendmail";
        WriteBytes(program, "#!/bin/sh\ncd " + m_folder.Path().string() + "\n" + script + "\n");
        chmod(program.c_str(), S_IRWXU);
        WriteProfile("Transport=sendmail\nFrom=Reports <reports@example.com>\nTimeout=1\nSendmail=" +
                     program.string() + "\n");
    }
    std::int32_t NumberOf(const std::string& script) {
        UseProgram(script);
        const auto message = MakeMessage({"ann@example.com", "-odd@example.com"});
        return SendingRaises(*message);
    }
};

}  // namespace

TEST_F(Sendmail, GetsSenderRecipientsAndMessage) {
    EXPECT_EQ(NumberOf("for a in \"$@\"; do echo \"$a\"; done > arguments; cat > message"), 0);
    EXPECT_EQ(ReadBytes(m_folder / "arguments"),
              "-i\n-f\nreports@example.com\n--\nann@example.com\n-odd@example.com\n");
    const std::string message = ReadBytes(m_folder / "message");
    EXPECT_NE(message.find("\nSubject: Sales\n"), std::string::npos) << message;
    EXPECT_TRUE(message.ends_with("\n\nPlease find the report.\n")) << message;
    EXPECT_EQ(message.find('\r'), std::string::npos);
}

TEST_F(Sendmail, RefusalCarriesItsOwnWords) {
    EXPECT_EQ(NumberOf("echo \"it's closed\" >&2; exit 77"), mailer::ErrMessageRefused);
    EXPECT_NE(m_text.find("it\"s closed"), std::string::npos) << m_text;
    EXPECT_EQ(NumberOf("exit 67"), mailer::ErrRecipientRefused);
}

TEST_F(Sendmail, TryLaterAndSilenceAreALostServer) {
    EXPECT_EQ(NumberOf("exit 75"), err::MailboxOrServer);
    EXPECT_EQ(NumberOf("sleep 60"), err::MailboxOrServer);
}

TEST_F(Sendmail, MissingProgramIsTheProfilesFault) {
    WriteProfile("Transport=sendmail\nFrom=a@example.com\nSendmail=/no/such/sendmail\n");
    const auto message = MakeMessage({"ann@example.com"});
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), mailer::ErrBadProfile);
}

TEST_F(Sendmail, ProgramThatLeavesAChildHasTakenTheMessage) {
    EXPECT_EQ(NumberOf("cat > message; sleep 3 & exit 0"), 0) << m_text;
    EXPECT_EQ(NumberOf("sleep 3 & exit 75"), err::MailboxOrServer);
    EXPECT_NE(m_text.find("exit code 75"), std::string::npos) << m_text;
}

TEST_F(Sendmail, SignalThatEndsItIsNamed) {
    EXPECT_EQ(NumberOf("kill -9 $$"), mailer::ErrMessageRefused);
    EXPECT_NE(m_text.find("sendmail\" was ended by signal 9 (Killed)"), std::string::npos) << m_text;
    EXPECT_EQ(m_text.find("refused"), std::string::npos) << m_text;
    EXPECT_NE(NumberOf("echo \"out of room\" >&2; kill -9 $$"), 0);
    EXPECT_NE(m_text.find("was ended by signal 9 (Killed): out of room"), std::string::npos) << m_text;
}

TEST_F(Sendmail, TooManyOpenFilesAreNotAMissingProgram) {
    if (ChecksNeedDescriptors) {
        GTEST_SKIP() << "the sanitizers need file descriptors of their own";
    }
    UseProgram("cat > message");
    const auto message = MakeMessage({"ann@example.com"});
    rlimit former{};
    ASSERT_EQ(getrlimit(RLIMIT_NOFILE, &former), 0);
    const int lowest = dup(0);
    close(lowest);
    constexpr int Needed = 5;  // the message and both ends of two pipes
    for (int left = 0; left < Needed; ++left) {
        const rlimit few{static_cast<rlim_t>(lowest + left), former.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
        const std::int32_t number = SendingRaises(*message);
        setrlimit(RLIMIT_NOFILE, &former);
        EXPECT_EQ(number, err::TooManyFiles) << left;
        EXPECT_NE(m_text.find("Too many open files"), std::string::npos) << m_text;
        EXPECT_EQ(m_text.find("missing"), std::string::npos) << m_text;
    }
}
