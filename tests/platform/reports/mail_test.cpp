// SPDX-License-Identifier: GPL-3.0-or-later
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/wait.h>
#include <unistd.h>

#include "platform/base/due_run.h"
#include "platform/base/paths.h"
#include "platform/contracts/mapi.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/fake_post.h"
#include "platform/reports/report_folder.h"

namespace reports::test {
namespace {

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;

constexpr std::string_view Prefix = "oxbow-courier-export-";  // of the folders of exports

class ReportMail : public ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        MAPI::SetMailSystem(&m_system);
        const char* before = getenv("TMPDIR");
        m_tmpBefore = before ? before : "";
        std::filesystem::create_directory(m_folder / "tmp");
        setenv("TMPDIR", Path("tmp").c_str(), 1);
    }
    void TearDown() override {
        MAPI::SetMailSystem(nullptr);
        m_tmpBefore.empty() ? unsetenv("TMPDIR") : setenv("TMPDIR", m_tmpBefore.c_str(), 1);
        ReportFolder::TearDown();
    }
    void Mail(report::Report& report, int format) {
        report.SetExportDestination(report::DestinationMail);
        report.SetExportFormat(format);
        report.SetMail("ann@example.com; ;Bob;", "Sales",
                       "Gr\xC3\xBC\xC3\x9F"
                       "e");
        report.Export(false);
    }
    bool TemporaryFolderIsEmpty() const { return std::filesystem::is_empty(m_folder / "tmp"); }

    Post m_post;
    FakeSystem m_system{m_post};
    std::string m_tmpBefore;
};

TEST_F(ReportMail, CarriesTheExportNamedByTheTitle) {
    const auto report = OpenPeople("", "sales 2025.rpt");
    Mail(*report, report::CodeOf(report::DocumentFormat::Html));
    EXPECT_TRUE(m_post.loggedOn && m_post.resolved && m_post.sent);
    EXPECT_THAT(m_post.recipients, ElementsAre("ann@example.com", "Bob"));
    EXPECT_EQ(m_post.subject, "Sales");
    EXPECT_EQ(m_post.position, 6);
    EXPECT_THAT(m_post.source, EndsWith("\\sales 2025.htm"));
    EXPECT_THAT(m_post.bytes, HasSubstr("Cleo"));
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

TEST_F(ReportMail, BearsTheIdentityOfTheDueRun) {
    const auto report = OpenPeople();
    std::string identity;
    {
        const MAPI::DueRun run("store", "schedule", "7", "2026-11-22 07:00", [] {
            return ZonedMoment{1795330800, 3600};
        });
        identity = MAPI::DueRun::Identity();
        Mail(*report, report::CodeOf(report::DocumentFormat::Html));
    }
    EXPECT_FALSE(identity.empty());
    EXPECT_EQ(m_post.identity, identity);
    ASSERT_TRUE(m_post.date.has_value());
    EXPECT_EQ(m_post.date->seconds, 1795330800);
    Mail(*report, report::CodeOf(report::DocumentFormat::Html));
    EXPECT_EQ(m_post.identity, "");
    EXPECT_FALSE(m_post.date.has_value());
}

TEST_F(ReportMail, EveryFormatHasItsExtension) {
    const auto report = OpenPeople();
    std::vector<std::string> extensions;
    for (const report::FormatRow& row : report::FormatTable) {
        Mail(*report, row.Code());
        extensions.push_back(m_post.source.substr(m_post.source.rfind('.')));
    }
    EXPECT_EQ(extensions, (std::vector<std::string>{".pdf", ".rtf", ".xls", ".htm", ".doc", ".docx", ".csv",
                                                    ".xlsx", ".png"}));
}

TEST_F(ReportMail, FailurePassesWithItsNumberAndLeavesNothing) {
    m_post.failure = err::MailboxFull;
    const auto report = OpenPeople();
    EXPECT_EQ(ErrorOf([&] { Mail(*report, report::CodeOf(report::DocumentFormat::Html)); }).Number(),
              err::MailboxFull);
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

TEST_F(ReportMail, NothingIsSentWhenTheRunFails) {
    const auto report = OpenPeople(Parameters(Parameter("must", "String")));
    EXPECT_NE(ErrorOf([&] { Mail(*report, report::CodeOf(report::DocumentFormat::Html)); }).Number(), 0);
    EXPECT_FALSE(m_post.loggedOn);
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

TEST_F(ReportMail, FoldersOfDeadProcessesAreRemoved) {
    const pid_t child = fork();
    if (child == 0) {
        new HeldFolder(Prefix);  // ends without removing the folder
        _exit(0);
    }
    waitpid(child, nullptr, 0);
    ASSERT_FALSE(TemporaryFolderIsEmpty());
    { const HeldFolder mine(Prefix); }
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

TEST_F(ReportMail, FolderThatAnotherMachinesProcessHoldsStays) {
    // No process of this machine has this number.
    const std::filesystem::path held = m_folder / "tmp" / "oxbow-courier-export-999999999-abcdef";
    std::filesystem::create_directory(held);
    const int holder = open(held.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    ASSERT_EQ(flock(holder, LOCK_EX), 0);
    { const HeldFolder mine(Prefix); }
    EXPECT_TRUE(std::filesystem::exists(held));
    close(holder);
}

TEST_F(ReportMail, FoldersOfLivingProcessesStay) {
    const HeldFolder first(Prefix);
    { const HeldFolder second(Prefix); }
    EXPECT_TRUE(std::filesystem::exists(first.Path()));
}

}  // namespace
}  // namespace reports::test
