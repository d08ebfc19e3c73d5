// SPDX-License-Identifier: GPL-3.0-or-later
// Address books and profiles that are damaged or hostile.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "platform/mail/book/vcard.h"
#include "platform/mail/book/vcard_lines.h"
#include "platform/mail/profile/ini_text.h"
#include "support/growth.h"

namespace {

constexpr const char* Seed =
    "BEGIN:VCARD\r\nVERSION:2.1\r\nitem1.FN;CHARSET=ISO-8859-1;ENCODING=QUOTED-PRINTABLE:M=FC=\r\n ller\r\n"
    "N:a;b\\;c\r\nNICKNAME:x,y\r\nEMAIL;PREF=1;TYPE=\"a,b\":a@b.c\r\nEND:VCARD\r\n";

std::string Damaged(std::mt19937& chance) {
    std::string text = std::string(Seed) + Seed;
    for (int change = 0; change < 12; ++change) {
        const std::size_t at = chance() % text.size();
        switch (chance() % 3) {
            case 0:
                text[at] = static_cast<char>(chance());
                break;
            case 1:
                text.insert(at, std::string("=\r\n :;\"\\\0[", 10).substr(chance() % 10, 2));
                break;
            default:
                text.erase(at, chance() % 5);
        }
    }
    return text;
}

}  // namespace

TEST(HostileText, DamagedBooksGiveOnlyCleanEntries) {
    std::mt19937 chance(20240229);
    for (int round = 0; round < 3000; ++round) {
        for (const auto& entry : mailer::ReadCards(Damaged(chance))) {
            EXPECT_EQ(entry.address.find_first_of("\r\n <>"), std::string::npos);
            EXPECT_EQ(entry.name.find_first_of(std::string("\r\n\0", 3)), std::string::npos);
        }
    }
}

TEST(HostileText, EndlessLinesAreDroppedInStepWithTheirLength) {
    const auto read = [](int lines) {
        const std::string card = "BEGIN:VCARD\nFN:Ann\nEMAIL:a@b.c\nNOTE:" +
                                 std::string(static_cast<std::size_t>(lines) * 28, 'x') + "\nEND:VCARD\n";
        std::string folded = "BEGIN:VCARD\nNOTE;ENCODING=QUOTED-PRINTABLE:" + std::string(60000, 'x');
        for (int line = 0; line < lines; ++line) {
            folded += "=\n";
        }
        folded += "\nFN:Ann\nEMAIL:a@b.c\nEND:VCARD\n";
        const double begun = ThreadSeconds();
        EXPECT_EQ(mailer::ReadCards(card).size(), 1u);
        EXPECT_EQ(mailer::ReadCards(folded).size(), 1u);
        return ThreadSeconds() - begun;
    };
    EXPECT_LT(CostOfTenTimes(30'000, read), SquareBegins);
}

TEST(HostileText, LinesWithNulAreNoLines) {
    EXPECT_TRUE(mailer::ReadCardLines(std::string("FN:a\0b\n", 7)).empty());
}

TEST(HostileText, DamagedProfilesGiveNoControlCharacters) {
    std::mt19937 chance(7);
    for (int round = 0; round < 3000; ++round) {
        std::string text = "[Profile]\nFrom=Reports\n[Other]\nKey=\"a ; b\" ; c\n";
        for (int change = 0; change < 6; ++change) {
            text[chance() % text.size()] = static_cast<char>(chance());
        }
        const mailer::IniText ini(text);
        for (const char* key : {"From", "Key"}) {
            const std::string value =
                ini.Find("Profile", key).value_or("") + ini.Find("Other", key).value_or("");
            EXPECT_TRUE(std::none_of(value.begin(), value.end(), [](char character) {
                return static_cast<unsigned char>(character) < ' ';
            }));
        }
    }
}

TEST(HostileText, UnclosedSectionsAndQuotesEndWithTheirLine) {
    const mailer::IniText ini("[Profile\nFrom=lost\n[Profile]\nUser=\"open\nHost=h\n");
    EXPECT_EQ(ini.Find("Profile", "From"), std::nullopt);
    EXPECT_EQ(ini.Find("Profile", "User"), "\"open");
    EXPECT_EQ(ini.Find("profile", "HOST"), "h");
}
