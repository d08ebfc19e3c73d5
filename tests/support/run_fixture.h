// SPDX-License-Identifier: GPL-3.0-or-later
// Runs of schedules and packages: a real database, fakes for everything else.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>

#include "platform/contracts/regional.h"
#include "shared/Global.h"
#include "support/database.h"
#include "support/fakes.h"

namespace fakes {

class RunFixture : public testing::Test {
 protected:
    using Rows = std::vector<std::string>;
    using Boxes = std::vector<Box>;

    explicit RunFixture(DateValue now) : clock{now} { Global::AlertWho = "boss@example.com"; }
    ~RunFixture() override {
        Global::DeskWindows.clear();
        Global::DeskIndex = 0;
        SetRegional({});
    }
    // Selects an item of the fake Desktop window, which is the current one.
    void Select(const std::string& text, const std::string& key) {
        Global::DeskWindows = {nullptr, &desk};
        Global::DeskIndex = 1;
        desk.selected = {text, key};
    }
    // Returns the engine's calls that begin with the word.
    Rows CallsWith(const std::string& word) const {
        Rows found;
        std::copy_if(engine.calls.begin(), engine.calls.end(), std::back_inserter(found),
                     [&word](const std::string& call) { return call.rfind(word, 0) == 0; });
        return found;
    }

    FakeClock clock;
    FakeLoop loop{clock};
    TestDatabase database;
    FakeEngine engine;
    FakeMailSystem mail;
    FakePrompts prompts;
    FakeFrame frame;
    FakeDesk desk;
};

// The engine knows the reports a and b in Z:\r.
class PackageRunFixture : public RunFixture {
 protected:
    explicit PackageRunFixture(DateValue now) : RunFixture(now) {
        for (const char* name : {"a", "b"}) {
            engine.reports["Z:\\r\\" + std::string(name) + ".rpt"] = {};
        }
    }
    void Package(const std::string& mailBatch = "T", const std::string& recipients = "ann;bob;",
                 const std::string& next = "2026-11-21", const std::string& runTime = "14:00") {
        database.Run(
            "insert into "
            "ReportBatch(BatchName,Recipients,Frequency,RunTime,StartDate,EndDate,Subject,Message,"
            "Destination,NextRunDate,MailBatch) values('Pack','" +
            recipients + "','Daily','" + runTime +
            "','2000-01-01','3000-12-31','Subject','Body','Z:\\out\\','" + next + "','" + mailBatch + "')");
    }
    void Detail(int package, const std::string& title, const std::string& format,
                const std::string& path = "a") {
        database.Run("insert into ReportBatchDtls(ReportID,ReportTitle,ReportPath,ReportFormat) values(" +
                     std::to_string(package) + ",'" + title + "','Z:\\r\\" + path + ".rpt','" + format +
                     "')");
    }
    Rows History() const {
        return database.Rows("select ReportID,LastRun,Success,ErrMsg from ReportBatchHstry");
    }
    Rows NextRuns() const { return database.Rows("select NextRunDate from ReportBatch order by ReportID"); }
};

}  // namespace fakes
