// SPDX-License-Identifier: GPL-3.0-or-later
// The program with an application folder and settings for one test.
#pragma once

#include <gmock/gmock.h>
#include <sqlite3.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <clocale>
#include <cstring>
#include <filesystem>
#include <future>
#include <string>
#include <thread>
#include <vector>

#include "support/config_home.h"

struct ScheduleOutcome {
    int code = -1;
    std::string output, complaint;
};

class ScheduleProgram : public testing::Test {
 protected:
    using Texts = std::vector<std::string>;

    void SetUp() override {
        for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM", "OXC_SCHEDULE_PASSWORD"}) {
            unsetenv(name);
        }
        for (const char* name : {"app/Cache", "app/output", "out"}) {
            std::filesystem::create_directories(m_folder / name);
        }
        std::filesystem::copy_file(OXC_BLANK_DATABASE, m_folder / "app" / "Pressroom.dat");
        setenv("OXC_HOME", (m_folder / "app").c_str(), 1);
        setenv("XDG_DATA_HOME", (m_folder / "data").c_str(), 1);
        WriteBytes(m_folder / "plain.rpt", Report("", ""));
        WriteBytes(m_folder / "sales.rpt", Report(R"(<ReportParameters>
            <ReportParameter Name="Region"><DataType>String</DataType><ValidValues><ParameterValues>
              <ParameterValue><Value>West</Value></ParameterValue><ParameterValue><Value>East</Value></ParameterValue>
            </ParameterValues></ValidValues></ReportParameter>
            <ReportParameter Name="Year"><DataType>Integer</DataType><DefaultValue><Values><Value>2025</Value></Values>
            </DefaultValue></ReportParameter></ReportParameters>)",
                                                  "=Parameters!Region.Value"));
    }
    void TearDown() override {
        unsetenv("OXC_HOME");
        unsetenv("XDG_DATA_HOME");
    }

    // What the programs say of a failed call of the system, which is in their region.
    static std::string TextOfTheMachine(int code) {
        std::setlocale(LC_ALL, "");
        std::string text = std::strerror(code);
        std::setlocale(LC_ALL, "C");
        return text;
    }

    static std::string Report(const std::string& parameters, const std::string& value) {
        return "<Report>" + parameters +
               "<Width>4in</Width><Body><Height>1in</Height><ReportItems><Textbox Name=\"t\"><Value>" +
               value + "</Value></Textbox></ReportItems></Body></Report>";
    }

    // `arguments` as in a shell in the folder of the test, `input` on standard input. `starter` is the
    // beginning of a command that starts the program.
    ScheduleOutcome Run(const std::string& arguments, const std::string& input = {},
                        const std::string& starter = {}) const {
        WriteBytes(m_folder / "stdin", input);
        const std::string line = "cd '" + m_folder.Path().string() + "' && " + starter +
                                 "'" OXC_SCHEDULE_PROGRAM "' " + arguments + " <stdin >stdout 2>stderr";
        const int status = std::system(line.c_str());
        return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ReadBytes(m_folder / "stdout"),
                ReadBytes(m_folder / "stderr")};
    }
    // Runs a command that succeeds and returns what it prints.
    std::string Output(const std::string& arguments, const std::string& input = {}) const {
        const ScheduleOutcome outcome = Run(arguments, input);
        EXPECT_EQ(outcome.code, 0) << arguments;
        EXPECT_EQ(outcome.complaint, "") << arguments;
        return outcome.output;
    }
    // Runs a command that is refused and returns its one line without the program's name.
    std::string Refusal(const std::string& arguments, int code = 1) const {
        const ScheduleOutcome outcome = Run(arguments);
        EXPECT_EQ(outcome.code, code) << arguments << ": " << outcome.output;
        const std::string name = "oxc-schedule: ";
        EXPECT_THAT(outcome.complaint, testing::StartsWith(name));
        EXPECT_EQ(std::count(outcome.complaint.begin(), outcome.complaint.end(), '\n'), 1);
        return outcome.complaint.size() > name.size()
                   ? outcome.complaint.substr(name.size(), outcome.complaint.size() - name.size() - 1)
                   : "";
    }

    // Runs statements on the live database, as another program would. Returns the rows, fields joined by |.
    Texts Sql(const std::string& statements) const {
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open((m_folder / "app" / "PressroomLive.dat").c_str(), &database), SQLITE_OK);
        sqlite3_busy_timeout(database, 5000);
        Texts rows;
        const auto take = [](void* list, int count, char** values, char** /*names*/) {
            std::string row;
            for (int i = 0; i < count; ++i) {
                row += (i == 0 ? "" : "|") + std::string(values[i] == nullptr ? "null" : values[i]);
            }
            static_cast<Texts*>(list)->push_back(row);
            return 0;
        };
        EXPECT_EQ(sqlite3_exec(database, statements.c_str(), take, &rows, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        sqlite3_close(database);
        return rows;
    }
    // Runs a command while another program writes: its statements are stored when the command has had time to
    // make its checks and waits to write.
    ScheduleOutcome RunWhileWritten(const std::string& arguments, const std::string& statements) const {
        sqlite3* database = nullptr;
        EXPECT_EQ(sqlite3_open((m_folder / "app" / "PressroomLive.dat").c_str(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, "begin immediate", nullptr, nullptr, nullptr), SQLITE_OK);
        std::future<ScheduleOutcome> running =
            std::async(std::launch::async, [this, &arguments] { return Run(arguments); });
        std::this_thread::sleep_for(std::chrono::seconds(2));
        EXPECT_EQ(sqlite3_exec(database, statements.c_str(), nullptr, nullptr, nullptr), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, "commit", nullptr, nullptr, nullptr), SQLITE_OK);
        sqlite3_close(database);
        return running.get();
    }
    // A path in the folder of the test as the system writes it.
    std::string SystemPath(const std::string& name) const {
        std::string path = (m_folder / name).string();
        std::replace(path.begin(), path.end(), '/', '\\');
        return "Z:" + path;
    }
    static constexpr const char* AddSales =
        "add sales.rpt --title Sales --to ann@example.com --at 07:30 --start 2990-01-01 -p Region=West";
    static constexpr const char* AddPlain =
        "add plain.rpt --title Plain --to ann@example.com --at 07:30 --start 2990-01-01";

    ConfigHome m_folder;
};

// The same after its first steps: a database without rows and the settings of a first start.
class StartedProgram : public ScheduleProgram {
 protected:
    void SetUp() override {
        ScheduleProgram::SetUp();
        Output("init");
    }
};
