#include "rdl/data/common/message.h"

#include <gtest/gtest.h>

namespace rdl::data {
namespace {

TEST(MaskedTexts, PasswordIsStruckOutWhereItIsAValue) {
    EXPECT_EQ(CleanText("in UID=ann;PWD=p; Password={it is}", "p"), "in UID=ann;PWD=***; Password={it is}");
    EXPECT_EQ(CleanText("in Password={it is};Port=1", "it is"), "in Password={***};Port=1");
    EXPECT_EQ(CleanText("in mysql://ann:secret@db/shop", "secret"), "in mysql://ann:***@db/shop");
}

TEST(MaskedTexts, WordsOfTheMessageStayWhateverThePasswordIs) {
    EXPECT_EQ(CleanText("password p of user \"clerk\"", "p"), "password p of user \"clerk\"");
    EXPECT_EQ(CleanText("authentication failed for user \"clerk\"", "clerk"),
              "authentication failed for user \"clerk\"");
    EXPECT_EQ(CleanText("(using password: YES)", "YES"), "(using password: YES)");
    EXPECT_EQ(CleanText("password", ""), "password");
}

}  // namespace
}  // namespace rdl::data
