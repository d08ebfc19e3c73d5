// SPDX-License-Identifier: GPL-3.0-or-later
// A stop of the process that a signal asks for. It waits for a mail under way and for what must be recorded
// with it: a process that ends between a delivery and its record would send the mail a second time.
#pragma once

#include <condition_variable>
#include <functional>
#include <mutex>

class StopGate {
 public:
    // Work that sends mails: a poll. A mail outside of any work does not hold up a stop.
    class Work {
     public:
        Work();
        ~Work();  // as Recorded
        Work(const Work&) = delete;
        Work& operator=(const Work&) = delete;
        // Call it once the outcome of the mails so far is recorded and its alert is sent. If a stop waits,
        // the process ends here.
        void Recorded();
    };

    // From here to the next Recorded a stop waits. Called before each mail. Never returns once the process
    // may end.
    void MailBegins();

    // Asks for the stop; safe in any thread. Returns true if the process may end now: no mail begins after
    // that. Otherwise the thread of the work ends the process.
    bool Ask();

    // Sets how the thread of the work ends the process; an empty function means EndProcess.
    void OnEnd(std::function<void()> end);

 private:
    void BeginWork();
    void Release(bool isEnd);

    std::mutex m_mutex;
    std::condition_variable m_never;
    int m_works = 0;
    bool m_isHeld = false, m_isAsked = false, m_mayEnd = false;
    std::function<void()> m_end;
};

// Returns the one gate of the process.
StopGate& TheStopGate();
