// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/mail/profile/mail_profile.h"

#include <sys/stat.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdlib>
#include <optional>

#include "platform/base/ascii.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/system_error.h"
#include "platform/mail/base/child_process.h"
#include "platform/mail/base/domain_name.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/profile/ini_text.h"
#include "platform/posix/small_file.h"

namespace mailer {
namespace {

std::string ProfileText(const std::filesystem::path& file, const std::string& why) {
    return "The mail profile \"" + file.string() + "\": " + why;
}

[[noreturn]] void RefuseProfile(const std::filesystem::path& file, const std::string& why) {
    throw RuntimeError(ErrBadProfile, ProfileText(file, why));
}

namespace fs = std::filesystem;

constexpr int LongestTimeout = 3600;  // in seconds

class ProfileReader {
 public:
    ProfileReader(const fs::path& file, const std::string& text) : m_file(file), m_text(text) {}

    MailProfile Read() {
        MailProfile profile;
        profile.file = m_file;
        profile.transport = ReadTransport();
        profile.from = ReadFrom();
        profile.addressBook = Path("AddressBook", "VCard");
        profile.stallSeconds = Number("Timeout", profile.stallSeconds, 1, LongestTimeout);
        profile.connectSeconds = std::min(profile.connectSeconds, profile.stallSeconds);
        profile.acceptSeconds = std::max(profile.acceptSeconds, profile.stallSeconds);
        switch (profile.transport) {
            case TransportKind::Outbox:
                profile.outboxFolder = Path("Profile", "OutboxFolder");
                if (profile.outboxFolder.empty()) {
                    profile.outboxFolder = DataHome() / "oxbow-courier" / "outbox";
                }
                break;
            case TransportKind::Smtp:
                ReadServer(profile);
                break;
            case TransportKind::Sendmail:
                profile.sendmailSeconds = Number("Timeout", profile.sendmailSeconds, 1, LongestTimeout);
                profile.sendmail = Text("Sendmail");
                if (profile.sendmail.empty()) {
                    profile.sendmail = "/usr/sbin/sendmail";
                }
                break;
        }
        return profile;
    }

 private:
    [[noreturn]] void Refuse(const std::string& why) const { RefuseProfile(m_file, why); }

    std::string Text(std::string_view key) const { return m_text.Find("Profile", key).value_or(""); }

    TransportKind ReadTransport() const {
        const std::string transport = ToLower(Text("Transport"));
        if (transport == "outbox") {
            return TransportKind::Outbox;
        }
        if (transport == "smtp") {
            return TransportKind::Smtp;
        }
        if (transport == "sendmail") {
            return TransportKind::Sendmail;
        }
        Refuse(transport.empty() ? "Transport is missing; it is outbox, smtp or sendmail"
                                 : "Transport is \"" + Shown(transport) + "\", not outbox, smtp or sendmail");
    }

    Mailbox ReadFrom() const {
        const std::string from = Text("From");
        if (from.empty()) {
            Refuse("From is missing");
        }
        try {
            return ParseMailbox(from);
        } catch (const RuntimeError& error) {
            Refuse("From: " + error.Description());
        }
    }

    fs::path Path(std::string_view section, std::string_view key) const {
        try {
            return ProfilePath(m_text.Find(section, key).value_or(""));
        } catch (const RuntimeError& error) {
            Refuse(std::string(key) + ": " + error.Description());
        }
    }

    int Number(std::string_view key, int fallback, int least, int most) const {
        const std::string text = Text(key);
        if (text.empty()) {
            return fallback;
        }
        int number = 0;
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (failure != std::errc() || end != text.data() + text.size() || number < least || number > most) {
            Refuse(std::string(key) + " is \"" + Shown(text) + "\", not a number from " +
                   std::to_string(least) + " to " + std::to_string(most));
        }
        return number;
    }

    bool Switch(std::string_view key, bool fallback) const {
        const std::string text = ToLower(Text(key));
        if (text.empty()) {
            return fallback;
        }
        if (text == "yes" || text == "true" || text == "1") {
            return true;
        }
        if (text == "no" || text == "false" || text == "0") {
            return false;
        }
        Refuse(std::string(key) + " is \"" + Shown(text) + "\", not yes or no");
    }

    Security ReadSecurity() const {
        const std::string text = ToLower(Text("Security"));
        if (text.empty() || text == "starttls") {
            return Security::StartTls;
        }
        if (text == "tls") {
            return Security::Tls;
        }
        if (text == "none") {
            return Security::None;
        }
        Refuse("Security is \"" + Shown(text) + "\", not none, starttls or tls");
    }

    // The host becomes part of a URL, and no character in it may end that part. The same holds for the name
    // in the greeting.
    std::string HostName(std::string_view key, std::string_view marks, const std::string& what) const {
        std::string name = AsciiDomain(Text(key));
        for (const char letter : name) {
            if (!IsAsciiLetterOrDigit(letter) && marks.find(letter) == std::string_view::npos) {
                name.clear();
                break;
            }
        }
        if (name.empty() && !Text(key).empty()) {
            Refuse(std::string(key) + " is \"" + Shown(Text(key)) + "\", not " + what);
        }
        return name;
    }

    std::string ReadHost() const {
        std::string host = HostName("Host", ".-_:", "the name or the address of a server");
        if (host.empty()) {
            Refuse("Host is missing");
        }
        return host;
    }

    void ReadServer(MailProfile& profile) const {
        profile.host = ReadHost();
        profile.hello = HostName("Hello", ".-_:[]", "the name or the address of a machine");
        profile.security = ReadSecurity();
        const int usualPort = profile.security == Security::Tls        ? 465
                              : profile.security == Security::StartTls ? 587
                                                                       : 25;
        profile.port = Number("Port", usualPort, 1, 65535);
        profile.verify = Switch("Verify", true);
        profile.caFile = Path("Profile", "CAFile");
        profile.user = Text("User");
        profile.password = Text("Password");
        profile.passwordCommand = Text("PasswordCommand");
    }

    fs::path m_file;
    IniText m_text;
};

}  // namespace

fs::path ProfilePath(const std::string& text) {
    if (text.empty()) {
        return {};
    }
    if (text.starts_with("~/")) {
        const char* home = std::getenv("HOME");
        return fs::path(home != nullptr ? home : "/") / text.substr(2);
    }
    return paths::ToMachine(text);
}

std::string PasswordOf(const MailProfile& profile, const std::stop_token& stop) {
    if (!profile.password.empty() || profile.passwordCommand.empty()) {
        return profile.password;
    }
    constexpr int Seconds = 30;
    constexpr std::size_t LongestPassword = 4096;
    const ChildResult result =
        RunChild({"/bin/sh", "-c", profile.passwordCommand}, -1, Seconds, LongestPassword, stop);
    if (stop.stop_requested()) {
        throw RuntimeError(err::MailUserCancel, "PasswordCommand was cancelled");
    }
    if (result.timedOut) {
        RefuseProfile(profile.file, "PasswordCommand did not end within 30 seconds");
    }
    if (!result.started) {
        throw RuntimeError(NumberOfSystemError(result.startError, ErrBadProfile),
                           ProfileText(profile.file, "PasswordCommand cannot be started: " +
                                                         SystemErrorText(result.startError)));
    }
    if (result.tooMuch) {
        RefuseProfile(profile.file,
                      "PasswordCommand wrote more than " + std::to_string(LongestPassword) + " bytes");
    }
    if (result.signal != 0) {
        RefuseProfile(profile.file, "PasswordCommand " + EndOf(result));
    }
    if (result.exitCode != 0) {
        RefuseProfile(profile.file,
                      "PasswordCommand failed with exit code " + std::to_string(result.exitCode));
    }
    std::string password = result.output.substr(0, result.output.find_last_not_of("\r\n") + 1);
    if (password.empty() || HasControls(password)) {
        RefuseProfile(profile.file, "PasswordCommand wrote no password of one line");
    }
    return password;
}

fs::path MailProfilePath() {
    return ConfigFolder() / "mail.ini";
}

MailProfile ReadMailProfile(const fs::path& file) {
    const std::optional<std::string> text = ReadSmallFile(file, LargestProfile);
    if (!text) {
        // A machine that lacks something says nothing of the file.
        const int code = errno;
        if (const std::int32_t number = NumberOfSystemError(code, ErrNoProfile); number != ErrNoProfile) {
            throw RuntimeError(number, ProfileText(file, "it cannot be read: " + SystemErrorText(code)));
        }
        throw RuntimeError(ErrNoProfile, "There is no mail profile: the file \"" + file.string() +
                                             "\" is missing or cannot be read");
    }
    MailProfile profile = ParseMailProfile(file, *text);
    profile.isExposed = IsExposed(file, *text);
    return profile;
}

bool IsExposed(const fs::path& file, const std::string& text) {
    struct stat status {};
    return !IniText(text).Find("Profile", "Password").value_or("").empty() &&
           stat(file.c_str(), &status) == 0 && (status.st_mode & (S_IRWXG | S_IRWXO)) != 0;
}

std::string ExposureText(const MailProfile& profile) {
    return "The mail profile \"" + profile.file.string() +
           "\" has a password in it, and others may read it; make it readable for you only (chmod 600)";
}

MailProfile ParseMailProfile(const fs::path& file, const std::string& text) {
    return ProfileReader(file, text).Read();
}

}  // namespace mailer
