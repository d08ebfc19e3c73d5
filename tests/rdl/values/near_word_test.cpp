// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/near_word.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace rdl {
namespace {

std::string NearestTo(std::string_view wanted, std::initializer_list<std::string_view> words) {
    NearWord search(wanted);
    for (const std::string_view word : words) {
        search.Try(word);
    }
    return search.Nearest();
}

TEST(NearWord, IsATypingErrorAway) {
    for (const char* wanted : {"Bol", "Boldd", "Bolt", "Bodl", "BOLD"}) {
        EXPECT_EQ(NearestTo(wanted, {"Normal", "Bold"}), "Bold") << wanted;
    }
    EXPECT_EQ(NearestTo("Bowlt", {"Bold"}), "");
    EXPECT_EQ(NearestTo("", {"Bold"}), "");
}

TEST(NearWord, MayHaveMoreErrorsIfItIsLong) {
    EXPECT_EQ(NearestTo("Diagnal", {"Diagonal"}), "Diagonal");
    EXPECT_EQ(NearestTo("Diganal", {"Diagonal"}), "Diagonal");
    EXPECT_EQ(NearestTo("Dignal", {"Diagonally"}), "");
    EXPECT_EQ(NearestTo("HorizntalCentr", {"HorizontalCenter"}), "HorizontalCenter");
    EXPECT_EQ(NearestTo(std::string(41, 'x'), {std::string(41, 'x')}), "");
}

TEST(NearWord, IsTheFirstOfTheNearest) {
    EXPECT_EQ(NearestTo("Boll", {"Bolts", "Bold", "Bolt"}), "Bold");
    NearWord search("totl");
    search.Try("total", "Code.");
    EXPECT_EQ(search.Nearest(), "Code.total");
}

}  // namespace
}  // namespace rdl
