#include "platform/reports/export_mail.h"

#include <algorithm>
#include <string_view>

#include "platform/base/due_run.h"
#include "platform/base/paths.h"
#include "platform/contracts/mapi.h"
#include "rdl/xml/element.h"

namespace reports {
namespace {

int CharacterCount(std::string_view text) {
    return static_cast<int>(std::count_if(
        text.begin(), text.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

void AddRecipients(MAPI::Recipients& recipients, std::string_view toList) {
    while (!toList.empty()) {
        const std::size_t end = std::min(toList.find(';'), toList.size());
        const std::string_view name = rdl::xml::Trimmed(toList.substr(0, end));
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
    const std::unique_ptr<MAPI::Message> mail = session->Outbox().AddMessage();
    mail->Subject = subject;
    mail->Text = message;
    mail->Identity = MAPI::DueRun::Identity();
    AddRecipients(mail->Recipients(), toList);
    mail->Recipients().Resolve(false);
    MAPI::Attachment& attachment = mail->Attachments().Add();
    attachment.Position = CharacterCount(message) + 1;
    attachment.Source = paths::FromMachine(file);
    mail->Send();
}

}  // namespace reports
