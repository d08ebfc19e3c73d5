// SPDX-License-Identifier: GPL-3.0-or-later
// The mail of an export goes out once the document is complete, and from this process.
#include <gmock/gmock.h>

#include "platform/contracts/export_formats.h"
#include "platform/posix/atomic_file.h"
#include "platform/reports/failure.h"
#include "platform/reports/worker/worker_fixture.h"
#include "support/fakes.h"

namespace reports::worker::test {
namespace {

using reports::test::ErrorOf;

class WorkerMail : public WorkerTest {
 protected:
    void SetUp() override {
        WorkerTest::SetUp();
        Write("people.rpt", PeopleReport());
        std::filesystem::create_directory(m_folder / "tmp");
        setenv("TMPDIR", Path("tmp").c_str(), 1);
    }
    void TearDown() override {
        unsetenv("TMPDIR");
        WorkerTest::TearDown();
    }
    void Mail(report::Engine& engine) const {
        const auto report = engine.OpenReport(Path("people.rpt"));
        report->SetExportDestination(report::DestinationMail);
        report->SetExportFormat(report::CodeOf(report::DocumentFormat::Csv));
        report->SetMail("ann@example.com; ;Bob;", "Sales", "Good morning");
        report->Export(false);
    }
    bool TemporaryFolderIsEmpty() const { return std::filesystem::is_empty(m_folder / "tmp"); }

    fakes::FakeMailSystem m_mail;
};

TEST_F(WorkerMail, CarriesTheDocumentNamedByTheTitle) {
    const auto engine = CreateWorkerEngine(Usual());
    Mail(*engine);
    ASSERT_EQ(m_mail.sent.size(), 1U);
    EXPECT_EQ(m_mail.sent[0].subject, "Sales");
    EXPECT_THAT(m_mail.sent[0].attachments, testing::SizeIs(1));
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

TEST_F(WorkerMail, NothingIsSentIfTheProcessEndsBeforeTheDocumentIsComplete) {
    for (const char* fault : {"Open:Crash", "Write:Crash", "Write:Kill"}) {
        const auto engine = CreateWorkerEngine(Faulty(fault));
        EXPECT_EQ(ErrorOf([&] { Mail(*engine); }).Number(), WorkerFailed);
        EXPECT_TRUE(m_mail.sent.empty());
        EXPECT_TRUE(TemporaryFolderIsEmpty());
    }
}

TEST_F(WorkerMail, ProcessThatEndsLaterHasNothingToDoWithIt) {
    const auto engine = CreateWorkerEngine(Faulty("Close:Crash"));
    Mail(*engine);
    Mail(*engine);
    EXPECT_EQ(m_mail.sent.size(), 2U);
}

TEST_F(WorkerMail, FailureOfTheMailIsTheOneOfTheMailSystem) {
    m_mail.sendErrors = {RuntimeError(err::MailboxFull, "full")};
    const auto engine = CreateWorkerEngine(Usual());
    EXPECT_EQ(ErrorOf([&] { Mail(*engine); }).Number(), err::MailboxFull);
    EXPECT_TRUE(TemporaryFolderIsEmpty());
}

}  // namespace
}  // namespace reports::worker::test
