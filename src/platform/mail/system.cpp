// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/system.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <optional>
#include <set>

#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/stop_gate.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/mail_context.h"
#include "platform/posix/service_notify.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

// A session and its messages share one MailContext. It lives until the last of them is destroyed.
class RecipientList : public MAPI::Recipients {
 public:
    explicit RecipientList(std::shared_ptr<MailContext> context) : m_context(std::move(context)) {}

    void Add(const std::string& name) override { m_items.push_back({name}); }

    void Resolve(MAPI::Dialog /*dialog*/) override { Mailboxes(); }

    int Count() const override { return static_cast<int>(m_items.size()); }

    const MAPI::Recipient& Item(int index) const override {
        if (index < 1 || index > Count()) {
            throw RuntimeError(err::SubscriptOutOfRange);
        }
        return m_items[static_cast<std::size_t>(index) - 1];
    }

    // Returns every recipient once, however often it was added.
    std::vector<Mailbox> Mailboxes() {
        std::vector<Mailbox> mailboxes;
        for (const MAPI::Recipient& item : m_items) {
            Mailbox mailbox = m_context->book.Resolve(item.Name);
            const bool known = std::any_of(
                mailboxes.begin(), mailboxes.end(),
                [&mailbox](const Mailbox& other) { return SameAddress(other.address, mailbox.address); });
            if (!known) {
                mailboxes.push_back(std::move(mailbox));
            }
        }
        return mailboxes;
    }

 private:
    std::shared_ptr<MailContext> m_context;
    std::vector<MAPI::Recipient> m_items;
};

class AttachmentList : public MAPI::Attachments {
 public:
    MAPI::Attachment& Add() override { return m_items.emplace_back(); }

    std::vector<OutgoingAttachment> Open() const {
        std::vector<OutgoingAttachment> open;
        for (const MAPI::Attachment& item : m_items) {
            if (!item.Source.empty()) {
                open.push_back(OpenOne(item.Source));
            }
        }
        return open;
    }

 private:
    static OutgoingAttachment OpenOne(const std::string& source) {
        const std::filesystem::path path = paths::ToMachine(source);
        OutgoingAttachment attachment{source, path.filename().string(), OpenRegularFile(path), 0};
        if (attachment.file.Get() < 0) {
            const int code = errno;
            const bool missing = code == ENOENT || code == ENOTDIR;
            throw RuntimeError(missing ? err::FileNotFound : NumberOfSystemError(code, err::PathFileAccess),
                               "The attachment \"" + Shown(paths::ForUser(source)) + "\" " +
                                   (missing ? "is missing" : "cannot be read: " + SystemErrorText(code)));
        }
        struct stat status {};
        fstat(attachment.file.Get(), &status);
        attachment.size = status.st_size;
        return attachment;
    }

    std::deque<MAPI::Attachment> m_items;  // a deque keeps references valid
};

class MailMessage : public MAPI::Message {
 public:
    explicit MailMessage(const std::shared_ptr<MailContext>& context)
        : m_context(context), m_recipients(context) {}

    MAPI::Recipients& Recipients() override { return m_recipients; }
    MAPI::Attachments& Attachments() override { return m_attachments; }

    void Send() override {
        OutgoingMail mail = m_context->NewMail(Subject, Text);
        mail.recipients = m_recipients.Mailboxes();
        if (mail.recipients.empty()) {
            throw RuntimeError(ErrNoRecipients, "The message has no recipients");
        }
        mail.highImportance = Importance == MAPI::ImportanceHigh;
        mail.identity = Identity;
        mail.date = Date;
        mail.attachments = m_attachments.Open();
        ServiceManager::Instance().NotifyAlive();
        TheStopGate().MailBegins();
        const Refusals refusals = m_context->transport->Deliver(mail);
        if (!refusals.empty()) {
            MAPI::ReportRefusals(Subject, refusals);
        }
    }

 private:
    std::shared_ptr<MailContext> m_context;
    RecipientList m_recipients;
    AttachmentList m_attachments;
};

class OutboxFolder : public MAPI::Folder {
 public:
    explicit OutboxFolder(std::shared_ptr<MailContext> context) : m_context(std::move(context)) {}
    std::unique_ptr<MAPI::Message> AddMessage() override { return std::make_unique<MailMessage>(m_context); }

 private:
    std::shared_ptr<MailContext> m_context;
};

// Returns a name for a list of recipients: it identifies this entry only and does not contain the separator.
std::string PickedName(AddressBook& book, const AddressEntry& entry) {
    try {
        if (entry.name.find(';') == std::string::npos &&
            SameAddress(book.Resolve(entry.name).address, entry.address)) {
            return entry.name;
        }
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrAmbiguousRecipient && error.Number() != ErrUnknownRecipient) {
            throw;
        }
    }
    return entry.address;
}

// Once for each profile in this process: mail is sent nevertheless, and the warning would repeat.
void TellExposure(const MailProfile& profile) {
    static std::set<std::filesystem::path> told;
    if (told.insert(profile.file).second) {
        Journal(ExposureText(profile));
    }
}

class MailSession : public MAPI::Session {
 public:
    explicit MailSession(std::filesystem::path profile) : m_profile(std::move(profile)) {}

    void Logon() override {
        const auto context =
            std::make_shared<MailContext>(ReadMailProfile(m_profile.empty() ? MailProfilePath() : m_profile));
        if (context->profile.isExposed) {
            TellExposure(context->profile);
        }
        m_outbox = std::make_unique<OutboxFolder>(context);
        m_context = context;
    }

    MAPI::Folder& Outbox() override {
        RequireLogon();
        return *m_outbox;
    }

    std::vector<MAPI::Recipient> AddressBook(MAPI::Choice choice) override {
        RequireLogon();
        std::optional<std::vector<AddressEntry>> picked;
        if (TheAddressChooser()) {
            picked = TheAddressChooser()(m_context->book.ListEntries(), choice);
        }
        if (!picked) {
            throw RuntimeError(err::MailUserCancel, "The choice of recipients was cancelled");
        }
        std::vector<MAPI::Recipient> recipients;
        for (const AddressEntry& entry : *picked) {
            if (recipients.empty() || choice == MAPI::Choice::Several) {
                recipients.push_back({PickedName(m_context->book, entry)});
            }
        }
        return recipients;
    }

 private:
    void RequireLogon() const {
        if (!m_context) {
            throw RuntimeError(ErrNoProfile, "The mail session has not been logged on");
        }
    }

    std::filesystem::path m_profile;
    std::shared_ptr<MailContext> m_context;
    std::unique_ptr<OutboxFolder> m_outbox;
};

}  // namespace

std::unique_ptr<MAPI::Session> ProfileMailSystem::CreateSession() {
    return std::make_unique<MailSession>(m_profile);
}

}  // namespace mailer

namespace MAPI {

System& MailSystem() {
    static mailer::ProfileMailSystem system;
    return system;
}

}  // namespace MAPI
