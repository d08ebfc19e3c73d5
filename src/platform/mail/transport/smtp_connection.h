// SPDX-License-Identifier: GPL-3.0-or-later
// One connection to the mail server of a profile (RFC 5321, section 3).
#pragma once

#include <curl/curl.h>

#include <memory>
#include <stop_token>
#include <string>

#include "platform/mail/profile/mail_profile.h"
#include "platform/mail/transport/smtp_talk.h"

namespace mailer {

// Sets address, encryption, login and time limits as the profile says; the caller adds the operation. Only
// files of this folder use it: only here and in smtp_failure libcurl is visible.
class SmtpConnection {
 public:
    // Reads the password. Raises ErrBadProfile if it cannot be obtained, err::MailboxOrServer if the network
    // library does not start. A stop request ends the connection within about a second. `profile` must
    // outlive the object.
    SmtpConnection(const MailProfile& profile, std::stop_token stop);
    SmtpConnection(const SmtpConnection&) = delete;
    SmtpConnection& operator=(const SmtpConnection&) = delete;

    CURL* Handle() { return m_curl.get(); }
    const SmtpTalk& Talk() const { return m_talk; }
    // Returns true if the server refused a recipient temporarily (4yz). The message is then sent to no
    // recipient.
    bool IsPutOff() const { return m_isPutOff; }
    // Call it once the whole message is given, while the connection is at work: from then on the server has
    // acceptSeconds to answer, because a message that is given up too early would be sent twice.
    void AwaitFinalAnswer();
    // Returns libcurl's code. Raises err::MailUserCancel after a stop, unless the server has accepted a
    // message before it.
    CURLcode Perform();
    // Raises the error of ExplainSmtpFailure.
    [[noreturn]] void RaiseFailure(CURLcode code) const;

 private:
    static int Listen(CURL* curl, curl_infotype kind, char* data, std::size_t size, void* context);

    void SetPatience(int seconds);
    void SetServer();
    void SetLogin();
    void SetListener();

    const MailProfile& m_profile;
    std::stop_token m_stop;
    SmtpTalk m_talk;
    bool m_isPutOff = false;
    char m_detail[CURL_ERROR_SIZE] = "";
    std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> m_curl;
};

}  // namespace mailer
