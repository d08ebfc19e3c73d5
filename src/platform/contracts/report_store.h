// SPDX-License-Identifier: GPL-3.0-or-later
// The report files of a store that several machines share. Each machine has them in its own folder Cache; the
// store keeps their bytes, so that a schedule made on one machine runs on another. Paths are those of the
// system. Over an embedded database both functions do nothing.
//
// Errors are those of data access, and 75 for a file that cannot be read or written, 6 for one of more than
// 64 megabytes.
#pragma once

#include <string>

// Gives the store the bytes of a file in the folder Cache, under the file's name.
void KeepReport(const std::string& connectionString, const std::string& path);

// Returns the path under which a report is opened on this machine. For a file in a folder Cache, of this or
// another machine, that is the file of its name in this application's Cache; it is copied from the store
// first if it is missing or different. Any other path, and a name that the store does not have, is returned
// unchanged.
std::string ReportOnThisMachine(const std::string& connectionString, const std::string& path);
