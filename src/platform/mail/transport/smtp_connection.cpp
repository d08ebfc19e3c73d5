// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/smtp_connection.h"

#include <algorithm>
#include <new>

#include "platform/contracts/runtime.h"
#include "platform/mail/transport/smtp_failure.h"

namespace mailer {
namespace {

constexpr int GoodbyeSeconds = 2;

// Listen reads the server's replies; without this function the library would print them.
std::size_t Drop(char*, std::size_t size, std::size_t count, void*) {
    return size * count;
}

int ContinueUnlessStopped(void* context, curl_off_t, curl_off_t, curl_off_t, curl_off_t) {
    return static_cast<const std::stop_token*>(context)->stop_requested() ? 1 : 0;
}

void EnsureStarted() {
    static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
    if (started != CURLE_OK) {
        throw RuntimeError(err::MailboxOrServer, "The network library of this machine does not start");
    }
}

std::string Url(const MailProfile& profile) {
    const bool isIpv6 = profile.host.find(':') != std::string::npos;
    const std::string host = isIpv6 ? "[" + profile.host + "]" : profile.host;
    return (profile.security == Security::Tls ? "smtps://" : "smtp://") + host + ":" +
           std::to_string(profile.port) + (profile.hello.empty() ? "" : "/" + profile.hello);
}

}  // namespace

SmtpConnection::SmtpConnection(const MailProfile& profile, std::stop_token stop)
    : m_profile(profile), m_stop(std::move(stop)), m_curl(nullptr, &curl_easy_cleanup) {
    EnsureStarted();
    m_curl.reset(curl_easy_init());
    if (!m_curl) {
        throw std::bad_alloc();
    }
    SetServer();
    SetLogin();
    SetListener();
}

void SmtpConnection::SetServer() {
    CURL* curl = m_curl.get();
    const MailProfile& profile = m_profile;
    curl_easy_setopt(curl, CURLOPT_URL, Url(profile).c_str());
    curl_easy_setopt(curl, CURLOPT_PROTOCOLS_STR, profile.security == Security::Tls ? "smtps" : "smtp");
    // Signals and the alarm belong to the program.
    curl_easy_setopt(curl, CURLOPT_NOSIGNAL, 1L);
    // The desktop's proxies are for web pages.
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
    curl_easy_setopt(curl, CURLOPT_CONNECTTIMEOUT, static_cast<long>(profile.connectSeconds));
    curl_easy_setopt(curl, CURLOPT_LOW_SPEED_LIMIT, 1L);
    SetPatience(profile.stallSeconds);
    // QUIT is part of this call, within the same time limits.
    curl_easy_setopt(curl, CURLOPT_FORBID_REUSE, 1L);
}

// Sets how long the server may be silent.
void SmtpConnection::SetPatience(int seconds) {
    curl_easy_setopt(m_curl.get(), CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(seconds));
    curl_easy_setopt(m_curl.get(), CURLOPT_LOW_SPEED_TIME, static_cast<long>(seconds));
}

void SmtpConnection::AwaitFinalAnswer() {
    m_talk.ContentGiven();
    SetPatience(m_profile.acceptSeconds);
}

int SmtpConnection::Listen(CURL* curl, curl_infotype kind, char* data, std::size_t size, void* context) {
    auto& connection = *static_cast<SmtpConnection*>(context);
    if (kind == CURLINFO_HEADER_OUT) {
        connection.m_talk.CommandSent({data, size});
    } else if (kind == CURLINFO_HEADER_IN) {
        connection.m_talk.Heard({data, size});
        if (connection.m_talk.IsPutOff()) {
            connection.m_isPutOff = true;
            // The library skips a refused recipient; this setting ends the dialogue here.
            curl_easy_setopt(curl, CURLOPT_MAIL_RCPT_ALLLOWFAILS, 0L);
        }
        if (connection.m_talk.Accepted()) {
            // The message is accepted. A process that ends before the run is recorded causes a second copy,
            // so the wait for the reply to QUIT is short.
            connection.SetPatience(std::min(GoodbyeSeconds, connection.m_profile.stallSeconds));
        }
    }
    return 0;
}

void SmtpConnection::SetLogin() {
    if (m_profile.user.empty()) {
        return;
    }
    curl_easy_setopt(m_curl.get(), CURLOPT_USERNAME, m_profile.user.c_str());
    curl_easy_setopt(m_curl.get(), CURLOPT_PASSWORD, PasswordOf(m_profile, m_stop).c_str());
    // Only mechanisms that use a password: a Kerberos ticket is not available without a user.
    curl_easy_setopt(m_curl.get(), CURLOPT_LOGIN_OPTIONS, "AUTH=PLAIN;AUTH=LOGIN;AUTH=CRAM-MD5");
}

void SmtpConnection::SetListener() {
    CURL* curl = m_curl.get();
    curl_easy_setopt(curl, CURLOPT_WRITEFUNCTION, Drop);
    curl_easy_setopt(curl, CURLOPT_VERBOSE, 1L);
    curl_easy_setopt(curl, CURLOPT_DEBUGFUNCTION, Listen);
    curl_easy_setopt(curl, CURLOPT_DEBUGDATA, this);
    curl_easy_setopt(curl, CURLOPT_ERRORBUFFER, m_detail);
    if (m_stop.stop_possible()) {
        curl_easy_setopt(curl, CURLOPT_NOPROGRESS, 0L);
        curl_easy_setopt(curl, CURLOPT_XFERINFOFUNCTION, ContinueUnlessStopped);
        curl_easy_setopt(curl, CURLOPT_XFERINFODATA, &m_stop);
        // A stop request does not wait for a silent name service.
        curl_easy_setopt(curl, CURLOPT_QUICK_EXIT, 1L);
    }
}

CURLcode SmtpConnection::Perform() {
    const CURLcode code = curl_easy_perform(m_curl.get());
    if (code == CURLE_ABORTED_BY_CALLBACK && m_stop.stop_requested() && !m_talk.Accepted()) {
        throw RuntimeError(err::MailUserCancel, "The talk with the mail server was cancelled");
    }
    return code;
}

void SmtpConnection::RaiseFailure(CURLcode code) const {
    throw ExplainSmtpFailure(code, m_talk, m_profile, m_detail);
}

}  // namespace mailer
