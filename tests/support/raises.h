// SPDX-License-Identifier: GPL-3.0-or-later
// Expectations about RuntimeError.
#pragma once

#include <gtest/gtest.h>

#include "platform/contracts/runtime.h"

// Returns the number that `body` raises, or 0.
template <typename Body>
std::int32_t NumberRaisedBy(Body body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Description().find('\''), std::string::npos) << error.Description();
        EXPECT_FALSE(error.Description().empty());
        return error.Number();
    }
    return 0;
}

// Returns the description that `body` raises, or an empty text.
template <typename Body>
std::string DescriptionRaisedBy(Body body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        return error.Description();
    }
    return {};
}
