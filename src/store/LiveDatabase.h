// The live database file in the application's folder.
#pragma once

namespace Global {

// Copies the blank Pressroom.dat to PressroomLive.dat if there is no live file. Never replaces a file. An
// error is shown by ShowError, and the caller goes on.
void EnsureLiveDatabase();

}  // namespace Global
