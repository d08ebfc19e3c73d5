// SPDX-License-Identifier: GPL-3.0-or-later
// The rows of the report's database in the forms that the peers read.
#pragma once

#include <filesystem>

namespace bench {

void WriteCsv(const std::filesystem::path& database, const std::filesystem::path& csv);
void WriteHtmlTable(const std::filesystem::path& database, const std::filesystem::path& html);

}  // namespace bench
