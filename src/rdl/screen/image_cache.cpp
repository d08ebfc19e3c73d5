// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/image_cache.h"

#include <algorithm>

#include "rdl/image/decoder.h"

namespace rdl::screen {

QImage ImageCache::Of(const std::shared_ptr<const std::string>& bytes, const std::string& item) {
    constexpr qsizetype MostBytes = 64 << 20;
    const auto known = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.bytes == bytes; });
    if (known != m_entries.end()) {
        m_entries.splice(m_entries.begin(), m_entries, known);
        return m_entries.front().image;
    }
    const QImage image =
        image::DecodeImage(*bytes, item).convertToFormat(QImage::Format_ARGB32_Premultiplied);
    m_entries.push_front({bytes, image});
    m_size += image.sizeInBytes();
    while (m_size > MostBytes && m_entries.size() > 1) {
        m_size -= m_entries.back().image.sizeInBytes();
        m_entries.pop_back();
    }
    return image;
}

}  // namespace rdl::screen
