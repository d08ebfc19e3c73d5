// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/regfile/reg_value.h"

#include <gtest/gtest.h>

namespace {

using namespace std::string_literals;

void ExpectValue(const std::string& text, std::uint32_t type, const std::string& bytes) {
    const auto value = ReadRegValue(text);
    ASSERT_TRUE(value) << text;
    EXPECT_EQ(value->type, type) << text;
    EXPECT_EQ(value->bytes, bytes) << text;
}

TEST(RegValue, TextsHaveEscapesAndAZeroAtTheirEnd) {
    ExpectValue(R"("15")", 1, "15\0"s);
    ExpectValue(R"("")", 1, "\0"s);
    ExpectValue(R"("\"Z:\\app\\oxc.exe\" -sched")", 1, "\"Z:\\app\\oxc.exe\" -sched\0"s);
}

TEST(RegValue, NumbersAndBytesHaveTheirTypes) {
    ExpectValue("dword:0000000f", 4, "\x0f\0\0\0"s);
    ExpectValue("dword:FFEEDDCC", 4, "\xcc\xdd\xee\xff"s);
    ExpectValue("hex:01,ff,0A", 3, "\x01\xff\x0a"s);
    ExpectValue("hex:01,\\\n  02", 3, "\x01\x02"s);
    ExpectValue("hex:", 3, "");
    ExpectValue("hex(2):61,00,00,00", 2, "a\0\0\0"s);
    ExpectValue("hex(b):01,00,00,00,00,00,00,00", 11, "\x01\0\0\0\0\0\0\0"s);
    ExpectValue("hex(1):61,00,0a,00,62,00,00,00", 1, "a\nb\0"s);
}

TEST(RegValue, AnythingElseIsNone) {
    for (const char* text : {"", "15", "\"open", "\"a\" b", "dword:", "dword:xyz", "dword:123456789",
                             "hex:0g", "hex:123", "hex(:01", "hex(zz):01", "-", "true"}) {
        EXPECT_FALSE(ReadRegValue(text)) << text;
    }
}

TEST(RegValue, WhatIsWrittenIsReadBack) {
    for (const RegValue& value : {RegValue{1, "Z:\\a \"b\"\0"s}, RegValue{1, "two\nlines ü\0"s},
                                  RegValue{1, "\0"s}, RegValue{4, "\x0f\x01\0\x80"s}, RegValue{3, "\0\xff"s},
                                  RegValue{3, ""}, RegValue{7, "a\0b\0\0\0"s}, RegValue{4, "odd"}}) {
        const std::string text = WriteRegValue(value);
        EXPECT_EQ(text.find('\n'), std::string::npos);
        ExpectValue(text, value.type, value.bytes);
    }
    EXPECT_EQ(WriteRegValue({4, "\x0f\0\0\0"s}), "dword:0000000f");
    EXPECT_EQ(WriteRegValue({1, "\"Z:\\x\"\0"s}), R"("\"Z:\\x\"")");
}

}  // namespace
