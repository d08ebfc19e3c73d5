// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/formats/contenders.h"

#include "bench/formats/peer_data.h"
#include "bench/long_report.h"

namespace bench {
namespace {

namespace fs = std::filesystem;

// LibreOffice gets a profile of its own: the user's may be in use, and the first start, which makes the
// profile, does not count.
Contender LibreOffice(const fs::path& input, const std::string& format, const std::string& filter,
                      const fs::path& folder) {
    const fs::path output = folder / "libreoffice";
    Contender contender{"LibreOffice", {{}, (output / input.stem()).concat("." + format)}, 10};
    if (const auto program = FindProgram("soffice")) {
        contender.command.words = {*program,
                                   "--headless",
                                   "-env:UserInstallation=file://" + (folder / "profile").string(),
                                   "--convert-to",
                                   filter.empty() ? format : format + ":" + filter,
                                   "--outdir",
                                   output,
                                   input};
    }
    return contender;
}

// The Debian package's module belongs to the system's own Python.
Contender Reportlab(const fs::path& folder) {
    const std::string python = "/usr/bin/python3";
    Contender contender{"reportlab LongTable", {{}, folder / "reportlab.pdf"}, 10};
    if (Succeeds({python, "-c", "import reportlab"})) {
        contender.command.words = {python, OXC_REPORTLAB_TABLE, LongReportData(folder),
                                   contender.command.output};
    }
    return contender;
}

Contender Ssconvert(const fs::path& input, const fs::path& folder) {
    Contender contender{"ssconvert", {{}, folder / "ssconvert.xls"}, 5};
    if (const auto program = FindProgram("ssconvert")) {
        contender.command.words = {*program, "--export-type=Gnumeric_Excel:excel_biff8", input,
                                   contender.command.output};
    }
    return contender;
}

}  // namespace

Contender OxcReport(const fs::path& report, const std::string& format) {
    const fs::path output = report.parent_path() / ("oxc." + format);
    return {"oxc-report", {{OXC_REPORT, "export", report, "-f", format, "-o", output}, output}, 1};
}

Contender Libharu(const fs::path& folder) {
    Contender contender{"libharu, no layout", {{}, folder / "libharu.pdf"}, 1 / MostTimesFloor};
#ifdef OXC_LIBHARU_TABLE
    contender.command.words = {OXC_LIBHARU_TABLE, LongReportData(folder), contender.command.output};
#endif
    return contender;
}

// The least work for a workbook.
Contender Libxlsxwriter(const fs::path& folder) {
    Contender contender{"libxlsxwriter, no layout", {{}, folder / "libxlsxwriter.xlsx"}, 1 / MostTimesFloor};
    contender.command.words = {OXC_XLSX_TABLE, LongReportData(folder), contender.command.output};
    return contender;
}

std::vector<Contender> PeersOf(const std::string& format, const fs::path& folder) {
    const fs::path csv = folder / "orders.csv";
    WriteCsv(LongReportData(folder), csv);
    if (format == "pdf") {
        return {Libharu(folder), Reportlab(folder), LibreOffice(csv, "pdf", "", folder)};
    }
    if (format == "xls") {
        return {Ssconvert(csv, folder), LibreOffice(csv, "xls", "", folder)};
    }
    if (format == "xlsx") {
        return {Libxlsxwriter(folder), LibreOffice(csv, "xlsx", "", folder)};
    }
    if (format == "html") {
        return {LibreOffice(csv, "html", "", folder)};
    }
    // Calc writes no text documents, but Writer does: it gets the same table as an HTML page.
    const fs::path page = folder / "orders.html";
    WriteHtmlTable(LongReportData(folder), page);
    Contender writer = LibreOffice(page, format, format == "docx" ? "MS Word 2007 XML" : "", folder);
    if (!writer.command.words.empty()) {
        writer.command.words.insert(writer.command.words.begin() + 2, "--infilter=HTML (StarWriter)");
    }
    return {writer};
}

}  // namespace bench
