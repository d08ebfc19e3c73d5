// SPDX-License-Identifier: GPL-3.0-or-later
// Encryption and logins.
#include "mail_fixture.h"
#include "support/smtp_server.h"

namespace {

class SmtpSecurity : public MailTest {
 public:
    std::int32_t Send(const SmtpServer& server, const std::string& more) {
        WriteProfile("Transport=smtp\nFrom=Reports <reports@example.com>\nHost=127.0.0.1\nPort=" +
                     std::to_string(server.Port()) + "\nTimeout=5\n" + more);
        const auto message = MakeMessage({"ann@example.com"});
        return NumberRaisedBy([&] { message->Send(); });
    }

    static std::string Trusting(const SmtpServer& server) {
        return "CAFile=" + server.Authority().string() + "\n";
    }
};

}  // namespace

TEST_F(SmtpSecurity, StartTlsWithATrustedCertificateDelivers) {
    const SmtpServer server({"--security", "starttls"});
    EXPECT_EQ(Send(server, "Security=starttls\n" + Trusting(server)), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(SmtpSecurity, TlsWithATrustedCertificateDelivers) {
    const SmtpServer server({"--security", "tls"});
    EXPECT_EQ(Send(server, "Security=tls\n" + Trusting(server)), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(SmtpSecurity, UnknownAuthorityIsRefusedWithANumberOfItsOwn) {
    const SmtpServer server({"--security", "starttls"});
    EXPECT_EQ(Send(server, "Security=starttls\n"), mailer::ErrNotSecure);
    const SmtpServer other({"--security", "tls"});
    EXPECT_EQ(Send(other, "Security=tls\n"), mailer::ErrNotSecure);
    EXPECT_TRUE(server.Messages().empty());
    EXPECT_TRUE(other.Messages().empty());
}

TEST_F(SmtpSecurity, CertificateForAnotherNameIsRefused) {
    const SmtpServer server({"--security", "starttls", "--certificate-name", "mail.example.com"});
    EXPECT_EQ(Send(server, "Security=starttls\n" + Trusting(server)), mailer::ErrNotSecure);
    EXPECT_TRUE(server.Messages().empty());
}

TEST_F(SmtpSecurity, VerifyNoTakesAnyCertificate) {
    const SmtpServer server({"--security", "starttls"});
    EXPECT_EQ(Send(server, "Security=starttls\nVerify=no\n"), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(SmtpSecurity, ServerWithoutEncryptionGetsNothingUnlessTheProfileAllowsIt) {
    const SmtpServer server({});
    EXPECT_EQ(Send(server, "Security=starttls\n"), mailer::ErrNotSecure);
    EXPECT_EQ(Send(server, ""), mailer::ErrNotSecure);
    EXPECT_EQ(Send(server, "Security=tls\n"), mailer::ErrNotSecure);
    EXPECT_TRUE(server.Messages().empty());
    EXPECT_EQ(Send(server, "Security=none\n"), 0);
}

TEST_F(SmtpSecurity, LoginIsGivenToTheServer) {
    const SmtpServer server({"--user", "ann@example.com", "--password", "s3cret;x"});
    EXPECT_EQ(Send(server, "Security=none\nUser=ann@example.com\nPassword=s3cret;x\n"), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(SmtpSecurity, LoginOfTheShellCommandOverTls) {
    const SmtpServer server({"--security", "starttls", "--user", "ann", "--password", "from the vault"});
    EXPECT_EQ(Send(server, "User=ann\nPasswordCommand=echo from the vault\n" + Trusting(server)), 0);
    EXPECT_EQ(server.Messages().size(), 1u);
}

TEST_F(SmtpSecurity, RefusedLoginHasANumberOfItsOwn) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    EXPECT_EQ(Send(server, "Security=none\nUser=ann\nPassword=wrong\n"), mailer::ErrLoginRefused);
    EXPECT_TRUE(server.Messages().empty());
}

TEST_F(SmtpSecurity, MissingLoginThatTheServerWantsIsARefusedLogin) {
    const SmtpServer server({"--user", "ann", "--password", "right"});
    EXPECT_EQ(Send(server, "Security=none\n"), mailer::ErrLoginRefused);
    EXPECT_TRUE(server.Messages().empty());
}

TEST_F(SmtpSecurity, MissingAuthorityFileIsTheProfilesFault) {
    const SmtpServer server({"--security", "tls"});
    EXPECT_EQ(Send(server, "Security=tls\nCAFile=/no/such/file.pem\n"), mailer::ErrBadProfile);
}
