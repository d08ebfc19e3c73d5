// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/page_images.h"

namespace rdl::screen {

std::uint32_t PageImages::Put(const std::shared_ptr<const std::string>& bytes) {
    if (const auto known = m_byAddress.find(bytes.get());
        known != m_byAddress.end() && m_kept[known->second].bytes.lock() == bytes) {
        return known->second;
    }
    const auto number = static_cast<std::uint32_t>(m_kept.size());
    m_kept.push_back({bytes, m_spool.size(), bytes->size()});
    m_spool.Append(*bytes);
    m_byAddress[bytes.get()] = number;
    return number;
}

std::shared_ptr<const std::string> PageImages::At(std::uint32_t number) {
    Kept& kept = m_kept.at(number);
    if (std::shared_ptr<const std::string> bytes = kept.bytes.lock()) {
        return bytes;
    }
    std::string read;
    read.reserve(kept.size);
    m_spool.Read(kept.begin, kept.size, [&](std::string_view piece) { read += piece; });
    auto bytes = std::make_shared<const std::string>(std::move(read));
    kept.bytes = bytes;
    m_byAddress[bytes.get()] = number;
    return bytes;
}

}  // namespace rdl::screen
