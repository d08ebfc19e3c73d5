// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/landlock.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <string>
#include <system_error>

#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"
#include "platform/posix/atomic_file.h"
#include "platform/posix/unique_fd.h"

namespace reports::worker {
namespace {

namespace fs = std::filesystem;

// Newer kernels know these rights; the headers of the build may not.
constexpr std::uint64_t Refer = std::uint64_t{1} << 13;     // from version 2 of the interface
constexpr std::uint64_t Truncate = std::uint64_t{1} << 14;  // from version 3

constexpr std::uint64_t Reading = LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_READ_DIR;
constexpr std::uint64_t OfFiles =
    LANDLOCK_ACCESS_FS_READ_FILE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_EXECUTE | Truncate;
// Unnamed temporary files, and named ones that are deleted at once.
constexpr std::uint64_t Temporary = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_MAKE_REG |
                                    LANDLOCK_ACCESS_FS_REMOVE_FILE | Truncate | Reading;

std::uint64_t Changing(long version) {
    return LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_REMOVE_DIR |
           LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR | LANDLOCK_ACCESS_FS_MAKE_DIR |
           LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK | LANDLOCK_ACCESS_FS_MAKE_FIFO |
           LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM | (version >= 2 ? Refer : 0) |
           (version >= 3 ? Truncate : 0);
}

class Rules {
 public:
    explicit Rules(std::uint64_t handled) : m_handled(handled) {
        landlock_ruleset_attr attributes{};
        attributes.handled_access_fs = handled;
        m_rules = UniqueFd(static_cast<int>(
            syscall(SYS_landlock_create_ruleset, &attributes, sizeof attributes.handled_access_fs, 0U)));
    }

    // What is not there needs no rule.
    void Allow(const fs::path& path, std::uint64_t access) const {
        const UniqueFd place(open(path.c_str(), O_PATH | O_CLOEXEC));
        struct stat facts {};
        if (place.Get() < 0 || fstat(place.Get(), &facts) != 0) {
            return;
        }
        landlock_path_beneath_attr rule{};
        rule.allowed_access = access & m_handled & (S_ISDIR(facts.st_mode) ? ~std::uint64_t{0} : OfFiles);
        rule.parent_fd = place.Get();
        if (rule.allowed_access != 0) {
            syscall(SYS_landlock_add_rule, m_rules.Get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0U);
        }
    }

    bool Apply() const {
        return m_rules.Get() >= 0 && syscall(SYS_landlock_restrict_self, m_rules.Get(), 0U) == 0;
    }

 private:
    std::uint64_t m_handled;
    UniqueFd m_rules;
};

// Programs' libraries, fonts and their caches, and what drivers of databases read: certificates, their own
// settings, names of users, hosts and services, the time zone. Not the rest of /etc: it has the machine's
// passwords. Nor what proves the user to a PostgreSQL server: it opens the team's store.
void AllowSystem(const Rules& rules) {
    for (const char* place : {"/usr", "/lib", "/lib64", "/bin", "/opt", "/nix", "/var/cache/fontconfig",
                              "/var/lib/mysql", "/run/mysqld", "/run/postgresql", "/run/systemd/resolve",
                              "/dev/urandom", "/dev/random", "/proc/self", "/proc/cpuinfo", "/proc/meminfo",
                              "/proc/sys/crypto", "/proc/sys/kernel/random", "/sys/devices/system/cpu"}) {
        rules.Allow(place, Reading);
    }
    for (const char* name :
         {"fonts",        "ssl/certs",       "ssl/openssl.cnf",   "ca-certificates", "pki",
          "gnutls",       "crypto-policies", "krb5.conf",         "krb5.conf.d",     "gss",
          "odbc.ini",     "odbcinst.ini",    "ODBCDataSources",   "freetds",         "mysql",
          "my.cnf",       "my.cnf.d",        "postgresql-common", "passwd",          "group",
          "hosts",        "host.conf",       "resolv.conf",       "nsswitch.conf",   "services",
          "protocols",    "networks",        "gai.conf",          "ld.so.cache",     "ld.so.preload",
          "localtime",    "timezone",        "locale.alias",      "locale.conf",     "default/locale",
          "alternatives", "oracle"}) {
        rules.Allow(fs::path("/etc") / name, Reading);
    }
    const char* const home = std::getenv("HOME");
    for (const char* name : {".fonts", ".fonts.conf", ".fonts.conf.d", ".config/fontconfig",
                             ".cache/fontconfig", ".local/share/fonts", ".odbc.ini", ".odbcinst.ini",
                             ".freetds.conf", ".postgresql/root.crt", ".postgresql/root.crl", ".my.cnf"}) {
        if (home != nullptr) {
            rules.Allow(fs::path(home) / name, Reading);
        }
    }
}

bool IsDatabase(const fs::path& file) {
    const std::string name = file.filename().string();
    return name.starts_with(LiveDatabaseFile) || name == BlankDatabaseFile;
}

// Rules only add rights: what stands beside the application's databases, one of which may be a link with a
// password, is allowed piece by piece. A file that comes into the folder itself later is for the next
// process.
void AllowApplication(const Rules& rules, const fs::path& folder) {
    std::vector<fs::path> allowed;
    bool hasDatabase = false;
    std::error_code failed;
    for (fs::directory_iterator at(folder, failed), end; !failed && at != end; at.increment(failed)) {
        std::error_code ignored;
        if (IsDatabase(at->path())) {
            hasDatabase = true;
        } else if (!at->is_symlink(ignored)) {
            allowed.push_back(at->path());
        }
    }
    if (!hasDatabase) {
        return rules.Allow(folder, Reading);
    }
    rules.Allow(folder, LANDLOCK_ACCESS_FS_READ_DIR);
    for (const fs::path& path : allowed) {
        rules.Allow(path, Reading);
    }
}

void AllowTemporaryPlace(const Rules& rules) {
    try {
        rules.Allow(TemporaryPlace(), Temporary);
    } catch (const RuntimeError&) {
        // A report that needs a temporary file reports that there is no place for it.
    }
}

}  // namespace

bool RestrictFiles(const std::vector<fs::path>& readable) {
    const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) {
        return false;
    }
    const Rules rules(Changing(version) | (readable.empty() ? 0 : Reading));
    AllowTemporaryPlace(rules);
    // Libraries throw their output away there.
    rules.Allow("/dev/null", LANDLOCK_ACCESS_FS_WRITE_FILE | Reading);
    if (!readable.empty()) {
        AllowSystem(rules);
        AllowApplication(rules, ProgramFolder());
        AllowApplication(rules, paths::ToMachine(AppPath()));
        for (const fs::path& folder : readable) {
            rules.Allow(folder, Reading);
        }
    }
    return rules.Apply();
}

}  // namespace reports::worker
