// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/odbc_drivers.h"

#include <dlfcn.h>

#include <charconv>

#include "rdl/data/common/message.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

namespace rdl::data {
namespace {

// The driver manager's own answer: the names of all sections of the machine's and the user's lists, each
// ended by a zero. It is loaded and not linked, as reports without ODBC need none of it. Empty when it is not
// there.
std::string SectionNames() {
    using GetProfileString = int (*)(const char* section, const char* entry, const char* fallback,
                                     char* buffer, int size, const char* file);
    // It keeps what it has read for the life of the process, so it stays.
    void* manager = dlopen("libodbcinst.so.2", RTLD_LAZY | RTLD_NODELETE);
    if (manager == nullptr) {
        return {};
    }
    std::string names(1 << 16, '\0');
    int size = 0;
    if (void* found = dlsym(manager, "SQLGetPrivateProfileString")) {
        size = reinterpret_cast<GetProfileString>(found)(nullptr, nullptr, "", names.data(),
                                                         static_cast<int>(names.size()), "odbcinst.ini");
    }
    dlclose(manager);
    names.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return names;
}

// 18 for "ODBC Driver 18 for SQL Server"; 0 for any other.
int MicrosoftVersion(std::string_view name) {
    constexpr std::string_view Front = "ODBC Driver ", Back = " for SQL Server";
    int version = 0;
    if (name.starts_with(Front) && name.ends_with(Back)) {
        std::from_chars(name.data() + Front.size(), name.data() + name.size() - Back.size(), version);
    }
    return version;
}

}  // namespace

OdbcDriverNames InstalledOdbcDrivers() {
    OdbcDriverNames names;
    const std::string sections = SectionNames();
    for (std::size_t at = 0; at < sections.size();) {
        const std::string name = sections.c_str() + at;
        at += name.size() + 1;
        if (!name.empty() && !EqualNoCase(name, "ODBC")) {  // settings of the driver manager itself
            names.push_back(name);
        }
    }
    return names;
}

std::string FindOdbcDriver(std::string_view name, const OdbcDriverNames& installed) {
    std::string known;
    for (const std::string& driver : installed) {
        if (EqualNoCase(driver, name)) {
            return driver;
        }
        known.append(known.empty() ? "" : ", ").append(driver);
    }
    // A brace that is not closed makes the rest of the connect string a part of it, with the password.
    throw Error("the ODBC driver \"" + CleanText(name.substr(0, name.find(';'))) + "\" is not installed; " +
                (known.empty() ? "there is none" : "there are: " + CleanText(known)));
}

std::string SqlServerDriver(const OdbcDriverNames& installed) {
    std::string best;
    for (const std::string& name : installed) {
        if (MicrosoftVersion(name) > MicrosoftVersion(best) ||
            (best.empty() && EqualNoCase(name, "FreeTDS"))) {
            best = name;
        }
    }
    if (best.empty()) {
        throw Error("no ODBC driver for SQL Server is installed (FreeTDS is one)");
    }
    return best;
}

}  // namespace rdl::data
