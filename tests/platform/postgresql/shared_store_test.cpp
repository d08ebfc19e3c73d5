// SPDX-License-Identifier: GPL-3.0-or-later
// A store that several machines share: the report files that it keeps, one read in place of many.
#include "platform/contracts/shared_store.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/base/paths.h"
#include "platform/contracts/adodb.h"
#include "platform/postgresql/link.h"
#include "shared/Global.h"
#include "support/database.h"

namespace {

std::string Bytes(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    std::stringstream bytes;
    bytes << stream.rdbuf();
    return bytes.str();
}

class SharedReports : public testing::Test {
 protected:
    std::filesystem::path Cached(const std::string& name) const { return database.Folder() / "Cache" / name; }
    void Write(const std::string& name, const std::string& text) const {
        std::ofstream(Cached(name), std::ios::binary) << text;
    }
    static std::string Found(const std::string& path) {
        return ReportOnThisMachine(Global::ConnectionString, path);
    }

    fakes::TestDatabase database;
    const std::string bytes = std::string("<Report>\0\xff\\x", 12);
};

}  // namespace

TEST_F(SharedReports, FileOfAnotherMachineIsMadeHere) {
    Write("sales.rpt", bytes);
    KeepReport(Global::ConnectionString, AppPath() + "\\Cache\\sales.rpt");
    const std::string own = AppPath() + "\\Cache\\sales.rpt";
    std::filesystem::remove(Cached("sales.rpt"));
    EXPECT_EQ(Found("Z:\\home\\ann\\courier\\Cache\\sales.rpt"), own);
    EXPECT_EQ(Bytes(Cached("sales.rpt")), bytes);
    Write("sales.rpt", "old");
    EXPECT_EQ(Found(own), own);
    EXPECT_EQ(Bytes(Cached("sales.rpt")), bytes);
}

TEST_F(SharedReports, FileIsForItsOwnerOnly) {
    Write("sales.rpt", bytes);
    KeepReport(Global::ConnectionString, AppPath() + "\\Cache\\sales.rpt");
    for (const bool isThere : {false, true}) {
        if (!isThere) {
            std::filesystem::remove(Cached("sales.rpt"));
        } else {
            Write("sales.rpt", "old");
            std::filesystem::permissions(Cached("sales.rpt"), std::filesystem::perms(0644));
        }
        Found(AppPath() + "\\Cache\\sales.rpt");
        EXPECT_EQ(std::filesystem::status(Cached("sales.rpt")).permissions(), std::filesystem::perms(0600));
    }
}

TEST_F(SharedReports, DamagedBytesOfTheStoreReplaceNothing) {
    Write("sales.rpt", bytes);
    KeepReport(Global::ConnectionString, AppPath() + "\\Cache\\sales.rpt");
    Write("sales.rpt", "mine");
    database.Run("update StoredReport set Bytes = 'other'");
    try {
        Found(AppPath() + "\\Cache\\sales.rpt");
        FAIL();
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), err::PathFileAccess);
        EXPECT_EQ(error.Description(),
                  "The report file \"sales.rpt\" of the store " +
                      ReadLink(database.Folder() / "PressroomLive.dat")->Name() +
                      " is damaged: its bytes do not have the SHA-256 that is stored with them");
    }
    EXPECT_EQ(Bytes(Cached("sales.rpt")), "mine");
}

TEST_F(SharedReports, NewerFileReplacesTheStoresCopy) {
    for (const char* text : {"one", "two"}) {
        Write("sales.rpt", text);
        KeepReport(Global::ConnectionString, AppPath() + "\\Cache\\sales.rpt");
    }
    std::filesystem::remove(Cached("sales.rpt"));
    Found("Z:\\elsewhere\\cache\\SALES.rpt");
    EXPECT_EQ(database.Rows("select count(*) from StoredReport"), std::vector<std::string>{"1"});
    EXPECT_EQ(Bytes(Cached("SALES.rpt")), "two");
}

TEST_F(SharedReports, OtherPathsAndUnknownNamesStayAsTheyAre) {
    for (const char* path : {"Z:\\reports\\sales.rpt", "Z:\\x\\Cache\\none.rpt", "sales.rpt",
                             "Z:\\x\\Cache\\..", "Z:\\x\\Cache\\"}) {
        EXPECT_EQ(Found(path), path);
    }
}

class Snapshot : public testing::Test {
 protected:
    Snapshot() {
        database.Run(
            "insert into Folders(FolderName, Parent) values('Sales', 0), ('North', 1), ('Stock', 0), "
            "('Lost', null), ('South', 1)");
    }
    static std::vector<std::string> Below(const std::string& id,
                                          const std::string& select = "select foldername, folderid") {
        std::vector<std::string> found;
        ADODB::Recordset rows;
        for (rows.Open(select + " from folders where parent = " + id, Global::ConnectionString); !rows.EOF_();
             rows.MoveNext()) {
            found.push_back(rows.Fields("FolderName").Value.Text() + rows.Fields(1).Value.Text());
        }
        return found;
    }
    using Names = std::vector<std::string>;

    fakes::TestDatabase database;
};

TEST_F(Snapshot, AnswersFromOneReadAsTheStoreDoes) {
    const Names top = Below("0"), ofSales = Below("1"), ofStock = Below("3");
    EXPECT_EQ(top, (Names{"Sales1", "Stock3"}));
    EXPECT_EQ(ofSales, (Names{"North2", "South5"}));
    const TableSnapshot folders(Global::ConnectionString, "Folders", "Parent");
    EXPECT_EQ(Below("0"), top);
    database.Run("delete from Folders");
    EXPECT_EQ(Below("0"), top);
    EXPECT_EQ(Below("1"), ofSales);
    EXPECT_EQ(Below("3"), ofStock);
    EXPECT_EQ(Below("1", "select folderid as foldername, parent"), Names{});  // other columns: asks the store
    EXPECT_EQ(Below("1 or 1 = 1"), Names{});
}

TEST_F(Snapshot, EndsWithItsObject) {
    {
        const TableSnapshot folders(Global::ConnectionString, "folders", "parent");
        Below("0");
    }
    database.Run("update Folders set FolderName = 'Sold' where FolderName = 'Sales'");
    EXPECT_EQ(Below("0"), (Names{"Sold1", "Stock3"}));
}
