// SPDX-License-Identifier: GPL-3.0-or-later
// The due run that the mails of this process belong to.
#pragma once

#include <string>

namespace MAPI {

// Marks the run of one due schedule or package while it lives. A run that is tried again has the same
// identity, so that a server or a reader recognizes two messages as copies. Another due time, schedule or
// database gives another identity.
class DueRun {
 public:
    // `due` is the time at which the run was due, in any form that is the same in every attempt.
    DueRun(const std::string& store, const std::string& kind, const std::string& key, const std::string& due)
        : m_before(Current()) {
        Current() = store + '\n' + kind + '\n' + key + '\n' + due;
    }
    ~DueRun() { Current() = m_before; }
    DueRun(const DueRun&) = delete;
    DueRun& operator=(const DueRun&) = delete;

    // Returns the identity for Message::Identity. Returns an empty text outside a due run: each run on demand
    // and each alert is unique.
    static const std::string& Identity() { return Current(); }

 private:
    static std::string& Current() {
        static std::string identity;
        return identity;
    }

    std::string m_before;
};

}  // namespace MAPI
