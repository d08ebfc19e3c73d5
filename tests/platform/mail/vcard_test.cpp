// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/book/vcard.h"

#include <gtest/gtest.h>

using mailer::ReadCards;

namespace {

std::string Card(const std::string& lines) {
    return "BEGIN:VCARD\r\n" + lines + "END:VCARD\r\n";
}

}  // namespace

TEST(VCard, ReadsNameNicknamesAndAddress) {
    const auto cards =
        ReadCards(Card("VERSION:3.0\r\nN:Archer;Ann;;;\r\nFN:Ann Archer\r\n"
                       "NICKNAME:Annie,The\\, Boss\r\nEMAIL;TYPE=INTERNET:ann@example.com\r\n"));
    ASSERT_EQ(cards.size(), 1u);
    EXPECT_EQ(cards[0].name, "Ann Archer");
    EXPECT_EQ(cards[0].nicknames, (std::vector<std::string>{"Annie", "The, Boss"}));
    EXPECT_EQ(cards[0].address, "ann@example.com");
}

TEST(VCard, UnfoldsLinesInsideWordsAndLetters) {
    const auto cards =
        ReadCards(Card("FN:Ann Ar\r\n cher M\xC3\r\n\t\xBCller\r\nEMAIL:ann@exam\r\n ple.com\r\n"));
    ASSERT_EQ(cards.size(), 1u);
    EXPECT_EQ(cards[0].name, "Ann Archer Müller");
    EXPECT_EQ(cards[0].address, "ann@example.com");
}

TEST(VCard, PreferredAddressComesFirstInEveryVersion) {
    EXPECT_EQ(ReadCards(Card("FN:A\nEMAIL:one@b.c\nEMAIL;TYPE=work,pref:two@b.c\n"))[0].address, "two@b.c");
    EXPECT_EQ(
        ReadCards(Card("FN:A\nEMAIL;PREF=50:one@b.c\nEMAIL;PREF=2:two@b.c\nEMAIL:three@b.c\n"))[0].address,
        "two@b.c");
    EXPECT_EQ(ReadCards(Card("FN:A\nEMAIL;INTERNET:one@b.c\nEMAIL;INTERNET;PREF:two@b.c\n"))[0].address,
              "two@b.c");
    EXPECT_EQ(ReadCards(Card("FN:A\nEMAIL:one@b.c\nEMAIL:two@b.c\n"))[0].address, "one@b.c");
}

TEST(VCard, GroupsParametersAndQuotesAreUnderstood) {
    const auto cards =
        ReadCards(Card("item1.FN;LANGUAGE=\"de:x;y\":Ann\nitem2.email;type=home:mailto:a@b.c\n"));
    ASSERT_EQ(cards.size(), 1u);
    EXPECT_EQ(cards[0].name, "Ann");
    EXPECT_EQ(cards[0].address, "a@b.c");
}

TEST(VCard, NameOfPartsWhenThereIsNoOther) {
    EXPECT_EQ(ReadCards(Card("N:Archer;Ann;X;Dr.;\nEMAIL:a@b.c\n"))[0].name, "Ann Archer");
    EXPECT_EQ(ReadCards(Card("N:Archer\nEMAIL:a@b.c\n"))[0].name, "Archer");
}

TEST(VCard, QuotedPrintableOfOldBooks) {
    const auto cards =
        ReadCards(Card("VERSION:2.1\r\nFN;CHARSET=UTF-8;ENCODING=QUOTED-PRINTABLE:M=C3=BC=\r\n"
                       "ller\r\nEMAIL;INTERNET:m@b.c\r\n"));
    ASSERT_EQ(cards.size(), 1u);
    EXPECT_EQ(cards[0].name, "Müller");
    EXPECT_EQ(ReadCards(Card("FN;CHARSET=ISO-8859-1:M\xFCller\nEMAIL:m@b.c\n"))[0].name, "Müller");
    EXPECT_EQ(ReadCards(Card("FN:M\xFCller\nEMAIL:m@b.c\n"))[0].name, "Müller");
}

TEST(VCard, CardsWithoutNameOrUsableAddressAreNoEntries) {
    EXPECT_TRUE(
        ReadCards(Card("FN:Ann\n") + Card("EMAIL:a@b.c\n") + Card("FN:Eve\nEMAIL:not an address\n")).empty());
    EXPECT_TRUE(ReadCards("FN:Loose\nEMAIL:a@b.c\n").empty());
    EXPECT_TRUE(ReadCards("BEGIN:VCARD\nFN:Open\nEMAIL:a@b.c\n").empty());
}

TEST(Vcard, UmlautDomainsAreAddresses) {
    const auto entries = mailer::ReadCards("BEGIN:VCARD\nFN:Zoë\nEMAIL:zoe@bücher.example\nEND:VCARD\n");
    ASSERT_EQ(entries.size(), 1u);
    EXPECT_EQ(entries[0].address, "zoe@xn--bcher-kva.example");
}
