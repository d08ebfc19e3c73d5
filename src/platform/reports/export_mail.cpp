// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/export_mail.h"

#include <algorithm>
#include <string_view>

#include "platform/base/ascii.h"
#include "platform/base/new_message.h"
#include "platform/base/paths.h"

namespace reports {
namespace {

void AddRecipients(MAPI::Recipients& recipients, std::string_view toList) {
    while (!toList.empty()) {
        const std::size_t end = std::min(toList.find(';'), toList.size());
        const std::string_view name = Trim(toList.substr(0, end));
        if (!name.empty()) {
            recipients.Add(std::string(name));
        }
        toList.remove_prefix(std::min(end + 1, toList.size()));
    }
}

}  // namespace

void MailFile(const std::string& toList, const std::string& subject, const std::string& message,
              const std::filesystem::path& file) {
    const std::unique_ptr<MAPI::Session> session = MAPI::CreateSession();
    session->Logon();
    const std::unique_ptr<MAPI::Message> mail = MAPI::NewRunMessage(*session, subject, message);
    AddRecipients(mail->Recipients(), toList);
    mail->Recipients().Resolve(MAPI::Dialog::Forbidden);
    MAPI::Attach(*mail, 1, paths::FromMachine(file));
    MAPI::SendRunMessage(*mail);
}

}  // namespace reports
