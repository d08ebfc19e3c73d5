// SPDX-License-Identifier: GPL-3.0-or-later
// The message loop of Qt.
#pragma once

#include "platform/contracts/loop.h"

class QtLoop : public MessageLoop {
 public:
    void Yield() override;
    void YieldFor(double seconds) override;
    void Repaint() override;
};
