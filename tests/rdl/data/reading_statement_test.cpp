// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/reading_statement.h"

#include <gtest/gtest.h>

#include <string>

#include "rdl/raises.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

// Empty: it reads.
std::string Refusal(const std::string& text, ProviderKind dialect) {
    return ErrorRaisedBy([&] { CheckReads(text, dialect); });
}

constexpr ProviderKind Statements[] = {ProviderKind::PostgreSql, ProviderKind::MySql, ProviderKind::Odbc};

TEST(ReadingStatement, WhatReadsIsLeftAlone) {
    for (const ProviderKind dialect : Statements) {
        for (const char* text :
             {"select 1", " ( SELECT 1) union (select 2)", "-- what is new\nselect 'delete', \"into\" from t",
              "/* all */ with a as (select 1) select * from a", "values (1)",
              "select updated from t for update",
              "select count(deleted), replace(a, 'x', 'y'), (insert(b, 1, 2, 'c')) from t", "{call p(?)}",
              "select 'it''s; delete from t'"}) {
            EXPECT_EQ(Refusal(text, dialect), "") << text;
        }
    }
    EXPECT_EQ(Refusal("show variables", ProviderKind::MySql), "");
    EXPECT_EQ(Refusal("call p(@oxc_1)", ProviderKind::MySql), "");
    EXPECT_EQ(Refusal("select /*+ hint */ a from t", ProviderKind::MySql), "");
    EXPECT_EQ(Refusal("select $$ into $$, date'2024-01-01'", ProviderKind::PostgreSql), "");
    EXPECT_EQ(Refusal("select /*! not run */ 1", ProviderKind::PostgreSql), "");
}

TEST(ReadingStatement, FirstWordDecides) {
    for (const ProviderKind dialect : Statements) {
        for (const char* word :
             {"insert", "delete", "LOAD", "copy", "do", "explain", "set", "create", "grant", "handler",
              "lock", "execute", "prepare", "vacuum", "attach", "pragma"}) {
            const std::string told = "a report only reads: the query begins with \"";
            EXPECT_TRUE(Refusal(std::string("/* x */ (-- y\n") + word + " a)", dialect).starts_with(told))
                << word;
        }
        EXPECT_EQ(Refusal(" -- nothing", dialect), "the query is empty");
    }
    EXPECT_EQ(Refusal("Load data local infile 'a' into table t", ProviderKind::MySql),
              "a report only reads: the query begins with \"load\"");
    EXPECT_EQ(Refusal("'select'", ProviderKind::MySql),
              "a report only reads: the query begins with \"select\"");
}

TEST(ReadingStatement, WhatAReadingWordHidesIsFound) {
    for (const ProviderKind dialect : Statements) {
        EXPECT_EQ(Refusal("select * into outfile '/tmp/x' from t", dialect),
                  "a report only reads: the query has the word INTO");
        EXPECT_EQ(Refusal("with a as (delete from t returning *) select * from a", dialect),
                  "a report only reads: the query has the word DELETE");
        EXPECT_EQ(Refusal("with a as (select 1) update t set b = 1", dialect),
                  "a report only reads: the query has the word UPDATE");
        EXPECT_EQ(Refusal(std::string("select 1\0; delete", 18), dialect),
                  "a report only reads: the query has a NUL in it");
    }
    EXPECT_EQ(Refusal("select load_extension('/tmp/x')", ProviderKind::Odbc),
              "a report only reads: the query has the word LOAD_EXTENSION");
    EXPECT_EQ(Refusal("select \"Load_Extension\"('/tmp/x')", ProviderKind::Odbc),
              "a report only reads: the query has the word LOAD_EXTENSION");
    EXPECT_EQ(Refusal("select lo_from_bytea(0, 'x')", ProviderKind::PostgreSql),
              "a report only reads: the query has the word LO_FROM_BYTEA");
    for (const char* text : {"/*!load data local infile 'a' into table t*/", "select 1 /*!50000 into @a */",
                             "select 1 /*M!100000 , 2 */"}) {
        EXPECT_EQ(Refusal(text, ProviderKind::MySql),
                  "a report only reads: the query has a comment that the server runs (/*!)");
    }
}

TEST(ReadingStatement, CommentsEndWhereTheServerEndsThem) {
    // The outer comment ends later, and what looks like a text is a part of the statement.
    EXPECT_EQ(Refusal("/* /* */ ' */ delete from t -- '", ProviderKind::PostgreSql),
              "a report only reads: the query begins with \"delete\"");
    EXPECT_EQ(Refusal("/* /* */ ' */ delete from t -- '", ProviderKind::SqlServer),
              "a report only reads: the query has the word DELETE");
    EXPECT_EQ(Refusal("-- x\rdelete from t", ProviderKind::PostgreSql),
              "a report only reads: the query begins with \"delete\"");
    EXPECT_EQ(Refusal("-- x\rselect 1\nselect 1", ProviderKind::SqlServer),
              "a report only reads: the query has a comment with a carriage return in it");
    EXPECT_EQ(Refusal("-- x\r\nselect 1", ProviderKind::SqlServer), "");
    EXPECT_EQ(Refusal("select /* /* */ 1", ProviderKind::Odbc),
              "a report only reads: the query has a comment within a comment");
    EXPECT_EQ(Refusal("select 1e'\\' ' ; delete from t -- '", ProviderKind::PostgreSql),
              "a report only reads: the query has a text whose beginning is not clear");
}

TEST(ReadingStatement, BatchMayFillTablesOfItsOwn) {
    for (const char* text :
         {"declare @t table(a int); insert into @t select a from b; update @t set a = 1; select * from @t",
          "set nocount on select a into #t from b create table #u(x int) insert #u exec dbo.GetAll @a = 1 "
          "delete from #t drop table if exists #u select * from #t",
          "EXEC Sales.GetOrders @Year = ?", "exec @rc = [my db].[dbo].[Get Orders]", "exec mine..p",
          "{call GetOrders(?)}",
          "set transaction isolation level read uncommitted; select [delete], [into] from t",
          "create table #t(a int); create unique nonclustered index i on #t(a)",
          "if object_id('tempdb..#t') is not null drop table #t; select 1"}) {
        EXPECT_EQ(Refusal(text, ProviderKind::SqlServer), "") << text;
    }
}

TEST(ReadingStatement, BatchWritesToNothingElse) {
    const std::pair<const char*, const char*> refused[] = {
        {"select 1 delete from t", "the query has the word DELETE"},
        {"select * into copies from t", "the query has the word INTO"},
        {"select * into #t.x from t", "the query has the word INTO"},
        {"insert into t select 1", "the query has the word INSERT"},
        {"with a as (select 1) update a set b = 1", "the query has the word UPDATE"},
        {"create procedure #p as select 1", "the query has the word CREATE"},
        {"merge into t using u on 1 = 1 when matched then delete;", "the query begins with \"merge\""},
        {"insert into ##t select 1", "the query has the word INSERT"},
        {"select 1; receive * from q", "the query has the word RECEIVE"},
        {"create index i on t(a)", "the query has the word CREATE"},
        {"select 1; truncate table t", "the query has the word TRUNCATE"},
        {"drop table [t]", "the query has the word DROP"},
        {"set implicit_transactions off; select 1", "the query has the word IMPLICIT_TRANSACTIONS"},
        {"select 1; commit", "the query has the word COMMIT"},
        {"select * from openrowset('x', 'y', 'z')", "the query has the word OPENROWSET"},
        {"exec('delete from t')", "the query calls something that is no procedure's name"},
        {"declare @p varchar(9) = 'p'; exec @p", "the query calls something that is no procedure's name"},
        {"execute as login = 'sa'; select 1", "the query calls something that is no procedure's name"},
        {"exec sys.sp_executesql N'delete'",
         "the query calls \"sp_executesql\", a procedure of the server's own"},
        {"exec master..[XP_cmdshell] 'x'",
         "the query calls \"xp_cmdshell\", a procedure of the server's own"},
        {"{?=call sp_executesql(?)}", "the query calls \"sp_executesql\", a procedure of the server's own"},
        {"sp_who", "the query begins with \"sp_who\""},
    };
    for (const auto& [text, why] : refused) {
        EXPECT_EQ(Refusal(text, ProviderKind::SqlServer), std::string("a report only reads: ") + why) << text;
    }
}

}  // namespace
}  // namespace rdl::data
