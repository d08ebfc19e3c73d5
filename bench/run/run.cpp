// SPDX-License-Identifier: GPL-3.0-or-later
// Measures how many schedules are run and mailed to the outbox per second, where the time goes, and the floor
// of the disk: the same number of files of the same size, each synced before it is renamed.
//
// usage: bench_run [SCHEDULES [REPORT [here|worker]]]: reports run in this process, or in one of their own as
// in the scheduler
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "bench/run/timed_engine.h"
#include "bench/run/timed_mail.h"
#include "platform/base/paths.h"
#include "platform/contracts/clock.h"
#include "scheduler/Schedchk.h"
#include "shared/Global.h"
#include "store/TextConventions.h"
#include "support/database.h"

namespace fs = std::filesystem;

namespace {

double SecondsOf(const std::function<void()>& work) {
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

void SetUpOutbox(const fs::path& folder) {
    setenv("XDG_CONFIG_HOME", (folder / "config").c_str(), 1);
    setenv("XDG_DATA_HOME", (folder / "data").c_str(), 1);
    fs::create_directories(folder / "config" / "oxbow-courier");
    fs::create_directories(folder / "outbox");
    std::ofstream(folder / "config" / "oxbow-courier" / "mail.ini")
        << "[Profile]\nTransport=outbox\nFrom=bench@example.com\nOutboxFolder="
        << (folder / "outbox").string() << "\n";
}

std::uintmax_t SizeOfAll(const fs::path& folder, int& count) {
    std::uintmax_t size = 0;
    for (const auto& entry : fs::directory_iterator(folder)) {
        size += entry.file_size();
        ++count;
    }
    return size;
}

void WriteSafely(const fs::path& folder, const std::string& bytes, int count) {
    for (int i = 0; i < count; ++i) {
        const fs::path temporary = folder / "part";
        const int file = open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
        if (file < 0 || write(file, bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size())) {
            std::abort();
        }
        fsync(file);
        close(file);
        fs::rename(temporary, folder / std::to_string(i));
    }
}

}  // namespace

int main(int argc, char** argv) {
    const int schedules = argc > 1 ? std::atoi(argv[1]) : 100;
    const fs::path report = argc > 2 ? fs::path(argv[2]) : fs::path(OXC_STAGE) / "samples" / "summary.rpt";
    const fakes::TestDatabase database;
    SetUpOutbox(database.Folder());
    MAPI::SetMailSystem(&TimedMailSystem());
    const bool isHere = argc > 3 && std::string(argv[3]) == "here";
    report::SetRunEngineFactory(isHere ? &CreateTimedEngine : &CreateTimedWorkerEngine);
    for (int i = 0; i < schedules; ++i) {
        fakes::Insert(database,
                      {.path = paths::FromMachine(report), .nextRun = cmFunc::FormatDateText(Today())});
    }

    const double total = SecondsOf([] { Global::Schedchk(); });
    int mails = 0;
    const std::uintmax_t bytes = SizeOfAll(database.Folder() / "outbox", mails);
    if (mails != schedules) {
        std::fprintf(stderr, "%d schedules left %d mails\n", schedules, mails);
        return 1;
    }
    fs::create_directories(database.Folder() / "floor");
    const std::string content(bytes / static_cast<std::uintmax_t>(mails), 'x');
    const double floor = SecondsOf([&] { WriteSafely(database.Folder() / "floor", content, mails); });

    const double exporting = g_exporting.Seconds() - g_mailing.Seconds();
    const auto line = [&](const char* what, double seconds) {
        std::printf("  %-22s %7.2f ms a schedule  %5.1f %%\n", what, 1000 * seconds / schedules,
                    100 * seconds / total);
    };
    std::printf("%d schedules of %s (%zu bytes a mail): %.1f a second\n", schedules,
                report.filename().c_str(), content.size(), schedules / total);
    line("open the report", g_opening.Seconds());
    line("run and write it", exporting);
    line("build and store mail", g_mailing.Seconds());
    line("database and the rest", total - g_opening.Seconds() - g_exporting.Seconds());
    std::printf("ratio to writing the same files safely (%.2f ms each): %.1f\n", 1000 * floor / mails,
                total / floor);
    return 0;
}
