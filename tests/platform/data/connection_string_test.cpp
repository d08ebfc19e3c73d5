// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/data_provider/connection_string.h"

#include <gtest/gtest.h>

namespace {

std::string SourceOf(const std::string& text) {
    return ConnectionValue(text, "Data Source");
}

TEST(ConnectionString, ValueIsFoundAmongTheOthers) {
    EXPECT_EQ(SourceOf("Provider=X.4.0;Data Source=Z:\\app\\Live.dat;Persist Security Info=False"),
              "Z:\\app\\Live.dat");
    EXPECT_EQ(SourceOf("data source = Z:\\my app\\a.dat "), "Z:\\my app\\a.dat");
    EXPECT_EQ(SourceOf("Data Source=a=b"), "a=b");
    EXPECT_EQ(SourceOf("Data Source=a;Data Source=b"), "b");
}

TEST(ConnectionString, QuotedValueMayHoldAnything) {
    EXPECT_EQ(SourceOf("Data Source=\"a;b\";X=1"), "a;b");
    EXPECT_EQ(SourceOf("X='1;Data Source=no';Data Source='it''s'"), "it's");
    EXPECT_EQ(SourceOf("Data Source=\"say \"\"hi\"\"\" ;Y=2"), "say \"hi\"");
    EXPECT_EQ(SourceOf("Data Source=\"open"), "open");
}

TEST(ConnectionString, SemicolonThatBeginsNoOtherKeyBelongsToTheValue) {
    const std::string end = ";Persist Security Info=False";
    for (const std::string file : {"Z:\\a;b\\Live.dat", "Z:\\a;b=c\\Live.dat", "Z:\\;;\\Live.dat",
                                   "Z:\\a; =\\Live.dat", "Z:\\a;Persist\\Live.dat"}) {
        EXPECT_EQ(SourceOf("Provider=X.4.0;Data Source=" + file + end), file);
    }
    EXPECT_EQ(SourceOf("Data Source=a;"), "a");
    EXPECT_EQ(SourceOf("Data Source=a;;Provider=X"), "a");
    EXPECT_EQ(ConnectionValue("Provider=X;y;Data Source=a", "Provider"), "X;y");
}

TEST(ConnectionString, ValueMayBeMissing) {
    for (const char* text :
         {"", ";", "=", "Provider=X", "Data Source", "Data Source=", "Data Source;X=1", ";;=;="}) {
        EXPECT_EQ(SourceOf(text), "") << text;
    }
}

}  // namespace
