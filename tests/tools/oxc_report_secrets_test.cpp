// SPDX-License-Identifier: GPL-3.0-or-later
// What other processes see of the passwords of a running oxc-report.
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include "support/temporary_folder.h"

namespace {

using testing::HasSubstr;
using testing::Not;

class OxcReportSecrets : public testing::Test {
 protected:
    void SetUp() override {
        WriteBytes(m_folder / "x.rpt",
                   "<Report><DataSources><DataSource Name=\"d\"><ConnectionProperties><DataProvider>SQLITE"
                   "</DataProvider><ConnectString>Data Source=none.db</ConnectString></ConnectionProperties>"
                   "</DataSource></DataSources><Width>4in</Width><Body><Height>1in</"
                   "Height><ReportItems><Textbox Name=\"t\">"
                   "<Value>here</Value></Textbox></ReportItems></Body></Report>");
        // No process reads it: the program waits for a reader when it opens its output.
        ASSERT_EQ(mkfifo((m_folder / "out.htm").c_str(), 0600), 0);
    }
    void TearDown() override {
        if (m_process > 0) {
            kill(m_process, SIGKILL);
            waitpid(m_process, nullptr, 0);
        }
    }

    void Start(std::vector<std::string> options) {
        std::vector<std::string> arguments{
            OXC_REPORT_PROGRAM, "export", m_folder / "x.rpt", "-f", "html", "-o", m_folder / "out.htm"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        std::vector<char*> pointers;
        for (std::string& argument : arguments) {
            pointers.push_back(argument.data());
        }
        pointers.push_back(nullptr);
        m_process = fork();
        if (m_process == 0) {
            const rlimit all{RLIM_INFINITY, RLIM_INFINITY};
            setrlimit(RLIMIT_CORE, &all);
            execv(pointers[0], pointers.data());
            _exit(99);
        }
    }
    std::string Told(const std::string& name) const {
        return ReadBytes("/proc/" + std::to_string(m_process) + "/" + name);
    }
    // Returns the arguments once they hold asterisks, or after ten seconds.
    std::string HiddenLine() const {
        std::string line = Told("cmdline");
        for (int turn = 0; turn < 1000 && line.find("***") == std::string::npos; ++turn) {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
            line = Told("cmdline");
        }
        return line;
    }
    bool IsRunning() const { return waitpid(m_process, nullptr, WNOHANG) == 0; }

 private:
    const TemporaryFolder m_folder;
    pid_t m_process = -1;
};

TEST_F(OxcReportSecrets, ListOfProcessesDoesNotShowThem) {
    Start({"--user", "ann", "--password", "s3cret", "--data-source",
           "d=SQLITE;Data Source=none.db;Pwd=s3cret"});
    const std::string line = HiddenLine();
    EXPECT_TRUE(IsRunning());
    EXPECT_THAT(line, HasSubstr("ann"));
    EXPECT_THAT(line, HasSubstr("d=SQLITE;Data Source=none.db;Pwd=*"));
    EXPECT_THAT(line, Not(HasSubstr("s3cret")));
}

TEST_F(OxcReportSecrets, NoMemoryIsWrittenWhenTheProgramFails) {
    Start({"--user", "ann", "--password", "s3cret"});
    HiddenLine();
    EXPECT_THAT(Told("limits"), testing::ContainsRegex("Max core file size +0 "));
}

}  // namespace
