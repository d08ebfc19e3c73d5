// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of oxc-report new.
#pragma once

#include <functional>
#include <string>

#include "designer/new_report/new_report.h"

namespace tools {

struct NewReportArguments {
    // The provider and the connect string as given. Without a provider the connect string is the name of a
    // file; a provider of files may have the bare name of one, too.
    std::string sourceName, provider, connectString;
    // The query, the layout and all that belongs to it. A name of a column may still be several with commas
    // between them. The title is empty if none is given.
    designer::NewReport report;
    bool force = false;
};

// Returns false if it is no option without a value.
bool TakeNewFlag(const std::string& option, NewReportArguments& arguments);
// `valueOf` gives the option's value. Raises UsageError for an unknown option and an unknown word.
void TakeNewOption(const std::string& option, const std::function<std::string()>& valueOf,
                   NewReportArguments& arguments);
// Raises UsageError if something is missing, and for options that the layout does not have.
void CheckNew(const NewReportArguments& arguments);

// Returns the lines of the usage.
std::string NewUsage();

}  // namespace tools
