// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/PollSpread.h"

#include <random>

#include "platform/contracts/adodb.h"
#include "shared/Global.h"

namespace Global {

void SpreadPolls() {
    // Two connection strings to one store name it alike; that to an embedded database is its own name.
    if (PollSeconds > 1 && ADODB::StoreIdentity(ConnectionString) != ConnectionString) {
        std::random_device source;
        PollCountdown = static_cast<std::int16_t>(std::uniform_int_distribution<int>(1, PollSeconds)(source));
    }
}

}  // namespace Global
