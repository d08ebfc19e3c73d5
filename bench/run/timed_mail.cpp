// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/run/timed_mail.h"

#include "platform/mail/system.h"

Stopwatch g_mailing;

namespace {

class TimedMessage : public MAPI::Message {
 public:
    explicit TimedMessage(std::unique_ptr<MAPI::Message> message) : m_message(std::move(message)) {}
    MAPI::Recipients& Recipients() override { return m_message->Recipients(); }
    MAPI::Attachments& Attachments() override { return m_message->Attachments(); }
    void Send() override {
        const Stopwatch::Scope scope(g_mailing);
        m_message->Subject = Subject;
        m_message->Text = Text;
        m_message->Importance = Importance;
        m_message->Send();
    }

 private:
    std::unique_ptr<MAPI::Message> m_message;
};

class TimedFolder : public MAPI::Folder {
 public:
    explicit TimedFolder(MAPI::Folder& folder) : m_folder(folder) {}
    std::unique_ptr<MAPI::Message> AddMessage() override {
        return std::make_unique<TimedMessage>(m_folder.AddMessage());
    }

 private:
    MAPI::Folder& m_folder;
};

class TimedSession : public MAPI::Session {
 public:
    void Logon() override {
        const Stopwatch::Scope scope(g_mailing);
        m_session->Logon();
        m_outbox = std::make_unique<TimedFolder>(m_session->Outbox());
    }
    MAPI::Folder& Outbox() override { return *m_outbox; }
    std::vector<MAPI::Recipient> AddressBook(MAPI::Choice choice) override {
        return m_session->AddressBook(choice);
    }

 private:
    std::unique_ptr<MAPI::Session> m_session = MAPI::MailSystem().CreateSession();
    std::unique_ptr<TimedFolder> m_outbox;
};

class TimedSystem : public MAPI::System {
 public:
    std::unique_ptr<MAPI::Session> CreateSession() override { return std::make_unique<TimedSession>(); }
};

}  // namespace

MAPI::System& TimedMailSystem() {
    static TimedSystem system;
    return system;
}
