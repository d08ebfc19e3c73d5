// Drawn pieces of pages, the last used ones kept within a budget of memory.
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
    static constexpr int TileWidth = 2048, TileHeight = 1024;  // device pixels, at most

    void SetBudget(qsizetype bytes) { m_budget = bytes; }
    void Clear();
    // Null when it is not there.
    const QPixmap* Find(const TileKey& key);
    const QPixmap& Put(const TileKey& key, QPixmap tile);
    qsizetype Bytes() const { return m_bytes; }

 private:
    struct Entry {
        TileKey key;
        QPixmap tile;
    };
    void Trim();

    std::list<Entry> m_entries;  // last used first
    qsizetype m_bytes = 0, m_budget = 64 << 20;
};

}  // namespace viewer
