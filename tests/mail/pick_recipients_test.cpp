// SPDX-License-Identifier: GPL-3.0-or-later
#include "mail/PickRecipients.h"

#include <gtest/gtest.h>

#include "platform/mail/book/address_book.h"
#include "platform/mail/system.h"
#include "support/fakes.h"
#include "support/temporary_folder.h"

using Global::PickRecipients;

namespace {

class Box : public EditableText {
 public:
    std::string Text() const override { return m_text; }
    void Text(const std::string& text) override { m_text = text; }

 private:
    std::string m_text;
};

using Boxes = std::vector<fakes::Box>;

class RecipientPicker : public testing::Test {
 protected:
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
    Box box;
};

Boxes ErrorBox(const std::string& description, std::int32_t number) {
    return {{"AN ERROR OCCURED. " + description + " [" + std::to_string(number) + "]", 48, "Oxbow Courier"}};
}

}  // namespace

TEST_F(RecipientPicker, CancelAddsNothingAndShowsNothing) {
    box.Text("ann@example.com;");
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "ann@example.com;");
    EXPECT_TRUE(prompts.boxes.empty());
    EXPECT_EQ(mail.booksShown.size(), 1U);
}

TEST_F(RecipientPicker, TwoNamesPickedIntoAnEmptyBoxAreEachFollowedByASemicolon) {
    mail.picks = {{"Ann Archer", "Bob"}};
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "Ann Archer;Bob;");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(RecipientPicker, PickingTwiceAddsBothPicksRepeatsIncluded) {
    mail.picks = {{"Ann", "Bob"}, {"Bob", "Cy"}};
    PickRecipients(box);
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "Ann;Bob;Bob;Cy;");
}

TEST_F(RecipientPicker, WhatTheBoxHoldsIsKeptAsItStands) {
    box.Text("dan");
    mail.picks = {{"Ann"}};
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "danAnn;");
}

TEST_F(RecipientPicker, AsksForSeveralNamesAndSendsNothing) {
    mail.picks = {{"Ann"}};
    PickRecipients(box);
    EXPECT_EQ(mail.booksShown, std::vector<bool>{false});
    EXPECT_EQ(mail.logons, 1);
    EXPECT_TRUE(mail.sent.empty());
}

TEST_F(RecipientPicker, FailedLogonShowsTheErrorBoxAndNoAddressBook) {
    mail.logonErrors = {RuntimeError(-2147221231, "There is no mail profile")};
    PickRecipients(box);
    EXPECT_EQ(prompts.boxes, ErrorBox("There is no mail profile", -2147221231));
    EXPECT_TRUE(mail.booksShown.empty());
    EXPECT_EQ(box.Text(), "");
}

TEST_F(RecipientPicker, WithoutAMailProfileTheErrorBoxComesUp) {
    const TemporaryFolder folder;
    mailer::ProfileMailSystem real(folder / "mail.ini");
    MAPI::SetMailSystem(&real);
    PickRecipients(box);
    ASSERT_EQ(prompts.boxes.size(), 1U);
    EXPECT_EQ(prompts.boxes[0].text.rfind("AN ERROR OCCURED. ", 0), 0U) << prompts.boxes[0].text;
    EXPECT_NE(prompts.boxes[0].text.find(" [-2147221231]"), std::string::npos) << prompts.boxes[0].text;
    EXPECT_EQ(prompts.boxes[0].flags, 48);
    EXPECT_EQ(box.Text(), "");
}

TEST_F(RecipientPicker, CancelOfTheRealSessionAddsNothingAndItsPickIsAdded) {
    const TemporaryFolder folder;
    WriteBytes(folder / "book.vcf", "BEGIN:VCARD\nFN:Ann Archer\nEMAIL:ann@example.com\nEND:VCARD\n");
    WriteBytes(folder / "mail.ini", "[Profile]\nTransport=outbox\nFrom=r@example.com\nOutboxFolder=" +
                                        (folder / "outbox").string() +
                                        "\n[AddressBook]\nVCard=" + (folder / "book.vcf").string());
    mailer::ProfileMailSystem real(folder / "mail.ini");
    MAPI::SetMailSystem(&real);
    mailer::SetAddressChooser([](const auto&, MAPI::Choice) { return std::nullopt; });
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "");
    mailer::SetAddressChooser([](const auto& entries, MAPI::Choice) { return std::optional(entries); });
    PickRecipients(box);
    mailer::SetAddressChooser({});
    EXPECT_EQ(box.Text(), "Ann Archer;");
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(RecipientPicker, ErrorOfAnyStepShowsTheBoxAndEnds) {
    mail.messageErrors = {RuntimeError(57)};
    PickRecipients(box);
    EXPECT_EQ(prompts.boxes, ErrorBox("Device I/O error", 57));
    EXPECT_TRUE(mail.booksShown.empty());

    prompts.boxes.clear();
    mail.bookErrors = {RuntimeError(53, "The address book is missing")};
    mail.picks = {{"Ann"}};
    PickRecipients(box);
    EXPECT_EQ(prompts.boxes, ErrorBox("The address book is missing", 53));
    EXPECT_EQ(box.Text(), "");
}

TEST_F(RecipientPicker, CancelNumberOfAnEarlierStepGoesOnAtTheNextStatement) {
    mail.logonErrors = {RuntimeError(err::MailUserCancel)};
    mail.picks = {{"Ann"}};
    PickRecipients(box);
    EXPECT_EQ(box.Text(), "Ann;");
    EXPECT_TRUE(prompts.boxes.empty());

    // Without a message the next statements fail.
    mail.messageErrors = {RuntimeError(err::MailUserCancel)};
    mail.picks = {{"Bob"}};
    PickRecipients(box);
    EXPECT_EQ(prompts.boxes, ErrorBox("Object variable or With block variable not set", 91));
    EXPECT_EQ(box.Text(), "Ann;");
}

TEST_F(RecipientPicker, WithoutASessionTheErrorBoxComesUp) {
    mail.noSession = true;
    PickRecipients(box);
    EXPECT_EQ(prompts.boxes, ErrorBox("Object variable or With block variable not set", 91));
}
