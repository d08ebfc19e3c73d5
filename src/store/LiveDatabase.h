// SPDX-License-Identifier: GPL-3.0-or-later
// Makes the live database file in the application's folder.
#pragma once

namespace Global {

// Copies the blank Pressroom.dat to PressroomLive.dat if that file is missing. Never replaces a file. An
// error is shown with ShowError, and the caller continues.
void EnsureLiveDatabase();

}  // namespace Global
