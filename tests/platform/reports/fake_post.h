// SPDX-License-Identifier: GPL-3.0-or-later
// A mail system that keeps the last mail, with the file that it carries.
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/runtime.h"

namespace reports::test {

// Records what the mail system gets, and sets its failures.
struct Post {
    std::vector<std::string> recipients;
    std::string subject, text, source, bytes, identity;
    std::optional<ZonedMoment> date;
    int position = 0;
    bool resolved = false, sent = false, loggedOn = false;
    int failure = 0;  // of Send
};

class FakeRecipients : public MAPI::Recipients {
 public:
    explicit FakeRecipients(Post& post) : m_post(post) {}
    void Add(const std::string& name) override { m_post.recipients.push_back(name); }
    void Resolve(MAPI::Dialog dialog) override { m_post.resolved = dialog == MAPI::Dialog::Forbidden; }
    int Count() const override { return static_cast<int>(m_post.recipients.size()); }
    const MAPI::Recipient& Item(int) const override { return m_none; }

 private:
    Post& m_post;
    MAPI::Recipient m_none;
};

class FakeAttachments : public MAPI::Attachments {
 public:
    MAPI::Attachment& Add() override { return one; }
    MAPI::Attachment one;
};

class FakeMessage : public MAPI::Message {
 public:
    explicit FakeMessage(Post& post) : m_post(post), m_recipients(post) {}
    MAPI::Recipients& Recipients() override { return m_recipients; }
    MAPI::Attachments& Attachments() override { return m_attachments; }
    void Send() override {
        m_post.subject = Subject;
        m_post.text = Text;
        m_post.identity = Identity;
        m_post.date = Date;
        m_post.position = m_attachments.one.Position;
        m_post.source = m_attachments.one.Source;
        std::ifstream file(paths::ToMachine(m_post.source), std::ios::binary);
        m_post.bytes.assign(std::istreambuf_iterator<char>(file), {});
        if (m_post.failure) {
            throw RuntimeError(m_post.failure, "no server");
        }
        m_post.sent = true;
    }

 private:
    Post& m_post;
    FakeRecipients m_recipients;
    FakeAttachments m_attachments;
};

class FakeSession : public MAPI::Session, public MAPI::Folder {
 public:
    explicit FakeSession(Post& post) : m_post(post) {}
    void Logon() override { m_post.loggedOn = true; }
    MAPI::Folder& Outbox() override { return *this; }
    std::vector<MAPI::Recipient> AddressBook(MAPI::Choice) override { return {}; }
    std::unique_ptr<MAPI::Message> AddMessage() override { return std::make_unique<FakeMessage>(m_post); }

 private:
    Post& m_post;
};

class FakeSystem : public MAPI::System {
 public:
    explicit FakeSystem(Post& post) : m_post(post) {}
    std::unique_ptr<MAPI::Session> CreateSession() override { return std::make_unique<FakeSession>(m_post); }

 private:
    Post& m_post;
};

}  // namespace reports::test
