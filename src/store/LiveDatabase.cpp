// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/LiveDatabase.h"

#include "platform/base/database_files.h"
#include "platform/base/paths.h"
#include "platform/contracts/files.h"
#include "shared/Global.h"

namespace Global {

void EnsureLiveDatabase() {
    const Scripting::FileSystemObject files;
    const std::string live = AppPath() + "\\" + LiveDatabaseFile;
    try {
        if (!files.FileExists(live)) {
            // Another process may make the file at the same moment, and its file may already hold rows.
            files.GetFile(AppPath() + "\\" + BlankDatabaseFile).Copy(live, Scripting::File::Existing::Keep);
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        // Only a file counts as the live database; a folder of that name is an error.
        if (error.Number() != err::FileExists || !files.FileExists(live)) {
            ShowError(error);
        }
    }
}

}  // namespace Global
