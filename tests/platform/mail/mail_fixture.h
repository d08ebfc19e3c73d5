// SPDX-License-Identifier: GPL-3.0-or-later
// A profile for one test and a session on it.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "platform/base/paths.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/system.h"
#include "support/raises.h"
#include "support/temporary_folder.h"

class MailTest : public testing::Test {
 public:
    std::filesystem::path Profile() const { return m_folder / "mail.ini"; }
    std::filesystem::path Outbox() const { return m_folder / "outbox"; }

    void WriteProfile(const std::string& lines) {
        WriteBytes(Profile(), "[Profile]\n" + lines);
        std::filesystem::permissions(Profile(), std::filesystem::perms(0600));
    }

    void WriteOutboxProfile(const std::string& more = {}) {
        WriteProfile("Transport=outbox\nFrom=Reports <reports@example.com>\nOutboxFolder=" +
                     Outbox().string() + "\n" + more);
    }

    std::unique_ptr<MAPI::Session> Logon() {
        mailer::ProfileMailSystem system(Profile());
        auto session = system.CreateSession();
        session->Logon();
        return session;
    }

    std::unique_ptr<MAPI::Message> MakeMessage(const std::vector<std::string>& recipients) {
        m_session = Logon();
        auto message = m_session->Outbox().AddMessage();
        message->Subject = "Sales";
        message->Text = "Please find the report.\n";
        for (const std::string& recipient : recipients) {
            message->Recipients().Add(recipient);
        }
        return message;
    }

    std::string WriteFile(const std::string& name, const std::string& bytes) {
        WriteBytes(m_folder / name, bytes);
        return paths::FromMachine(m_folder / name);
    }

    std::vector<std::filesystem::path> FilesIn(const std::filesystem::path& folder) const {
        std::vector<std::filesystem::path> files;
        std::error_code missing;
        for (const auto& entry : std::filesystem::directory_iterator(folder, missing)) {
            files.push_back(entry.path());
        }
        std::sort(files.begin(), files.end());
        return files;
    }

    // Returns the number that sending raises, or 0; m_text is its text.
    std::int32_t SendingRaises(MAPI::Message& message) {
        m_text.clear();
        return NumberRaisedBy([&] {
            try {
                message.Send();
            } catch (const RuntimeError& error) {
                m_text = error.Description();
                throw;
            }
        });
    }

 protected:
    std::string m_text;
    TemporaryFolder m_folder;
    std::unique_ptr<MAPI::Session> m_session;
};
