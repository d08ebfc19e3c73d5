// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/tile_cache.h"

#include <algorithm>

namespace viewer {
namespace {

qsizetype SizeOf(const QPixmap& tile) {
    return static_cast<qsizetype>(tile.width()) * tile.height() * 4;
}

}  // namespace

void TileCache::Clear() {
    m_entries.clear();
    m_bytes = 0;
}

const QPixmap* TileCache::Find(const TileKey& key) {
    const auto known = std::find_if(m_entries.begin(), m_entries.end(),
                                    [&](const Entry& entry) { return entry.key == key; });
    if (known == m_entries.end()) {
        return nullptr;
    }
    m_entries.splice(m_entries.begin(), m_entries, known);
    return &m_entries.front().tile;
}

const QPixmap& TileCache::Put(const TileKey& key, QPixmap tile) {
    m_bytes += SizeOf(tile);
    m_entries.push_front({key, std::move(tile)});
    Trim();
    return m_entries.front().tile;
}

void TileCache::Trim() {
    while (m_bytes > m_budget && m_entries.size() > 1) {
        m_bytes -= SizeOf(m_entries.back().tile);
        m_entries.pop_back();
    }
}

}  // namespace viewer
