// SPDX-License-Identifier: GPL-3.0-or-later
// Long reports, whose rows are read apart from their tree.
#include <gmock/gmock.h>

#include "rdl/definition/rdl_text.h"
#include "rdl/spool/spool.h"

namespace rdl::test {
namespace {

using testing::ElementsAre;

const std::string Body = "<Body><Height>1in</Height></Body>";

std::string WithSet(const std::string& inSet, const std::string& inReport = {}) {
    return Report(Body + "<DataSets xmlns:t=\"urn:tool\">\n<DataSet Name=\"d\">\n" + inSet +
                  "</DataSet></DataSets>" + inReport);
}

const std::string LongQuery =
    "<Query><XmlData><Rows>" + std::string(400'000, ' ') + "</Rows></XmlData></Query>";

std::string Escaped(std::string text) {
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;) {
        text.replace(at, 1, "&lt;");
    }
    return text;
}

TEST(LongReport, RowsAreThoseOfAShortOne) {
    for (const std::string& set :
         {std::string("<Query/><Rows>\n<Row><x>1</x><y>two</y></Row>\n<Row><x> </x></Row></Rows>"),
          std::string("<Rows xml:space=\"preserve\"><Row><x> </x></Row></Rows>"),
          std::string("<Query><t:Rows><t:Row><t:City>Rome</t:City><n:Size xmlns:n=\"urn:n\"> 3 "
                      "</n:Size></t:Row></t:Rows>"
                      "</Query>"),
          std::string("<Rows><Row><x nil=\"true\"/><x>2</x></Row><Row/></Rows>"),
          std::string(
              "<Query><t:Rows><Row><x>1</x></Row></t:Rows></Query><Rows><Row><x>2</x></Row></Rows>")}) {
        EXPECT_EQ(RowsOf(ParseApart(WithSet(set)).dataSets.at(0)), RowsOf(Parse(WithSet(set)).dataSets.at(0)))
            << set;
    }
}

TEST(LongReport, RowsMayBeInAFile) {
    for (const char* rows : {"<Rows File=\"people.xml\"/>", "<Rows File=\"people.xml\">\n</Rows>"}) {
        const DataSet set = ParseApart(WithSet(rows)).dataSets.at(0);
        EXPECT_EQ(set.inlineRows, nullptr);
        EXPECT_EQ(set.rowsFile, "people.xml");
    }
}

TEST(LongReport, EverySetHasItsOwnRows) {
    const auto set = [](const std::string& name, const std::string& value) {
        return "<DataSet Name=\"" + name + "\"><Rows><Row><x>" + value + "</x></Row></Rows></DataSet>";
    };
    const Definition report =
        ParseApart(Report(Body + "<DataSets>" + set("a", "1") + set("b", "2") + "</DataSets>"));
    EXPECT_THAT(RowsOf(report.dataSets.at(0)), ElementsAre("x=1"));
    EXPECT_THAT(RowsOf(report.dataSets.at(1)), ElementsAre("x=2"));
}

TEST(LongReport, ManyRowsComeBackInTheirOrder) {
    std::string rows = "<Rows>";
    std::vector<std::string> expected;
    for (int i = 0; i < 30'000; ++i) {
        rows += "\n<Row><n>" + std::to_string(i) + "</n><t>" + std::string(100, 'x') + "</t></Row>";
        expected.push_back("n=" + std::to_string(i) + " t=" + std::string(100, 'x'));
    }
    EXPECT_EQ(RowsOf(Parse(WithSet(rows + "</Rows>")).dataSets.at(0)), expected);
}

TEST(LongReport, ALongQueryWithRowsIsKeptApart) {
    for (const std::string& text : {Escaped(LongQuery), "<![CDATA[" + LongQuery + "]]>"}) {
        const DataSet set =
            ParseApart(WithSet("<Query><CommandText>" + text + "</CommandText></Query>")).dataSets.at(0);
        ASSERT_NE(set.longCommand, nullptr);
        EXPECT_FALSE(set.commandText.IsSet());
        EXPECT_TRUE(set.HasCommand());
        EXPECT_EQ(set.longCommand->Text(), LongQuery);
    }
}

TEST(LongReport, OtherQueriesAreTexts) {
    for (const std::string& text : {"select 1 /*" + std::string(400'000, 'x') + "*/", std::string("<Query/>"),
                                    "=\"" + std::string(400'000, 'x') + "\""}) {
        const DataSet set =
            ParseApart(WithSet("<Query><CommandText>" + Escaped(text) + "</CommandText></Query>"))
                .dataSets.at(0);
        EXPECT_EQ(set.longCommand, nullptr);
        EXPECT_EQ(set.commandText.source, text);
        EXPECT_EQ(set.commandText.line, 4);
    }
}

TEST(LongReport, ErrorsHaveTheirLines) {
    const std::string rows = "<Rows>\n<Row><x>1</x></Row>\n<Row>\n<x>2</x></Row></Rows>";
    EXPECT_EQ(
        ErrorOf(WithSet(rows, "\n<PageWidth>much</PageWidth>")),
        "sales.rpt, line 8: Page, PageWidth: \"much\" is not a size (a number with in, cm, mm, pt or pc)");
    EXPECT_EQ(
        ErrorOf(WithSet("<Rows>\n<Row><x>1</x></Row>\n<Row><x>2</Row></Rows>")),
        "sales.rpt, line 6: this is not well-formed XML: an end tag is not that of the element that is open");
    EXPECT_EQ(ErrorOf(WithSet("<Rows>\n<Row><x>&no;</x></Row></Rows>")),
              "sales.rpt, line 5: this is not well-formed XML: a & that begins no reference to a character");
    EXPECT_EQ(ErrorOf(WithSet(rows), {.elements = 9}), "sales.rpt, line 7: there are more than 9 elements");
    EXPECT_EQ(ErrorOf("<!-- " + std::string(5000, 'x') + "--><Reports/>"),
              "sales.rpt is XML of another kind, not an RDL report: its root element is \"Reports\"");
}

}  // namespace
}  // namespace rdl::test
