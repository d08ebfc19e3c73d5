// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/source_dir.h"

std::string SourceDir() {
    return OXC_SOURCE_DIR;
}
