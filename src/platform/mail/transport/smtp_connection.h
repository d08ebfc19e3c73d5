// One connection to the mail server of a profile, for whatever is done there.
#pragma once

#include <curl/curl.h>

#include <memory>
#include <stop_token>
#include <string>

#include "platform/mail/profile/mail_profile.h"
#include "platform/mail/transport/smtp_talk.h"

namespace mailer {

// Address, encryption, login and limits of time are set as the profile says; the caller adds what is to be
// done. Only for files of this folder: it is the one place besides smtp_failure where libcurl is met.
class SmtpConnection {
 public:
    // Asks for the password. Raises ErrBadProfile when there is none to be had, err::MailboxOrServer when
    // the network library does not start. A stop that is asked for ends the talk within a second or so.
    SmtpConnection(const MailProfile& profile, std::stop_token stop);
    SmtpConnection(const SmtpConnection&) = delete;
    SmtpConnection& operator=(const SmtpConnection&) = delete;

    CURL* Handle() { return m_curl.get(); }
    const SmtpTalk& Talk() const { return m_talk; }
    // A recipient is not taken now, but may be later: the message goes to nobody.
    bool IsPutOff() const { return m_isPutOff; }
    // The whole message has been given: from here on the server has acceptSeconds to answer, as a message
    // that was given up too early would go out again. Called while the connection is at work.
    void AwaitFinalAnswer();
    // Returns libcurl's code. Raises err::MailUserCancel when it was stopped, unless the server has taken a
    // message by then.
    CURLcode Perform();
    // See ExplainSmtpFailure.
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
