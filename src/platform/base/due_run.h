// SPDX-License-Identifier: GPL-3.0-or-later
// The due run that the mails of this process belong to.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "platform/contracts/clock.h"

namespace MAPI {

// Marks the run of one due schedule or package while it lives. A run that is tried again has the same
// identity and the same date, so that a server or a reader recognizes two messages as copies. Another due
// time, schedule or database gives another identity.
class DueRun {
 public:
    // `due` is the time at which the run was due, in any form that is the same in every attempt. `date` is
    // called for each message of the run; it returns the moment of the first one that may have gone out.
    DueRun(const std::string& store, const std::string& kind, const std::string& key, const std::string& due,
           std::function<ZonedMoment()> date)
        : m_before(std::exchange(
              Current(), Run{store + '\n' + kind + '\n' + key + '\n' + due, std::move(date), false})) {}
    ~DueRun() { Current() = m_before; }
    DueRun(const DueRun&) = delete;
    DueRun& operator=(const DueRun&) = delete;

    // Returns the identity for Message::Identity. Returns an empty text outside a due run: each run on demand
    // and each alert is unique.
    static const std::string& Identity() { return Current().identity; }
    // Returns the date for Message::Date, or nullopt outside a due run.
    static std::optional<ZonedMoment> Date() {
        return Current().date ? std::optional(Current().date()) : std::nullopt;
    }

    // Notes that a message of the run may have reached somebody: the transport took it, or its answer is
    // missing.
    static void SetMayBeOut() { Current().mayBeOut = true; }
    static bool MayBeOut() { return Current().mayBeOut; }

 private:
    struct Run {
        std::string identity;
        std::function<ZonedMoment()> date;
        bool mayBeOut = false;
    };
    static Run& Current() {
        static Run run;
        return run;
    }

    Run m_before;
};

}  // namespace MAPI
