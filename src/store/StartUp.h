// SPDX-License-Identifier: GPL-3.0-or-later
// The first steps of every program that works on the live database. Errors pass to the caller: 75 for
// settings that cannot be read.
#pragma once

namespace Global {

// Makes the settings and the live database, unless the setting FirstRun says that this was done.
void TakeFirstSteps();
// Sets ConnectionString to the live database in the application's folder.
void SetConnectionString();
// The same for a program that only reads: it can be of a user who may not write there.
void SetReadingConnectionString();
// Sets the variables that hold settings; OutputPath ends with a backslash. An error changes none of them. A
// scheduler calls this again when it is asked to.
void ReadSettings();

}  // namespace Global
