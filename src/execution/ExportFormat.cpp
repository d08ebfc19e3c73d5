// SPDX-License-Identifier: GPL-3.0-or-later
#include "execution/ExportFormat.h"

#include <algorithm>
#include <array>

#include "platform/base/convert.h"
#include "platform/base/file_name.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "store/TextConventions.h"

namespace Global {

using report::DocumentFormat;

namespace {

enum class KnownTo { All, AllButPackagePoll };

// The lists that offer a word.
struct In {
    bool schedules = false;
    bool packageWizard = false;
    bool packageCommands = false;

    constexpr bool Has(FormatList list) const {
        return list == FormatList::Schedules       ? schedules
               : list == FormatList::PackageWizard ? packageWizard
                                                   : packageCommands;
    }
};

struct Word {
    std::string_view word;
    DocumentFormat format;
    KnownTo knownTo = KnownTo::All;
    In in = {};
};

constexpr In AllLists = {.schedules = true, .packageWizard = true, .packageCommands = true};
constexpr In PackageLists = {.packageWizard = true, .packageCommands = true};

// The one table of the words, in the order in which the lists offer them.
constexpr std::array Words = {
    Word{"Acrobat", DocumentFormat::Pdf, KnownTo::All, {.packageCommands = true}},
    Word{"Acrobat Format (PDF)",
         DocumentFormat::Pdf,
         KnownTo::AllButPackagePoll,
         {.schedules = true, .packageWizard = true}},
    Word{"PDF", DocumentFormat::Pdf, KnownTo::AllButPackagePoll},
    Word{"DHTML", DocumentFormat::Html, KnownTo::All, {.schedules = true}},
    Word{"HTML", DocumentFormat::Html, KnownTo::All, PackageLists},
    Word{"Excel", DocumentFormat::Excel},
    Word{"MS Excel", DocumentFormat::Excel, KnownTo::All, AllLists},
    Word{"MS Word", DocumentFormat::Word, KnownTo::All, AllLists},
    Word{"WinWord", DocumentFormat::Word},
    Word{"RTF", DocumentFormat::Rtf},
    Word{"Rich Text", DocumentFormat::Rtf, KnownTo::All, AllLists},
};

// A second row for a word would never be found.
static_assert(std::all_of(Words.begin(), Words.end(), [](const Word& one) {
    return std::count_if(Words.begin(), Words.end(),
                         [&one](const Word& other) { return other.word == one.word; }) == 1;
}));

std::string WithoutBlanks(const std::string& text) {
    return Replace(text, " ", "");
}

}  // namespace

std::optional<DocumentFormat> RecogniseFormat(Runner runner, const std::string& word) {
    for (const Word& known : Words) {
        if (word == known.word && (known.knownTo == KnownTo::All || runner != Runner::PackagePoll)) {
            return known.format;
        }
    }
    return std::nullopt;
}

std::vector<OfferedFormat> OfferedFormats(FormatList list) {
    std::vector<OfferedFormat> offered;
    for (const Word& known : Words) {
        if (known.in.Has(list)) {
            offered.push_back({known.format, known.word});
        }
    }
    return offered;
}

std::string HtmlOutputFile(const std::string& reportTitle) {
    // The number of hours gives a new name every hour.
    const std::int64_t hours = DiffHours(DateSerial(2002, 1, 1), Now());
    const std::string name = WithoutBlanks(reportTitle) + std::to_string(hours) + ".htm";
    // The title comes from the report file, which must not lead out of the folder.
    RequireFileName(name);
    return AppPath() + "\\output\\" + name;
}

std::string PackageOutputFile(DocumentFormat format, const std::string& destination,
                              const std::string& reportTitle) {
    std::string name = reportTitle;
    if (format == DocumentFormat::Pdf) {
        name = cmFunc::GetDelimitedField(reportTitle, 2, ">");
    } else if (format == DocumentFormat::Html) {
        name = Replace(WithoutBlanks(reportTitle), ">", "");
    }
    return destination + name + "." + std::string(report::RowOf(format).extension);
}

void SetExcelOptions(report::Report& report) {
    constexpr bool KeepsTypes = true, PageHeaders = false, PageBreaks = false, Gridlines = false;
    constexpr int BaseArea = 4;
    report.SetExcelOptions(KeepsTypes, PageHeaders, PageBreaks, Gridlines, BaseArea);
}

void SetPackageHtmlOptions(report::Report& report) {
    constexpr bool FirstSwitch = false, SecondSwitch = false;
    report.SetHtmlOptions(FirstSwitch, SecondSwitch);
}

}  // namespace Global
