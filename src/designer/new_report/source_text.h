// SPDX-License-Identifier: GPL-3.0-or-later
// Connect strings of new data sources.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace designer {

// Returns the provider for a file by its extension; empty if the extension is unknown.
std::string_view ProviderOfFile(const std::filesystem::path& file);
// Returns the extensions that ProviderOfFile knows, ".csv, .txt ...".
std::string KnownExtensions();

// Returns a value of a connect string: in quotes if it has characters that would end it.
std::string ConnectValue(const std::string& text);

}  // namespace designer
