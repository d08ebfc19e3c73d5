// SPDX-License-Identifier: GPL-3.0-or-later
// Messages to servers that work and to servers that fail.
#include <netinet/in.h>
#include <sys/socket.h>

#include <chrono>

#include "mail_fixture.h"
#include "platform/mail/transport/smtp.h"
#include "support/smtp_server.h"

namespace {

// Returns a port that was just free: no server listens there.
int DeadPort() {
    const int socketFile = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    bind(socketFile, reinterpret_cast<sockaddr*>(&address), sizeof address);
    socklen_t size = sizeof address;
    getsockname(socketFile, reinterpret_cast<sockaddr*>(&address), &size);
    close(socketFile);
    return ntohs(address.sin_port);
}

class Smtp : public MailTest {
 public:
    void UseServer(int port, const std::string& more = "Security=none\n") {
        WriteProfile("Transport=smtp\nFrom=Reports <reports@example.com>\nHost=127.0.0.1\nPort=" +
                     std::to_string(port) + "\nTimeout=1\n" + more);
    }

    std::unique_ptr<MAPI::Message> TwoRecipients() {
        return MakeMessage({"Ann <ann@example.com>", "bob@example.com"});
    }

    // Returns the number that sending to such a server raises. The server has accepted no message.
    std::int32_t FailureOf(const std::vector<std::string>& arguments) {
        const SmtpServer server(arguments);
        UseServer(server.Port());
        const auto message = TwoRecipients();
        const std::int32_t number = SendingRaises(*message);
        EXPECT_TRUE(server.Messages().empty());
        m_talk = server.Talk();
        return number;
    }

 protected:
    std::string m_talk;
};

}  // namespace

TEST_F(Smtp, DeliversOnceToAllRecipients) {
    const SmtpServer server({});
    UseServer(server.Port());
    TwoRecipients()->Send();
    const auto messages = server.Messages();
    ASSERT_EQ(messages.size(), 1u);
    EXPECT_NE(messages[0].find("X-Envelope-From: reports@example.com\r\n"), std::string::npos);
    EXPECT_NE(messages[0].find("X-Envelope-To: ann@example.com, bob@example.com\r\n"), std::string::npos);
    EXPECT_NE(messages[0].find("\r\nSubject: Sales\r\n"), std::string::npos);
}

TEST_F(Smtp, GreetsTheServerByTheNameOfTheProfile) {
    const SmtpServer server({});
    UseServer(server.Port(), "Security=none\nHello=reports.example.com\n");
    TwoRecipients()->Send();
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_TRUE(server.Messages()[0].starts_with("X-Envelope-Hello: reports.example.com\r\n"))
        << server.Messages()[0];
}

TEST_F(Smtp, LinesThatBeginWithADotArriveAsTheyWere) {
    const SmtpServer server({});
    UseServer(server.Port());
    const auto message = TwoRecipients();
    message->Text = "first\n.\n..two\n.hidden\nlast\n";
    message->Send();
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_TRUE(server.Messages()[0].ends_with("\r\n\r\nfirst\r\n.\r\n..two\r\n.hidden\r\nlast\r\n"));
}

TEST_F(Smtp, AMegabyteOfAttachmentArrives) {
    const SmtpServer server({});
    UseServer(server.Port());
    const auto message = TwoRecipients();
    message->Attachments().Add().Source = WriteFile("big.pdf", std::string(1 << 20, 'x'));
    message->Send();
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_GT(server.Messages()[0].size(), std::size_t{4} << 18);
}

TEST_F(Smtp, GoesToThoseThatTheServerAccepts) {
    const SmtpServer server({"--mode", "reject-recipient", "--recipient", "bob@example.com"});
    UseServer(server.Port());
    EXPECT_EQ(SendingRaises(*TwoRecipients()), 0) << m_text;
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_NE(server.Messages()[0].find("X-Envelope-To: ann@example.com\r\n"), std::string::npos);
}

TEST_F(Smtp, ItIsAFailureWhenEveryRecipientIsRefused) {
    EXPECT_EQ(FailureOf({"--mode", "reject-recipient"}), mailer::ErrRecipientRefused);
    EXPECT_NE(
        m_text.find("refuses the recipients \"ann@example.com\", \"bob@example.com\"; nobody has got the "
                    "message. It answered: 550 5.1.1 nobody\"s here by that name"),
        std::string::npos)
        << m_text;
    EXPECT_EQ(m_talk.find("DATA begun"), std::string::npos) << m_talk;
}

TEST_F(Smtp, NobodyGetsItWhileTheServerPutsOneRecipientOff) {
    for (const char* recipient : {"ann@example.com", "bob@example.com"}) {
        EXPECT_EQ(FailureOf({"--mode", "defer-recipient", "--recipient", recipient}),
                  mailer::ErrRecipientRefused);
        EXPECT_NE(m_text.find("does not take mail for \"" + std::string(recipient) +
                              "\" now; nobody has got the message. It answered: 450 4.7.1 greylisted"),
                  std::string::npos)
            << m_text;
        EXPECT_EQ(m_talk.find("DATA begun"), std::string::npos) << m_talk;
    }
}

TEST_F(Smtp, AnswerThatIsNoneIsQuoted) {
    for (const char* recipient : {"ann@example.com", "bob@example.com"}) {
        EXPECT_EQ(FailureOf({"--mode", "odd-recipient", "--recipient", recipient}), err::MailboxOrServer);
        EXPECT_TRUE(m_text.ends_with(", gives an unexpected answer to the recipient \"" +
                                     std::string(recipient) +
                                     "\"; nobody has got the message. It answered: 350 what of it"))
            << m_text;
        EXPECT_EQ(m_talk.find("DATA begun"), std::string::npos) << m_talk;
    }
    EXPECT_EQ(FailureOf({"--mode", "odd-greeting"}), err::MailboxOrServer);
    EXPECT_TRUE(m_text.ends_with(
        ", gives an unexpected answer; nobody has got the message. It answered: 320 who is there"))
        << m_text;
    EXPECT_EQ(FailureOf({"--mode", "odd-start"}), err::MailboxOrServer);
    EXPECT_TRUE(
        m_text.ends_with(", gives an unexpected answer; nobody has got the message. It answered: 250 OK"))
        << m_text;
    EXPECT_EQ(FailureOf({"--mode", "odd-message"}), err::MailboxOrServer);
    EXPECT_TRUE(
        m_text.ends_with(", gives an unexpected answer to the whole message; nobody knows whether it has "
                         "taken it. It answered: 354 go on"))
        << m_text;
}

TEST_F(Smtp, DropInTheContentIsNoUnexpectedAnswer) {
    EXPECT_EQ(FailureOf({"--mode", "drop-data"}), err::MailboxOrServer);
    EXPECT_TRUE(m_text.ends_with(", dropped the connection before it took the message.")) << m_text;
}

TEST_F(Smtp, MessageThatIsTakenWithAnotherCodeIsSentAndNoError) {
    const SmtpServer server({"--mode", "other-success"});
    UseServer(server.Port());
    EXPECT_EQ(SendingRaises(*TwoRecipients()), 0) << m_text;
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(Smtp, LateAnswerToTheWholeMessageIsWaitedFor) {
    const SmtpServer server({"--mode", "late-data", "--delay", "2.5"});
    UseServer(server.Port());
    EXPECT_EQ(SendingRaises(*TwoRecipients()), 0) << m_text;
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(Smtp, LastAnswerOfTheServerIsQuotedInOneLine) {
    FailureOf({"--mode", "full-message"});
    EXPECT_TRUE(m_text.ends_with(" It answered: 552 5.2.2 over quota")) << m_text;
    FailureOf({"--mode", "reject-message"});
    EXPECT_TRUE(m_text.ends_with(" It answered: 554-5.6.0 content 554 5.6.0 refused")) << m_text;
    FailureOf({"--mode", "reject-sender"});
    EXPECT_TRUE(m_text.ends_with(" It answered: 550 5.7.1 sender not welcome")) << m_text;
}

TEST_F(Smtp, UmlautDomainsGoAsTheDomainNameSystemWritesThem) {
    const SmtpServer server({});
    UseServer(server.Port());
    const auto message =
        MakeMessage({"Zo\xC3\xAB <zoe@B\xC3\xBC"
                     "cher.example>",
                     "stra\xC3\x9F"
                     "e@stra\xC3\x9F"
                     "e.example"});
    EXPECT_EQ(SendingRaises(*message), mailer::ErrUnknownRecipient);
    const auto good =
        MakeMessage({"Zo\xC3\xAB <zoe@B\xC3\xBC"
                     "cher.example>",
                     "post@stra\xC3\x9F"
                     "e.example"});
    EXPECT_EQ(SendingRaises(*good), 0) << m_text;
    ASSERT_EQ(server.Messages().size(), 1u);
    EXPECT_NE(
        server.Messages()[0].find("X-Envelope-To: zoe@xn--bcher-kva.example, post@xn--strae-oqa.example\r\n"),
        std::string::npos)
        << server.Messages()[0];
    EXPECT_NE(server.Messages()[0].find(" <zoe@xn--bcher-kva.example>,\r\n post@xn--strae-oqa.example\r\n"),
              std::string::npos)
        << server.Messages()[0];
}

TEST_F(Smtp, FullMailboxAtTheRecipientIsTheFullNumber) {
    EXPECT_EQ(FailureOf({"--mode", "full-recipient"}), err::MailboxFull);
}

TEST_F(Smtp, FullMailboxAfterTheContentIsTheFullNumber) {
    EXPECT_EQ(FailureOf({"--mode", "full-message"}), err::MailboxFull);
}

TEST_F(Smtp, RefusedSenderAndRefusedContentAreNoMailboxNumbers) {
    EXPECT_EQ(FailureOf({"--mode", "reject-sender"}), mailer::ErrMessageRefused);
    EXPECT_NE(m_text.find("sender"), std::string::npos);
    EXPECT_EQ(FailureOf({"--mode", "reject-message"}), mailer::ErrMessageRefused);
    EXPECT_EQ(FailureOf({"--mode", "dangerous-message"}), mailer::ErrMessageRefused);
}

TEST_F(Smtp, NothingListeningIsALostServer) {
    UseServer(DeadPort());
    const auto message = TwoRecipients();
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), err::MailboxOrServer);
}

TEST_F(Smtp, NameWithoutAddressIsALostServer) {
    WriteProfile("Transport=smtp\nFrom=a@example.com\nHost=no-such-host.invalid\nSecurity=none\nTimeout=5\n");
    const auto message = TwoRecipients();
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), err::MailboxOrServer);
}

TEST_F(Smtp, GreetingThatTurnsAwayIsALostServer) {
    EXPECT_EQ(FailureOf({"--mode", "greet-421"}), err::MailboxOrServer);
    EXPECT_NE(m_text.find("closing for the night"), std::string::npos) << m_text;
    EXPECT_EQ(FailureOf({"--mode", "greet-554"}), err::MailboxOrServer);
}

TEST_F(Smtp, DropBeforeTheGreetingOrInTheContentIsALostServer) {
    EXPECT_EQ(FailureOf({"--mode", "drop-greeting"}), err::MailboxOrServer);
    EXPECT_EQ(FailureOf({"--mode", "drop-data"}), err::MailboxOrServer);
}

TEST_F(Smtp, TryLaterIsALostServer) {
    EXPECT_EQ(FailureOf({"--mode", "later"}), err::MailboxOrServer);
}

TEST_F(Smtp, SilentServerIsLostAfterTheTimeout) {
    EXPECT_EQ(FailureOf({"--mode", "hang"}), err::MailboxOrServer);
    EXPECT_NE(m_text.find("in time"), std::string::npos) << m_text;
}

TEST_F(Smtp, ServerThatFallsSilentAfterTheContentIsLost) {
    const SmtpServer server({"--mode", "hang-data"});
    UseServer(server.Port());
    mailer::MailProfile profile = mailer::ReadMailProfile(Profile());
    EXPECT_EQ(profile.acceptSeconds, 600);
    profile.acceptSeconds = 2;
    mailer::OutgoingMail mail;
    mail.from = profile.from;
    mail.recipients = {{"", "ann@example.com"}};
    const auto deliver = [&] { mailer::SmtpTransport(profile).Deliver(mail); };
    EXPECT_EQ(
        DescriptionRaisedBy(deliver),
        "The mail server \"127.0.0.1\", port " + std::to_string(server.Port()) +
            ", was given the whole message and has not answered within 2 seconds; nobody knows whether it "
            "has taken it.");
    EXPECT_EQ(NumberRaisedBy(deliver), err::MailboxOrServer);
    EXPECT_TRUE(server.Messages().empty());
}

TEST_F(Smtp, DropAfterTheAcceptedContentIsSentAndNoError) {
    const SmtpServer server({"--mode", "drop-after-data"});
    UseServer(server.Port());
    const auto message = TwoRecipients();
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(Smtp, SilenceAfterTheAcceptedContentIsSentAndNoError) {
    const SmtpServer server({"--mode", "hang-quit"});
    UseServer(server.Port());
    const auto message = TwoRecipients();
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

// However long a server may otherwise be silent.
TEST_F(Smtp, AcceptedContentIsSentWithoutWaitingForTheGoodbye) {
    const SmtpServer server({"--mode", "hang-quit"});
    WriteProfile("Transport=smtp\nFrom=r@example.com\nHost=127.0.0.1\nSecurity=none\nTimeout=600\nPort=" +
                 std::to_string(server.Port()) + "\n");
    const mailer::MailProfile profile = mailer::ReadMailProfile(Profile());
    ASSERT_EQ(profile.stallSeconds, 600);
    const auto begun = std::chrono::steady_clock::now();
    const auto message = TwoRecipients();
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), 0);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(120));
    EXPECT_EQ(server.Messages().size(), 1u);
}
