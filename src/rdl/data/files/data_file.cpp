// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/data_file.h"

#include <filesystem>

#include "rdl/api/host.h"
#include "rdl/data/common/message.h"
#include "rdl/data/common/own_files.h"
#include "rdl/values/ascii.h"
#include "rdl/values/error.h"
#include "rdl/values/whole_file.h"

namespace rdl::data {
namespace {

constexpr std::uintmax_t LargestFile = std::uintmax_t{256} << 20;

std::string FindDataPath(std::string_view name, const std::vector<std::string>& folders) {
    constexpr std::string_view DataDirectory = "|datadirectory|";
    std::string path(Trimmed(name));
    if (LowerAscii(path).starts_with(DataDirectory)) {
        path.erase(0, DataDirectory.size());
        path.erase(0, path.find_first_not_of("/\\"));
    }
    if (path.empty()) {
        throw Error("no file is named");
    }
    if (path.find("://") != std::string::npos) {
        throw Error("data from the web address \"" + CleanText(path) + "\" is not read; save it as a file");
    }
    try {
        for (const std::string& folder : folders) {
            const std::filesystem::path found = TheHost().PathOf(path, folder);
            std::error_code ignored;
            if (std::filesystem::exists(found, ignored)) {
                return found.string();
            }
        }
        return TheHost().PathOf(path, folders.empty() ? "." : folders.front()).string();
    } catch (const std::exception& error) {
        throw Error("the file \"" + CleanText(path) + "\" does not exist: " + CleanText(error.what()));
    }
}

}  // namespace

std::string ResolveDataPath(std::string_view name, const std::vector<std::string>& folders) {
    std::string path = FindDataPath(name, folders);
    CheckReadable(path);
    return path;
}

std::string ReadDataFile(const std::string& path) {
    std::error_code failure;
    if (!std::filesystem::is_regular_file(path, failure)) {
        throw Error("the file \"" + CleanText(path) + "\" does not exist");
    }
    const std::uintmax_t size = std::filesystem::file_size(path, failure);
    if (failure || size > LargestFile) {
        throw Error("the file \"" + CleanText(path) + "\" is larger than " +
                    std::to_string(LargestFile >> 20) + " MB");
    }
    std::string why;
    std::string bytes = ReadBytes(path, size, why);
    if (!why.empty()) {
        throw Error("the file \"" + CleanText(path) + "\" cannot be read: " + why);
    }
    return bytes;
}

}  // namespace rdl::data
