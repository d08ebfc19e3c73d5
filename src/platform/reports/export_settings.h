// SPDX-License-Identifier: GPL-3.0-or-later
// What Report::Export does with the settings of a report, whichever process writes the document.
#pragma once

#include <functional>
#include <string>

#include "platform/contracts/export_formats.h"
#include "platform/contracts/report_engine.h"
#include "platform/reports/file_output.h"

namespace reports {

struct ExportSettings {
    int destination = report::DestinationDisk;
    int format = 0;
    std::string diskFile, htmlFile;
    std::string toList, subject, message;
};

// Writes the document to the open file. `target` is its final name.
using WriteDocument = std::function<void(const report::FormatRow& format, const std::filesystem::path& target,
                                         FileOutput& output)>;

// Writes the document to the file of the settings, or to a temporary file that it then mails under the name
// `title` and the format's extension. Raises 5 for settings that do not fit, what `write` raises, and the
// errors of FileOutput and MailFile. The mail goes out from this process, once the document is complete: an
// error before it means that nothing was sent.
void ExportBySettings(const ExportSettings& settings, const std::string& title, const WriteDocument& write);

}  // namespace reports
