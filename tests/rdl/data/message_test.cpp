// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/common/message.h"
#include "support/growth.h"

#include <gtest/gtest.h>

#include <string>

namespace rdl::data {
namespace {

TEST(MaskedTexts, PasswordIsStruckOutWhereItIsAValue) {
    EXPECT_EQ(CleanText("in UID=ann;PWD=p; Password={it is}", {"p"}), "in UID=ann;PWD=***; Password={it is}");
    EXPECT_EQ(CleanText("in Password={it is};Port=1", {"it is"}), "in Password={***};Port=1");
    EXPECT_EQ(CleanText("in mysql://ann:secret@db/shop", {"secret"}), "in mysql://ann:***@db/shop");
}

TEST(MaskedTexts, WordsOfTheMessageStayWhateverThePasswordIs) {
    EXPECT_EQ(CleanText("password p of user \"clerk\"", {"p"}), "password p of user \"clerk\"");
    EXPECT_EQ(CleanText("authentication failed for user \"clerk\"", {"clerk"}),
              "authentication failed for user \"clerk\"");
    EXPECT_EQ(CleanText("(using password: YES)", {"YES"}), "(using password: YES)");
    EXPECT_EQ(CleanText("password", {""}), "password");
}

TEST(MaskedTexts, PasswordThatNoMessageSaysIsStruckOutEverywhere) {
    EXPECT_EQ(CleanText(R"(password "hunter2" or [hunter2])", {"hunter2"}), R"(password "***" or [***])");
    EXPECT_EQ(CleanText("hunter2 is wrong: hunter2", {"hunter2"}), "*** is wrong: ***");
    EXPECT_EQ(CleanText("user \"hunter2\"", {"hunter2"}), "user \"***\"");
    EXPECT_EQ(CleanText("(Dragon)", {"Dragon"}), "(***)");
    EXPECT_EQ(CleanText("no p4 here, nor p#.", {"p4"}), "no *** here, nor p#");
    EXPECT_EQ(CleanText("no p4 here, nor p#.", {"p#"}), "no p4 here, nor ***");
    EXPECT_EQ(CleanText("it was 20261122", {"20261122"}), "it was ***");
    EXPECT_EQ(CleanText("it was blue cat sky", {"blue cat sky"}), "it was ***");
    EXPECT_EQ(CleanText("it\xC2\xBBh\xC3\xA4user\xC2\xAB, it", {"h\xC3\xA4user"}),
              "it\xC2\xBB***\xC2\xAB, it");
    EXPECT_EQ(CleanText("#top-secret#", {"#top-secret#"}), "***");
}

TEST(MaskedTexts, PartOfALongerWordStays) {
    EXPECT_EQ(CleanText("hunter22 and _hunter2, \xC3\xBChunter2", {"hunter2"}),
              "hunter22 and _hunter2, \xC3\xBChunter2");
    EXPECT_EQ(CleanText("PWD=put \"up\"", {"p"}), "PWD=put \"up\"");
}

TEST(MaskedTexts, PasswordThatIsAWordOfMessagesIsStruckOutWhereAValueStands) {
    EXPECT_EQ(CleanText(R"(password "p" or [p], p is wrong)", {"p"}),
              R"(password "***" or [***], p is wrong)");
    EXPECT_EQ(CleanText("Passwort \xC2\xBB"
                        "1234\xC2\xAB, Zeile 1234",
                        {"1234"}),
              "Passwort \xC2\xBB***\xC2\xAB, Zeile 1234");
    EXPECT_EQ(CleanText("password authentication failed (password=password)", {"password"}),
              "password authentication failed (password=***)");
    EXPECT_EQ(CleanText("Access denied \"access denied\"", {"access denied"}), "Access denied \"***\"");
    EXPECT_EQ(CleanText("failed. No \".\"", {"."}), "failed. No \"***\"");
}

TEST(MaskedTexts, WhatIsQuotedAsSomethingElseStays) {
    for (const char* text :
         {"syntax error at or near \"user\"", "relation \"user\" does not exist", "Unknown column [user] in",
          "no table \"public\".\"user\"", "denied for user \"ann\"@\"user\" (using password: YES)"}) {
        EXPECT_EQ(CleanText(text, {"user"}), text);
    }
    EXPECT_EQ(CleanText("[Microsoft][FreeTDS]The timeout", {"FreeTDS"}), "[Microsoft][FreeTDS]The timeout");
    EXPECT_EQ(CleanText("[Microsoft][FreeTDS]The timeout", {"Microsoft"}), "[Microsoft][FreeTDS]The timeout");
}

TEST(MaskedTexts, PasswordThatIsTheNameOfTheUserTooDoesNotShowIt) {
    EXPECT_EQ(CleanText("authentication failed for user \"reports\", database \"Reports\"",
                        {"reports", {"Reports", "shop"}}),
              "authentication failed for user \"reports\", database \"Reports\"");
    EXPECT_EQ(CleanText("PWD=reports, \"reports\"", {"reports", {"reports"}}), "PWD=***, \"***\"");
}

TEST(MaskedTexts, LongMessageIsCleanedInStepWithItsLength) {
    const auto clean = [](int words) {
        std::string text;
        for (int i = 0; i < words; ++i) {
            text += "p \"";
        }
        const double begun = ThreadSeconds();
        EXPECT_TRUE(CleanText(text, {"p"}).ends_with(" ..."));
        return ThreadSeconds() - begun;
    };
    EXPECT_LT(CostOfTenTimes(30'000, clean), SquareBegins);
}

}  // namespace
}  // namespace rdl::data
