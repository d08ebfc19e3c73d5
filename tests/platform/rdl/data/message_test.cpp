#include "platform/rdl/data/message.h"

#include <gtest/gtest.h>

namespace rdl::data {
namespace {

TEST(MaskedTexts, OnlyAWholeValueIsStruckOut) {
    EXPECT_EQ(CleanText("password p of p=p; failed for pop", "p"), "password *** of ***=***; failed for pop");
    EXPECT_EQ(CleanText("PWD=it is open;", "it is open"), "PWD=***;");
    EXPECT_EQ(CleanText("a ** b", "*"), "a ****** b");
    EXPECT_EQ(CleanText("password", ""), "password");
}

}  // namespace
}  // namespace rdl::data
