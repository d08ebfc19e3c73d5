// What tells messages apart.
#pragma once

#include <string>

namespace mailer {

// Thirty-two hexadecimal digits that no other message has.
std::string RandomMark();
// Thirty-two hexadecimal digits that every message of this identity has, and no other: the same text on
// another machine gives other ones. They tell nothing of the text.
std::string MarkOf(const std::string& identity);

}  // namespace mailer
