#include "support/source_dir.h"

std::string SourceDir() {
    return OXC_SOURCE_DIR;
}
