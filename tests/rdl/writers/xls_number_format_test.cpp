// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/xls/number_format.h"

#include <gtest/gtest.h>

#include <string>

namespace rdl::writers {
namespace {

std::string Excel(const Value& value, const std::string& format, const std::string& language = "en-US") {
    return ExcelFormat(value, format, FindCulture(language), "").value_or("none");
}

TEST(XlsNumberFormat, CommasBeforeThePointDivideAndThoseAfterItSayNothing) {
    EXPECT_EQ(Excel(Value::Real(1234567), "0,,.0"), "0,,.0");
    EXPECT_EQ(Excel(Value::Real(1234567), "#,##0,"), "#,##0,");
    EXPECT_EQ(Excel(Value::Real(1234567), "0.0,,"), "0.0");
    EXPECT_EQ(Excel(Value::Real(1234567), "0.00,;(0.00,)"), "0.00;(0.00)");
}

TEST(XlsNumberFormat, ADecimalFormatPadsWholeNumbersAndLeavesOthersAlone) {
    EXPECT_EQ(Excel(Value::Integer(7), "D3"), "000");
    EXPECT_EQ(Excel(Value::Real(0.256), "D"), "General");
    EXPECT_EQ(Excel(Value::Real(0.256), "D3"), "General");
}

TEST(XlsNumberFormat, LettersBesideAQuotationMarkAreNoFormat) {
    EXPECT_EQ(Excel(Value::Real(5), "0' d\"m'"), "0\\ \\d\\\"\\m");
    EXPECT_EQ(Excel(Value::Real(5), "0'\"'"), "0\\\"");
}

TEST(XlsNumberFormat, YearsHaveTheDigitsThatTheyAreAskedFor) {
    const Value day = Value::DateTime(MakeTicks(2024, 1, 31));
    EXPECT_EQ(Excel(day, "d/M/yy"), "d\"/\"m\"/\"yy");
    EXPECT_EQ(Excel(day, "d/M/yyyy"), "d\"/\"m\"/\"yyyy");
    EXPECT_EQ(Excel(day, "dd.MM.yy"), "dd.mm.yy");
}

TEST(XlsNumberFormat, AnEmptySectionIsThatOfPositiveNumbersWithTheSign) {
    EXPECT_EQ(Excel(Value::Real(-5), "0.0;;zero"), "0.0;-0.0;\"zero\"");
    EXPECT_EQ(Excel(Value::Real(-5), "0.0;(0.0);"), "0.0;(0.0);0.0");
}

}  // namespace
}  // namespace rdl::writers
