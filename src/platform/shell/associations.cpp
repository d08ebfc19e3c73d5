// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/shell/associations.h"

#include <gio/gdesktopappinfo.h>
#include <gio/gio.h>
#include <unistd.h>

#include <memory>
#include <string_view>

namespace associations {

namespace {

struct Unref {
    void operator()(gpointer object) const { g_object_unref(object); }
};
template <typename Type>
using Owned = std::unique_ptr<Type, Unref>;

struct Free {
    void operator()(char* text) const { g_free(text); }
    void operator()(GError* error) const { g_error_free(error); }
};
using Text = std::unique_ptr<char, Free>;

Outcome OutcomeOf(const GError& error) {
    if (error.domain != G_SPAWN_ERROR) {
        return Outcome::NoApplication;
    }
    switch (error.code) {
        case G_SPAWN_ERROR_FORK:
        case G_SPAWN_ERROR_NOMEM:
            return Outcome::NoMemory;
        case G_SPAWN_ERROR_ACCES:
        case G_SPAWN_ERROR_PERM:
            return Outcome::NoPermission;
        case G_SPAWN_ERROR_NOENT:
            return Outcome::NoApplication;
        default:
            return Outcome::Unrunnable;
    }
}

// Runs in the child process before the application starts: makes a session and sets the current folder.
void Detach(gpointer folder) {
    setsid();
    const char* const path = static_cast<const char*>(folder);
    if (*path != '\0' && chdir(path) != 0) {
        _exit(1);
    }
}

// Returns true for an entry with an empty command line: the launch would run the document itself.
bool HasEmptyCommand(GAppInfo* application) {
    const char* const command = g_app_info_get_commandline(application);
    return command != nullptr && std::string_view(command).find_first_not_of(" \t") == std::string_view::npos;
}

// The application is not a child of this process and has no files of it open except /dev/null.
Outcome Launch(GAppInfo* application, const std::string& uri, const std::filesystem::path& folder) {
    const Owned<GAppInfo> owned(application);
    if (application == nullptr || !G_IS_DESKTOP_APP_INFO(application) || HasEmptyCommand(application)) {
        return Outcome::NoApplication;
    }
    constexpr auto Flags = static_cast<GSpawnFlags>(static_cast<unsigned>(G_SPAWN_SEARCH_PATH) |
                                                    static_cast<unsigned>(G_SPAWN_STDOUT_TO_DEV_NULL) |
                                                    static_cast<unsigned>(G_SPAWN_STDERR_TO_DEV_NULL));
    std::string copy = uri;
    std::string start = folder.string();
    GList uris{copy.data(), nullptr, nullptr};
    GError* raw = nullptr;
    const bool started =
        g_desktop_app_info_launch_uris_as_manager(G_DESKTOP_APP_INFO(application), &uris, nullptr, Flags,
                                                  Detach, start.data(), nullptr, nullptr, &raw) != FALSE;
    const std::unique_ptr<GError, Free> error(raw);
    if (started) {
        return Outcome::Started;
    }
    return error ? OutcomeOf(*error) : Outcome::NoApplication;
}

}  // namespace

Outcome OpenFile(const std::filesystem::path& file, const std::filesystem::path& folder) {
    const Owned<GFile> handle(g_file_new_for_path(file.c_str()));
    const Owned<GFileInfo> info(g_file_query_info(handle.get(), G_FILE_ATTRIBUTE_STANDARD_CONTENT_TYPE,
                                                  G_FILE_QUERY_INFO_NONE, nullptr, nullptr));
    const char* const type = info ? g_file_info_get_content_type(info.get()) : nullptr;
    if (type == nullptr) {
        return Outcome::NoApplication;
    }
    const Text uri(g_file_get_uri(handle.get()));
    return Launch(g_app_info_get_default_for_type(type, FALSE), uri.get(), folder);
}

Outcome OpenAddress(const std::string& address) {
    const Text scheme(g_uri_parse_scheme(address.c_str()));
    if (!scheme) {
        return Outcome::NoApplication;
    }
    return Launch(g_app_info_get_default_for_uri_scheme(scheme.get()), address, {});
}

}  // namespace associations
