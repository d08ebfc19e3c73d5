// SPDX-License-Identifier: GPL-3.0-or-later
// The names of the databases in the application's folder.
#pragma once

inline constexpr const char* LiveDatabaseFile = "PressroomLive.dat";
// What a new live database is a copy of.
inline constexpr const char* BlankDatabaseFile = "Pressroom.dat";
// Follows the name of a live database that a link to a team's store has replaced.
inline constexpr const char* ReplacedEnding = ".embedded";
