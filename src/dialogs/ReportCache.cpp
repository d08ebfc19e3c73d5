// SPDX-License-Identifier: GPL-3.0-or-later
#include "dialogs/ReportCache.h"

#include <algorithm>

#include "platform/base/paths.h"
#include "platform/contracts/files.h"
#include "platform/contracts/shared_store.h"
#include "shared/Global.h"
#include "store/TextConventions.h"

namespace Global {

std::string CopyToCache(const std::string& filePath) {
    const Scripting::File file = Scripting::FileSystemObject().GetFile(filePath);
    std::string cached = CachedPath(filePath);
    file.Copy(cached);
    KeepReport(ConnectionString, cached);
    return cached;
}

std::string CachedPath(const std::string& filePath) {
    const auto backslashes = static_cast<int>(std::count(filePath.begin(), filePath.end(), '\\'));
    return AppPath() + "\\Cache\\" + cmFunc::GetDelimitedField(filePath, backslashes + 1, "\\");
}

}  // namespace Global
