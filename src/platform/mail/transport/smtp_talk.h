// SPDX-License-Identifier: GPL-3.0-or-later
// Records the SMTP dialogue with a server, as far as a failure needs it (RFC 5321, section 4).
#pragma once

#include <charconv>
#include <string>
#include <string_view>
#include <vector>

#include "platform/contracts/mapi.h"

namespace mailer {

class SmtpTalk {
 public:
    enum class Stage { Greeting, Hello, StartTls, Login, Sender, Recipient, Content };

    void CommandSent(std::string_view command) {
        const std::string_view verb = command.substr(0, 4);
        if (verb == "QUIT") {
            m_over = true;  // also sent after a failure, and then the answer before it counts
            return;
        }
        m_code = 0;
        m_reply.clear();
        m_isWhole = false;
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

    // Takes one line of a reply (RFC 5321, section 4.2.1). A command may have several replies, as DATA has;
    // the last one counts.
    void Heard(std::string_view line) {
        if (m_over) {
            return;
        }
        constexpr std::size_t LongestReply = 500;
        constexpr std::size_t CodeLength = 3;
        if (m_isWhole) {
            m_reply.clear();
        }
        std::from_chars(line.data(), line.data() + line.size(), m_code);
        const std::string_view text = line.substr(0, line.find_last_not_of("\r\n") + 1);
        m_isWhole = text.size() <= CodeLength || text[CodeLength] != '-';
        if (m_reply.size() < LongestReply) {
            m_reply.append(m_reply.empty() ? "" : " ").append(text);
        }
        m_accepted = m_accepted || (m_stage == Stage::Content && m_contentGiven && m_code / 100 == 2);
        if (m_isWhole && m_stage == Stage::Recipient && m_code / 100 == 5) {
            m_refusals.push_back({m_recipient, m_reply});
        }
    }

    void ContentGiven() {
        m_contentGiven = true;
        if (m_code == StartInput) {
            m_code = 0;  // that was the answer to DATA; the one to the content is still to come
            m_reply.clear();
        }
    }

    Stage At() const { return m_stage; }
    int Code() const { return m_code; }  // of the last reply to the last command; 0 without a reply
    const std::string& Reply() const { return m_reply; }  // the last reply, its lines joined by blanks
    const std::string& Recipient() const { return m_recipient; }
    // Returns the recipients that the server refused permanently (5yz), each with the reply.
    const std::vector<MAPI::Refusal>& Refusals() const { return m_refusals; }
    // The server neither takes the recipient that was named last nor refuses it for ever: it may take it at
    // another time, or its answer is none.
    bool IsPutOff() const {
        return m_stage == Stage::Recipient && m_isWhole && m_code / 100 != 2 && m_code / 100 != 5;
    }
    // Returns true if the last reply is no refusal (4yz, 5yz) and not the code that RFC 5321 expects.
    bool IsUnexpected() const {
        constexpr int FirstRefusal = 400;
        if (m_code == 0 || m_code >= FirstRefusal) {
            return false;
        }
        if (m_stage == Stage::Login) {
            return m_code / 100 != 2 && m_code != Challenge;
        }
        return m_stage == Stage::Content && !m_contentGiven ? m_code != StartInput : m_code / 100 != 2;
    }
    // The whole message has been given, and its answer is not there yet.
    bool IsContentGiven() const { return m_contentGiven; }
    // Returns true once the server has accepted the message: after that it must not be sent again, whatever
    // fails.
    bool Accepted() const { return m_accepted; }

 private:
    static constexpr int Challenge = 334;
    static constexpr int StartInput = 354;

    Stage m_stage = Stage::Greeting;
    int m_code = 0;
    std::string m_reply;
    bool m_isWhole = false;  // the last line of the reply has arrived
    std::string m_recipient;
    std::vector<MAPI::Refusal> m_refusals;
    bool m_contentGiven = false;
    bool m_accepted = false;
    bool m_over = false;
};

}  // namespace mailer
