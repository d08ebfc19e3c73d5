// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/postgresql/link.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <vector>

#include "platform/base/ascii.h"
#include "platform/base/convert.h"
#include "platform/base/paths.h"
#include "platform/base/text.h"
#include "platform/contracts/runtime.h"
#include "platform/data_provider/connection_string.h"
#include "platform/posix/file_access.h"
#include "platform/posix/small_file.h"

namespace {

constexpr std::string_view Beginning = "Oxbow Courier store link ";
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
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

// Takes keys and values in. Names of keys compare without regard to case and blanks: "SSL Mode" is SSLMode.
class Keeper {
 public:
    explicit Keeper(std::string what) : m_what(std::move(what)) {}
    // Where the next keys are, as faults name it: "line 4: ".
    void SetPlace(std::string place) { m_place = std::move(place); }
    [[noreturn]] void Raise(const std::string& fault) const { RaiseFault(m_what, m_place + fault); }

    void Set(std::string_view name, std::string_view value) {
        const std::string plain = Replace(std::string(name), " ", "");
        if (HasControls(value)) {
            Raise("the value of " + plain + " holds a control character");
        }
        std::string Link::*const member = MemberOf(plain, value);
        if (std::any_of(m_seen.begin(), m_seen.end(),
                        [&plain](const std::string& seen) { return SameText(seen, plain); })) {
            Raise("the key " + plain + " is given twice");
        }
        m_seen.push_back(plain);
        if (member != nullptr) {
            m_link.*member = value;
        }
    }
    Link Take() { return std::move(m_link); }

 private:
    // Returns null for the provider, which the link does not keep.
    std::string Link::*MemberOf(const std::string& plain, std::string_view value) const {
        if (SameText(plain, "Provider")) {
            if (!SameText(value, "PostgreSQL")) {
                Raise("there is no provider \"" + std::string(value) + "\", only PostgreSQL");
            }
            return nullptr;
        }
        const auto* const key = std::find_if(
            Keys.begin(), Keys.end(), [&plain](const Key& known) { return SameText(plain, known.name); });
        if (key == Keys.end()) {
            Raise("the key \"" + plain + "\" is not known");
        }
        return key->value;
    }

    std::string m_what, m_place;
    Link m_link;
    std::vector<std::string> m_seen;
};

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
    if (!link.password.empty() && !link.passwordCommand.empty()) {
        RaiseFault(what, "it has both a Password and a PasswordCommand");
    }
    UseWordsOfLibpq(link, what);
}

// Removes and returns the value of a key at the front, up to a semicolon. No fault repeats a part of it.
std::string TakeValue(std::string_view& text, const std::string& name, const Keeper& keeper) {
    text.remove_prefix(std::min(text.find_first_not_of(Blanks), text.size()));
    std::string value;
    std::size_t end = std::min(text.find(';'), text.size());
    if (!text.empty() && (text.front() == '"' || text.front() == '\'')) {
        QuotedValue quoted = TakeQuoted(text);
        if (!quoted.isClosed) {
            keeper.Raise("the value of " + name + " has no closing quotation mark");
        }
        end = std::min(text.find(';'), text.size());
        if (!Trim(text.substr(0, end), Blanks).empty()) {
            keeper.Raise("the value of " + name +
                         " goes on after its quotation mark; inside the value the mark is doubled");
        }
        value = std::move(quoted.value);
    } else {
        value = Trim(text.substr(0, end), Blanks);
    }
    text.remove_prefix(std::min(end + 1, text.size()));
    return value;
}

// Returns the value that stands for a key in the file. Quotation marks count only around what begins or ends
// with a blank or a quotation mark: a PasswordCommand may begin and end with one of its own.
std::string ValueInFile(std::string_view written) {
    if (written.starts_with('"')) {
        std::string_view rest = written;
        const QuotedValue quoted = TakeQuoted(rest);
        constexpr std::string_view Quotable = " \"";
        if (quoted.isClosed && rest.empty() && !quoted.value.empty() &&
            (Quotable.find(quoted.value.front()) != std::string_view::npos ||
             Quotable.find(quoted.value.back()) != std::string_view::npos)) {
            return quoted.value;
        }
    }
    return std::string(written);
}

// Returns what ValueInFile reads as this value.
std::string WrittenInFile(const std::string& value) {
    return ValueInFile(Trim(value, Blanks)) == value ? value : "\"" + Replace(value, "\"", "\"\"") + "\"";
}

// Returns false for an empty handle, too. The place in the file stays.
bool BeginsAsLink(int file) {
    std::array<char, ByteOrderMark.size() + Beginning.size()> bytes{};
    const ssize_t count = file < 0 ? -1 : pread(file, bytes.data(), bytes.size(), 0);
    std::string_view text(bytes.data(), count > 0 ? static_cast<std::size_t>(count) : 0);
    text.remove_prefix(text.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
    return text.starts_with(Beginning);
}

std::string OctalMode(mode_t mode) {
    std::string digits;
    for (int shift = 9; shift >= 0; shift -= 3) {
        digits += static_cast<char>('0' + (mode >> shift & 7U));
    }
    return digits;
}

// Asks the open file: its name may mean another one by now.
void CheckSecret(int opened, const Link& link, const std::string& what, const std::string& path) {
    if (link.password.empty() && link.passwordCommand.empty()) {
        return;
    }
    struct stat status {};
    if (fstat(opened, &status) != 0) {
        RaiseFault(what, "it cannot be read");
    }
    const std::string begin = what + " has a " + (link.password.empty() ? "PasswordCommand" : "Password");
    if (const std::string owner = ForeignOwner(opened); !owner.empty()) {
        throw RuntimeError(err::DataUnavailable,
                           begin + " and belongs to " + owner +
                               "; only the user who opens it, or root, may own it: chown " +
                               NameOfUser(geteuid()) + " \"" + path + "\"");
    }
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
        throw RuntimeError(err::DataUnavailable, begin + " and the mode " + OctalMode(status.st_mode) +
                                                     "; only its owner may read and write it: chmod 600 \"" +
                                                     path + "\"");
    }
}

}  // namespace

std::string Link::Name() const {
    return "\"" + database + "\" on " + host;
}

bool IsLink(const std::filesystem::path& file) {
    return BeginsAsLink(OpenRegularFile(file).Get());
}

std::optional<Link> ReadLink(const std::filesystem::path& file) {
    // A database may be large: the beginning of the file shows what it is.
    const UniqueFd opened = OpenRegularFile(file);
    if (!BeginsAsLink(opened.Get())) {
        return std::nullopt;
    }
    const std::string path = paths::ForUser(paths::FromMachine(file));
    const std::string what = "The link \"" + path + "\"";
    const std::optional<std::string> text = ReadToEnd(opened.Get(), LargestLink);
    if (!text) {
        RaiseFault(what, errno == EOVERFLOW ? "it is too long" : "it cannot be read");
    }
    Keeper keeper(what);
    std::string_view rest = *text;
    rest.remove_prefix(rest.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0);
    for (int number = 1; !rest.empty(); ++number) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        const std::string_view line = Trim(rest.substr(0, end), Blanks);
        rest.remove_prefix(std::min(end + 1, rest.size()));
        if (number == 1 && line != FirstLine) {
            throw RuntimeError(err::DataUnavailable, what + " is of a later version of the program");
        }
        if (number == 1 || line.empty()) {
            continue;
        }
        keeper.SetPlace("line " + std::to_string(number) + ": ");
        const std::size_t sign = line.find('=');
        if (sign == std::string_view::npos) {
            keeper.Raise("it has no =");
        }
        keeper.Set(Trim(line.substr(0, sign), Blanks), ValueInFile(Trim(line.substr(sign + 1), Blanks)));
    }
    Link link = keeper.Take();
    Check(link, what);
    CheckSecret(opened.Get(), link, what, path);
    return link;
}

Link LinkOfConnectString(std::string_view text) {
    // What has no = may be the end of a password: no error repeats it.
    Keeper keeper("The connect string");
    while (!Trim(text, " \t;").empty()) {
        const std::size_t sign = text.find('=');
        if (sign == std::string_view::npos) {
            keeper.Raise("a part of it has no =; a value that holds a semicolon stands in quotation marks");
        }
        const std::string name(Trim(text.substr(0, sign), " \t;"));
        text.remove_prefix(sign + 1);
        keeper.Set(name, TakeValue(text, name, keeper));
    }
    Link link = keeper.Take();
    Check(link, "The connect string");
    return link;
}

std::string TextOfLink(const Link& link) {
    std::string text(FirstLine);
    text += "\nProvider=PostgreSQL\n";
    for (const Key& key : Keys) {
        if (!(link.*key.value).empty()) {
            text += std::string(key.name) + "=" + WrittenInFile(link.*key.value) + "\n";
        }
    }
    return text;
}
