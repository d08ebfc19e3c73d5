// SPDX-License-Identifier: GPL-3.0-or-later
// Passes the bytes of one connection on to a PostgreSQL server, and keeps the connection open after the
// server has closed it: what a client sees between the server's last words and the end of its process.
#pragma once

#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdint>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>

class SocketRelay {
 public:
    // Listens on the server's socket in `folder`; the server is at `port` of this machine.
    SocketRelay(const std::filesystem::path& folder, std::uint16_t port) {
        sockaddr_un local{.sun_family = AF_UNIX, .sun_path = {}};
        const std::string path = folder / ".s.PGSQL.5432";
        path.copy(static_cast<char*>(local.sun_path), sizeof local.sun_path - 1);
        m_listener = socket(AF_UNIX, SOCK_STREAM, 0);
        sockaddr_in remote{};
        remote.sin_family = AF_INET;
        remote.sin_port = htons(port);
        remote.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        m_server = socket(AF_INET, SOCK_STREAM, 0);
        if (bind(m_listener, reinterpret_cast<sockaddr*>(&local), sizeof local) != 0 ||
            listen(m_listener, 1) != 0 ||
            connect(m_server, reinterpret_cast<sockaddr*>(&remote), sizeof remote) != 0) {
            throw std::runtime_error("no relay to the server");
        }
        m_thread = std::thread([this] { PassOn(); });
    }
    ~SocketRelay() {
        m_isOver = true;
        m_thread.join();
        for (const int descriptor : {m_listener, m_client, m_server}) {
            close(descriptor);
        }
    }
    SocketRelay(const SocketRelay&) = delete;
    SocketRelay& operator=(const SocketRelay&) = delete;

    // Returns true if the server has closed the connection and the client has been sent all of its words.
    bool HasEnded() const { return m_hasEnded; }

 private:
    static constexpr int Turn = 10;  // milliseconds

    void PassOn() {
        while (!m_isOver && !IsReady(m_listener)) {
        }
        m_client = m_isOver ? -1 : accept(m_listener, nullptr, nullptr);
        while (!m_isOver && !m_hasEnded) {
            std::array<pollfd, 2> ends{pollfd{m_client, POLLIN, 0}, pollfd{m_server, POLLIN, 0}};
            poll(ends.data(), ends.size(), Turn);
            if (ends[0].revents != 0) {
                Copy(m_client, m_server);
            }
            if (ends[1].revents != 0 && !Copy(m_server, m_client)) {
                m_hasEnded = true;
            }
        }
    }
    static bool IsReady(int descriptor) {
        pollfd one{descriptor, POLLIN, 0};
        return poll(&one, 1, Turn) > 0;
    }
    // Returns false at the end of `from`.
    static bool Copy(int from, int to) {
        std::array<char, 65536> bytes{};
        const ssize_t count = recv(from, bytes.data(), bytes.size(), 0);
        return count > 0 && send(to, bytes.data(), static_cast<std::size_t>(count), MSG_NOSIGNAL) == count;
    }

    int m_listener = -1, m_client = -1, m_server = -1;
    std::atomic<bool> m_isOver = false, m_hasEnded = false;
    std::thread m_thread;
};
