#include "store/LiveDatabase.h"

#include "app/Global.h"
#include "platform/files.h"
#include "platform/paths.h"

namespace Global {

void EnsureLiveDatabase() {
    try {
        const Scripting::FileSystemObject files;
        const std::string live = AppPath() + "\\PressroomLive.dat";
        if (!files.FileExists(live)) {
            // Another process may make it at the same moment: its file may hold rows already.
            files.GetFile(AppPath() + "\\Pressroom.dat").Copy(live, false);
        }
    } catch (...) {
        const RuntimeError error = CurrentError();
        if (error.Number() != err::FileExists) {
            ShowError(error);
        }
    }
}

}  // namespace Global
