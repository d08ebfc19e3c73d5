// SPDX-License-Identifier: GPL-3.0-or-later
// The table by which stores are copied lists every table and column of the blank database, and no other.
#include "tools/oxc_store/store_tables.h"

#include <gtest/gtest.h>

#include "support/database.h"

namespace tools {
namespace {

TEST(StoreTables, AreThoseOfTheBlankDatabase) {
    const fakes::TestDatabase database;
    std::vector<std::string> listed;
    for (const StoreTable& table : StoreTables) {
        listed.push_back(std::string(table.name) + ": " + std::string(table.columns) +
                         (table.hasKey ? ", with a key" : ""));
    }
    EXPECT_EQ(listed,
              database.Rows("select t.name || ': ' || (select group_concat(name) from (select name from "
                            "pragma_table_info(t.name) order by cid)) || iif(t.sql like '%autoincrement%', "
                            "', with a key', '') from sqlite_master t where t.type = 'table' and "
                            "t.name not like 'sqlite%' order by t.rowid"));
}

}  // namespace
}  // namespace tools
