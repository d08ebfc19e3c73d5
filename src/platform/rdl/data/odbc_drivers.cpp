#include "platform/rdl/data/odbc_drivers.h"

#include <charconv>
#include <cstdlib>
#include <fstream>

#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

std::string DriverList() {
    const char* folder = std::getenv("ODBCSYSINI");
    const char* name = std::getenv("ODBCINSTINI");
    const std::string file = name && *name ? name : "odbcinst.ini";
    return file.starts_with('/') ? file : std::string(folder && *folder ? folder : "/etc") + "/" + file;
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

std::vector<std::string> InstalledOdbcDrivers() {
    std::vector<std::string> names;
    std::ifstream list(DriverList());
    for (std::string line; std::getline(list, line);) {
        const std::string_view text = Trimmed(line);
        if (text.size() > 2 && text.front() == '[' && text.back() == ']') {
            const std::string_view name = Trimmed(text.substr(1, text.size() - 2));
            if (!EqualNoCase(name, "ODBC")) {  // settings of the driver manager itself
                names.emplace_back(name);
            }
        }
    }
    return names;
}

std::string FindOdbcDriver(std::string_view name) {
    std::string known;
    for (const std::string& installed : InstalledOdbcDrivers()) {
        if (EqualNoCase(installed, name)) {
            return installed;
        }
        known.append(known.empty() ? "" : ", ").append(installed);
    }
    throw Error("the ODBC driver \"" + CleanText(name) + "\" is not installed; " +
                (known.empty() ? "there is none" : "there are: " + CleanText(known)));
}

std::string SqlServerDriver() {
    std::string best;
    for (const std::string& name : InstalledOdbcDrivers()) {
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
