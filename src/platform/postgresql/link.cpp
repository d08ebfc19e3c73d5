// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/link.h"

#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/base/ascii.h"
#include "platform/base/convert.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/small_file.h"

namespace {

constexpr std::string_view Beginning = "Oxbow Courier store link ";
constexpr std::string_view FirstLine = "Oxbow Courier store link 1";
constexpr std::size_t LargestLink = 65'536;
constexpr std::string_view Blanks = " \t\r";

struct Key {
    std::string_view name;
    std::string Link::*value;
};
constexpr std::array<Key, 8> Keys{{{"Host", &Link::host},
                                   {"Port", &Link::port},
                                   {"Database", &Link::database},
                                   {"Username", &Link::user},
                                   {"Password", &Link::password},
                                   {"PasswordCommand", &Link::passwordCommand},
                                   {"SSLMode", &Link::sslMode},
                                   {"SSLRootCert", &Link::rootCertificate}}};

// Raises the fault of a text that is called `what`.
[[noreturn]] void RaiseFault(const std::string& what, const std::string& fault) {
    throw RuntimeError(err::DataUnavailable, what + " is damaged; " + fault);
}

// Names of keys compare without regard to case and blanks: "SSL Mode" is SSLMode.
void SetKey(Link& link, std::string_view name, std::string_view value, const std::string& what) {
    const std::string plain = Replace(std::string(name), " ", "");
    if (HasControls(value)) {
        RaiseFault(what, "the value of " + plain + " holds a control character");
    }
    if (SameText(plain, "Provider")) {
        if (!SameText(value, "PostgreSQL")) {
            RaiseFault(what, "there is no provider \"" + std::string(value) + "\", only PostgreSQL");
        }
        return;
    }
    for (const Key& key : Keys) {
        if (SameText(plain, key.name)) {
            link.*key.value = value;
            return;
        }
    }
    RaiseFault(what, "the key \"" + std::string(name) + "\" is not known");
}

// Brings SSL Mode=VerifyFull to the form of libpq.
void UseWordsOfLibpq(Link& link, const std::string& what) {
    if (link.sslMode.empty()) {
        return;
    }
    const std::string given = Replace(ToLower(link.sslMode), "-", "");
    for (const std::string_view word :
         {"disable", "allow", "prefer", "require", "verify-ca", "verify-full"}) {
        if (given == Replace(std::string(word), "-", "")) {
            link.sslMode = word;
            return;
        }
    }
    RaiseFault(what, "\"" + link.sslMode + "\" is not an SSLMode");
}

void Check(Link& link, const std::string& what) {
    if (link.host.empty()) {
        RaiseFault(what, "it names no Host");
    }
    if (link.database.empty()) {
        RaiseFault(what, "it names no Database");
    }
    if (link.port.empty()) {
        link.port = "5432";
    }
    if (link.port.size() > 5 || link.port.find_first_not_of("0123456789") != std::string::npos) {
        RaiseFault(what, "\"" + link.port + "\" is not a Port");
    }
    UseWordsOfLibpq(link, what);
}

// Removes and returns the value at the front, up to a semicolon.
std::string TakeValue(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    const char mark = text.empty() ? '\0' : text.front();
    std::string value;
    if (mark == '"' || mark == '\'') {
        const std::size_t end = std::min(text.find(mark, 1), text.size());
        value = text.substr(1, end - 1);
        text.remove_prefix(std::min(end + 1, text.size()));
        text.remove_prefix(std::min(text.find(';'), text.size()));
    } else {
        const std::size_t end = std::min(text.find(';'), text.size());
        value = Trim(text.substr(0, end), Blanks);
        text.remove_prefix(end);
    }
    text.remove_prefix(text.empty() ? 0 : 1);
    return value;
}

}  // namespace

std::string Link::Name() const {
    return "\"" + database + "\" on " + host;
}

std::optional<Link> ReadLink(const std::filesystem::path& file) {
    {
        // A database may be large: the beginning of the file tells what it is.
        const UniqueFd opened = OpenRegularFile(file);
        std::array<char, Beginning.size()> bytes{};
        if (opened.Get() < 0 || read(opened.Get(), bytes.data(), bytes.size()) != std::ssize(bytes) ||
            std::string_view(bytes.data(), bytes.size()) != Beginning) {
            return std::nullopt;
        }
    }
    const std::string what = "The link \"" + paths::ForUser(paths::FromMachine(file)) + "\"";
    const std::optional<std::string> text = ReadSmallFile(file, LargestLink);
    if (!text) {
        RaiseFault(what, errno == EOVERFLOW ? "it is too long" : "it cannot be read");
    }
    Link link;
    std::string_view rest = *text;
    for (bool first = true; !rest.empty(); first = false) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = Trim(rest.substr(0, end), Blanks);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (first && line != FirstLine) {
            throw RuntimeError(err::DataUnavailable, what + " is of a later version of the program");
        }
        if (first || line.empty()) {
            continue;
        }
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos) {
            RaiseFault(what, "the line \"" + std::string(line.substr(0, 40)) + "\" has no =");
        }
        SetKey(link, Trim(line.substr(0, sign), Blanks), Trim(line.substr(sign + 1), Blanks), what);
    }
    Check(link, what);
    struct stat status {};
    constexpr mode_t Others = S_IRGRP | S_IROTH;
    if (!link.password.empty() && stat(file.c_str(), &status) == 0 && (status.st_mode & Others) != 0) {
        throw RuntimeError(err::DataUnavailable,
                           what + " holds a password that other users can read; give it the mode 0600");
    }
    return link;
}

Link LinkOfConnectString(std::string_view text) {
    const std::string what = "The connect string";
    Link link;
    while (!Trim(text, " \t;").empty()) {
        const std::size_t sign = text.find('=');
        if (sign == std::string_view::npos) {
            RaiseFault(what, "\"" + std::string(Trim(text, " \t;")) + "\" has no =");
        }
        const std::string name(Trim(text.substr(0, sign), " \t;"));
        text.remove_prefix(sign + 1);
        SetKey(link, name, TakeValue(text), what);
    }
    Check(link, what);
    return link;
}

std::string TextOfLink(const Link& link) {
    std::string text(FirstLine);
    text += "\nProvider=PostgreSQL\n";
    for (const Key& key : Keys) {
        if (!(link.*key.value).empty()) {
            text += std::string(key.name) + "=" + link.*key.value + "\n";
        }
    }
    return text;
}
