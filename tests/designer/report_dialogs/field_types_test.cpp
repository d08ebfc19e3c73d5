// SPDX-License-Identifier: GPL-3.0-or-later
// The types of fields, which the dialog for data sets takes from rows or from what the database declares.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "data_dialogs.h"
#include "designer/report_dialogs/data_set_dialog.h"

namespace designer {
namespace {

class FieldTypesTest : public test::DataDialogsTest {
 protected:
    // The types of the fields in their order.
    std::string Types() const {
        std::string types;
        const std::vector<ReportSet> sets = SetsOf(Report());
        for (const ReportField& field : sets.at(0).fields) {
            types += (types.empty() ? "" : ", ") + field.name + " " + field.typeName;
        }
        return types;
    }
    static inline const char* Query =
        "select id as Number, amount, day, amount * 2 as twice from orders where id >= @Least";
};

TEST_F(FieldTypesTest, WithoutRowsTheDeclaredTypesCount) {
    Open<DataSetDialog>();
    Type("query", Query);
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted) << Note("query");
    EXPECT_EQ(Types(), "Number_2 System.Int64, amount System.Double, day System.String, twice ");
}

TEST_F(FieldTypesTest, AFieldWithoutATypeGetsThatOfTheRows) {
    Open<DataSetDialog>();
    Type("query", Query);
    Ok();
    Open<DataSetDialog>();
    Page(1);
    TypeCell("queryParameters", 0, 2, "1");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 2");
    Ok();
    EXPECT_EQ(Types(),
              "Number_2 System.Int64, amount System.Double, day System.String, twice System.Decimal");
    EXPECT_EQ(Report().UndoCount(), 2U);
}

TEST_F(FieldTypesTest, TheLastRunThatHadRowsCounts) {
    Open<DataSetDialog>();
    Type("query", Query);
    Page(1);
    TypeCell("queryParameters", 0, 2, "1");
    Page(0);
    Click("run");
    EXPECT_EQ(Note("query"), "Rows: 2");
    Page(1);
    TypeCell("queryParameters", 0, 2, "");
    Ok();
    EXPECT_EQ(Types(),
              "Number_2 System.Int64, amount System.Decimal, day System.DateTime, twice System.Decimal");
}

TEST_F(FieldTypesTest, ATypeOfTheFileStays) {
    std::string text = test::Sales;
    const std::string old = "<rd:TypeName>System.Int64</rd:TypeName>";
    text.replace(text.find(old), old.size(), "<rd:TypeName> System.Int32 </rd:TypeName><!-- a key -->");
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Ok();
    EXPECT_EQ(m_dialog->result(), QDialog::Accepted);
    EXPECT_EQ(Report().Text(), text);
    text.erase(text.find("          <rd:TypeName>"),
               text.find("<!-- a key -->") - text.find("          <rd:TypeName>"));
    m_model.SetDocument(Document(text));
    Open<DataSetDialog>();
    Ok();
    EXPECT_EQ(Types(), "Number System.Int64");
    EXPECT_EQ(Report().UndoCount(), 1U);
    m_model.Undo();
    EXPECT_EQ(Report().Text(), text);
}

}  // namespace
}  // namespace designer
