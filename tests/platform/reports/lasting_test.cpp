// SPDX-License-Identifier: GPL-3.0-or-later
// Whether an export waits for the disk.
#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "platform/base/paths.h"
#include "platform/contracts/mapi.h"
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

class NoRecipients : public MAPI::Recipients {
 public:
    void Add(const std::string&) override {}
    void Resolve(MAPI::Dialog) override {}
    int Count() const override { return 0; }
    const MAPI::Recipient& Item(int) const override { return m_none; }

 private:
    MAPI::Recipient m_none;
};

class OneAttachment : public MAPI::Attachments {
 public:
    MAPI::Attachment& Add() override { return one; }
    MAPI::Attachment one;
};

// Notes the mail's file, as it is when the mail is sent.
class Mailbox : public MAPI::System, public MAPI::Folder {
 public:
    std::unique_ptr<MAPI::Message> AddMessage() override { return std::make_unique<Mail>(*this); }
    std::unique_ptr<MAPI::Session> CreateSession() override { return std::make_unique<Entry>(*this); }
    std::filesystem::path sent;
    std::uintmax_t size = 0;

 private:
    class Mail : public MAPI::Message {
     public:
        explicit Mail(Mailbox& box) : m_box(box) {}
        MAPI::Recipients& Recipients() override { return m_recipients; }
        MAPI::Attachments& Attachments() override { return m_attachments; }
        void Send() override {
            m_box.sent = paths::ToMachine(m_attachments.one.Source);
            m_box.size = std::filesystem::file_size(m_box.sent);
        }

     private:
        Mailbox& m_box;
        NoRecipients m_recipients;
        OneAttachment m_attachments;
    };
    class Entry : public MAPI::Session {
     public:
        explicit Entry(Mailbox& box) : m_box(box) {}
        void Logon() override {}
        MAPI::Folder& Outbox() override { return m_box; }
        std::vector<MAPI::Recipient> AddressBook(MAPI::Choice) override { return {}; }

     private:
        Mailbox& m_box;
    };
};

class Lasting : public ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        MAPI::SetMailSystem(&m_mailbox);
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

    Mailbox m_mailbox;
};

TEST_F(Lasting, ExportThatIsMailedAndDeletedDoesNotWaitForTheDisk) {
    for (const report::FormatRow& row : report::FormatTable) {
        const auto report = OpenPeople();
        report->SetExportFormat(row.Code());
        report->SetMail("ann@example.com", "Sales", "");
        EXPECT_EQ(WaitsOf(*report, report::DestinationMail), 0) << row.extension;
        EXPECT_GT(m_mailbox.size, 0U) << row.extension;
        EXPECT_FALSE(std::filesystem::exists(m_mailbox.sent)) << row.extension;
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
