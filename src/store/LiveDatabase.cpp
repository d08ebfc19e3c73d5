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
            files.GetFile(AppPath() + "\\Pressroom.dat").Copy(live);
        }
    } catch (...) {
        ShowError(CurrentError());
    }
}

}  // namespace Global
