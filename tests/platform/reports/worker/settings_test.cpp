// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/settings.h"

#include <gmock/gmock.h>
#include <stdlib.h>

#include "platform/base/paths.h"
#include "platform/contracts/runtime.h"

namespace reports::worker::test {
namespace {

class WorkerSettings : public testing::Test {
 protected:
    ~WorkerSettings() override {
        unsetenv("OXC_REPORT_MEMORY");
        unsetenv("OXC_REPORT_FOLDERS");
    }
    static std::string ErrorWith(const char* name, const char* value) {
        setenv(name, value, 1);
        try {
            SettingsOfMachine();
        } catch (const RuntimeError& error) {
            return error.Description();
        }
        return "";
    }
};

TEST_F(WorkerSettings, ProgramIsBesideThisOne) {
    const Settings settings = SettingsOfMachine();
    EXPECT_EQ(settings.program, ProgramFolder() / "oxc-report");
    EXPECT_EQ(settings.megabytes, 6144);
    EXPECT_TRUE(settings.readable.empty());
}

TEST_F(WorkerSettings, MemoryIsANumberOfMegabytes) {
    setenv("OXC_REPORT_MEMORY", "2048", 1);
    EXPECT_EQ(SettingsOfMachine().megabytes, 2048);
    for (const char* wrong : {"511", "1048577", "2G", " 2048", "-1", "99999999999999999999"}) {
        EXPECT_EQ(ErrorWith("OXC_REPORT_MEMORY", wrong),
                  "OXC_REPORT_MEMORY is \"" + std::string(wrong) +
                      "\", and must be a number of megabytes from 512 to 1048576");
    }
    setenv("OXC_REPORT_MEMORY", "", 1);
    EXPECT_EQ(SettingsOfMachine().megabytes, 6144);
}

TEST_F(WorkerSettings, FoldersAreAbsolute) {
    setenv("OXC_REPORT_FOLDERS", "/srv/data:/srv/reports", 1);
    EXPECT_EQ(SettingsOfMachine().readable, (std::vector<std::string>{"/srv/data", "/srv/reports"}));
    EXPECT_EQ(ErrorWith("OXC_REPORT_FOLDERS", "/srv:data"),
              "OXC_REPORT_FOLDERS is \"/srv:data\", and must be absolute paths with \":\" between them");
}

}  // namespace
}  // namespace reports::worker::test
