// SPDX-License-Identifier: GPL-3.0-or-later
// Connections of several threads: one that is given up leaves the others alone.
#include "rdl/data/sql/connection_watch.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <memory>

namespace rdl::data {
namespace {

using std::chrono::milliseconds;

// A server on loopback that never answers.
class ConnectionWatchOf : public testing::Test {
 protected:
    ConnectionWatchOf() : m_server(socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        bind(m_server, reinterpret_cast<sockaddr*>(&address), sizeof address);
        listen(m_server, 5);
    }
    ~ConnectionWatchOf() override { close(m_server); }
    int Connect() const {
        sockaddr_in address{};
        socklen_t size = sizeof address;
        getsockname(m_server, reinterpret_cast<sockaddr*>(&address), &size);
        const int client = socket(AF_INET, SOCK_STREAM, 0);
        EXPECT_EQ(connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
        return client;
    }
    // Whether the socket ends within the time.
    static bool Ends(int client, int wait) {
        timeval time{wait / 1000, wait % 1000 * 1000};  // milliseconds
        setsockopt(client, SOL_SOCKET, SO_RCVTIMEO, &time, sizeof time);
        char byte = 0;
        return recv(client, &byte, 1, 0) == 0;
    }

    const int m_server;
};

TEST_F(ConnectionWatchOf, ACallThatIsLateShutsItsConnection) {
    ConnectionWatch watch;
    const int client = Connect();
    watch.TakeConnection();
    const ConnectionWatch::Limit limit(watch, milliseconds(0));
    EXPECT_TRUE(Ends(client, 20'000));
    EXPECT_TRUE(watch.HasExpired());
    close(client);
}

TEST_F(ConnectionWatchOf, AConnectionThatAnotherOneHasOpenedMeanwhileStays) {
    ConnectionWatch earlier;
    const int own = Connect();
    earlier.TakeConnection();
    auto later = std::make_unique<ConnectionWatch>();
    const int client = Connect();
    later->TakeConnection();
    const ConnectionWatch::Limit limit(earlier, milliseconds(0));
    EXPECT_TRUE(Ends(own, 20'000));
    EXPECT_FALSE(Ends(client, 1'000));
    later.reset();
    close(own);
    close(client);
}

}  // namespace
}  // namespace rdl::data
