// SPDX-License-Identifier: GPL-3.0-or-later
#include "designer/new_report/part_names.h"
#include "platform/base/caption.h"

#include <gtest/gtest.h>

namespace designer {
namespace {

TEST(NewReportNames, AreIdentifiers) {
    Names names;
    EXPECT_EQ(names.Add("Amount"), "Amount");
    EXPECT_EQ(names.Add("Order date"), "Order_date");
    EXPECT_EQ(names.Add("2024 sales (EUR)"), "_2024_sales_EUR");
    EXPECT_EQ(names.Add("Größe"), "Größe");
    EXPECT_EQ(names.Add("count(*)"), "count");
    EXPECT_EQ(names.Add(" € "), "Column");
    EXPECT_EQ(names.Add(""), "Column_2");
    EXPECT_EQ(names.Add(std::string("a\xFF") + "b"), "a_b");
}

TEST(NewReportNames, DifferWithoutRegardToCase) {
    Names names;
    EXPECT_EQ(names.Add("Total"), "Total");
    EXPECT_EQ(names.Add("TOTAL"), "TOTAL_2");
    EXPECT_EQ(names.Add("to-tal"), "to_tal");
    EXPECT_EQ(names.Add("to tal"), "to_tal_2");
    EXPECT_EQ(names.Add("total_2"), "total_2_2");
}

TEST(NewReportNames, AreCutAtSixtyCharacters) {
    Names names;
    EXPECT_EQ(names.Add(std::string(80, 'x')), std::string(60, 'x'));
    EXPECT_EQ(names.Add(std::string(90, 'x')), std::string(60, 'x') + "_2");
}

TEST(NewReportNames, CaptionsAreWords) {
    EXPECT_EQ(CaptionOf("order_date"), "Order date");
    EXPECT_EQ(CaptionOf("CustomerName"), "Customer Name");
    EXPECT_EQ(CaptionOf("OrderID"), "Order ID");
    EXPECT_EQ(CaptionOf("year"), "Year");
    EXPECT_EQ(CaptionOf("änderung"), "Änderung");
    EXPECT_EQ(CaptionOf("VAT id"), "VAT id");
    EXPECT_EQ(CaptionOf("_x_"), "X");
    EXPECT_EQ(CaptionOf("_"), "_");
}

}  // namespace
}  // namespace designer
