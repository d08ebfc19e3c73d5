// What no list of processes may show.
#pragma once

#include <string>

namespace tools {

// Writes asterisks over the secrets in the program's own arguments, where lists of processes read them: the
// value of --password, and in that of --data-source everything from the value of Password= or Pwd= on. Copy
// the arguments before.
void HideSecrets(int argc, char** argv);

// The value of an environment variable, which is hidden alike and taken out of the environment: programs that
// are started do not get it. Empty when there is none.
std::string TakeFromEnvironment(const char* name);

}  // namespace tools
