// SPDX-License-Identifier: GPL-3.0-or-later
// The guide to report files lists every name of record selection formulas and no other.
#include "rdl/formula/function_table.h"
#include "rdl/formula/periods.h"
#include "rdl/guide.h"

namespace rdl::formula {
namespace {

TEST(DocumentedFormula, NamesAreTheFunctions) {
    EXPECT_EQ(GuideNames("formula functions"), NamesOfAll(FunctionTables()));
}

TEST(DocumentedFormula, FunctionsTakeTheArgumentsThatTheGuideShows) {
    for (const Signature& signature : GuideSignatures("formula functions")) {
        const FunctionInfo* info = FindFunction(signature.name);
        ASSERT_NE(info, nullptr) << signature.shown;
        EXPECT_EQ(signature.least, info->least) << signature.shown;
        EXPECT_EQ(signature.takesAnyNumber, info->most >= 100) << signature.shown;
        if (!signature.takesAnyNumber) {
            EXPECT_EQ(signature.most, info->most) << signature.shown;
        }
    }
}

TEST(DocumentedFormula, NamesAreThePeriods) {
    std::set<std::string> known;
    for (const std::string_view name : PeriodNames()) {
        AddOnce(known, name);
    }
    EXPECT_EQ(GuideNames("periods"), known);
}

}  // namespace
}  // namespace rdl::formula
