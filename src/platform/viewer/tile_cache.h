// SPDX-License-Identifier: GPL-3.0-or-later
// Caches drawn parts of pages, the most recently used ones within a memory budget.
#pragma once

#include <QPixmap>
#include <list>

namespace viewer {

struct TileKey {
    int page, column, row;
    bool operator==(const TileKey&) const = default;
};

class TileCache {
 public:
    static constexpr int TileWidth = 2048, TileHeight = 1024;  // largest tile, in device pixels

    void SetBudget(qsizetype bytes) { m_budget = bytes; }
    void Clear();
    // Returns null if the tile is not in the cache. The cache owns the tile; the next Put may remove it.
    const QPixmap* Find(const TileKey& key);
    const QPixmap& Put(const TileKey& key, QPixmap tile);
    qsizetype Bytes() const { return m_bytes; }

 private:
    struct Entry {
        TileKey key;
        QPixmap tile;
    };
    void Trim();

    std::list<Entry> m_entries;                  // most recently used first
    qsizetype m_bytes = 0, m_budget = 64 << 20;  // in bytes
};

}  // namespace viewer
