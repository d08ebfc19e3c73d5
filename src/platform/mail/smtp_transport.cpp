#include "platform/mail/smtp_transport.h"

#include <curl/curl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <memory>
#include <string>

#include "platform/mail/smtp_failure.h"
#include "platform/mail/smtp_talk.h"
#include "platform/mail/spool_file.h"
#include "platform/runtime.h"

namespace mailer {
namespace {

struct Upload {
    UniqueFd message;
    SmtpTalk talk;
};

std::size_t GiveContent(char* buffer, std::size_t size, std::size_t count, void* context) {
    auto& upload = *static_cast<Upload*>(context);
    ssize_t got = 0;
    do {
        got = read(upload.message.Get(), buffer, size * count);
    } while (got < 0 && errno == EINTR);
    if (got == 0) {
        upload.talk.ContentGiven();
    }
    return got < 0 ? CURL_READFUNC_ABORT : static_cast<std::size_t>(got);
}

int Listen(CURL*, curl_infotype kind, char* data, std::size_t size, void* context) {
    auto& talk = static_cast<Upload*>(context)->talk;
    if (kind == CURLINFO_HEADER_OUT) {
        talk.Said({data, size});
    } else if (kind == CURLINFO_HEADER_IN) {
        talk.Heard({data, size});
    }
    return 0;
}

// What a server says is for Listen alone; without a taker the library would print it.
std::size_t Drop(char*, std::size_t size, std::size_t count, void*) {
    return size * count;
}

std::string Url(const MailProfile& profile) {
    const bool isIpv6 = profile.host.find(':') != std::string::npos;
    const std::string host = isIpv6 ? "[" + profile.host + "]" : profile.host;
    return (profile.security == Security::Tls ? "smtps://" : "smtp://") + host + ":" +
           std::to_string(profile.port);
}

void SetServer(CURL* curl, const MailProfile& profile) {
    curl_easy_setopt(curl, CURLOPT_URL, Url(profile).c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, profile.security == Security::Tls ? "smtps" : "smtp");
    // The desktop's proxies are for browsing.
    curl_easy_setopt(curl, CURLOPT_PROXY, "");
    curl_easy_setopt(
        curl, CURLOPT_USE_SSL,
        static_cast<long>(profile.security == Security::None ? CURLUSESSL_NONE : CURLUSESSL_ALL));
    curl_easy_setopt(curl, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYPEER, profile.verify ? 1L : 0L);
    curl_easy_setopt(curl, CURLOPT_SSL_VERIFYHOST, profile.verify ? 2L : 0L);
    if (!profile.caFile.empty()) {
        curl_easy_setopt(curl, CURLOPT_CAINFO, profile.caFile.c_str());
    }
    if (!profile.user.empty()) {
        curl_easy_setopt(curl, CURLOPT_USERNAME, profile.user.c_str());
        curl_easy_setopt(curl, CURLOPT_PASSWORD, PasswordOf(profile).c_str());
        // Only what a password is good for: a ticket of the network is not there unattended.
        curl_easy_setopt(curl, CURLOPT_LOGIN_OPTIONS, "AUTH=PLAIN;AUTH=LOGIN;AUTH=CRAM-MD5");
    }
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, static_cast<long>(profile.connectSeconds));
    curl_easy_setopt(curl, CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(profile.stallSeconds));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_TIME, static_cast<long>(profile.stallSeconds));
    // The goodbye belongs to this call, within the same limits of time.
    curl_easy_setopt(curl, CURLOPT_FORBID_REUSE, 1L);
}

void SetUpload(CURL* curl, Upload& upload) {
    struct stat status {};
    if (fstat(upload.message.Get(), &status) != 0) {
        throw RuntimeError(err::PathFileAccess, "The message cannot be read back");
    }
    curl_easy_setopt(curl, CURLOPT_UPLOAD, 1L);
    curl_easy_setopt(curl, CURLOPT_INFILESIZE_LARGE, static_cast<curl_off_t>(status.st_size));
    curl_easy_setopt(curl, CURLOPT_READFUNCTION, GiveContent);
    curl_easy_setopt(curl, CURLOPT_READDATA, &upload);
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, Drop);
    curl_easy_setopt(curl, CURLOPT_VERBOSE, 1L);
    curl_easy_setopt(curl, CURLOPT_DEBUGFUNCTION, Listen);
    curl_easy_setopt(curl, CURLOPT_DEBUGDATA, &upload);
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

void EnsureStarted() {
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK) {
        throw RuntimeError(err::MailboxOrServer, "The network library of this machine does not start");
    }
}

}  // namespace

void SmtpTransport::Deliver(const OutgoingMail& mail) {
    EnsureStarted();
    Upload upload{SpoolMessage(mail, LineEnds::CrLf), {}};
    const List recipients = AllRecipients(mail);
    const std::string sender = "<" + mail.from.address + ">";
    char detail[CURL_ERROR_SIZE] = "";
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> curl(curl_easy_init(), &curl_easy_cleanup);
    if (!curl) {
        throw std::bad_alloc();
    }
    SetServer(curl.get(), m_profile);
    SetUpload(curl.get(), upload);
    curl_easy_setopt(curl.get(), CURLOPT_ERRORBUFFER, detail);
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_FROM, sender.c_str());
    curl_easy_setopt(curl.get(), CURLOPT_MAIL_RCPT, recipients.get());
    const CURLcode code = curl_easy_perform(curl.get());
    if (code == CURLE_OK || upload.talk.Accepted()) {
        return;
    }
    if (code == CURLE_ABORTED_BY_CALLBACK || code == CURLE_READ_ERROR) {
        throw RuntimeError(err::PathFileAccess, "The message cannot be read back");
    }
    throw ExplainSmtpFailure(code, upload.talk, m_profile, detail);
}

}  // namespace mailer
