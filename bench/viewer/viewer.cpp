// SPDX-License-Identifier: GPL-3.0-or-later
// Measures the time from ViewReport to the painted first page of a report of 200 pages, the time for all
// pages, and the floor: the same rows read by the database library alone.
#include <sqlite3.h>
#include <unistd.h>

#include <QApplication>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>

#include "bench/long_report.h"
#include "platform/base/paths.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "platform/viewer/report_viewer.h"

namespace {

double MillisecondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin).count();
}

// Reads every value, as any program that shows them must.
long ReadAll(const std::filesystem::path& file) {
    sqlite3* database = nullptr;
    sqlite3_stmt* rows = nullptr;
    if (sqlite3_open(file.c_str(), &database) != SQLITE_OK ||
        sqlite3_prepare_v2(database, "select * from Orders", -1, &rows, nullptr) != SQLITE_OK) {
        std::abort();
    }
    long bytes = 0;
    while (sqlite3_step(rows) == SQLITE_ROW) {
        for (int column = 0; column < sqlite3_column_count(rows); ++column) {
            sqlite3_column_text(rows, column);
            bytes += sqlite3_column_bytes(rows, column);
        }
    }
    sqlite3_finalize(rows);
    sqlite3_close(database);
    return bytes;
}

void Run(const char* name, const std::filesystem::path& folder, const std::filesystem::path& file) {
    long bytes = 0;
    const double floor = MillisecondsOf([&] { bytes = ReadAll(bench::LongReportData(folder)); });
    ReportViewer viewer;
    viewer.resize(960, 580);
    viewer.show();
    QApplication::processEvents();
    viewer.ReportSource(reports::OpenRdlReport(paths::FromMachine(file)));
    auto* const pages = viewer.findChild<viewer::PageCanvas*>("pages");
    const double first = MillisecondsOf([&] {
        viewer.ViewReport();
        pages->viewport()->repaint();
    });
    pages->GoToEnd();
    int count = 0;
    const double all = MillisecondsOf([&] {
        do {
            QApplication::processEvents();
            count = viewer.CurrentPage();
        } while (pages->IsFollowingEnd());
    });
    std::printf(
        "%s: first page of %d in %.1f ms, all in %.0f ms; ratio to reading the rows (%.1f ms, %ld "
        "bytes): %.1f\n",
        name, count, first, first + all, floor, bytes, first / floor);
}

}  // namespace

int main(int argc, char** argv) {
    if (!std::getenv("DISPLAY") && !std::getenv("QT_QPA_PLATFORM")) {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
    }
    const QApplication application(argc, argv);
    std::string name = (std::filesystem::temp_directory_path() / "oxc-bench-viewer-XXXXXX").string();
    if (!mkdtemp(name.data())) {
        return 1;
    }
    const std::filesystem::path folder = name;
    const std::filesystem::path file = bench::WriteLongReport(folder);
    Run("cold (fonts are looked for)", folder, file);
    Run("warm", folder, file);
    std::filesystem::remove_all(folder);
    return 0;
}
