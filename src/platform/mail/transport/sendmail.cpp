// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/transport/sendmail.h"

#include <sysexits.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "platform/base/ascii.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/message/spool_file.h"
#include "platform/posix/child_process.h"

namespace mailer {
namespace {

bool IsLater(int exitCode) {
    return exitCode == EX_TEMPFAIL || exitCode == EX_UNAVAILABLE || exitCode == EX_OSERR ||
           exitCode == EX_IOERR;
}

bool IsRecipient(int exitCode) {
    return exitCode == EX_NOUSER || exitCode == EX_NOHOST;
}

// What it said of the failure itself, else how it ended.
std::string Reason(const ChildResult& result) {
    const std::string_view complaint = Trim(result.complaint.empty() ? result.output : result.complaint);
    const std::string words = complaint.empty() ? std::string() : ": " + Shown(complaint);
    return result.signal != 0
               ? EndOf(result) + words
               : "refused the message" +
                     (words.empty() ? ": exit code " + std::to_string(result.exitCode) : words);
}

[[noreturn]] void RefuseProgram(const std::string& program) {
    throw RuntimeError(ErrBadProfile, "The mail program \"" + program + "\" is missing or may not be run");
}

[[noreturn]] void RefuseStart(const std::string& program, int code) {
    if (code == ENOENT || code == ENOTDIR || code == EACCES || code == ENOEXEC) {
        RefuseProgram(program);
    }
    throw RuntimeError(NumberOfSystemError(code, ErrBadProfile),
                       "The mail program \"" + program + "\" cannot be started: " + SystemErrorText(code));
}

bool MayBeRun(const std::filesystem::path& file) {
    std::error_code error;
    return std::filesystem::is_regular_file(file, error) && access(file.c_str(), X_OK) == 0;
}

}  // namespace

// Searches where running the program would search.
void SendmailTransport::CheckProgram() const {
    if (m_program.find('/') != std::string::npos) {
        return MayBeRun(m_program) ? void() : RefuseProgram(m_program);
    }
    const char* path = std::getenv("PATH");
    std::istringstream folders(path != nullptr ? path : "/bin:/usr/bin");
    for (std::string folder; std::getline(folders, folder, ':');) {
        if (MayBeRun(std::filesystem::path(folder) / m_program)) {
            return;
        }
    }
    RefuseProgram(m_program);
}

Refusals SendmailTransport::Deliver(const OutgoingMail& mail) {
    std::vector<std::string> arguments{m_program, "-i", "-f", mail.from.address, "--"};
    for (const Mailbox& recipient : mail.recipients) {
        arguments.push_back(recipient.address);
    }
    const UniqueFd message = SpoolMessage(mail, LineEnds::Lf);
    constexpr std::size_t LongestOutput = 1 << 14;  // bytes of output that are kept for the error text
    const ChildResult result =
        RunChild(arguments, message.Get(), m_seconds, LongestOutput, m_stop, Excess::IsDropped);
    const std::string program = "The mail program \"" + m_program + "\" ";
    if (!result.started) {
        RefuseStart(m_program, result.startError);
    }
    if (result.timedOut && m_stop.stop_requested()) {
        throw RuntimeError(err::MailUserCancel, program + "was ended before it had taken the message");
    }
    if (result.timedOut) {
        throw RuntimeError(err::MailboxOrServer,
                           program + "did not end within " + std::to_string(m_seconds) + " seconds");
    }
    if (result.exitCode != 0) {
        throw RuntimeError(IsLater(result.exitCode)       ? err::MailboxOrServer
                           : IsRecipient(result.exitCode) ? ErrRecipientRefused
                                                          : ErrMessageRefused,
                           program + Reason(result));
    }
    return {};
}

}  // namespace mailer
