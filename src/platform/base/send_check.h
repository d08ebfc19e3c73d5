// SPDX-License-Identifier: GPL-3.0-or-later
// What must hold when a mail or a file of a run is about to leave the process.
#pragma once

#include <functional>
#include <utility>

// While an object lives, its check is called before each mail of a run and before each export to a file. An
// error of the check stops the run. The objects are destroyed in the reverse order of their making.
class SendCheck {
 public:
    explicit SendCheck(std::function<void()> check) : m_former(std::exchange(Present(), std::move(check))) {}
    ~SendCheck() { Present() = std::move(m_former); }
    SendCheck(const SendCheck&) = delete;
    SendCheck& operator=(const SendCheck&) = delete;

    static void Call() {
        if (Present()) {
            Present()();
        }
    }

 private:
    static std::function<void()>& Present() {
        static std::function<void()> check;
        return check;
    }

    std::function<void()> m_former;
};
