// SPDX-License-Identifier: GPL-3.0-or-later
// The session as the system uses it.

#include "mail_fixture.h"
#include "platform/mail/book/address_book.h"
#include "support/growth.h"

namespace {

class MailSession : public MailTest {
 public:
    void SetUp() override {
        WriteBytes(m_folder / "book.vcf",
                   "BEGIN:VCARD\nVERSION:3.0\nFN:Ann Archer\nEMAIL:ann@example.com\nEND:VCARD\n"
                   "BEGIN:VCARD\nVERSION:3.0\nFN:Smith; Sons\nEMAIL:sons@example.com\nEND:VCARD\n"
                   "BEGIN:VCARD\nVERSION:3.0\nFN:Twin\nEMAIL:one@example.com\nEND:VCARD\n"
                   "BEGIN:VCARD\nVERSION:3.0\nFN:Twin\nEMAIL:two@example.com\nEND:VCARD\n");
        WriteOutboxProfile("[AddressBook]\nVCard=" + (m_folder / "book.vcf").string() + "\n");
    }
    void TearDown() override { mailer::SetAddressChooser({}); }
};

}  // namespace

TEST_F(MailSession, NamesBecomeAddresses) {
    const auto message = MakeMessage({"ann ARCHER"});
    message->Recipients().Resolve(MAPI::Dialog::Allowed);
    message->Send();
    const auto files = FilesIn(Outbox());
    ASSERT_EQ(files.size(), 1u);
    EXPECT_NE(ReadBytes(files[0]).find("To: Ann Archer <ann@example.com>\r\n"), std::string::npos);
}

TEST_F(MailSession, UnresolvedNamesAreNamedAndNoMailboxNumber) {
    const auto message = MakeMessage({"ann@example.com", "Nobody"});
    EXPECT_EQ(NumberRaisedBy([&] { message->Recipients().Resolve(MAPI::Dialog::Allowed); }),
              mailer::ErrUnknownRecipient);
    EXPECT_NE(
        DescriptionRaisedBy([&] { message->Recipients().Resolve(MAPI::Dialog::Allowed); }).find("\"Nobody\""),
        std::string::npos);
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), mailer::ErrUnknownRecipient);
    EXPECT_TRUE(FilesIn(Outbox()).empty());
}

TEST_F(MailSession, AnEmptyNameIsNoRecipient) {
    const auto message = MakeMessage({""});
    EXPECT_EQ(NumberRaisedBy([&] { message->Recipients().Resolve(MAPI::Dialog::Allowed); }),
              mailer::ErrUnknownRecipient);
}

TEST_F(MailSession, WithoutRecipientsNothingIsSent) {
    const auto message = MakeMessage({});
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), mailer::ErrNoRecipients);
    EXPECT_TRUE(FilesIn(Outbox()).empty());
}

TEST_F(MailSession, MissingAttachmentIsNamedAndNothingIsSent) {
    const auto message = MakeMessage({"ann@example.com"});
    message->Attachments().Add().Source = WriteFile("there.pdf", "x");
    message->Attachments().Add().Source = paths::FromMachine(m_folder / "gone.pdf");
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), err::FileNotFound);
    EXPECT_NE(DescriptionRaisedBy([&] { message->Send(); }).find("gone.pdf"), std::string::npos);
    EXPECT_TRUE(FilesIn(Outbox()).empty());
}

TEST_F(MailSession, AFolderIsNoAttachment) {
    const auto message = MakeMessage({"ann@example.com"});
    message->Attachments().Add().Source = paths::FromMachine(m_folder.Path());
    EXPECT_EQ(NumberRaisedBy([&] { message->Send(); }), err::PathFileAccess);
}

TEST_F(MailSession, RecipientsAreCountedFromOne) {
    const auto message = MakeMessage({"a@example.com", "b@example.com"});
    EXPECT_EQ(message->Recipients().Count(), 2);
    EXPECT_EQ(message->Recipients().Item(1).Name, "a@example.com");
    EXPECT_EQ(message->Recipients().Item(2).Name, "b@example.com");
    EXPECT_EQ(NumberRaisedBy([&] { message->Recipients().Item(0); }), err::SubscriptOutOfRange);
    EXPECT_EQ(NumberRaisedBy([&] { message->Recipients().Item(3); }), err::SubscriptOutOfRange);
}

TEST_F(MailSession, MessagesOutliveTheirSession) {
    auto message = MakeMessage({"ann@example.com"});
    m_session.reset();
    message->Send();
    EXPECT_EQ(FilesIn(Outbox()).size(), 1u);
}

TEST_F(MailSession, OutboxBeforeLogonFails) {
    mailer::ProfileMailSystem system(Profile());
    EXPECT_EQ(NumberRaisedBy([&] { system.CreateSession()->Outbox(); }), mailer::ErrNoProfile);
}

TEST_F(MailSession, AddressBookWithNobodyThereIsCancelled) {
    const auto session = Logon();
    EXPECT_EQ(NumberRaisedBy([&] { session->AddressBook(MAPI::Choice::Several); }), err::MailUserCancel);
    mailer::SetAddressChooser([](const auto&, MAPI::Choice) { return std::nullopt; });
    EXPECT_EQ(NumberRaisedBy([&] { session->AddressBook(MAPI::Choice::Several); }), err::MailUserCancel);
}

TEST_F(MailSession, PickedEntriesAreNamedSoThatTheyResolveAgain) {
    mailer::SetAddressChooser([](const auto& entries, MAPI::Choice) { return std::optional(entries); });
    const auto session = Logon();
    std::vector<std::string> names;
    for (const MAPI::Recipient& recipient : session->AddressBook(MAPI::Choice::Several)) {
        names.push_back(recipient.Name);
    }
    EXPECT_EQ(names, (std::vector<std::string>{"Ann Archer", "sons@example.com", "one@example.com",
                                               "two@example.com"}));
    EXPECT_EQ(session->AddressBook(MAPI::Choice::One).size(), 1u);
}

TEST_F(MailSession, WholeBookIsPickedInStepWithItsSize) {
    mailer::SetAddressChooser([](const auto& entries, MAPI::Choice) { return std::optional(entries); });
    const auto pick = [this](int count) {
        std::string cards;
        for (int i = 0; i < count; ++i) {
            const std::string number = std::to_string(i);
            cards +=
                "BEGIN:VCARD\nFN:Person Number" + number + "\nEMAIL:p" + number + "@example.com\nEND:VCARD\n";
        }
        WriteBytes(m_folder / "book.vcf", cards);
        const auto session = Logon();
        const double begun = ThreadSeconds();
        EXPECT_EQ(session->AddressBook(MAPI::Choice::Several).size(), static_cast<std::size_t>(count));
        return ThreadSeconds() - begun;
    };
    EXPECT_LT(CostOfTenTimes(1000, pick), SquareBegins);
}

TEST_F(MailSession, PasswordThatOthersCanReadIsADatedLineOnce) {
    WriteOutboxProfile("Password=s3cret\n");
    std::filesystem::permissions(Profile(), std::filesystem::perms(0644));
    testing::internal::CaptureStderr();
    Logon();
    Logon();
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_EQ(
        said.substr(std::string("2026-11-22 07:00:03 ").size()),
        "The mail profile \"" + Profile().string() +
            "\" has a password in it, and others may read it; make it readable for you only (chmod 600)\n");
    std::filesystem::permissions(Profile(), std::filesystem::perms(0600));
    WriteBytes(m_folder / "private.ini", ReadBytes(Profile()));
    std::filesystem::permissions(m_folder / "private.ini", std::filesystem::perms(0600));
    testing::internal::CaptureStderr();
    mailer::ProfileMailSystem(m_folder / "private.ini").CreateSession()->Logon();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}
