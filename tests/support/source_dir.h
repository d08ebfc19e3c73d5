// Where the sources stand. A function, not a macro for every test: objects that hold no path can come from a
// compiler cache that several clones share.
#pragma once

#include <string>

// The folder of the project's top CMakeLists.txt, without a separator at its end.
std::string SourceDir();
