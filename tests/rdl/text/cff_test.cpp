// SPDX-License-Identifier: GPL-3.0-or-later
// Font programs whose glyphs are named by numbers of a character collection.
#include "rdl/text/cff.h"

#include <gmock/gmock.h>

#include <cstdint>

namespace rdl::text::test {
namespace {

std::string Bytes(std::initializer_list<int> numbers) {
    std::string bytes;
    for (const int number : numbers) {
        bytes += static_cast<char>(number);
    }
    return bytes;
}

std::string Long(std::size_t number) {
    return Bytes({static_cast<int>(number >> 24), static_cast<int>(number >> 16 & 0xFF),
                  static_cast<int>(number >> 8 & 0xFF), static_cast<int>(number & 0xFF)});
}

// An index whose objects are all of that size.
std::string Index(std::size_t count, std::size_t size, const std::string& data) {
    std::string index = Bytes({static_cast<int>(count >> 8), static_cast<int>(count & 0xFF), 1});
    for (std::size_t i = 0; i <= count; ++i) {
        index += static_cast<char>(1 + i * size);
    }
    return index + data;
}

constexpr std::size_t Glyphs = 5;

// A program with five empty glyphs and that table of their numbers, which begins at CharsetAt.
struct Sample {
    bool isCidKeyed = true;
    std::string charset;
    std::size_t charsetAt = 0;

    std::string Program() {
        const std::string head = Bytes({1, 0, 4, 1}) + Index(1, 1, "X");
        const std::string ros = isCidKeyed ? Bytes({139, 139, 139, 12, 30}) : std::string();
        const std::string real = Bytes({30, 0x12, 0xAF, 5});  // a number with a point, for another operator
        const std::size_t dictSize = ros.size() + real.size() + 12;
        charsetAt = head.size() + 5 + dictSize + 4;
        const std::string dict = ros + real + Bytes({29}) + Long(charsetAt) + Bytes({15, 29}) +
                                 Long(charsetAt + charset.size()) + Bytes({17});
        return head + Index(1, dictSize, dict) + Bytes({0, 0, 0, 0}) + charset +
               Index(Glyphs, 1, std::string(Glyphs, '\x0E'));
    }
    std::string OpenType() {
        const std::string program = Program();
        return "OTTO" + Bytes({0, 1, 0, 0, 0, 0, 0, 0}) + "CFF " + Long(0) + Long(28) + Long(program.size()) +
               program;
    }
    std::string Charset(const std::string& program) const {
        return program.substr(charsetAt, charset.size());
    }
};

TEST(CidProgram, NumbersListedOneByOneBecomeIndexes) {
    Sample sample{true, Bytes({0, 0, 34, 0, 66, 5, 190, 37, 235})};
    const std::string program = CidProgram(sample.OpenType());
    EXPECT_EQ(sample.Charset(program), Bytes({0, 0, 1, 0, 2, 0, 3, 0, 4}));
    EXPECT_EQ(program.size(), sample.Program().size());
}

TEST(CidProgram, StretchesOfNumbersBecomeStretchesOfIndexes) {
    Sample sample{true, Bytes({1, 0, 34, 1, 5, 190, 1})};
    EXPECT_EQ(sample.Charset(CidProgram(sample.OpenType())), Bytes({1, 0, 1, 1, 0, 3, 1}));
    sample.charset = Bytes({2, 0, 34, 0, 2, 5, 190, 0, 0});
    EXPECT_EQ(sample.Charset(CidProgram(sample.OpenType())), Bytes({2, 0, 1, 0, 2, 0, 4, 0, 0}));
}

TEST(CidProgram, ProgramsWithNamesAreNone) {
    Sample sample{false, Bytes({0, 0, 34, 0, 66, 5, 190, 37, 235})};
    EXPECT_EQ(CidProgram(sample.OpenType()), "");
}

TEST(CidProgram, BrokenFilesAreNone) {
    const std::string whole = Sample{true, Bytes({0, 0, 34, 0, 66, 5, 190, 37, 235})}.OpenType();
    for (std::size_t size = 0; size < whole.size() - 1; ++size) {
        EXPECT_EQ(CidProgram(whole.substr(0, size)), "") << size;
    }
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string broken = whole;
        broken[i] = '\xFF';
        CidProgram(broken);
    }
}

}  // namespace
}  // namespace rdl::text::test
