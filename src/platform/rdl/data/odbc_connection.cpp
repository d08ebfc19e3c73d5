#include "platform/rdl/data/odbc_connection.h"

#include <cstdlib>
#include <fstream>

#include "platform/rdl/data/message.h"
#include "platform/rdl/error.h"

namespace rdl::data {
namespace {

std::string Pair(std::string_view key, std::string_view value) {
    std::string text(key);
    if (value.find_first_of("{}[](),;?*=!@ ") == std::string_view::npos) {
        return text.append("=").append(value).append(";");
    }
    text.append("={");
    for (const char c : value) {
        text.append(c == '}' ? 2 : 1, c);
    }
    return text.append("};");
}

bool IsOneOf(std::string_view key, std::initializer_list<std::string_view> keys) {
    for (const std::string_view one : keys) {
        if (EqualNoCase(key, one)) {
            return true;
        }
    }
    return false;
}

// The drivers' list of the machine has a section [name] for each.
bool IsInstalled(const std::string& driver) {
    const char* folder = std::getenv("ODBCSYSINI");
    std::ifstream list(std::string(folder && *folder ? folder : "/etc") + "/odbcinst.ini");
    for (std::string line; std::getline(list, line);) {
        if (EqualNoCase(Trimmed(line), "[" + driver + "]")) {
            return true;
        }
    }
    return false;
}

std::string SqlServerDriver() {
    for (const char* driver : {"ODBC Driver 18 for SQL Server", "ODBC Driver 17 for SQL Server", "FreeTDS"}) {
        if (IsInstalled(driver)) {
            return driver;
        }
    }
    throw Error("no ODBC driver for SQL Server is installed (FreeTDS is one)");
}

// A driver's path would load any library of the machine, and a data source file could be anywhere.
void CheckTrusted(const ConnectString& pairs) {
    for (const auto& [key, value] : pairs.Pairs()) {
        if (IsOneOf(key, {"savefile", "filedsn"}) || value.find(".dsn") != std::string::npos) {
            throw Error("a data source file (\"" + CleanText(key) +
                        "\") is not read; give a driver or a DSN");
        }
        if (EqualNoCase(key, "driver") && value.find_first_of("/\\;{}") != std::string::npos) {
            throw Error("the ODBC driver \"" + CleanText(value) + "\" is to be given by its name");
        }
    }
}

std::string SqlServerConnection(const ConnectString& pairs, const ServerAddress& address) {
    const std::string named = pairs.Get({"driver"});
    const std::string driver = named.empty() ? SqlServerDriver() : named;
    const bool freeTds = EqualNoCase(driver, "FreeTDS");
    std::string text = Pair("DRIVER", driver);
    if (freeTds) {
        text += Pair("SERVER", address.host) +
                Pair("PORT", std::to_string(address.port ? address.port : 1433)) +
                Pair("TDS_Version", "7.4") + Pair("ClientCharset", "UTF-8");
    } else {
        text +=
            Pair("SERVER", address.port ? address.host + "," + std::to_string(address.port) : address.host);
        for (const char* key : {"Encrypt", "TrustServerCertificate"}) {
            const std::string value = LowerAscii(pairs.Get({key}));
            if (!value.empty()) {
                text += Pair(key, value == "true" || value == "yes" ? "yes" : "no");
            }
        }
    }
    text += address.database.empty() ? "" : Pair("DATABASE", address.database);
    if (address.user.empty()) {
        return text + (freeTds ? "" : Pair("Trusted_Connection", "yes"));
    }
    return text + Pair("UID", address.user) + Pair("PWD", address.password);
}

}  // namespace

std::string OdbcConnection(ProviderKind provider, const ConnectString& pairs, const ServerAddress& address) {
    CheckTrusted(pairs);
    if (provider == ProviderKind::SqlServer) {
        return SqlServerConnection(pairs, address);
    }
    const std::string dsn = pairs.Get({"dsn", "data source"});
    if (dsn.find_first_of(";{}=") != std::string::npos) {
        throw Error("the ODBC data source \"" + CleanText(dsn) + "\" is no name of one");
    }
    // Qt puts DSN= in front of a text that has neither a driver nor a server.
    std::string text;
    if (!dsn.empty()) {
        text = (pairs.Has({"driver", "server"}) ? "DSN=" : "") + dsn + ";";
    }
    for (const auto& [key, value] : pairs.Pairs()) {
        if (EqualNoCase(key, "driver")) {
            text += "DRIVER={" + value + "};";
        } else if (!IsOneOf(key, {"uid", "user id", "user", "username", "pwd", "password", "dsn",
                                  "data source"})) {
            text += Pair(key, value);
        }
    }
    if (!address.user.empty()) {
        text += Pair("UID", address.user) + Pair("PWD", address.password);
    }
    return text;
}

}  // namespace rdl::data
