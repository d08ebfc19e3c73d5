// What the engine asks of the machine and of the application that it runs in. Every function has an answer of
// its own, so that a program that only wants to run reports needs no host.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace rdl {

class Host {
 public:
    virtual ~Host() = default;

    // The moment by the clock on the wall, in ticks of 100 ns since 0001-01-01 00:00 local time.
    virtual std::int64_t NowTicks() const;
    // The name of the user, for User!UserID.
    virtual std::string UserName() const;
    // The absolute path that a name in a report means in `folder`, which an absolute name leaves out. The
    // file need not exist. Raises an error for a name that no file can have.
    virtual std::filesystem::path PathOf(std::string_view name, const std::string& folder) const;
    // Where data is looked for after the folder of the report itself: absolute paths, none by default.
    virtual std::vector<std::string> DataFolders() const;
    // A file without a name, for reading and writing, that is gone when the handle is closed; the handle is
    // the caller's. Raises an error when there is no room for one.
    virtual int OpenTemporaryFile() const;
};

// The host that was set last, else one that answers as Host does.
const Host& TheHost();
// Null restores the host that answers as Host does. `host` outlives its use.
void SetHost(const Host* host);

}  // namespace rdl
