// SPDX-License-Identifier: GPL-3.0-or-later
// A report process that ends, hangs or lies costs its run and nothing else.
#include <gmock/gmock.h>

#include "platform/contracts/export_formats.h"
#include "platform/contracts/loop.h"
#include "platform/reports/failure.h"
#include "platform/reports/worker/worker_fixture.h"

namespace reports::worker::test {
namespace {

using reports::test::ErrorOf;

class WorkerFaults : public WorkerTest {
 protected:
    void SetUp() override {
        WorkerTest::SetUp();
        Write("people.db", "");
        Write("people.rpt", DatabaseReport("people.db", "select 'Ann' as Name, 2 as Number"));
    }
    // All operations of the contract, as a run uses them.
    void RunAll(report::Engine& engine) const {
        const auto report = engine.OpenReport(Path("people.rpt"));
        report->SetTableLogon(1, "", "", "ann", "secret");
        report->Parameter(1).DefaultValues();
        report->Parameter(1).ValidValues();
        report->Parameter(1).ClearCurrentValueAndRange();
        report->Parameter(1).AddCurrentValue(std::string("a"));
        report->SetRunSwitches(false, false);
        report->SetRecordSelectionFormula("{Number} > 1");
        report->SetExcelOptions(true, true, true, true, 1);
        report->SetHtmlOptions(true, true);
        report->SetExportDestination(report::DestinationDisk);
        report->SetExportFormat(report::CodeOf(report::DocumentFormat::Csv));
        report->SetDiskFileName(Path("out.csv"));
        report->Export(false);
    }
    std::string WordsOf(std::string_view operation) const {
        const std::string of = " the report \"" + Path("people.rpt") + "\"";
        return operation == "Begin"   ? "started"
               : operation == "Open"  ? "opened" + of
               : operation == "Write" ? "ran" + of
                                      : "prepared" + of;
    }
    RuntimeError ErrorAt(report::Engine& engine) const {
        return ErrorOf([&] { RunAll(engine); });
    }
    void ExpectFault(const Settings& settings, const std::string& text) {
        std::filesystem::remove(Path("out.csv"));
        const auto engine = CreateWorkerEngine(settings);
        const RuntimeError error = ErrorAt(*engine);
        EXPECT_EQ(error.Number(), WorkerFailed);
        EXPECT_EQ(error.Description(), text);
        ExpectNothingLeft();
        EXPECT_FALSE(std::filesystem::exists(Path("out.csv")));
        unsetenv(faulty::Variable);
        EXPECT_EQ(ErrorAt(*engine).Description(), "");
        EXPECT_EQ(Read("out.csv").empty(), false);
    }
};

// One test for each operation: the process crashes before it.
class WorkerCrashes : public WorkerFaults, public testing::WithParamInterface<std::string_view> {};

TEST_P(WorkerCrashes, FailThisRunOnly) {
    const std::string operation(GetParam());
    ExpectFault(Faulty(operation + ":Crash"),
                "The report process was ended by signal 6 (Aborted) while it " + WordsOf(operation));
    EXPECT_EQ(FileCount(), 3);  // report, database and document
}

std::vector<std::string_view> OperationsWithAnswer() {
    std::vector<std::string_view> all(faulty::Operations.begin(), faulty::Operations.end());
    std::erase(all, "Close");
    return all;
}

INSTANTIATE_TEST_SUITE_P(EachOperation, WorkerCrashes, testing::ValuesIn(OperationsWithAnswer()),
                         [](const auto& one) { return std::string(one.param); });

TEST_F(WorkerFaults, CrashAtTheEndOfAReportConcernsNobody) {
    const auto engine = CreateWorkerEngine(Faulty("Close:Crash"));
    EXPECT_EQ(ErrorAt(*engine).Description(), "");
    for (int turn = 0; turn < 3; ++turn) {
        usleep(200'000);
        EXPECT_EQ(ErrorAt(*engine).Description(), "");
    }
    EXPECT_EQ(Children(), 1);
}

TEST_F(WorkerFaults, EveryEndIsTold) {
    const std::string ran = " while it ran the report \"" + Path("people.rpt") + "\"";
    ExpectFault(Faulty("Write:Segmentation"),
                "The report process was ended by signal 11 (Segmentation fault)" + ran);
    ExpectFault(Faulty("Write:Kill"), "The report process was ended by signal 9 (Killed)" + ran);
    ExpectFault(Faulty("Write:Exit"), "The report process ended with exit code 7" + ran);
    ExpectFault(Faulty("Write:Hangup"), "The report process was ended by signal 9 (Killed)" + ran);
}

TEST_F(WorkerFaults, AnswersThatCannotBeReadEndIt) {
    const std::string text =
        "The report process gave an answer that cannot be read while it ran the report \"" +
        Path("people.rpt") + "\"";
    for (const char* fault : {"Write:Garbage", "Write:WrongAnswer", "Write:TwoAnswers"}) {
        ExpectFault(Faulty(fault), text);
    }
}

TEST_F(WorkerFaults, StoppedProcessIsEndedAfterItsTime) {
    Settings settings = Faulty("Write:Stop");
    settings.patience = std::chrono::seconds(5);  // a busy machine takes some seconds to start the process
    ExpectFault(settings, "The report process gave no sign of life for 5 seconds while it ran the report \"" +
                              Path("people.rpt") + "\"");
}

TEST_F(WorkerFaults, ProcessThatOnlyWaitsIsEndedAfterTheLongestTime) {
    Settings settings = Faulty("Write:Sleep");
    settings.patience = std::chrono::seconds(10);
    settings.longest = std::chrono::seconds(8);
    ExpectFault(settings, "The report process took longer than 8 seconds while it ran the report \"" +
                              Path("people.rpt") + "\"");
}

TEST_F(WorkerFaults, ProcessThatOnlyComputesIsEndedAfterItsProcessorTime) {
    Settings settings = Faulty("Write:Spin");
    settings.processor = std::chrono::seconds(1);
    ExpectFault(settings,
                "The report process took more than 1 second of the processor while it ran the report \"" +
                    Path("people.rpt") + "\"");
}

TEST_F(WorkerFaults, ProcessThatTakesAllMemoryFailsAsTheEngineDoes) {
#if defined(__SANITIZE_ADDRESS__)
    GTEST_SKIP() << "the address sanitizer needs more address space than any limit";
#endif
    Settings settings = Faulty("Write:Memory");
    settings.megabytes = 1024;
    const auto engine = CreateWorkerEngine(settings);
    const RuntimeError error = ErrorAt(*engine);
    EXPECT_EQ(error.Number(), err::OutOfMemory);
    EXPECT_EQ(error.Description(), "Out of memory");
    unsetenv(faulty::Variable);
    EXPECT_EQ(ErrorAt(*engine).Description(), "");  // in another process: that one holds too much
}

TEST_F(WorkerFaults, NumbersThatTheSystemActsUponAreNotItsToGive) {
    const auto engine = CreateWorkerEngine(Faulty("Write:ForeignNumber"));
    const RuntimeError error = ErrorAt(*engine);
    EXPECT_EQ(error.Number(), RunFailed);
    EXPECT_EQ(error.Description(), "it\"s me");
}

TEST_F(WorkerFaults, ReportOfAProcessThatIsGoneFailsAgainAndAgain) {
    const auto engine = CreateWorkerEngine(Faulty("SetFormula:Crash"));
    const auto report = engine->OpenReport(Path("people.rpt"));
    const auto set = [&] { report->SetRecordSelectionFormula("{Number} > 1"); };
    const std::string first = ErrorOf(set).Description();
    EXPECT_EQ(ErrorOf(set).Description(), first);
    EXPECT_EQ(ErrorOf([&] { report->Parameter(1).AddCurrentValue(1.0); }).Description(), first);
}

TEST_F(WorkerFaults, WindowsRepaintThemselvesDuringALongOperation) {
    struct Loop : MessageLoop {
        void Yield() override { ++yields; }
        void YieldFor(double) override { ++yields; }
        void Repaint() override { ++repaints; }
        int yields = 0, repaints = 0;
    } loop;
    SetLoop(&loop);
    Settings settings = Faulty("Write:Sleep");
    settings.longest = std::chrono::seconds(1);
    ErrorAt(*CreateWorkerEngine(settings));
    SetLoop(nullptr);
    EXPECT_GE(loop.repaints, 5);
    EXPECT_EQ(loop.yields, 0);
}

}  // namespace
}  // namespace reports::worker::test
