// SPDX-License-Identifier: GPL-3.0-or-later
// The mail system with a stopwatch on sending.
#pragma once

#include "bench/run/stopwatch.h"
#include "platform/contracts/mapi.h"

extern Stopwatch g_mailing;

MAPI::System& TimedMailSystem();
