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
#include "platform/mail/base/domain_name.h"
#include "platform/mail/base/mail_errors.h"
#include "platform/mail/profile/ini_text.h"
#include "platform/posix/file_access.h"
#include "platform/posix/password_command.h"
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

class ProfileReader {
 public:
    ProfileReader(const fs::path& file, const std::string& text) : m_file(file), m_text(text) {}

    MailProfile Read() {
        MailProfile profile;
        profile.file = m_file;
        profile.transport = ReadTransport();
        profile.from = ReadFrom();
        profile.addressBook = Path("VCard");
        profile.stallSeconds = Number("Timeout", profile.stallSeconds);
        profile.connectSeconds = std::min(profile.connectSeconds, profile.stallSeconds);
        profile.acceptSeconds = std::max(profile.acceptSeconds, profile.stallSeconds);
        switch (profile.transport) {
            case TransportKind::Outbox:
                profile.outboxFolder = Path("OutboxFolder");
                if (profile.outboxFolder.empty()) {
                    profile.outboxFolder = DataHome() / "oxbow-courier" / "outbox";
                }
                break;
            case TransportKind::Smtp:
                ReadServer(profile);
                break;
            case TransportKind::Sendmail:
                profile.sendmailSeconds = Number("Timeout", profile.sendmailSeconds);
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

    std::string Text(KnownKey key) const { return m_text.Find(key->section, key->name).value_or(""); }

    // Returns nullopt if the key is missing. The words must be in the order of the enumeration.
    template <typename Kind>
    std::optional<Kind> Choice(KnownKey key) const {
        const std::string text = ToLower(Text(key));
        if (text.empty()) {
            return std::nullopt;
        }
        const auto found = std::find(key->words.begin(), key->words.end(), text);
        if (found == key->words.end()) {
            Refuse(key.Name() + " is \"" + Shown(text) + "\", not " + Alternatives(*key));
        }
        return static_cast<Kind>(found - key->words.begin());
    }

    TransportKind ReadTransport() const {
        constexpr KnownKey Transport = "Transport";
        const auto transport = Choice<TransportKind>(Transport);
        if (!transport) {
            Refuse("Transport is missing; it is " + Alternatives(*Transport));
        }
        return *transport;
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

    fs::path Path(KnownKey key) const {
        try {
            return ProfilePath(Text(key));
        } catch (const RuntimeError& error) {
            Refuse(key.Name() + ": " + error.Description());
        }
    }

    int Number(KnownKey key, int fallback) const {
        const std::string text = Text(key);
        if (text.empty()) {
            return fallback;
        }
        int number = 0;
        const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (failure != std::errc() || end != text.data() + text.size() || number < key->least ||
            number > key->most) {
            Refuse(key.Name() + " is \"" + Shown(text) + "\", not a number from " +
                   std::to_string(key->least) + " to " + std::to_string(key->most));
        }
        return number;
    }

    bool Switch(KnownKey key, bool fallback) const {
        const std::string text = ToLower(Text(key));
        if (text.empty()) {
            return fallback;
        }
        const bool isYes = std::find(YesWords.begin(), YesWords.end(), text) != YesWords.end();
        if (!isYes && std::find(NoWords.begin(), NoWords.end(), text) == NoWords.end()) {
            Refuse(key.Name() + " is \"" + Shown(text) + "\", not yes or no");
        }
        return isYes;
    }

    // The host becomes part of a URL, and no character in it may end that part. The same holds for the name
    // in the greeting.
    std::string HostName(KnownKey key, std::string_view marks, const std::string& what) const {
        std::string name = AsciiDomain(Text(key));
        const bool isPlain = std::all_of(name.begin(), name.end(), [marks](char c) {
            return IsAsciiLetterOrDigit(c) || marks.find(c) != std::string_view::npos;
        });
        if (!isPlain) {
            name.clear();
        }
        if (name.empty() && !Text(key).empty()) {
            Refuse(key.Name() + " is \"" + Shown(Text(key)) + "\", not " + what);
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
        profile.security = Choice<Security>("Security").value_or(Security::StartTls);
        profile.port = Number("Port", UsualPort(profile.security));
        profile.verify = Switch("Verify", true);
        profile.caFile = Path("CAFile");
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
    CommandPassword result = RunPasswordCommand(profile.passwordCommand, stop);
    if (stop.stop_requested()) {
        throw RuntimeError(err::MailUserCancel, "PasswordCommand was cancelled");
    }
    if (!result.failure.empty()) {
        throw RuntimeError(NumberOfSystemError(result.startError, ErrBadProfile),
                           ProfileText(profile.file, result.failure));
    }
    return std::move(result.password);
}

fs::path MailProfilePath() {
    return ConfigFolder() / "mail.ini";
}

namespace {

// A program that somebody else named would run with the rights of this process.
void CheckProgram(int opened, const MailProfile& profile) {
    if (profile.passwordCommand.empty() && profile.sendmail.empty()) {
        return;
    }
    const std::string begin = "it runs a program";
    if (const std::string owner = ForeignOwner(opened); !owner.empty()) {
        RefuseProfile(profile.file, begin + " and belongs to " + owner + "; make it your own (chown)");
    }
    struct stat status {};
    if (fstat(opened, &status) == 0 && (status.st_mode & S_IWOTH) != 0) {
        RefuseProfile(profile.file, begin + ", and everybody may write it; make it your own (chmod 600)");
    }
}

}  // namespace

MailProfile ReadMailProfile(const fs::path& file) {
    const UniqueFd opened = OpenRegularFile(file);
    const std::optional<std::string> text = ReadToEnd(opened.Get(), LargestProfile);
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
    CheckProgram(opened.Get(), profile);
    profile.isExposed = IsExposed(file, *text);
    return profile;
}

bool IsExposed(const fs::path& file, const std::string& text) {
    struct stat status {};
    constexpr KnownKey Password = "Password";
    return !IniText(text).Find(Password->section, Password->name).value_or("").empty() &&
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
