// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/contracts/runtime.h"

#include <gtest/gtest.h>

#include <new>
#include <stdexcept>

namespace {

template <typename Error>
RuntimeError Caught(const Error& error) {
    try {
        throw error;
    } catch (...) {
        return CurrentError();
    }
}

TEST(RuntimeError, DescriptionNeverHoldsTheMarkThatEndsATextInAStatement) {
    EXPECT_EQ(RuntimeError(53, "File 'a' not found").Description(), "File \"a\" not found");
}

TEST(RuntimeError, KnowsTheTextsOfTheRunTime) {
    EXPECT_EQ(RuntimeError(13).Description(), "Type mismatch");
    EXPECT_EQ(RuntimeError(6).Description(), "Overflow");
    EXPECT_EQ(RuntimeError(94).Description(), "Invalid use of Null");
    EXPECT_EQ(RuntimeError(9).Description(), "Subscript out of range");
    EXPECT_EQ(RuntimeError(53).Description(), "File not found");
    EXPECT_EQ(RuntimeError(76).Description(), "Path not found");
    EXPECT_EQ(RuntimeError(91).Description(), "Object variable or With block variable not set");
    EXPECT_EQ(RuntimeError(424).Description(), "Object required");
}

TEST(RuntimeError, AnyExceptionHasANumberForAHandler) {
    EXPECT_EQ(Caught(RuntimeError(76)).Number(), 76);
    EXPECT_EQ(Caught(std::bad_alloc()).Number(), 7);
    EXPECT_EQ(Caught(std::runtime_error("it's gone")).Number(), 440);
    EXPECT_EQ(Caught(std::runtime_error("it's gone")).Description(), "it\"s gone");
    EXPECT_EQ(Caught(42).Number(), 440);
}

TEST(Variant, ConcatenatesNullAsAnEmptyText) {
    EXPECT_EQ("<" + Variant() + ">", "<>");
    EXPECT_EQ("<" + Variant("a") + ">", "<a>");
}

TEST(Variant, ShowsNumbersInTheirShortestForm) {
    EXPECT_EQ(Variant(7).Text(), "7");
    EXPECT_EQ(Variant(std::int64_t{-9000000000}).Text(), "-9000000000");
    EXPECT_EQ(Variant(0.1).Text(), "0.1");
    EXPECT_EQ(Variant(3.0).Text(), "3");
}

TEST(Variant, KeepsTheRoomOfItsText) {
    Variant value("a text that is too long for the small buffer of a string");
    const char* room = value.TextOrNull()->data();
    value.SetText("another text, not longer than the first one was");
    EXPECT_EQ(value.TextOrNull()->data(), room);
    EXPECT_EQ(value.Text(), "another text, not longer than the first one was");
    value = Variant(3);
    value.SetText("again");
    EXPECT_EQ(value, Variant("again"));
}

}  // namespace
