// SPDX-License-Identifier: GPL-3.0-or-later
// When a report process starts, stays, and makes room for another one.
#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/prctl.h>

#include <csignal>
#include <thread>

#include "platform/reports/failure.h"
#include "platform/reports/worker/worker_fixture.h"
#include "platform/reports/worker/worker_process.h"

namespace reports::worker::test {
namespace {

using reports::test::ErrorOf;

class WorkerLifetime : public WorkerTest {
 protected:
    void SetUp() override {
        WorkerTest::SetUp();
        Write("people.rpt", PeopleReport());
    }
    void OpenAndClose(report::Engine& engine) const { engine.OpenReport(Path("people.rpt")); }
    static pid_t OneChild() {
        pid_t child = -1;
        std::ifstream("/proc/self/task/" + std::to_string(getpid()) + "/children") >> child;
        return child;
    }
};

TEST_F(WorkerLifetime, BeginsWithTheFirstReportAndServesTheNextOnes) {
    auto engine = CreateWorkerEngine(Usual());
    EXPECT_EQ(Children(), 0);
    OpenAndClose(*engine);
    const pid_t child = OneChild();
    EXPECT_GT(child, 0);
    OpenAndClose(*engine);
    EXPECT_EQ(OneChild(), child);
    engine.reset();
    ExpectNothingLeft();
}

TEST_F(WorkerLifetime, EndsAfterItsReports) {
    Settings settings = Usual();
    settings.mostReports = 2;
    const auto engine = CreateWorkerEngine(settings);
    OpenAndClose(*engine);
    const pid_t first = OneChild();
    const auto kept = engine->OpenReport(Path("people.rpt"));
    EXPECT_EQ(OneChild(), first);
    const auto next = engine->OpenReport(Path("people.rpt"));
    EXPECT_EQ(Children(), 2);  // one report is still open in the first
    kept->SetRecordSelectionFormula("{Number} > 1");
    next->SetRecordSelectionFormula("{Number} > 1");
}

TEST_F(WorkerLifetime, EndsWhenItHoldsTooMuchMemory) {
    Settings settings = Usual();
    settings.mostBytes = 1 << 20;
    const auto engine = CreateWorkerEngine(settings);
    OpenAndClose(*engine);
    const pid_t first = OneChild();
    OpenAndClose(*engine);
    EXPECT_NE(OneChild(), first);
    EXPECT_EQ(Children(), 1);
}

TEST_F(WorkerLifetime, ProcessThatEndsBetweenRunsIsReplaced) {
    const auto engine = CreateWorkerEngine(Usual());
    OpenAndClose(*engine);
    const pid_t first = OneChild();
    kill(first, SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    OpenAndClose(*engine);
    EXPECT_NE(OneChild(), first);
    EXPECT_EQ(Children(), 1);
}

// The report that was open is closed by a message that nobody reads any more. Nothing waits for its answer:
// with this patience the test would not end.
TEST_F(WorkerLifetime, ProcessThatEndsUnderAnOpenReportIsReplacedAtOnce) {
    Settings settings = Usual();
    settings.patience = std::chrono::hours(1);
    const auto engine = CreateWorkerEngine(settings);
    auto kept = engine->OpenReport(Path("people.rpt"));
    const pid_t first = OneChild();
    kill(first, SIGKILL);
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    kept.reset();
    OpenAndClose(*engine);
    EXPECT_NE(OneChild(), first);
    EXPECT_EQ(Children(), 1);
}

TEST_F(WorkerLifetime, SignalsOfATerminalAreForTheProgramOnly) {
    const auto engine = CreateWorkerEngine(Usual());
    OpenAndClose(*engine);
    const pid_t first = OneChild();
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        kill(first, signal);
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    OpenAndClose(*engine);
    EXPECT_EQ(OneChild(), first);
}

TEST_F(WorkerLifetime, EndsWithItsProgramHoweverThatEnds) {
    prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0);
    const pid_t program = fork();
    if (program == 0) {
        Settings settings = Faulty("Open:Sleep");
        CreateWorkerEngine(settings)->OpenReport(Path("people.rpt"));
        _exit(0);
    }
    pid_t worker = -1;
    for (int turn = 0; turn < 100 && worker < 0; ++turn) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        std::ifstream("/proc/" + std::to_string(program) + "/task/" + std::to_string(program) +
                      "/children") >>
            worker;
    }
    ASSERT_GT(worker, 0);
    std::this_thread::sleep_for(std::chrono::seconds(1));
    kill(program, SIGKILL);
    waitpid(program, nullptr, 0);
    int status = 0;
    pid_t ended = 0;
    for (int turn = 0; turn < 100 && ended == 0; ++turn) {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        ended = waitpid(worker, &status, WNOHANG);
    }
    EXPECT_EQ(ended, worker);
    EXPECT_TRUE(WIFSIGNALED(status));
    if (ended == 0) {
        kill(worker, SIGKILL);
        waitpid(worker, nullptr, 0);
    }
    prctl(PR_SET_CHILD_SUBREAPER, 0, 0, 0, 0);
}

TEST_F(WorkerLifetime, ManyOperationsWithoutAnAnswerFit) {
    const auto engine = CreateWorkerEngine(Usual());
    const auto report = engine->OpenReport(Path("people.rpt"));
    const pid_t child = OneChild();
    kill(child, SIGSTOP);
    std::thread later([child] {
        std::this_thread::sleep_for(std::chrono::milliseconds(500));
        kill(child, SIGCONT);
    });
    for (int turn = 0; turn < 2000; ++turn) {
        report->SetRunSwitches(false, false);
    }
    later.join();
    report->SetRecordSelectionFormula("{Number} > 1");
    EXPECT_EQ(OneChild(), child);
}

TEST_F(WorkerLifetime, TwoEnginesHaveTwoProcesses) {
    const auto one = CreateWorkerEngine(Usual());
    const auto other = CreateWorkerEngine(Usual());
    const auto first = one->OpenReport(Path("people.rpt"));
    const auto second = other->OpenReport(Path("people.rpt"));
    EXPECT_EQ(Children(), 2);
    EXPECT_EQ(first->Title() + second->Title(), "peoplepeople");
}

TEST_F(WorkerLifetime, MissingProgramIsNamed) {
    Settings settings = Usual();
    settings.program = m_folder / "oxc-report";
    const RuntimeError error = ErrorOf([&] { OpenAndClose(*CreateWorkerEngine(settings)); });
    EXPECT_EQ(error.Number(), WorkerFailed);
    EXPECT_EQ(error.Description(), "The report program \"" + Path("oxc-report") +
                                       "\" cannot be started: No such file or directory");
    ExpectNothingLeft();
}

TEST_F(WorkerLifetime, ProgramOfAnotherVersionIsNamed) {
    Settings settings = Usual();
    settings.program = Write("oxc-report", "#!/bin/sh\nexit 2\n");
    std::filesystem::permissions(settings.program, std::filesystem::perms::owner_all);
    EXPECT_EQ(ErrorOf([&] { OpenAndClose(*CreateWorkerEngine(settings)); }).Description(),
              "The report program \"" + Path("oxc-report") + "\" is not of this version (" + ServeVersion() +
                  "): install both together and start this program again");
    ExpectNothingLeft();
}

TEST_F(WorkerLifetime, ProgramThatIsNoneOfOursIsNamed) {
    Settings settings = Usual();
    settings.program = "/bin/true";
    EXPECT_EQ(ErrorOf([&] { OpenAndClose(*CreateWorkerEngine(settings)); }).Description(),
              "The report process ended with exit code 0 while it started");
}

TEST_F(WorkerLifetime, HasNoFileOfItsProgram) {
    const std::string name = Write("open", "");
    // It stays open in children that do not close it. The lowest descriptors have another meaning there.
    const int lowest = open(name.c_str(), O_RDONLY);
    const int mine = fcntl(lowest, F_DUPFD, 20);
    const auto engine = CreateWorkerEngine(Usual());
    OpenAndClose(*engine);
    for (const auto& entry :
         std::filesystem::directory_iterator("/proc/" + std::to_string(OneChild()) + "/fd")) {
        std::error_code error;
        EXPECT_NE(std::filesystem::read_symlink(entry.path(), error), name) << entry.path();
    }
    close(mine);
    close(lowest);
}

}  // namespace
}  // namespace reports::worker::test
