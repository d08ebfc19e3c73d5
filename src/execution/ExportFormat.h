// Format words, and what the output of a run is called. The runners differ from one another in the words that
// they know and in the names that they give; those differences are kept.
#pragma once

#include <string>

#include "platform/contracts/report_engine.h"

namespace Global {

enum class ExportKind { None, Pdf, RichText, Excel, Html, Word };

enum class Runner {
    Single,         // RunReport
    PackagePoll,    // knows "Acrobat" alone as PDF
    PackageDemand,  // a package run on demand
};

// Exact words, case included. A word that nobody knows is None: nothing is exported and nothing is said.
ExportKind RecogniseFormat(Runner runner, const std::string& word);

// The engine's code for a kind other than None.
int EngineFormatCode(ExportKind kind);

// An HTML single schedule's file: the folder "output" of the application's folder, the title without blanks,
// the hours since 2002-01-01, ".htm". The folder is not made. Raises 76 for a title that leads out of the
// folder.
std::string HtmlOutputFile(const std::string& reportTitle);

// A package report's file in the package's folder, by kind.
std::string PackageOutputFile(ExportKind kind, const std::string& destination,
                              const std::string& reportTitle);

void SetExcelOptions(report::Report& report);
void SetPackageHtmlOptions(report::Report& report);

}  // namespace Global
