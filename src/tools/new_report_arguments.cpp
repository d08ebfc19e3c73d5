// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/new_report_arguments.h"

#include <algorithm>
#include <span>
#include <string_view>

#include "designer/new_report/themes.h"
#include "rdl/values/ascii.h"
#include "tools/usage_error.h"

namespace tools {
namespace {

using designer::ReportLayout;

std::string Joined(std::span<const std::string_view> words, std::string_view between, std::string_view last) {
    std::string text;
    for (const std::string_view& word : words) {
        text += text.empty() ? "" : &word == &words.back() ? last : between;
        text += word;
    }
    return text;
}

// A chart can be left out, but not be chosen as none.
constexpr std::span<const std::string_view> Charts() {
    return std::span(designer::ChartWords).subspan(1);
}

std::size_t IndexOf(const std::string& word, std::span<const std::string_view> words, const char* what) {
    for (std::size_t index = 0; index < words.size(); ++index) {
        if (words[index] == word) {
            return index;
        }
    }
    throw UsageError("\"" + word + "\" is no " + what + ": " + Joined(words, ", ", " or "));
}

bool IsProvider(std::string_view text) {
    return text.size() > 1 && text.find_first_not_of("0123456789") != std::string_view::npos &&
           std::all_of(text.begin(), text.end(), [](char c) {
               return rdl::IsAsciiLetterOrDigit(c) || c == ' ' || c == '.' || c == '-';
           });
}

// Raises without the value, which may have a password.
void TakeSource(const std::string& value, NewReportArguments& arguments) {
    const std::size_t sign = value.find('='), end = value.find(';'), colon = value.find(':');
    if (sign != std::string::npos && end != std::string::npos && sign > 0 && sign < end &&
        IsProvider(std::string_view(value).substr(sign + 1, end - sign - 1)) &&
        value.find_first_of(":/\\") > sign) {
        arguments.sourceName = value.substr(0, sign);
        arguments.provider = value.substr(sign + 1, end - sign - 1);
        arguments.connectString = value.substr(end + 1);
    } else if (colon != std::string::npos && IsProvider(std::string_view(value).substr(0, colon))) {
        arguments.provider = value.substr(0, colon);
        arguments.connectString = value.substr(colon + 1);
    } else {
        arguments.connectString = value;
    }
    if (arguments.connectString.empty()) {
        throw UsageError(
            "--data-source needs a file, PROVIDER:CONNECT STRING or NAME=PROVIDER;CONNECT STRING");
    }
}

// Null for an option that has no list.
std::vector<std::string>* ListOf(const std::string& option, designer::NewReport& report) {
    return option == "--columns"  ? &report.shown
           : option == "--group"  ? &report.groups
           : option == "--sum"    ? &report.sums
           : option == "--rows"   ? &report.rows
           : option == "--cols"   ? &report.across
           : option == "--values" ? &report.values
                                  : nullptr;
}

}  // namespace

bool TakeNewFlag(const std::string& option, NewReportArguments& arguments) {
    if (option == "--landscape") {
        arguments.report.landscape = true;
    } else if (option == "--force") {
        arguments.force = true;
    } else {
        return false;
    }
    return true;
}

void TakeNewOption(const std::string& option, const std::function<std::string()>& valueOf,
                   NewReportArguments& arguments) {
    designer::NewReport& report = arguments.report;
    if (std::vector<std::string>* const list = ListOf(option, report)) {
        list->push_back(NonEmpty(option, valueOf()));
    } else if (option == "--data-source") {
        if (!arguments.connectString.empty()) {
            throw UsageError("there is more than one --data-source");
        }
        TakeSource(valueOf(), arguments);
    } else if (option == "--query") {
        report.query = valueOf();
    } else if (option == "--layout") {
        report.layout = static_cast<ReportLayout>(IndexOf(valueOf(), designer::LayoutWords, "layout"));
    } else if (option == "--chart") {
        report.chart = static_cast<designer::ReportChart>(IndexOf(valueOf(), Charts(), "chart") + 1);
    } else if (option == "--theme") {
        report.theme = valueOf();
        if (designer::FindTheme(report.theme) == nullptr) {
            throw UsageError("\"" + report.theme + "\" is no theme: " + designer::ThemeNames());
        }
    } else if (option == "--title") {
        report.title = valueOf();
    } else if (option == "--page") {
        report.paper = static_cast<designer::ReportPaper>(IndexOf(valueOf(), designer::PaperWords, "paper"));
    } else {
        throw UsageError("new has no option \"" + option + "\"");
    }
}

// An option that the layout ignores would be a wish that is not met.
void CheckNew(const NewReportArguments& arguments) {
    const designer::NewReport& report = arguments.report;
    const bool isMatrix = report.layout == ReportLayout::Matrix,
               isLabels = report.layout == ReportLayout::Labels;
    if (arguments.connectString.empty()) {
        throw UsageError("no data source is given (--data-source)");
    }
    if (isMatrix && (report.rows.empty() || report.across.empty() || report.values.empty())) {
        throw UsageError("a matrix needs --rows, --cols and --values");
    }
    if (!isMatrix && !(report.rows.empty() && report.across.empty() && report.values.empty())) {
        throw UsageError("--rows, --cols and --values are options of --layout matrix");
    }
    if (isMatrix && !(report.shown.empty() && report.groups.empty() && report.sums.empty())) {
        throw UsageError("a matrix has no --columns, --group and --sum");
    }
    if (isLabels && !(report.groups.empty() && report.sums.empty())) {
        throw UsageError("labels have no --group and --sum");
    }
    if (isLabels && report.landscape) {
        throw UsageError("labels have no --landscape");
    }
    if (report.layout == ReportLayout::Letter && report.groups.empty() && !report.sums.empty()) {
        throw UsageError("letters with a --sum need a --group");
    }
    if ((isLabels || report.layout == ReportLayout::Letter) && report.chart != designer::ReportChart::None) {
        throw UsageError("labels and letters have no --chart");
    }
}

std::string NewUsage() {
    std::vector<std::string_view> themes;
    for (const designer::Theme& theme : designer::Themes) {
        themes.push_back(theme.name);
    }
    return "oxc-report new -o FILE --data-source SOURCE [--query TEXT] [--columns F,F]... [--group F]... "
           "[--sum "
           "F]...\n"
           "           [--layout " +
           Joined(designer::LayoutWords, "|", "|") + "] [--chart " + Joined(Charts(), "|", "|") +
           "]\n"
           "           [--theme " +
           Joined(themes, "|", "|") +
           "] [--title TEXT]\n"
           "           [--page " +
           Joined(designer::PaperWords, "|", "|") +
           "] [--landscape] [--force] [--user U [--password-stdin | --password P]]\n"
           "           matrix: --rows F --cols F --values F\n"
           "           SOURCE: FILE.csv, FILE.db, PROVIDER:CONNECT STRING or NAME=PROVIDER;CONNECT STRING\n";
}

}  // namespace tools
