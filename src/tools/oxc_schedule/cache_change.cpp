// SPDX-License-Identifier: GPL-3.0-or-later
#include "tools/oxc_schedule/cache_change.h"

#include <algorithm>

#include "dialogs/ReportCache.h"
#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/contracts/shared_store.h"
#include "shared/Global.h"

namespace tools {
namespace {

namespace fs = std::filesystem;

// The file keeps its name until the new copy takes its place, so that a schedule can be run meanwhile.
bool SetAside(const fs::path& copy, const fs::path& aside) {
    std::error_code error;
    if (!fs::is_regular_file(copy, error)) {
        return false;
    }
    fs::remove(aside, error);
    fs::create_hard_link(copy, aside, error);
    if (error) {
        fs::copy_file(copy, aside);  // a file system without hard links
    }
    return true;
}

// A store that several machines share got the new copy as well.
void KeepInStore(const fs::path& copy) noexcept {
    try {
        KeepReport(Global::ConnectionString, paths::FromMachine(copy));
    } catch (const RuntimeError& error) {
        Journal("The store has another copy of \"" + copy.filename().string() + "\" than this machine. " +
                error.Description());
    }
}

}  // namespace

std::string CacheChange::Copy(const std::string& original) {
    const std::string cached = Global::CachedPath(original);
    std::string& former = m_originals[cached];
    if (former == original) {
        return cached;
    }
    if (former.empty()) {
        const fs::path copy = paths::ToMachine(cached);
        const fs::path aside = copy.string() + ".former";
        m_former.push_back({copy, aside, SetAside(copy, aside)});
    }
    former = original;
    return Global::CopyToCache(original);
}

void CacheChange::Keep() {
    std::error_code ignored;
    for (const Former& former : m_former) {
        fs::remove(former.aside, ignored);
    }
    m_former.clear();
}

void CacheChange::PutBack() noexcept {
    std::error_code ignored;
    for (const Former& former : m_former) {
        if (former.isThere) {
            fs::rename(former.aside, former.copy, ignored);
            KeepInStore(former.copy);
        } else {
            fs::remove(former.copy, ignored);
        }
    }
    m_former.clear();
}

}  // namespace tools
