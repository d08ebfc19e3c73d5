// SPDX-License-Identifier: GPL-3.0-or-later
// The folder of the sources. A function and not a macro: objects without a path can come from a compiler
// cache that several clones share.
#pragma once

#include <string>

// Returns the folder of the project's top CMakeLists.txt, without a separator at its end.
std::string SourceDir();
