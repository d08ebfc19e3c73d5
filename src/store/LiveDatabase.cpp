#include "store/LiveDatabase.h"

#include "platform/base/paths.h"
#include "platform/contracts/files.h"
#include "shared/Global.h"

namespace Global {

void EnsureLiveDatabase() {
    const Scripting::FileSystemObject files;
    const std::string live = AppPath() + "\\PressroomLive.dat";
    try {
        if (!files.FileExists(live)) {
            // Another process may make it at the same moment: its file may hold rows already.
            files.GetFile(AppPath() + "\\Pressroom.dat").Copy(live, false);
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        // Only a file is the live one: a folder of its name is an error like any other.
        if (error.Number() != err::FileExists || !files.FileExists(live)) {
            ShowError(error);
        }
    }
}

}  // namespace Global
