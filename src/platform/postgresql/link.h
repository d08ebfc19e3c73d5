// SPDX-License-Identifier: GPL-3.0-or-later
// The link: a text file in the place of the data file that names a database on a PostgreSQL server.
//
//     Oxbow Courier store link 1
//     Provider=PostgreSQL
//     Host=db.example.com
//     Port=5432
//     Database=courier
//     Username=scheduler
//     PasswordCommand=pass show courier
//     SSLMode=verify-full
//
// Host and Database must be there. Host may be the folder of a socket. Without Password and PasswordCommand
// the password is that of ~/.pgpass, if one is needed. SSLMode is a word of libpq; without it a connection to
// another machine is encrypted and the server's certificate is verified. SSLRootCert names the file of the
// certificates to trust, if the machine's own are not enough. Blanks around names and values, empty lines, a
// byte order mark and lines that end in CR LF are allowed; a key that is given twice is not. A value that
// begins or ends with a blank stands in ", with each " in it doubled; other values stand as they are.
#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

struct Link {
    std::string host, port, database, user, password, passwordCommand, sslMode, rootCertificate;
    bool operator==(const Link&) const = default;

    // Returns the database as errors name it: "courier" on db.example.com.
    std::string Name() const;
};

// Returns true if the file begins as a link does, also as a damaged one.
bool IsLink(const std::filesystem::path& file);

// Returns the link in a file, and nullopt if the file is not a link or cannot be read. Raises
// err::DataUnavailable for a damaged link, with the fault and its line. A link with a Password or a
// PasswordCommand must belong to the user of the process or to root, and nobody else may read or write it:
// another user's command would run with the rights of this one.
std::optional<Link> ReadLink(const std::filesystem::path& file);

// Returns the link that Host=...;Port=...;Database=...;Username=...;Password=...;SSL Mode=... describes. A
// value in " or ' may hold semicolons, and the mark itself doubled. Raises err::DataUnavailable with the
// fault.
Link LinkOfConnectString(std::string_view text);

// Returns the text of the file.
std::string TextOfLink(const Link& link);
