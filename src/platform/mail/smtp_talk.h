// What was said between this machine and a mail server, as far as a failure needs it.
#pragma once

#include <charconv>
#include <string>
#include <string_view>

namespace mailer {

class SmtpTalk {
 public:
    enum class Stage { Greeting, Hello, StartTls, Login, Sender, Recipient, Content };

    void Said(std::string_view command) {
        const std::string_view verb = command.substr(0, 4);
        if (verb == "QUIT") {
            m_over = true;  // said after a failure too: the answer before it is the one that tells
            return;
        }
        m_code = 0;
        m_reply.clear();
        if (verb == "EHLO" || verb == "HELO") {
            m_stage = Stage::Hello;
        } else if (verb == "STAR") {
            m_stage = Stage::StartTls;
        } else if (verb == "AUTH") {
            m_stage = Stage::Login;
        } else if (verb == "MAIL") {
            m_stage = Stage::Sender;
        } else if (verb == "RCPT") {
            m_stage = Stage::Recipient;
            const std::size_t open = command.find('<');
            const std::size_t close = command.rfind('>');
            m_recipient = open < close ? command.substr(open + 1, close - open - 1) : command;
        } else if (verb == "DATA") {
            m_stage = Stage::Content;
        }
    }

    // One line of an answer.
    void Heard(std::string_view line) {
        if (m_over) {
            return;
        }
        constexpr std::size_t LongestReply = 500;
        std::from_chars(line.data(), line.data() + line.size(), m_code);
        const std::size_t end = line.find_last_not_of("\r\n") + 1;
        if (m_reply.size() < LongestReply) {
            m_reply += (m_reply.empty() ? "" : " ") + std::string(line.substr(0, end));
        }
        m_accepted = m_accepted || (m_stage == Stage::Content && m_contentGiven && m_code == 250);
    }

    void ContentGiven() { m_contentGiven = true; }

    Stage At() const { return m_stage; }
    int Code() const { return m_code; }  // of the answer to the last command; 0 when there was none
    const std::string& Reply() const { return m_reply; }
    const std::string& Recipient() const { return m_recipient; }
    // The server has taken the message: whatever goes wrong from here, it must not be sent again.
    bool Accepted() const { return m_accepted; }

 private:
    Stage m_stage = Stage::Greeting;
    int m_code = 0;
    std::string m_reply;
    std::string m_recipient;
    bool m_contentGiven = false;
    bool m_accepted = false;
    bool m_over = false;
};

}  // namespace mailer
