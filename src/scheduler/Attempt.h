// SPDX-License-Identifier: GPL-3.0-or-later
// One attempt at a due run.
#pragma once

#include <optional>

#include "platform/base/due_run.h"
#include "scheduler/RunNotes.h"

namespace Global {

// While an object of this class lives, the mails of the process belong to the run. They have the run's
// identity, and the date of its first mail that may have gone out: copies of one run have one Message-ID and
// one Date. That date is noted in the file PressroomLive.begun beside the database before the mail goes out,
// so that another process finds it after a kill. It is forgotten at the end of an attempt that delivered its
// mail, or whose mail certainly reached nobody. A date of more than five days ago, or of the future, counts
// as forgotten.
class Attempt {
 public:
    explicit Attempt(const DueRun& run);
    ~Attempt();
    Attempt(const Attempt&) = delete;
    Attempt& operator=(const Attempt&) = delete;

    void SetDelivered() { m_isDelivered = true; }

 private:
    DueRun m_run;
    MAPI::DueRun m_mails;
    bool m_isDelivered = false;
};

}  // namespace Global
