#include "platform/contracts/clock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <string>

namespace {

// Restores the time zone of the tests.
class MachineClock : public testing::Test {
 protected:
    void SetUp() override {
        const char* const given = std::getenv("TZ");
        m_hadZone = given != nullptr;
        m_zone = m_hadZone ? given : "";
    }
    void TearDown() override {
        m_hadZone ? setenv("TZ", m_zone.c_str(), 1) : unsetenv("TZ");
        tzset();
    }
    // Returns by how many minutes the machine's clock is ahead of UTC.
    static double MinutesAhead() {
        const DateValue epoch = DateSerial(1970, 1, 1);
        return (Now().Seconds() - epoch.Seconds() - std::time(nullptr)) / 60.0;
    }

 private:
    bool m_hadZone = false;
    std::string m_zone;
};

TEST_F(MachineClock, ChangedTimeZoneIsSeenAtTheNextLook) {
    setenv("TZ", "UTC0", 1);
    EXPECT_NEAR(MinutesAhead(), 0, 0.1);
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_NEAR(MinutesAhead(), 330, 0.1);
    setenv("TZ", "America/Phoenix", 1);
    EXPECT_NEAR(MinutesAhead(), -420, 0.1);
}

TEST_F(MachineClock, MomentsAreInTheZoneThatHolds) {
    setenv("TZ", "UTC0", 1);
    EXPECT_EQ(InMachineZone(0).offset, 0);
    setenv("TZ", "Asia/Kolkata", 1);
    EXPECT_EQ(InMachineZone(0).offset, 330 * 60);
}

}  // namespace
