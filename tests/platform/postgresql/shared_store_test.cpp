// SPDX-License-Identifier: GPL-3.0-or-later
// Report files that a store keeps for several machines.
#include "platform/contracts/shared_store.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

#include "platform/base/paths.h"
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
