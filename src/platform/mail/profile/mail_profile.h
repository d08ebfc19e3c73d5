// The mail profile: how mail leaves this machine, from whom, and where the address book is.
#pragma once

#include <filesystem>
#include <stop_token>
#include <string>

#include "platform/mail/base/mail_address.h"

namespace mailer {

enum class TransportKind { Outbox, Smtp, Sendmail };
enum class Security { None, StartTls, Tls };

struct MailProfile {
    std::filesystem::path file;  // it was read from
    bool isExposed = false;      // it has a password, and others may read it
    TransportKind transport = TransportKind::Outbox;
    Mailbox from;
    std::filesystem::path addressBook;  // vCard file; empty when there is none

    std::filesystem::path outboxFolder;  // outbox

    std::string host;  // smtp: a name or an address
    int port = 0;
    Security security = Security::StartTls;
    std::string hello;             // what this machine calls itself there; empty: its own name
    std::string user;              // empty: no login
    std::string password;          // see PasswordOf
    std::string passwordCommand;   // writes the password when there is none
    bool verify = true;            // the server's certificate
    std::filesystem::path caFile;  // empty: the machine's own

    std::string sendmail;       // sendmail: the program
    int sendmailSeconds = 600;  // that it may take: it may wait for a server itself

    int connectSeconds = 15;  // until the server is ready for a message
    int stallSeconds = 60;    // without a sign of life from then on
    // smtp: without an answer to a whole message. A message that was given up too early is sent again though
    // the server may have it, so this is as long as mail servers are granted.
    int acceptSeconds = 600;
};

// ${XDG_CONFIG_HOME:-~/.config}/oxbow-courier/mail.ini
std::filesystem::path MailProfilePath();

// Reads the profile. Raises ErrNoProfile when the file is missing or cannot be
// read, ErrBadProfile when it makes no sense; the texts name the file and the key.
MailProfile ReadMailProfile(const std::filesystem::path& file);
// The same for a text that the file is to hold.
MailProfile ParseMailProfile(const std::filesystem::path& file, const std::string& text);
// Whether there is a password in the text of this file, and the file is open to more people than its owner.
bool IsExposed(const std::filesystem::path& file, const std::string& text);
// What is to be said of a profile that isExposed, in one line.
std::string ExposureText(const MailProfile& profile);
// The path that a value of the profile means: the machine's or the system's way of writing, or ~/ and what
// follows.
std::filesystem::path ProfilePath(const std::string& text);
// In bytes; a larger file is not read.
inline constexpr std::size_t LargestProfile = 1 << 20;

// The password, by PasswordCommand if need be. Asked for when a message is sent and not at logon: a locked
// keyring fails one message, which is tried again, and not the whole session. Raises ErrBadProfile when the
// command fails or is stopped.
std::string PasswordOf(const MailProfile& profile, const std::stop_token& stop = {});

}  // namespace mailer
