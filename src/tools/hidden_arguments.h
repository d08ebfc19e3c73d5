// SPDX-License-Identifier: GPL-3.0-or-later
// Keeps secrets out of lists of processes.
#pragma once

#include <string>
#include <string_view>

namespace tools {

// Overwrites the secrets in the program's own arguments with asterisks, where lists of processes read them:
// the value of --password, and in the value of --data-source everything after Password= or Pwd=. Copy the
// arguments before the call.
void HideSecrets(int argc, char** argv);

// The same for a program of which any argument may be a connect string: of each argument everything after
// Password= or Pwd=.
void HideConnectStrings(int argc, char** argv);

// Whether a connect string has Password= or Pwd=.
bool HoldsPassword(std::string_view connectString);

// Returns the value of an environment variable, overwrites it and removes it from the environment, so that
// child programs do not get it. Returns an empty text if the variable is not set.
std::string TakeFromEnvironment(const char* name);

}  // namespace tools
