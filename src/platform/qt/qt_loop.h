// The message loop is Qt's.
#pragma once

#include "platform/contracts/loop.h"

class QtLoop : public MessageLoop {
 public:
    void Yield() override;
    void YieldFor(double seconds) override;
    void Repaint() override;
};
