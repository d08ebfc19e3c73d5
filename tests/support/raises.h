// Expectations about RuntimeError.
#pragma once

#include <gtest/gtest.h>

#include "platform/contracts/runtime.h"

// The number that `body` raises, 0 if it does not.
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

// The description that `body` raises, empty if it does not.
template <typename Body>
std::string DescriptionRaisedBy(Body body) {
    try {
        body();
    } catch (const RuntimeError& error) {
        return error.Description();
    }
    return {};
}
