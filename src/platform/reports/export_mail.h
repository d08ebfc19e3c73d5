// The engine's own mail: one message with the export attached.
#pragma once

#include <filesystem>
#include <string>

namespace reports {

// `toList` is names separated by semicolons; empty ones are skipped. Returns when the mail system has taken
// the message; its errors pass as they are.
void MailFile(const std::string& toList, const std::string& subject, const std::string& message,
              const std::filesystem::path& file);

}  // namespace reports
