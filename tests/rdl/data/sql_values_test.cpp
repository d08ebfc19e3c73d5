// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/sql_values.h"

#include <gtest/gtest.h>

#include "rdl/format/format.h"

namespace rdl::data {
namespace {

// What a column of exact numbers gives for the text of a driver.
std::string Read(const char* text) {
    const Value value = OfVariant(QVariant(QString::fromUtf8(text)), true);
    return (value.kind() == Kind::Decimal ? "" : "not exact: ") + ToText(value, FindCulture(""));
}

Value Exact(std::string_view text) {
    return Value::Decimal(Decimal::OfText(text).value());
}

TEST(SqlValues, ExactColumnsGiveDecimals) {
    EXPECT_EQ(Read("12.50"), "12.50");
    EXPECT_EQ(Read(".5000"), "0.5000");
    EXPECT_EQ(Read("-.25"), "-0.25");
    EXPECT_EQ(Read("9007199254740995"), "9007199254740995");
    EXPECT_EQ(Read("123456789012345678.0123456789"), "123456789012345678.0123456789");
    EXPECT_EQ(Read("1000000000000000000000000000000"), "not exact: 1E+30");
    EXPECT_EQ(Read("NaN"), "not exact: NaN");
    EXPECT_EQ(OfVariant(QVariant(QString::fromUtf8("12.50")), false).kind(), Kind::Text);
    EXPECT_TRUE(OfVariant(QVariant(), true).IsNull());
}

TEST(SqlValues, MoneyIsReadAsItsRegionWritesIt) {
    EXPECT_EQ(Read("$1,234.50"), "1234.50");
    EXPECT_EQ(Read("-$1,234,567.50"), "-1234567.50");
    EXPECT_EQ(Read("($5.00)"), "-5.00");
    EXPECT_EQ(Read("-1.234,50 \u20AC"), "-1234.50");
    EXPECT_EQ(Read("1 234,50 z\u0142"), "1234.50");
    EXPECT_EQ(Read("Rs.1,235.50"), "1235.50");
    EXPECT_EQ(Read("kr. 0,25"), "0.25");
    EXPECT_EQ(Read("\u00A51,235"), "1235");
    EXPECT_EQ(Read("\u00A51,234,567"), "1234567");
    EXPECT_EQ(Read("KD 1,234.567"), "1234.567");
}

TEST(SqlValues, DecimalIsBoundAsANumberUnlessItHasMoreDigits) {
    EXPECT_EQ(ToVariant(Exact("12.50"), ProviderKind::MySql), QVariant(12.5));
    EXPECT_EQ(ToVariant(Exact("0.1"), ProviderKind::PostgreSql), QVariant(0.1));
    EXPECT_EQ(ToVariant(Exact("0.10"), ProviderKind::Odbc), QVariant(QStringLiteral("0.10")));
    EXPECT_EQ(ToVariant(Exact("123456789012345678.25"), ProviderKind::PostgreSql),
              QVariant(QStringLiteral("123456789012345678.25")));
}

}  // namespace
}  // namespace rdl::data
