// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/posix/service_notify.h"

#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "platform/posix/unique_fd.h"
#include "support/temporary_folder.h"

namespace {

using Texts = std::vector<std::string>;

// The service manager's end of the socket.
class ServiceNotify : public testing::Test {
 protected:
    void Listen(const std::string& name) {
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        std::memcpy(address.sun_path, name.data(), name.size());
        if (name[0] == '@') {
            address.sun_path[0] = '\0';
        }
        m_socket = UniqueFd(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
        const auto length =
            static_cast<socklen_t>(offsetof(sockaddr_un, sun_path) + name.size() + (name[0] == '@' ? 0 : 1));
        ASSERT_EQ(bind(m_socket.Get(), reinterpret_cast<const sockaddr*>(&address), length), 0);
        setenv("NOTIFY_SOCKET", name.c_str(), 1);
    }
    void ListenInFolder() { Listen((m_folder.Path() / "notify").string()); }
    static void Watch(const std::string& patience, const std::string& process) {
        setenv("WATCHDOG_USEC", patience.c_str(), 1);
        process.empty() ? unsetenv("WATCHDOG_PID") : setenv("WATCHDOG_PID", process.c_str(), 1);
    }
    void TearDown() override {
        for (const char* name : {"NOTIFY_SOCKET", "WATCHDOG_USEC", "WATCHDOG_PID"}) {
            unsetenv(name);
        }
    }
    Texts Heard() const {
        Texts texts;
        char buffer[1024];
        for (ssize_t count = 0; (count = recv(m_socket.Get(), buffer, sizeof buffer, 0)) >= 0;) {
            texts.emplace_back(buffer, static_cast<std::size_t>(count));
        }
        return texts;
    }

    TemporaryFolder m_folder;
    UniqueFd m_socket;
};

TEST_F(ServiceNotify, WithoutAManagerNothingHappens) {
    Watch("1000000", "");
    ServiceManager manager;
    EXPECT_FALSE(manager.IsThere());
    EXPECT_EQ(manager.Patience().count(), 0);
    manager.NotifyReady();
    manager.NotifyAlive();
}

TEST_F(ServiceNotify, AssignmentsAreOneDatagram) {
    ListenInFolder();
    ServiceManager manager;
    EXPECT_TRUE(manager.IsThere());
    manager.Notify("STOPPING=1\nSTATUS=Ends");
    manager.NotifyStatus("Two\nlines");
    manager.NotifyStatus(std::string(20'000, 'x'));
    EXPECT_EQ(Heard(),
              (Texts{"STOPPING=1\nSTATUS=Ends", "STATUS=Two lines", "STATUS=" + std::string(500, 'x')}));
}

TEST_F(ServiceNotify, SocketCanHaveANameWithoutAFile) {
    Listen("@oxc-test-" + std::to_string(getpid()));
    ServiceManager manager;
    manager.NotifyReady();
    EXPECT_EQ(Heard(), Texts{"READY=1"});
}

TEST_F(ServiceNotify, NameThatNoSocketHasIsIgnored) {
    setenv("NOTIFY_SOCKET", ("/" + std::string(200, 'x')).c_str(), 1);
    ServiceManager().NotifyReady();
    setenv("NOTIFY_SOCKET", "vsock:2:1", 1);
    ServiceManager().NotifyReady();
}

TEST_F(ServiceNotify, SignsOfLifeAreForThoseWhoWatchThisProcess) {
    ListenInFolder();
    Watch("2000000", "1");
    ServiceManager other;
    EXPECT_EQ(other.Patience().count(), 0);
    other.NotifyReady();
    other.NotifyAlive();
    other.BeginLongSteps();
    other.EndLongSteps();
    EXPECT_EQ(Heard(), Texts{"READY=1"});
    Watch("2000000", std::to_string(getpid()));
    ServiceManager own;
    EXPECT_EQ(own.Patience().count(), 2000000);
    own.NotifyAlive();
    EXPECT_EQ(Heard(), Texts{});  // not before it is ready
    own.NotifyReady();
    own.NotifyAlive();
    EXPECT_EQ(Heard(), (Texts{"READY=1", "WATCHDOG=1"}));
}

TEST_F(ServiceNotify, ManagerWaitsForALongStepAndThenAsBefore) {
    ListenInFolder();
    Watch("2000000", "");
    ServiceManager manager;
    manager.NotifyReady();
    manager.BeginLongSteps();
    manager.NotifyAlive();
    manager.EndLongSteps();
    EXPECT_EQ(Heard(), (Texts{"READY=1", "WATCHDOG_USEC=14400000000", "WATCHDOG=1", "WATCHDOG=1",
                              "WATCHDOG_USEC=2000000", "WATCHDOG=1"}));
}

TEST_F(ServiceNotify, LongStepBeforeReadinessProlongsTheStart) {
    ListenInFolder();
    ServiceManager manager;
    manager.BeginLongSteps();
    manager.NotifyAlive();
    manager.EndLongSteps();
    EXPECT_EQ(Heard(), (Texts{"EXTEND_TIMEOUT_USEC=14400000000", "EXTEND_TIMEOUT_USEC=14400000000"}));
}

}  // namespace
