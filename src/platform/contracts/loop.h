// The message loop and the yields to it.
#pragma once

#include <functional>

class MessageLoop {
 public:
    virtual ~MessageLoop() = default;
    // Lets every pending event run once.
    virtual void Yield() = 0;
    // As Yield, but may wait for the next event, `seconds` at most.
    virtual void YieldFor(double seconds) = 0;
    // Lets the windows repaint themselves. No key, click or timer is taken meanwhile: the caller is in the
    // middle of something.
    virtual void Repaint() {}
};

MessageLoop& TheLoop();  // one that does nothing until a program or a test sets its own
void SetLoop(MessageLoop* loop);

inline void DoEvents() {
    TheLoop().Yield();
}
