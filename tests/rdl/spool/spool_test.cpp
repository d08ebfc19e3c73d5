// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/spool/spool.h"

#include <gtest/gtest.h>

namespace rdl {
namespace {

std::string Numbers(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
        text += std::to_string(i) + ",";
    }
    return text;
}

std::string Range(Spool& spool, std::size_t from, std::size_t length) {
    std::string text;
    spool.Read(from, length, [&text](std::string_view piece) { text += piece; });
    return text;
}

TEST(Spool, GivesBackWhatItTookWhateverIsInMemory) {
    const std::string all = Numbers(200'000);
    for (const std::size_t memory :
         {std::size_t{1}, std::size_t{7}, std::size_t{300'000}, Spool::UsualMemory}) {
        for (const std::size_t piece : {std::size_t{1'000}, std::size_t{400'000}, all.size()}) {
            Spool spool(memory);
            for (std::size_t at = 0; at < all.size(); at += piece) {
                spool.Append(std::string_view(all).substr(at, piece));
            }
            EXPECT_EQ(spool.size(), all.size());
            EXPECT_EQ(spool.Text(), all) << memory << " in memory, pieces of " << piece;
            EXPECT_EQ(Range(spool, 299'990, 20), all.substr(299'990, 20)) << memory;
            EXPECT_EQ(Range(spool, all.size() - 5, 5), all.substr(all.size() - 5));
        }
    }
}

TEST(Spool, GrowsAfterItWasRead) {
    Spool spool(10);
    std::string all;
    for (int i = 0; i < 50; ++i) {
        all += std::to_string(i) + " is more; ";
        spool.Append(std::to_string(i) + " is more; ");
        EXPECT_EQ(spool.Text(), all);
    }
    spool.Append("");
    EXPECT_EQ(spool.size(), all.size());
}

TEST(Spool, ReaderGoesThroughFileAndMemory) {
    const std::string all = Numbers(100'000);
    Spool spool(1'000);
    spool.Append(all);
    SpoolReader reader(spool);
    std::string read;
    for (std::string_view piece = reader.Next(333); !piece.empty(); piece = reader.Next(333)) {
        read += piece;
    }
    EXPECT_EQ(read, all);
}

}  // namespace
}  // namespace rdl
