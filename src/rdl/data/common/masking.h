// SPDX-License-Identifier: GPL-3.0-or-later
// Passwords in texts that a server or a driver made.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

struct Secret {
    std::string password;
    // What messages may show, such as the name of the user. A password can be the same word.
    std::vector<std::string> names = {};
};

// Returns the text with *** in place of the password wherever it is a whole word: no letter, digit or _ is
// directly before or after it. A message without one of its own words reveals that word, so the password
// decides where:
// - A password that no message uses is replaced everywhere: six letters or digits in a row, letters mixed
//   with digits, a sign such as ! or #, or more than two words.
// - A password made of words of messages ("p", "user", "timeout", "1045"), or equal to one of the names, is
//   replaced only as a value: after Pwd= and Password=, between : and @ of an address, and between quotes or
//   brackets. It stays after a word that says what is quoted (user "p", near "p", column [p]) and in the
//   brackets at the start that hold the names of ODBC drivers.
std::string Masked(std::string_view text, const Secret& secret);

}  // namespace rdl::data
