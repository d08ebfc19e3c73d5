// SPDX-License-Identifier: GPL-3.0-or-later
// The format words of schedules and packages, and the names of output files. The runners know different words
// and give different names. These differences are kept on purpose.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/contracts/export_formats.h"
#include "platform/contracts/report_engine.h"

namespace Global {

enum class Runner {
    Single,         // RunReport
    PackagePoll,    // knows "Acrobat" alone as PDF
    PackageDemand,  // a package run on demand
};

// Compares exact words, case included. Returns nullopt for an unknown word; the caller then exports nothing
// and shows nothing.
std::optional<report::DocumentFormat> RecogniseFormat(Runner runner, const std::string& word);

// Who offers words to choose from, and stores the chosen one.
enum class FormatList {
    Schedules,        // forms and commands
    PackageWizard,    // its word for PDF is unknown to the poll of packages (sic)
    PackageCommands,  // words that every runner knows
};

struct OfferedFormat {
    report::DocumentFormat format;
    std::string_view word;
};

// Returns one word for each format that a schedule can have, in the order in which they are shown.
std::vector<OfferedFormat> OfferedFormats(FormatList list);

// Returns the path of a single schedule's HTML file: the folder "output" in the application's folder, the
// title without blanks, the hours since 2002-01-01, ".htm". Does not make the folder. Raises 76 if the title
// leads out of the folder.
std::string HtmlOutputFile(const std::string& reportTitle);

// Returns the path of a package report's file: `destination`, which ends in a backslash, a name made of the
// title, and the extension of the format.
std::string PackageOutputFile(report::DocumentFormat format, const std::string& destination,
                              const std::string& reportTitle);

// The options that every runner gives to exports of these formats.
void SetExcelOptions(report::Report& report);
void SetPackageHtmlOptions(report::Report& report);

}  // namespace Global
