// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/base/mail_address.h"

#include <gtest/gtest.h>

#include "platform/mail/base/mail_errors.h"
#include "support/raises.h"

using mailer::IsAddress;
using mailer::Mailbox;
using mailer::ParseMailbox;

TEST(MailAddress, AcceptsWhatMailAllows) {
    for (const char* address : {"ann@example.com", "a.b+c_d@sub.example.co.uk", "O'Brien@example.ie",
                                "\"ann archer\"@example.com", "x@localhost", "a@[192.0.2.1]", "-a@b.c"}) {
        EXPECT_TRUE(IsAddress(address)) << address;
    }
}

TEST(MailAddress, RefusesWhatMailDoesNot) {
    for (const char* address :
         {"",           "@",      "ann",       "ann@",       "@example.com", "a b@example.com",
          ".a@b.c",     "a.@b.c", "a..b@c.d",  "a@b..c",     "a@-b.c",       "a@b-.c",
          "a@b.c.",     "a@b@c",  "a@b.c>",    "a@b.c RCPT", "\xC3\xA4@b.c", "a@b\xC3\xA4.c",
          "\"a\"b@c.d", "a@[",    "a@[1.2.3.4"}) {
        EXPECT_FALSE(IsAddress(address)) << address;
    }
    EXPECT_TRUE(IsAddress(std::string(64, 'a') + "@b.c"));
    EXPECT_FALSE(IsAddress(std::string(65, 'a') + "@b.c"));
}

TEST(MailAddress, NameBeforeTheAddress) {
    EXPECT_EQ(ParseMailbox(" ann@example.com "), (Mailbox{"", "ann@example.com"}));
    EXPECT_EQ(ParseMailbox("Ann Archer <ann@example.com>"), (Mailbox{"Ann Archer", "ann@example.com"}));
    EXPECT_EQ(ParseMailbox("\"Archer, \\\"Ann\\\"\" <ann@example.com>"),
              (Mailbox{"Archer, \"Ann\"", "ann@example.com"}));
}

TEST(MailAddress, OneMailboxAndNothingElse) {
    for (const char* text : {"a@b.c, d@e.f", "a@b.c; d@e.f", "a@b.c, D <d@e.f>", "A <a@b.c> x", "<a@b.c",
                             "A <a@b.c>\r\nBcc: d@e.f", "a@b.c\n", "A\x01 <a@b.c>", "A <B <a@b.c>"}) {
        EXPECT_EQ(NumberRaisedBy([&] { ParseMailbox(text); }), mailer::ErrUnknownRecipient) << text;
    }
}

TEST(MailAddress, SameAddressReadsTheDomainInAnyCase) {
    EXPECT_TRUE(mailer::SameAddress("ann@Example.com", "ann@eXAMPLE.com"));
    EXPECT_FALSE(mailer::SameAddress("Ann@example.com", "ann@example.com"));
    EXPECT_FALSE(mailer::SameAddress("ann@example.com", "ann@example.org"));
}
