// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/engine/images.h"

#include "rdl/data/files/data_file.h"
#include "rdl/values/error.h"
#include "rdl/values/whole_file.h"

namespace rdl::engine {
namespace {

constexpr std::uintmax_t LargestImage = 32u << 20;
constexpr std::uintmax_t MostKept = 256u << 20;

}  // namespace

std::filesystem::path ImageFiles::Find(const std::string& name) const {
    const std::filesystem::path file = data::ResolveDataPath(name, m_folders);
    std::error_code failure;
    return std::filesystem::is_regular_file(file, failure) ? file : std::filesystem::path();
}

std::shared_ptr<const std::string> ImageFiles::Load(const std::string& source, std::string& why) {
    const auto known = m_loaded.find(source);
    if (known != m_loaded.end()) {
        return known->second;
    }
    std::string name = source;
    if (name.starts_with("file://")) {
        name.erase(0, 7);
    } else if (name.find("://") != std::string::npos) {
        why = "images are not fetched from the network: \"" + source + "\"";
        return nullptr;
    }
    std::filesystem::path file;
    try {
        file = Find(name);
    } catch (const Error& error) {
        why = error.what();
        return nullptr;
    }
    std::error_code failure;
    if (file.empty()) {
        why = "there is no image file \"" + source + "\"";
        return nullptr;
    }
    const std::uintmax_t size = std::filesystem::file_size(file, failure);
    if (failure || size > LargestImage) {
        why = "the image file \"" + source + "\" is too large";
        return nullptr;
    }
    std::string reason;
    std::string bytes = ReadBytes(file, size, reason);
    if (!reason.empty()) {
        why = "the image file \"" + source + "\" cannot be read: " + reason;
        return nullptr;
    }
    m_size += size;
    if (m_size > MostKept) {  // dropped images are read again on demand
        m_loaded.clear();
        m_size = size;
    }
    return m_loaded[source] = std::make_shared<const std::string>(std::move(bytes));
}

}  // namespace rdl::engine
