// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/smtp_check.h"

#include <string>

#include "platform/mail/transport/smtp_connection.h"

namespace mailer {

void CheckSmtp(const MailProfile& profile, const std::stop_token& stop) {
    SmtpConnection server(profile, stop);
    const std::string sender = "MAIL FROM:<" + profile.from.address + ">";
    curl_easy_setopt(server.Handle(), CURLOPT_CUSTOMREQUEST, sender.c_str());
    const CURLcode code = server.Perform();
    const bool isWelcome = server.Talk().At() == SmtpTalk::Stage::Sender && server.Talk().Code() == 250;
    if (!isWelcome) {
        server.RaiseFailure(code);
    }
}

}  // namespace mailer
