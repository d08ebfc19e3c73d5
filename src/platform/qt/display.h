// SPDX-License-Identifier: GPL-3.0-or-later
// The display that the windows of a program are on: whether there is one, and what is done without.
#pragma once

#include <chrono>
#include <string>

// How long a display that takes the connection may be silent while the application is made.
inline constexpr std::chrono::seconds DisplayPatience{10};

// Whether the environment names a display or a platform. The display may turn out not to answer.
bool MayHaveDisplay();
// Whether boxes can be shown to somebody. Only once the application is made.
bool HasDisplay();
// Call before the application is made by a program that can do without windows: with no display, or one that
// does not answer, Qt's offscreen platform is taken, whatever QT_QPA_PLATFORM says. Programs that this one
// starts get the environment as it was.
void FallBackToOffscreen();

// Call this before the application is made, with the arguments of the process. Until DisplayHasAnswered, a
// display that refuses, or that stays silent for `patience`, ends the process with code 1 and one line:
// "<program>: the display ":7" does not answer; <advice>". After FallBackToOffscreen a silent display is a
// dated line on standard error instead, and the same process starts the program again without it.
void AwaitDisplay(const std::string& program, const std::string& advice, char** arguments,
                  std::chrono::milliseconds patience = DisplayPatience);
bool IsAwaitingDisplay();
[[noreturn]] void EndWithoutDisplay();
// Call when the application is made.
void DisplayHasAnswered();
