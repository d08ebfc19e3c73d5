// Passwords in texts that a server or a driver made.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace rdl::data {

struct Secret {
    std::string password;
    // What the logon tells everybody, the name of the user say. A password may be the same word.
    std::vector<std::string> names = {};
};

// The text with *** for the password where it stands whole: no letter, digit or _ stands directly before or
// after it. A message that has lost a word of its own tells everybody what the word was, so the password
// itself decides where that is done:
// - One that no message says by itself is struck out everywhere. It has six letters or digits in a row, or
//   both kinds mixed, or a sign such as ! or #, or more than two words.
// - One that is made of words of messages ("p", "user", "timeout", "1045"), or is one of the names, is struck
//   out where a value stands: after Pwd= and Password=, between : and @ of an address, and between quotes or
//   brackets. Not where a word before the quotes tells what is quoted (user "p", near "p", column [p]), nor
//   in the brackets at the start that ODBC's drivers name themselves in.
std::string Masked(std::string_view text, const Secret& secret);

}  // namespace rdl::data
