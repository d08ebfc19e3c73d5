// SPDX-License-Identifier: GPL-3.0-or-later
// The first call of every program of the system, and the end of its children.
#pragma once

#include <string>

// Makes a file at its size limit and a closed pipe errors of the call that meets them, instead of signals
// that end the process. Because memory may hold passwords, it turns core dumps off and keeps other processes
// of the user from reading it. Call it before threads and libraries start.
void PrepareProgram();

// Returns "ended with exit code 7" or, with a signal, "was ended by signal 9 (Killed)", for a child that has
// ended.
std::string EndOfProcess(int exitCode, int signal);
