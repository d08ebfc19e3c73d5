#include "platform/rdl/data/reading_statement.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

// Empty when the statement may run.
std::string Refusal(std::string_view text, ProviderKind dialect) {
    try {
        CheckReads(text, dialect);
        return {};
    } catch (const Error& error) {
        return error.what();
    }
}

std::string Word(const std::string& word) {
    return "a report only reads, and its query has the word \"" + word + "\"";
}

constexpr auto Comment = "a report only reads, and its query has a comment that the server runs";

TEST(ReadingStatement, IsWhatBeginsWithAWordThatReads) {
    for (const ProviderKind dialect : {ProviderKind::MySql, ProviderKind::PostgreSql, ProviderKind::Odbc}) {
        for (const char* text :
             {"select 1", "(SELECT 1) union (select 2)", "-- why\nselect 1",
              "/* why */ with a as (select 1) select * from a", "values (1), (2)", "table titles",
              "show tables", "call above(1)", "{CALL above(?)}", "{? = call above(?)}",
              "select 'insert into a; delete from b' as \"update a set\"", "select * from a for update",
              ""}) {
            EXPECT_EQ(Refusal(text, dialect), "") << text;
        }
    }
}

TEST(ReadingStatement, AnyOtherWordIsRefusedByName) {
    EXPECT_EQ(Refusal("LOAD DATA LOCAL INFILE '/etc/passwd' INTO TABLE t", ProviderKind::MySql),
              Word("load"));
    EXPECT_EQ(Refusal("/* x */ insert into a values(1)", ProviderKind::MySql), Word("insert"));
    EXPECT_EQ(Refusal("# x\nset global local_infile = 1", ProviderKind::MySql), Word("set"));
    EXPECT_EQ(Refusal("copy a to program 'sh'", ProviderKind::PostgreSql), Word("copy"));
    EXPECT_EQ(Refusal("do $$ begin end $$", ProviderKind::PostgreSql), Word("do"));
    EXPECT_EQ(Refusal("pragma query_only = 0", ProviderKind::Odbc), Word("pragma"));
    EXPECT_EQ(Refusal("attach 'a.db' as b", ProviderKind::Odbc), Word("attach"));
    EXPECT_EQ(Refusal("\"select\" 1", ProviderKind::Odbc), Word("select"));
}

TEST(ReadingStatement, WritingWordsWithinAreRefused) {
    EXPECT_EQ(Refusal("select * from a into outfile '/tmp/x'", ProviderKind::MySql), Word("into"));
    EXPECT_EQ(Refusal("select load_file('/etc/passwd')", ProviderKind::MySql), Word("load_file"));
    EXPECT_EQ(Refusal("with x as (delete from a returning *) select * from x", ProviderKind::PostgreSql),
              Word("delete"));
    EXPECT_EQ(Refusal("with x as (select 1) update a set b = 1", ProviderKind::Odbc), Word("update"));
    EXPECT_EQ(
        Refusal("with x as (insert into a values(1) returning *) select * from x", ProviderKind::PostgreSql),
        Word("into"));
    EXPECT_EQ(Refusal("explain analyze select 1", ProviderKind::PostgreSql), Word("explain"));
}

TEST(ReadingStatement, CommentThatMySqlRunsIsNone) {
    EXPECT_EQ(Refusal("/*!load data local infile 'a' into table t*/", ProviderKind::MySql), Comment);
    EXPECT_EQ(Refusal("select 1 /*!50000 into outfile 'a'*/", ProviderKind::MySql), Comment);
    EXPECT_EQ(Refusal("/*M!100000 load data infile 'a' into table t*/", ProviderKind::MySql), Comment);
    EXPECT_EQ(Refusal("select '/*! of a text */'", ProviderKind::MySql), "");
}

TEST(ReadingStatement, BatchOfSqlServerMayFillTablesOfItsOwn) {
    for (const char* text :
         {"declare @a int = 1; select @a",
          "set nocount on; create table #t(a int); insert into #t select 1; select * from #t",
          "declare @t table(a int) insert @t values(1) select * from @t",
          "select a into #t from b; select * from #t", "update #t set a = 1", "delete from #t",
          "drop table if exists #t", "create unique index i on #t(a)", "exec sales.above @low = 1",
          ";with a as (select 1 as b) select * from a", "select a from b inner merge join c",
          "if object_id('tempdb..#t') is not null drop table #t"}) {
        EXPECT_EQ(Refusal(text, ProviderKind::SqlServer), "") << text;
    }
}

TEST(ReadingStatement, BatchOfSqlServerWritesNothingElse) {
    EXPECT_EQ(Refusal("select 1; insert into a values(1)", ProviderKind::SqlServer), Word("insert"));
    EXPECT_EQ(Refusal("select 1 delete a", ProviderKind::SqlServer), Word("delete"));
    EXPECT_EQ(Refusal("update [a] set b = 1", ProviderKind::SqlServer), Word("update"));
    EXPECT_EQ(Refusal("select * into a from b", ProviderKind::SqlServer), Word("into"));
    EXPECT_EQ(Refusal("drop table a", ProviderKind::SqlServer), Word("drop"));
    EXPECT_EQ(Refusal("merge into a using b on 1 = 1 when matched then delete", ProviderKind::SqlServer),
              Word("merge"));
    EXPECT_EQ(Refusal("exec master..xp_cmdshell 'dir'", ProviderKind::SqlServer), Word("xp_cmdshell"));
    EXPECT_EQ(Refusal("select * from openrowset(bulk 'c:/a', single_clob) a", ProviderKind::SqlServer),
              Word("openrowset"));
}

TEST(MaskedTexts, OnlyAWholeValueIsStruckOut) {
    EXPECT_EQ(CleanText("password p of p=p; failed for pop", "p"), "password *** of ***=***; failed for pop");
    EXPECT_EQ(CleanText("PWD=it is open;", "it is open"), "PWD=***;");
    EXPECT_EQ(CleanText("a ** b", "*"), "a ****** b");
    EXPECT_EQ(CleanText("password", ""), "password");
}

}  // namespace
}  // namespace rdl::data
