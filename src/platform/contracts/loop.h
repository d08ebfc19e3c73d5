// SPDX-License-Identifier: GPL-3.0-or-later
// The message loop, and the calls that let it run.
#pragma once

#include <functional>

class MessageLoop {
 public:
    virtual ~MessageLoop() = default;
    // Lets every pending event run once.
    virtual void Yield() = 0;
    // As Yield, but may wait up to `seconds` for the next event.
    virtual void YieldFor(double seconds) = 0;
    // Lets the windows repaint themselves. Keys, clicks and timers wait, because the caller is in the middle
    // of an operation.
    virtual void Repaint() {}
};

// Returns the loop that a program or a test has set, else one without events.
MessageLoop& TheLoop();
// Null restores the default. The caller owns the loop, which must outlive its use.
void SetLoop(MessageLoop* loop);

inline void DoEvents() {
    TheLoop().Yield();
}
