// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/sql/odbc_connection.h"

#include <algorithm>
#include <span>

#include "rdl/data/common/message.h"
#include "rdl/data/common/own_files.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"

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

bool IsOneOfNoCase(std::string_view key, std::span<const std::string_view> keys) {
    return std::any_of(keys.begin(), keys.end(),
                       [key](std::string_view one) { return EqualNoCase(key, one); });
}

// The keywords that say where the data is and how it is written, in the drivers of Microsoft, FreeTDS,
// PostgreSQL, MySQL, MariaDB, SQLite and Access. All else is refused: some drivers load libraries, write
// logs, run statements or hand files of this machine to the server where a connect string asks for it.
constexpr std::string_view KnownKeys[] = {"server",
                                          "servername",
                                          "host",
                                          "hostname",
                                          "address",
                                          "addr",
                                          "port",
                                          "database",
                                          "initial catalog",
                                          "db",
                                          "dbq",
                                          "dbname",
                                          "schema",
                                          "trusted_connection",
                                          "integrated security",
                                          "charset",
                                          "clientcharset",
                                          "encoding",
                                          "language",
                                          "sslmode",
                                          "ssl mode",
                                          "encrypt",
                                          "encryption",
                                          "trustservercertificate",
                                          "tds_version",
                                          "tdsversion",
                                          "applicationintent",
                                          "application intent",
                                          "multisubnetfailover",
                                          "app",
                                          "application name",
                                          "wsid",
                                          "workstation id",
                                          "protocol",
                                          "readonly",
                                          "read only",
                                          "timeout",
                                          "connect timeout",
                                          "connection timeout",
                                          "connect_timeout",
                                          "conn_timeout",
                                          "logintimeout",
                                          "login timeout",
                                          "bytea as longvarbinary",
                                          "byteaaslongvarbinary",
                                          "boolsaschar",
                                          "textaslongvarchar",
                                          "maxvarcharsize",
                                          "maxlongvarcharsize",
                                          "fetch",
                                          "usedeclarefetch",
                                          "rowversioning",
                                          "showsystemtables",
                                          "unknownsizes",
                                          "lowercaseidentifier",
                                          "shortnames",
                                          "longnames",
                                          "nocreat",
                                          "nowchar",
                                          "stepapi",
                                          "fksupport",
                                          "bigint",
                                          "quoted_id",
                                          "quotedid",
                                          "ansinpw",
                                          "mars_connection",
                                          "exclusive",
                                          "no_prompt",
                                          "compression"};

// A data source file could be anywhere, and a driver that reads files must not be led to those of the
// program.
void CheckTrusted(const ConnectString& pairs) {
    for (const auto& [key, value] : pairs.Pairs()) {
        if (EqualNoCase(key, "savefile") || EqualNoCase(key, "filedsn") ||
            value.find(".dsn") != std::string::npos) {
            throw Error("a data source file (\"" + CleanText(key) +
                        "\") is not read; give a driver or a DSN");
        }
    }
}

// What is handed to a driver as it stands.
void CheckHandedOn(std::string_view key, const std::string& value) {
    if (!IsOneOfNoCase(key, KnownKeys)) {
        throw Error("\"" + CleanText(key) + "\" of the connect string is not for a report");
    }
    if (LowerAscii(value).starts_with("file:")) {
        throw Error("\"" + CleanText(key) + "\" of the connect string is an address; give the file");
    }
    // A driver that reads files must not be led to those of the program.
    if (value.find('\0') == std::string::npos) {
        CheckReadable(value);
    }
}

std::string YesOrNo(std::string_view value) {
    constexpr std::string_view Yes[] = {"true", "yes", "1", "mandatory", "sspi"};
    return IsOneOfNoCase(value, Yes) ? "yes" : "no";
}

// SqlClient and OLE DB may say true, yes and mandatory; strict is of its own.
std::string Encryption(std::string_view value) {
    return EqualNoCase(value, "strict") ? "strict" : YesOrNo(value);
}

// host\instance with a port is found by the port.
std::string HostAlone(const std::string& host) {
    return host.substr(0, host.find('\\'));
}

std::string FreeTdsPairs(const ConnectString& pairs, const ServerAddress& address) {
    std::string text;
    if (address.port || address.host.find('\\') == std::string::npos) {
        text = Pair("SERVER", HostAlone(address.host)) +
               Pair("PORT", std::to_string(address.port ? address.port : 1433));
    } else {
        text = Pair("SERVER", address.host);  // the server's browser service finds the port of the instance
    }
    text += Pair("TDS_Version", "7.4") + Pair("ClientCharset", "UTF-8");
    const std::string encrypt = pairs.Get({"encrypt", "use encryption for data"});
    if (!encrypt.empty()) {
        const std::string level = Encryption(encrypt);
        text += Pair("Encryption", level == "yes" ? "require" : level == "no" ? "off" : level);
    }
    return text;
}

std::string MicrosoftPairs(const ConnectString& pairs, const ServerAddress& address) {
    std::string text = Pair(
        "SERVER", address.port ? HostAlone(address.host) + "," + std::to_string(address.port) : address.host);
    const std::string encrypt = pairs.Get({"encrypt", "use encryption for data"});
    if (!encrypt.empty()) {
        text += Pair("Encrypt", Encryption(encrypt));
    }
    for (const char* key : {"TrustServerCertificate", "MultiSubnetFailover"}) {
        if (pairs.Has({key})) {
            text += Pair(key, YesOrNo(pairs.Get({key})));
        }
    }
    return text;
}

OdbcTarget SqlServerTarget(const ConnectString& pairs, const ServerAddress& address,
                           const OdbcDriverNames& installed) {
    const std::string named = pairs.Get({"driver"});
    const std::string driver = named.empty() ? SqlServerDriver(installed) : FindOdbcDriver(named, installed);
    const bool isFreeTds = EqualNoCase(driver, "FreeTDS");
    OdbcTarget target;
    target.place = "the server \"" + CleanText(address.host) + "\" by the ODBC driver \"" + driver + "\"";
    target.text =
        Pair("DRIVER", driver) + (isFreeTds ? FreeTdsPairs(pairs, address) : MicrosoftPairs(pairs, address));
    target.text += address.database.empty() ? "" : Pair("DATABASE", address.database);
    const std::string intent = pairs.Get({"application intent"});
    target.text += intent.empty() ? "" : Pair("ApplicationIntent", intent);
    // Integrated security goes before a user in the same text; without both there is nobody else to be.
    if (address.integrated || address.user.empty()) {
        target.text += Pair("Trusted_Connection", "yes");
    } else {
        target.text += Pair("UID", address.user) + Pair("PWD", address.password);
    }
    return target;
}

bool IsLogonOrName(std::string_view key) {
    constexpr std::string_view Keys[] = {"uid",      "user id", "user",        "username", "pwd",
                                         "password", "dsn",     "data source", "driver",   "provider"};
    return IsOneOfNoCase(key, Keys);
}

// Qt puts DSN= in front of a text in which it sees neither a driver nor a server, wherever that stands, and
// takes one with .dsn in it for a file's name.
std::string WithDsn(const std::string& dsn, const std::string& rest) {
    const std::string text = dsn + ";" + rest;
    const std::string lower = LowerAscii(text);
    if (lower.find(".dsn") != std::string::npos) {
        throw Error("a data source file is not read; neither name nor password may have .dsn in it");
    }
    const bool isWhole =
        lower.find("driver=") != std::string::npos || lower.find("server=") != std::string::npos;
    return isWhole ? "DSN=" + text : text;
}

}  // namespace

OdbcTarget OdbcConnection(ProviderKind provider, const ConnectString& pairs, const ServerAddress& address,
                          const OdbcDriverNames& installed) {
    CheckTrusted(pairs);
    if (provider == ProviderKind::SqlServer) {
        return SqlServerTarget(pairs, address, installed);
    }
    const std::string dsn = pairs.Get({"dsn", "data source"});
    if (dsn.find_first_of(";{}=") != std::string::npos) {
        throw Error("the ODBC data source \"" + CleanText(dsn) + "\" is no name of one");
    }
    OdbcTarget target;
    const std::string named = pairs.Get({"driver"});
    if (!named.empty()) {
        const std::string driver = FindOdbcDriver(named, installed);
        target.text = Pair("DRIVER", driver);
        target.place = (pairs.Has({"server", "host"}) ? "the server \"" + CleanText(address.host) + "\""
                                                      : std::string("the database")) +
                       " by the ODBC driver \"" + driver + "\"";
    } else if (dsn.empty()) {
        throw Error("the connect string names neither a DSN nor a driver");
    } else {
        target.place = "the ODBC data source \"" + CleanText(dsn) + "\"";
    }
    const bool isSqlite = LowerAscii(named).find("sqlite") != std::string::npos;
    for (const auto& [key, value] : pairs.Pairs()) {
        if (!IsLogonOrName(key) && !(isSqlite && EqualNoCase(key, "nocreat"))) {
            CheckHandedOn(key, value);
            target.text += Pair(key, value);
        }
    }
    // Its driver would make a database that is missing.
    target.text += isSqlite ? Pair("NoCreat", "1") : std::string();
    if (!address.user.empty()) {
        target.text += Pair("UID", address.user) + Pair("PWD", address.password);
    }
    if (named.empty()) {
        target.text = WithDsn(dsn, target.text);
    }
    return target;
}

}  // namespace rdl::data
