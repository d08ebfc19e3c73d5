// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/screen/image_cache.h"

#include <algorithm>

#include "rdl/image/reduced.h"

namespace rdl::screen {

QImage ImageCache::Of(const std::shared_ptr<const std::string>& bytes, const std::string& item,
                      const QSize& pixels) {
    constexpr qsizetype MostBytes = 64 << 20;
    const auto known = std::find_if(m_entries.begin(), m_entries.end(), [&](const Entry& entry) {
        return entry.bytes == bytes && (!entry.reducedFor.isValid() || entry.reducedFor == pixels);
    });
    if (known != m_entries.end()) {
        m_entries.splice(m_entries.begin(), m_entries, known);
        return m_entries.front().image;
    }
    const image::Decoded decoded = image::DecodeFor(pixels, *bytes, item);
    m_entries.push_front({bytes, decoded.image, decoded.isWhole ? QSize() : pixels});
    m_size += decoded.image.sizeInBytes();
    while (m_size > MostBytes && m_entries.size() > 1) {
        m_size -= m_entries.back().image.sizeInBytes();
        m_entries.pop_back();
    }
    return m_entries.front().image;
}

}  // namespace rdl::screen
