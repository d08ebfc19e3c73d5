// SPDX-License-Identifier: GPL-3.0-or-later
// Whether an export waits for the disk.
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/base/paths.h"
#include "platform/contracts/mapi.h"
#include "platform/reports/fake_post.h"
#include "platform/reports/report_folder.h"

namespace {

int waits = 0;

}  // namespace

// In place of the C library's, for all of this program.
extern "C" int fsync(int file) {
    ++waits;
    return static_cast<int>(::syscall(SYS_fsync, file));
}

namespace reports::test {
namespace {

class Lasting : public ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        MAPI::SetMailSystem(&m_system);
    }
    void TearDown() override {
        MAPI::SetMailSystem(nullptr);
        ReportFolder::TearDown();
    }
    // Returns how often the export waited for the disk.
    int WaitsOf(report::Report& report, int destination) {
        report.SetExportDestination(destination);
        waits = 0;
        report.Export(false);
        return waits;
    }

    Post m_post;
    FakeSystem m_system{m_post};
};

TEST_F(Lasting, ExportThatIsMailedAndDeletedDoesNotWaitForTheDisk) {
    for (const report::FormatRow& row : report::FormatTable) {
        const auto report = OpenPeople();
        report->SetExportFormat(row.Code());
        report->SetMail("ann@example.com", "Sales", "");
        EXPECT_EQ(WaitsOf(*report, report::DestinationMail), 0) << row.extension;
        EXPECT_FALSE(m_post.bytes.empty()) << row.extension;
        EXPECT_FALSE(std::filesystem::exists(paths::ToMachine(m_post.source))) << row.extension;
    }
}

TEST_F(Lasting, ExportToAFileIsOnTheDiskWithItsName) {
    const auto report = OpenPeople();
    report->SetExportFormat(report::CodeOf(report::DocumentFormat::Csv));
    report->SetDiskFileName(paths::FromMachine(Path("people.csv")));
    EXPECT_EQ(WaitsOf(*report, report::DestinationDisk), 2);  // the file, and its folder
    EXPECT_TRUE(std::filesystem::exists(Path("people.csv")));
}

}  // namespace
}  // namespace reports::test
