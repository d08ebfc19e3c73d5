// SPDX-License-Identifier: GPL-3.0-or-later
// The mail that the engine sends itself: one message with the export attached.
#pragma once

#include <filesystem>
#include <string>

namespace reports {

// Sends the file to the names of a ";"-separated list. Blanks around names and empty names are dropped, and
// the last name counts with or without a ";" after it. The system's own mails split the list in another way
// (cmFunc::RecipientsOf in store/TextConventions.h): there a last name without ";"
// is lost. Returns after the mail system has accepted the message; its errors pass to the caller.
void MailFile(const std::string& toList, const std::string& subject, const std::string& message,
              const std::filesystem::path& file);

}  // namespace reports
