// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/reg_document.h"

#include <gtest/gtest.h>

#include "platform/regfile/utf16.h"

namespace {

using namespace std::string_literals;

const std::string Sample =
    "Windows Registry Editor Version 5.00\n"
    "\n"
    "; of another program\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Other]\n"
    "\"Bytes\"=hex:01,\\\n"
    "  02\n"
    "@=\"default\"\n"
    "\n"
    "[HKEY_LOCAL_MACHINE\\Software\\Mine]\n"
    "\"Poll\"=\"15\"\n";
const std::string Mine = "HKEY_LOCAL_MACHINE\\Software\\Mine";
const std::string Other = "HKEY_LOCAL_MACHINE\\Software\\Other";

RegValue Text(const std::string& text) {
    return {1, text + '\0'};
}

TEST(RegDocument, UnchangedTextStaysAsItIs) {
    const RegDocument document(Sample);
    EXPECT_FALSE(document.IsDamaged());
    EXPECT_EQ(document.Text(), Sample);
}

TEST(RegDocument, KeysAndNamesAreFoundWithoutRegardToCase) {
    const RegDocument document(Sample);
    EXPECT_TRUE(document.HasKey("hkey_local_machine\\SOFTWARE\\mine"));
    EXPECT_TRUE(document.HasKey("HKEY_LOCAL_MACHINE\\software"));
    EXPECT_FALSE(document.HasKey("HKEY_LOCAL_MACHINE\\Soft"));
    EXPECT_FALSE(document.HasKey("HKEY_LOCAL_MACHINE\\Software\\Mine\\Deeper"));
    ASSERT_TRUE(document.Value("hkey_local_machine\\software\\MINE", "POLL"));
    EXPECT_EQ(document.Value(Mine, "poll")->bytes, "15\0"s);
    EXPECT_EQ(document.Value(Other, "")->bytes, "default\0"s);
    EXPECT_EQ(document.Value(Other, "Bytes")->bytes, "\x01\x02");
    EXPECT_FALSE(document.Value(Other, "Poll"));
}

TEST(RegDocument, ChangeTouchesItsLineOnlyAndKeepsTheSpelling) {
    RegDocument document(Sample);
    document.SetValue(Mine, "POLL", Text("30"));
    std::string expected = Sample;
    expected.replace(expected.find("\"15\""), 4, "\"30\"");
    EXPECT_EQ(document.Text(), expected);
}

TEST(RegDocument, NewValueStandsUnderItsKey) {
    RegDocument document(Sample);
    document.SetValue(Other, "Added", Text("x"));
    document.SetValue(Other, "", Text("new default"));
    const std::string text = document.Text();
    EXPECT_NE(text.find("@=\"new default\"\n\"Added\"=\"x\"\n\n[HKEY_LOCAL_MACHINE\\Software\\Mine]"),
              std::string::npos)
        << text;
}

TEST(RegDocument, NewKeyStandsAfterABlankLine) {
    RegDocument document("");
    EXPECT_FALSE(document.IsDamaged());
    document.AddKey("HKEY_LOCAL_MACHINE\\A");
    document.AddKey("hkey_local_machine\\a");
    document.SetValue("HKEY_LOCAL_MACHINE\\B", "n", Text("v"));
    EXPECT_EQ(document.Text(),
              "Windows Registry Editor Version "
              "5.00\n\n[HKEY_LOCAL_MACHINE\\A]\n\n[HKEY_LOCAL_MACHINE\\B]\n\"n\"=\"v\"\n");
}

TEST(RegDocument, FileOfRegeditIsRead) {
    std::string withReturns;
    for (const char character : Sample) {
        withReturns += character == '\n' ? "\r\n"s : std::string(1, character);
    }
    const RegDocument document("\xff\xfe" + Utf16OfUtf8(withReturns));
    EXPECT_FALSE(document.IsDamaged());
    EXPECT_EQ(document.Text(), Sample);
}

TEST(RegDocument, LastPlaceCountsWhenAValueStandsTwice) {
    RegDocument document(Sample + "\n[HKEY_LOCAL_MACHINE\\Software\\Mine]\n\"Poll\"=\"20\"\n\"Gone\"=-\n");
    EXPECT_FALSE(document.IsDamaged());
    EXPECT_EQ(document.Value(Mine, "Poll")->bytes, "20\0"s);
    EXPECT_FALSE(document.Value(Mine, "Gone"));
    document.SetValue(Mine, "Poll", Text("25"));
    EXPECT_EQ(RegDocument(document.Text()).Value(Mine, "Poll")->bytes, "25\0"s);
}

TEST(RegDocument, DamagedLinesAreLeftOutAndTheRestIsRead) {
    for (const std::string& damage :
         {"\"open=1"s, "[unfinished"s, "rubbish"s, "\"a\"=5"s, "\"a\" \"b\""s, "\"a\"=hex:0x"s, "\0\1\2"s}) {
        const RegDocument document(Sample + damage + "\n\"AlertWho\"=\"ann\"\n");
        EXPECT_TRUE(document.IsDamaged()) << damage;
        EXPECT_EQ(document.Value(Mine, "Poll")->bytes, "15\0"s);
        EXPECT_EQ(document.Value(Mine, "AlertWho")->bytes, "ann\0"s);
    }
    EXPECT_TRUE(RegDocument("\"a\"=\"above every key\"").IsDamaged());
    EXPECT_TRUE(RegDocument(std::string(100'000, '\xff')).IsDamaged());
}

}  // namespace
