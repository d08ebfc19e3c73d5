// SPDX-License-Identifier: GPL-3.0-or-later
// Owns a file descriptor and closes it.
#pragma once

#include <unistd.h>

#include <utility>

class UniqueFd {
 public:
    UniqueFd() = default;
    explicit UniqueFd(int file) : m_file(file) {}
    ~UniqueFd() { Close(); }
    UniqueFd(UniqueFd&& other) noexcept : m_file(std::exchange(other.m_file, -1)) {}
    UniqueFd& operator=(UniqueFd&& other) noexcept {
        if (this != &other) {
            Close();
            m_file = std::exchange(other.m_file, -1);
        }
        return *this;
    }

    int Get() const { return m_file; }
    int Release() { return std::exchange(m_file, -1); }
    // Returns the result of close: -1 if a delayed write failed.
    int Close() { return m_file < 0 ? 0 : ::close(std::exchange(m_file, -1)); }

 private:
    int m_file = -1;
};
