// SPDX-License-Identifier: GPL-3.0-or-later
// The mail profile: how mail is sent from this machine, the sender, and the address book.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>

#include "platform/mail/base/mail_address.h"
#include "platform/mail/profile/keys.h"

namespace mailer {

struct MailProfile {
    std::filesystem::path file;  // the file that it was read from
    bool isExposed = false;      // it holds a password and other users can read it
    TransportKind transport = TransportKind::Outbox;
    Mailbox from;
    std::filesystem::path addressBook;  // vCard file; empty: no book

    std::filesystem::path outboxFolder;  // outbox

    std::string host;  // smtp: a name or an address
    int port = 0;
    Security security = Security::StartTls;
    std::string hello;  // the name of this machine for EHLO (RFC 5321, section 4.1.1.1); empty: its own name
    std::string user;   // empty: no login
    std::string password;          // in the file; see PasswordOf
    std::string passwordCommand;   // command that writes the password, if the file has none
    bool verify = true;            // whether the server's certificate is verified
    std::filesystem::path caFile;  // certificates to trust; empty: the machine's

    std::string sendmail;                        // sendmail: the program
    int sendmailSeconds = UsualSendmailSeconds;  // time limit

    int connectSeconds = 15;               // until the server is ready for a message, in seconds
    int stallSeconds = UsualStallSeconds;  // after that, in seconds without any data
    // smtp: for the answer to a whole message, in seconds. A message that is given up too early is sent again
    // although the server may have it, so this is the ten minutes of RFC 5321, section 4.5.3.2.6.
    int acceptSeconds = 600;
};

// Returns ${XDG_CONFIG_HOME:-~/.config}/oxbow-courier/mail.ini.
std::filesystem::path MailProfilePath();

// Reads the profile. Raises ErrNoProfile if the file is missing or cannot be read, ErrBadProfile if it is
// invalid, or if it names a program and another user owns it or everybody may write it. The texts name the
// file and the key.
MailProfile ReadMailProfile(const std::filesystem::path& file);
// Reads the profile from a text that is to be written to the file. Raises ErrBadProfile.
MailProfile ParseMailProfile(const std::filesystem::path& file, const std::string& text);
// Returns true if the text holds a password and other users can read the file.
bool IsExposed(const std::filesystem::path& file, const std::string& text);
// Returns the warning for a profile that isExposed, on one line.
std::string ExposureText(const MailProfile& profile);
// Returns the path for a value of the profile: a machine path, a path of the system, or ~/ and a path below
// the home folder.
std::filesystem::path ProfilePath(const std::string& text);
// In bytes. A larger file is not read.
inline constexpr std::size_t LargestProfile = 1 << 20;

// Returns the password, from PasswordCommand if the file has none. It is read when a message is sent and not
// at logon: a locked keyring fails one message, which is tried again, and not the whole session. Raises
// ErrBadProfile if the command fails, err::MailUserCancel if it is stopped.
std::string PasswordOf(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
