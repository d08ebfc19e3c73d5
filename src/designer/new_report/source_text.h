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

// Returns the name by which a report in `folder` finds the file: a relative one if the file is in this folder
// or below it, as both may be moved together. A file that does not exist is returned as it is: the engine
// looks for it.
std::string FileNameFrom(const std::filesystem::path& folder, const std::filesystem::path& file);

// Returns the text between these marks; the closing one is doubled within.
std::string InQuotes(std::string_view text, std::string_view open, std::string_view close);
// Returns a value of a connect string: in quotes if it has characters that would end it.
std::string ConnectValue(const std::string& text);

}  // namespace designer
