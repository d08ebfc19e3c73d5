// SPDX-License-Identifier: GPL-3.0-or-later
// Message boxes and input boxes on the screen. The scheduler also writes their texts to standard error.
#pragma once

#include "platform/contracts/prompts.h"

class QtPrompts : public Prompts {
 public:
    int Box(const std::string& text, int flags, const std::string& title) override;
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override;
};
