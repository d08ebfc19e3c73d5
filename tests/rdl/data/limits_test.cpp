// SPDX-License-Identifier: GPL-3.0-or-later
#include "data_fixture.h"

namespace rdl::data {
namespace {

// A report is not trusted: each bound ends the run with an error that says which.
class DataLimit : public DataFixture {
 protected:
    // Text made of `count` pieces, each of a number between two texts.
    static std::string Repeated(int count, const std::string& before, const std::string& after) {
        std::string text;
        for (int i = 0; i < count; ++i) {
            text.append(before).append(std::to_string(i)).append(after);
        }
        return text;
    }
    void ExpectFailure(const std::string& provider, const std::string& bytes, const std::string& query,
                       const std::string& said) {
        Write("data.txt", bytes);
        definition.dataSources.clear();
        definition.dataSets.clear();
        AddSource(provider, "data.txt");
        AddSet(query, {"a"});
        EXPECT_NE(Failure().find(said), std::string::npos) << Failure();
    }
};

TEST_F(DataLimit, FileIsNotLargerThan256Megabytes) {
    Write("data.txt", "a\n1\n");
    std::filesystem::resize_file(folder / "data.txt", (std::uintmax_t{256} << 20) + 1);
    AddSource("CSV", "data.txt");
    AddSet("", {"a"});
    EXPECT_NE(Failure().find("data.txt\" is larger than 256 MB"), std::string::npos) << Failure();
}

TEST_F(DataLimit, LinesAndElementsHaveAtMost4096Values) {
    ExpectFailure("CSV", Repeated(4097, "c", ",") + "\n", "", "a line with more than 4096 values");
    ExpectFailure("XML", "<R><r>" + Repeated(4097, "<c", "/>") + "</r></R>", "", "more than 4096");
    ExpectFailure("JSON", "[{" + Repeated(4097, "\"c", "\": 1,") + "\"z\": 1}]", "$",
                  "more than 4096 columns");
}

TEST_F(DataLimit, NestingIsBounded) {
    ExpectFailure("XML", Repeated(200, "<e", ">"), "", "nested more than 100 deep");
    ExpectFailure("JSON", std::string(5000, '['), "$", "too deeply nested");
    ExpectFailure("XML", "<a/>", Repeated(60, "e", "/") + "e", "is too deep");
}

TEST_F(DataLimit, RowsAndBytesOfAFileCount) {
    request.limits.rows = 2;
    ExpectFailure("CSV", "a\n1\n2\n3\n", "", "more than 2 rows");
    request.limits = Limits();
    request.limits.bytes = 1 << 20;
    ExpectFailure("CSV", "a\n" + std::string(2 << 20, 'x') + "\n", "", "more than 1 MB of data");
}

TEST_F(DataLimit, DataSetsOwnTimeGoesBeforeTheRuns) {
    Execute("create table t (id integer)");
    AddSource("SQLITE", "sales.db");
    AddSet("with recursive n(id) as (select 1 union all select id + 1 from n) select max(id) as a from n",
           {"a"})
        .timeoutSeconds = 1;
    EXPECT_NE(Failure().find("the query took longer than 1 second and was given up"), std::string::npos);
}

}  // namespace
}  // namespace rdl::data
