// SPDX-License-Identifier: GPL-3.0-or-later
#include "mail/Delivery.h"

#include <gtest/gtest.h>

#include <string_view>

#include "platform/base/due_run.h"
#include "shared/Global.h"
#include "support/fakes.h"

using Global::SendAlertMail;
using Global::SendMailBatch;
using Global::SendMailSingle;

namespace {

constexpr std::size_t StampLength = std::string_view("2026-11-22 07:00:03 ").size();

const char* const MailboxText =
    "Your mailbox is over the limit or the Exchange Server is down! Sending mail failed";

class Delivery : public testing::Test {
 protected:
    void SetUp() override {
        Global::AlertWho = "boss@example.com";
        Global::AttachmentList.fill({});
        Global::RecipientList = {"", "ann@example.com", "bob@example.com"};
    }
    fakes::FakeMailSystem mail;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(Delivery, PackageMailHasEveryRecipientAndEveryFileInPlace) {
    Global::AttachmentList[1] = "Z:\\a.pdf";
    Global::AttachmentList[2] = "Z:\\b.xls";
    Global::AttachmentList[3] = "Z:\\c.htm";
    EXPECT_TRUE(SendMailBatch("ten chars.", "Reports", 2, 3, 1));
    ASSERT_EQ(mail.sent.size(), 1U);
    const fakes::SentMessage& sent = mail.sent[0];
    EXPECT_EQ(sent.subject, "Reports");
    EXPECT_EQ(sent.text, "ten chars.");
    EXPECT_EQ(sent.importance, 1);
    EXPECT_TRUE(sent.resolvedWithDialog);
    EXPECT_EQ(sent.recipients, (std::vector<std::string>{"ann@example.com", "bob@example.com"}));
    EXPECT_EQ(sent.attachments, (std::vector<std::pair<int, std::string>>{
                                    {11, "Z:\\a.pdf"}, {12, "Z:\\b.xls"}, {13, "Z:\\c.htm"}}));
}

TEST_F(Delivery, EmptySlotIsHandedOverAsItIs) {
    EXPECT_TRUE(SendMailBatch("", "s", 1, 1, 1));
    EXPECT_EQ(mail.sent.at(0).attachments, (std::vector<std::pair<int, std::string>>{{1, ""}}));
}

TEST_F(Delivery, FilesBeyondTwentyFailAndAreAlerted) {
    EXPECT_FALSE(SendMailBatch("b", "s", 1, 21, 1));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. Subscript out of range [9]");
}

TEST_F(Delivery, ListWithoutLastSeparatorLosesItsLastName) {
    EXPECT_TRUE(SendMailSingle("b", "s", "a;b", "Z:\\f.htm", 1));
    EXPECT_EQ(mail.sent.at(0).recipients, std::vector<std::string>{"a"});
}

TEST_F(Delivery, ListWithLastSeparatorGivesEveryName) {
    EXPECT_TRUE(SendMailSingle("b", "s", "a;b;", "Z:\\f.htm", 1));
    EXPECT_EQ(mail.sent.at(0).recipients, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(mail.sent[0].subject, "s");
    EXPECT_EQ(mail.sent[0].text, "b");
    EXPECT_EQ(mail.sent[0].importance, 1);
    EXPECT_TRUE(mail.sent[0].resolvedWithDialog);
}

TEST_F(Delivery, ListOfOneNameGivesIt) {
    EXPECT_TRUE(SendMailSingle("grüße", "s", "a", "Z:\\f.htm", 1));
    EXPECT_EQ(mail.sent.at(0).recipients, std::vector<std::string>{"a"});
    EXPECT_EQ(mail.sent.at(0).attachments, (std::vector<std::pair<int, std::string>>{{6, "Z:\\f.htm"}}));
}

TEST_F(Delivery, AlertGoesToOneUnsplitNameWithHighImportance) {
    EXPECT_TRUE(SendAlertMail("text", "a;b; c", "Pressroom Error", 1));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].recipients, std::vector<std::string>{"a;b; c"});
    EXPECT_EQ(mail.sent[0].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[0].text, "text");
    EXPECT_EQ(mail.sent[0].importance, 2);
    EXPECT_TRUE(mail.sent[0].resolvedWithDialog);
    EXPECT_TRUE(mail.sent[0].attachments.empty());
}

TEST_F(Delivery, AlertWithAnEmptyMarkerIsOfUsualImportance) {
    EXPECT_TRUE(SendAlertMail("text", "a", "s", ""));
    EXPECT_EQ(mail.sent.at(0).importance, 1);
}

class MailboxNumbers : public Delivery, public testing::WithParamInterface<std::int32_t> {};

TEST_P(MailboxNumbers, ShowOneBoxAndAlertNobody) {
    const RuntimeError lost(GetParam(), "gone");
    mail.sendErrors = {lost, lost, lost};
    EXPECT_FALSE(SendMailBatch("b", "s", 1, 0, 1));
    EXPECT_FALSE(SendMailSingle("b", "s", "a", "f", 1));
    EXPECT_FALSE(SendAlertMail("b", "a", "s", 1));
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_EQ(mail.logons, 3);
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>(3, {MailboxText, 0, "Oxbow Courier"})));
}

INSTANTIATE_TEST_SUITE_P(Both, MailboxNumbers,
                         testing::Values(static_cast<std::int32_t>(0x80004005),
                                         static_cast<std::int32_t>(0x8004011D)));

TEST_F(Delivery, OtherErrorsAreAlertedUnderOneRoutineName) {
    mail.resolveErrors = {RuntimeError(500, "nobody"), std::nullopt, RuntimeError(501, "refused"),
                          std::nullopt};
    EXPECT_FALSE(SendMailBatch("b", "s", 1, 0, 1));
    EXPECT_FALSE(SendMailSingle("b", "s", "a", "f", 1));
    ASSERT_EQ(mail.sent.size(), 2U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. nobody [500]");
    EXPECT_EQ(mail.sent[1].text, "An error occured in SendMailBatch. refused [501]");
    EXPECT_EQ(mail.sent[1].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[1].recipients, std::vector<std::string>{"boss@example.com"});
    EXPECT_EQ(mail.sent[1].importance, 2);
    EXPECT_TRUE(prompts.boxes.empty());
}

// An unknown name is reported before a file is opened.
TEST_F(Delivery, NamesAreResolvedBeforeFilesAreAttached) {
    mail.resolveErrors = {RuntimeError(500, "nobody")};
    EXPECT_FALSE(SendMailBatch("b", "s", 1, 21, 1));
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, "An error occured in SendMailBatch. nobody [500]");
    EXPECT_TRUE(SendMailBatch("b", "s", 2, 2, 1));
    EXPECT_TRUE(SendMailSingle("b", "s", "a;b;", "f", 1));
    ASSERT_EQ(mail.sent.size(), 3U);
    EXPECT_EQ(mail.sent[1].atResolve, (std::pair<std::size_t, std::size_t>{2, 0}));
    EXPECT_EQ(mail.sent[2].atResolve, (std::pair<std::size_t, std::size_t>{2, 0}));
}

TEST_F(Delivery, FailedAlertIsNotAlerted) {
    mail.sendErrors = {RuntimeError(500, "refused")};
    EXPECT_FALSE(SendAlertMail("b", "a", "s", 1));
    EXPECT_TRUE(mail.sent.empty());
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(Delivery, FailedLogonPassesToTheCaller) {
    mail.logonErrors = {RuntimeError(77, "no profile"), RuntimeError(77, "no profile"),
                        RuntimeError(77, "no profile")};
    EXPECT_THROW(SendMailBatch("b", "s", 1, 0, 1), RuntimeError);
    EXPECT_THROW(SendMailSingle("b", "s", "a", "f", 1), RuntimeError);
    EXPECT_THROW(SendAlertMail("b", "a", "s", 1), RuntimeError);
}

TEST_F(Delivery, FailedLogonOfAnAlertPassesOutOfTheMailThatFailed) {
    mail.logonErrors = {std::nullopt, RuntimeError(77, "no profile")};
    mail.sendErrors = {RuntimeError(500, "refused")};
    EXPECT_THROW(SendMailSingle("b", "s", "a", "f", 1), RuntimeError);
}

TEST_F(Delivery, AlertOfAFailedMailThatMeetsALostServerShowsOneBox) {
    mail.sendErrors = {RuntimeError(500, "refused"), RuntimeError(err::MailboxOrServer, "gone")};
    EXPECT_FALSE(SendMailSingle("b", "s", "a", "f", 1));
    EXPECT_EQ(prompts.boxes, (std::vector<fakes::Box>{{MailboxText, 0, "Oxbow Courier"}}));
}

TEST_F(Delivery, NoSessionIsNoMail) {
    mail.noSession = true;
    EXPECT_FALSE(SendMailBatch("b", "s", 1, 0, 1));
    EXPECT_FALSE(SendMailSingle("b", "s", "a", "f", 1));
    EXPECT_FALSE(SendAlertMail("b", "a", "s", 1));
}

// What is shown nowhere else

TEST_F(Delivery, AlertThatDoesNotGoOutIsADatedLine) {
    mail.resolveErrors = {RuntimeError(500, "\"boss\" is nobody")};
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SendAlertMail("All is lost. [7]", "boss;chief;", "Pressroom Error", 1));
    EXPECT_EQ(
        testing::internal::GetCapturedStderr().substr(StampLength),
        "An alert did not go out to \"boss;chief;\": \"boss\" is nobody [500] It says: All is lost. [7]\n");
}

TEST_F(Delivery, AlertThatHasNoAddressIsADatedLine) {
    mail.resolveErrors = {RuntimeError(500, "A recipient has no name")};
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SendAlertMail("All is lost. [7]", "", "Pressroom Error", 1));
    EXPECT_EQ(testing::internal::GetCapturedStderr().substr(StampLength),
              "An alert did not go out as no alert address is set: A recipient has no name [500] It says: "
              "All is lost. "
              "[7]\n");
}

TEST_F(Delivery, MailThatDoesNotGoOutIsADatedLine) {
    mail.sendErrors = {RuntimeError(500, "refused")};
    testing::internal::CaptureStderr();
    EXPECT_FALSE(SendMailSingle("b", "Figures", "a", "f", 1));
    EXPECT_EQ(testing::internal::GetCapturedStderr().substr(StampLength),
              "The mail \"Figures\" did not go out: refused [500]\n");
}

// A mail that the server takes for some

TEST_F(Delivery, RefusedRecipientsAreAlertedAndOneDatedLine) {
    testing::internal::CaptureStderr();
    Global::ReportRefusals("Figures",
                           {{"bob@example.com", "550 unknown"}, {"eve@example.com", "554 unwanted"}});
    const std::string text =
        "The mail \"Figures\" has gone out, but not to everybody: the server refuses bob@example.com (550 "
        "unknown), "
        "eve@example.com (554 unwanted)";
    EXPECT_EQ(testing::internal::GetCapturedStderr().substr(StampLength), text + "\n");
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, text);
    EXPECT_EQ(mail.sent[0].subject, "Pressroom Error");
    EXPECT_EQ(mail.sent[0].importance, 2);
    EXPECT_EQ(mail.sent[0].recipients, std::vector<std::string>{"boss@example.com"});
}

TEST_F(Delivery, LongListOfRefusedRecipientsAndTheirAnswersAreCut) {
    std::vector<MAPI::Refusal> refusals;
    for (int i = 1; i <= 400; ++i) {
        std::string longAnswer = "550 " + std::string(195, 'x') + "\xC3\xBC" + std::string(300, 'y');
        refusals.push_back({"r" + std::to_string(i) + "@example.com", std::move(longAnswer)});
    }
    testing::internal::CaptureStderr();
    Global::ReportRefusals("Figures", refusals);
    const std::string line = testing::internal::GetCapturedStderr().substr(StampLength);
    const std::string cutAnswer = " (550 " + std::string(195, 'x') + "\xC3\xBC...)";
    std::string text = "The mail \"Figures\" has gone out, but not to everybody: the server refuses ";
    for (int i = 1; i <= 10; ++i) {
        text += "r" + std::to_string(i) + "@example.com" + cutAnswer + (i < 10 ? ", " : " and 390 more");
    }
    EXPECT_EQ(line, text + "\n");
    ASSERT_EQ(mail.sent.size(), 1U);
    EXPECT_EQ(mail.sent[0].text, text);
}

TEST_F(Delivery, TenRefusedRecipientsAreAllNamed) {
    std::vector<MAPI::Refusal> refusals(10, {"bob@example.com", "550 unknown"});
    refusals.back().Address = "last@example.com";
    testing::internal::CaptureStderr();
    Global::ReportRefusals("Figures", refusals);
    const std::string line = testing::internal::GetCapturedStderr();
    EXPECT_TRUE(line.ends_with(", last@example.com (550 unknown)\n")) << line;
}

TEST_F(Delivery, AlertOfARefusalThatCannotLogOnRaisesNothing) {
    mail.logonErrors = {RuntimeError(77, "no profile")};
    testing::internal::CaptureStderr();
    EXPECT_NO_THROW(Global::ReportRefusals("Figures", {{"bob@example.com", "550 unknown"}}));
    EXPECT_NE(testing::internal::GetCapturedStderr().find(
                  "An alert did not go out to \"boss@example.com\": no profile [77]"),
              std::string::npos);
}

// Copies of one run

TEST_F(Delivery, MailsOfADueRunBearItsIdentityAndDateAndAlertsDoNot) {
    {
        const MAPI::DueRun run("store", "schedule", "7", "2026-11-22 07:00", [] {
            return ZonedMoment{1795330800, 3600};
        });
        EXPECT_TRUE(SendMailBatch("b", "s", 1, 0, 1));
        EXPECT_TRUE(SendMailSingle("b", "s", "a", "f", 1));
        EXPECT_TRUE(SendAlertMail("b", "a", "s", 1));
    }
    EXPECT_TRUE(SendMailSingle("b", "s", "a", "f", 1));
    ASSERT_EQ(mail.sent.size(), 4U);
    EXPECT_NE(mail.sent[0].identity, "");
    EXPECT_EQ(mail.sent[0].identity, mail.sent[1].identity);
    EXPECT_EQ(mail.sent[2].identity, "");
    EXPECT_EQ(mail.sent[3].identity, "");
    for (const int message : {0, 1}) {
        ASSERT_TRUE(mail.sent[message].date.has_value());
        EXPECT_EQ(mail.sent[message].date->seconds, 1795330800);
        EXPECT_EQ(mail.sent[message].date->offset, 3600);
    }
    EXPECT_FALSE(mail.sent[2].date.has_value());
    EXPECT_FALSE(mail.sent[3].date.has_value());
}
