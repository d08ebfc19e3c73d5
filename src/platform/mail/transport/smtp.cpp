// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/smtp.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>

#include "platform/contracts/runtime.h"
#include "platform/mail/message/spool_file.h"
#include "platform/mail/transport/smtp_connection.h"

namespace mailer {
namespace {

struct Upload {
    UniqueFd message;
    curl_off_t left = 0;  // in bytes
    SmtpConnection& server;
};

std::size_t GiveContent(char* buffer, std::size_t size, std::size_t count, void* context) {
    auto& upload = *static_cast<Upload*>(context);
    // The library stops at such a reply; if it did not, no data is given here.
    if (upload.server.IsPutOff()) {
        return CURL_READFUNC_ABORT;
    }
    ssize_t got = 0;
    do {
        got = read(upload.message.Get(), buffer, size * count);
    } while (got < 0 && errno == EINTR);
    upload.left -= got > 0 ? got : 0;
    if (got == 0 || upload.left <= 0) {
        upload.server.AwaitFinalAnswer();
    }
    return got < 0 ? CURL_READFUNC_ABORT : static_cast<std::size_t>(got);
}

void SetUpload(CURL* curl, Upload& upload) {
    struct stat status {};
    if (fstat(upload.message.Get(), &status) != 0) {
        throw RuntimeError(err::PathFileAccess, "The message cannot be read back");
    }
    upload.left = status.st_size;
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(status.st_size));
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, GiveContent);
    curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
}

using List = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

List AllRecipients(const OutgoingMail& mail) {
    List list(nullptr, &curl_slist_free_all);
    for (const Mailbox& recipient : mail.recipients) {
        curl_slist* longer = curl_slist_append(list.get(), ("<" + recipient.address + ">").c_str());
        if (longer == nullptr) {
            throw std::bad_alloc();
        }
        (void)list.release();
        list.reset(longer);
    }
    return list;
}

}  // namespace

Refusals SmtpTransport::Deliver(const OutgoingMail& mail) {
    UniqueFd message = SpoolMessage(mail, LineEnds::CrLf);
    SmtpConnection server(m_profile, m_stop);
    Upload upload{std::move(message), 0, server};
    const List recipients = AllRecipients(mail);
    const std::string sender = "<" + mail.from.address + ">";
    SetUpload(server.Handle(), upload);
    curl_easy_setopt(server.Handle(), CURLOPT_MAIL_FROM, sender.c_str());
    curl_easy_setopt(server.Handle(), CURLOPT_MAIL_RCPT, recipients.get());
    curl_easy_setopt(server.Handle(), CURLOPT_MAIL_RCPT_ALLLOWFAILS, 1L);
    const CURLcode code = server.Perform();
    if (code == CURLE_OK || server.Talk().Accepted()) {
        return server.Talk().Refusals();
    }
    if ((code == CURLE_ABORTED_BY_CALLBACK || code == CURLE_READ_ERROR) && !server.IsPutOff()) {
        throw RuntimeError(err::PathFileAccess, "The message cannot be read back");
    }
    server.RaiseFailure(code);
}

}  // namespace mailer
