// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ReportCache.h"

#include <gtest/gtest.h>

#include <fstream>

#include "dialogs/ScheduleRecords.h"
#include "platform/base/paths.h"
#include "support/database.h"
#include "support/fakes.h"
#include "support/raises.h"

namespace {

namespace fs = std::filesystem;

class ReportCache : public testing::Test {
 protected:
    // Writes a report file into a folder of its own. Returns its path as a path of the system.
    std::string Report(const std::string& folder, const std::string& name, const std::string& content) const {
        fs::create_directories(database.Folder() / folder);
        std::ofstream(database.Folder() / folder / name) << content;
        return AppPath() + "\\" + folder + "\\" + name;
    }
    std::string Cached(const std::string& name) const {
        std::ifstream file(database.Folder() / "Cache" / name);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    fakes::TestDatabase database;
    fakes::FakePrompts prompts;
};

}  // namespace

TEST_F(ReportCache, CopyGoesByTheBareFileName) {
    EXPECT_EQ(Global::CopyToCache(Report("a", "sales.rpt", "first")), AppPath() + "\\Cache\\sales.rpt");
    EXPECT_EQ(Cached("sales.rpt"), "first");
}

TEST_F(ReportCache, ReportsOfOneNameShareACopyAndTheLaterOneWins) {
    const std::string first = Global::CopyToCache(Report("a", "sales.rpt", "first"));
    const std::string second = Global::CopyToCache(Report("b", "sales.rpt", "second"));
    EXPECT_EQ(first, second);
    EXPECT_EQ(Cached("sales.rpt"), "second");
}

TEST_F(ReportCache, CopyStaysAsItWasWhenTheUsersFileChanges) {
    Global::CopyToCache(Report("a", "sales.rpt", "first"));
    Report("a", "sales.rpt", "changed");
    EXPECT_EQ(Cached("sales.rpt"), "first");
}

TEST_F(ReportCache, PathWithoutABackslashIsTheFileNameAsAWhole) {
    const fs::path file = database.Folder() / "sales.rpt";
    std::ofstream(file) << "first";
    fs::create_directories(database.Folder() / "Cache" / database.Folder().relative_path());
    EXPECT_EQ(Global::CopyToCache(file.string()), AppPath() + "\\Cache\\" + file.string());
    EXPECT_EQ(Cached(file.relative_path().string()), "first");
}

TEST_F(ReportCache, CopyIsNotLostWhenItIsPickedAsTheReport) {
    const std::string cached = Global::CopyToCache(Report("a", "sales.rpt", "first"));
    EXPECT_EQ(NumberRaisedBy([&] { Global::CopyToCache(cached); }), 75);
    EXPECT_EQ(Cached("sales.rpt"), "first");
}

TEST_F(ReportCache, MissingReportIsTheCallersError) {
    EXPECT_EQ(NumberRaisedBy([] { Global::CopyToCache(AppPath() + "\\none.rpt"); }), 53);
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ReportCache, FolderIsNotMadeAndItsLackIsTheCallersError) {
    const std::string report = Report("a", "sales.rpt", "first");
    fs::remove_all(database.Folder() / "Cache");
    EXPECT_EQ(NumberRaisedBy([&] { Global::CopyToCache(report); }), 76);
    EXPECT_FALSE(fs::exists(database.Folder() / "Cache"));
    EXPECT_TRUE(prompts.boxes.empty());
}

TEST_F(ReportCache, CopyOutlivesItsSchedule) {
    const std::string cached = Global::CopyToCache(Report("a", "sales.rpt", "first"));
    fakes::Insert(database, {.path = cached});
    Global::DeleteSchedule(1);
    EXPECT_TRUE(database.Rows("select ReportID from ReportScheduler").empty());
    EXPECT_EQ(Cached("sales.rpt"), "first");
}
