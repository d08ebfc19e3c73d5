// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/transport.h"

#include "platform/mail/transport/outbox.h"
#include "platform/mail/transport/sendmail.h"
#include "platform/mail/transport/smtp.h"

namespace mailer {

std::unique_ptr<Transport> MakeTransport(const MailProfile& profile, const std::stop_token& stop) {
    switch (profile.transport) {
        case TransportKind::Smtp:
            return std::make_unique<SmtpTransport>(profile, stop);
        case TransportKind::Sendmail:
            return std::make_unique<SendmailTransport>(profile.sendmail, profile.sendmailSeconds, stop);
        case TransportKind::Outbox:
            break;
    }
    return std::make_unique<OutboxTransport>(profile.outboxFolder);
}

}  // namespace mailer
