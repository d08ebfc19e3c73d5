// SPDX-License-Identifier: GPL-3.0-or-later
// Changes that keep the rest of a profile as the user wrote it.
#include "platform/mail/profile/ini_editor.h"

#include <gtest/gtest.h>

#include "platform/mail/profile/ini_text.h"
#include "support/raises.h"

namespace {

using mailer::IniEditor;
using mailer::IniText;

std::string After(const std::string& text, const std::string& key, const std::string& value) {
    IniEditor editor(text);
    editor.Set("Profile", key, value);
    return editor.Text();
}

constexpr const char* HostileValues[] = {
    "a ; b", ";", "; x",   " lead",  "trail ", "\"",        "\"\"",    "\"quoted\"", "\"a\" ; \"b\"",
    "a\"b",  "#", "[box]", "a=b=c",  "=",      "\"half",    "half\"",  "\\",         "c:\\a\\",
    "%s%n",  "'", "   ",   "\" ; x", "x ;",    "p\xC3\xA4", "\xFF\xFE"};

// Lines that may already hold a value.
constexpr const char* FormerTexts[] = {
    "",
    "[Profile]\nPassword=old\n",
    "[Profile]\nPassword = old ; the \"comment\"\n",
    "[Profile]\nPassword=\"old\" ; say \"x\"\n",
    "[Profile]\nPassword=;nothing yet\n",
    "[Profile]\nPassword= ; nothing yet\n",
    "[Profile]\r\nPassword=\"old\r\nUser=ann",
    "\xEF\xBB\xBF[Profile]\nPASSWORD",
    "[Other]\nPassword=not mine\n[Profile",
    "[Profile]\nPassword=one\n[Other]\nx=1\n[profile]\npassword=two",
};

}  // namespace

TEST(IniEditor, HostileValuesAreReadBackAsTheyWereGiven) {
    for (const char* former : FormerTexts) {
        for (const char* value : HostileValues) {
            const std::string text = After(former, "Password", value);
            EXPECT_EQ(IniText(text).Find("Profile", "Password"), value) << former << "\n---\n" << text;
            // Once more, from the line just written.
            EXPECT_EQ(IniText(After(text, "Password", "new ; one")).Find("Profile", "Password"), "new ; one")
                << text;
        }
    }
}

TEST(IniEditor, LineFeedsAreRefusedWithoutTellingTheValue) {
    for (const char* value : {"s3cret\nTransport=outbox", "s3cret\r", "s3cret\tx", "s3cret\x7F"}) {
        const std::string said = DescriptionRaisedBy([&] { After("", "Password", value); });
        EXPECT_EQ(said, "Password cannot hold a line feed, a tab or another control character");
        EXPECT_EQ(NumberRaisedBy([&] { After("", "Password", value); }), 5);
    }
}

TEST(IniEditor, CommentsOrderAndUnknownKeysStay) {
    const std::string text =
        "; how mail leaves\n[Profile]\nStrange = 1\nhost = old.example.com   ; ours\n# "
        "end\n\n[AddressBook]\nVCard=~/a\n";
    EXPECT_EQ(
        After(text, "Host", "new.example.com"),
        "; how mail leaves\n[Profile]\nStrange = 1\nhost = new.example.com   ; ours\n# end\n\n[AddressBook]\n"
        "VCard=~/a\n");
}

TEST(IniEditor, NewKeyGoesToTheEndOfItsSection) {
    EXPECT_EQ(After("[Profile]\nHost=a\n\n; people\n[AddressBook]\nVCard=x\n", "Port", "25"),
              "[Profile]\nHost=a\nPort=25\n\n; people\n[AddressBook]\nVCard=x\n");
}

TEST(IniEditor, MissingSectionIsMade) {
    EXPECT_EQ(After("", "Host", "a"), "[Profile]\nHost=a\n");
    EXPECT_EQ(After("[AddressBook]\nVCard=x", "Host", "a"), "[AddressBook]\nVCard=x\n\n[Profile]\nHost=a\n");
}

TEST(IniEditor, LineEndsStayAsTheyAre) {
    EXPECT_EQ(After("[Profile]\r\nHost=a\r\nUser=b\r\n", "Host", "c"), "[Profile]\r\nHost=c\r\nUser=b\r\n");
    EXPECT_EQ(After("[Profile]\r\nHost=a\r\n", "Port", "25"), "[Profile]\r\nHost=a\r\nPort=25\r\n");
}

TEST(IniEditor, EmptyValueTakesEveryLineOfTheKeyAway) {
    EXPECT_EQ(After("[Profile]\nPassword=one\nHost=a\npassword=two ; x\n", "Password", ""),
              "[Profile]\nHost=a\n");
    EXPECT_EQ(After("[Profile]\nHost=a\n", "Password", ""), "[Profile]\nHost=a\n");
}

TEST(IniEditor, OldPasswordOfADoubleLineIsNotLeft) {
    EXPECT_EQ(After("[Profile]\nPassword=old1\nPassword=old2\n", "Password", "new"),
              "[Profile]\nPassword=new\n");
}

TEST(IniEditor, SameKeyOfAnotherSectionIsNotTouched) {
    EXPECT_EQ(After("[Other]\nHost=mine\n[Profile]\nHost=a\n", "Host", "b"),
              "[Other]\nHost=mine\n[Profile]\nHost=b\n");
}
