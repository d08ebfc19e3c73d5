// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps the schedulers of a team from polling at the same moments.
#pragma once

namespace Global {

// Over a store that several machines share, sets the first countdown to any number from 1 to PollSeconds.
// Otherwise it stays PollSeconds.
void SpreadPolls();

}  // namespace Global
