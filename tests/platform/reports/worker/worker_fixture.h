// SPDX-License-Identifier: GPL-3.0-or-later
// Reports in a folder of the test, run by report processes.
#pragma once

#include <sys/wait.h>

#include <cerrno>
#include <filesystem>

#include "platform/reports/report_folder.h"
#include "platform/reports/worker/faulty_worker.h"
#include "platform/reports/worker/server.h"
#include "platform/reports/worker/settings.h"
#include "platform/reports/worker/worker_engine.h"

namespace reports::worker::test {

class WorkerTest : public reports::test::ReportFolder {
 protected:
    void SetUp() override {
        ReportFolder::SetUp();
        m_descriptors = Descriptors();
    }
    void TearDown() override {
        unsetenv(faulty::Variable);
        unsetenv(faulty::OnceVariable);
        ReportFolder::TearDown();
    }
    static Settings Usual() {
        Settings settings;
        settings.program = OXC_REPORT_PROGRAM;
        return settings;
    }
    static Settings Faulty(const std::string& fault) {
        setenv(faulty::Variable, fault.c_str(), 1);
        Settings settings = Usual();
        settings.program = FAULTY_WORKER;
        return settings;
    }
    // A report with a parameter, that lists the names that a query of a SQLite file gives.
    static std::string DatabaseReport(const std::string& file, const std::string& query) {
        return R"(<Report><DataSources><DataSource Name="db"><ConnectionProperties><DataProvider>SQLITE</DataProvider>
            <ConnectString>Data Source=)" +
               file +
               R"(</ConnectString></ConnectionProperties></DataSource></DataSources><DataSets><DataSet Name="People">
            <Query><DataSourceName>db</DataSourceName><CommandText>)" +
               query +
               R"(</CommandText></Query><Fields><Field Name="Name"><DataField>Name</DataField></Field>
            <Field Name="Number"><DataField>Number</DataField></Field></Fields></DataSet></DataSets>)" +
               Parameters(Parameter("p", "String", "<Nullable>true</Nullable>")) +
               R"(<Width>4in</Width><Body><Height>1in</Height><ReportItems><Table Name="t">
            <DataSetName>People</DataSetName><TableColumns><TableColumn><Width>2in</Width></TableColumn></TableColumns>
            <Details><TableRows><TableRow><Height>1cm</Height><TableCells><TableCell><ReportItems><Textbox Name="n">
            <Value>=Fields!Name.Value</Value></Textbox></ReportItems></TableCell></TableCells></TableRow></TableRows>
            </Details></Table></ReportItems></Body></Report>)";
    }
    // Returns the processes of this test, also those that have ended and that nobody has waited for.
    static int Children() {
        int count = 0;
        for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
            std::ifstream children(task.path() / "children");
            for (int child = 0; children >> child;) {
                ++count;
            }
        }
        return count;
    }
    static int Descriptors() {
        return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"),
                                              std::filesystem::directory_iterator()));
    }
    // Nothing of a process is left here.
    void ExpectNothingLeft() const {
        EXPECT_EQ(Children(), 0);
        EXPECT_EQ(Descriptors(), m_descriptors);
    }

    int m_descriptors = 0;
};

}  // namespace reports::worker::test
