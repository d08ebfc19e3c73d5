// Images of pages as pixels, the last used ones kept.
#pragma once

#include <QImage>
#include <list>
#include <memory>
#include <string>

namespace rdl::screen {

class ImageCache {
 public:
    // Decoded, or kept from before. Raises rdl::Error, which names the item, as the decoder does.
    QImage Of(const std::shared_ptr<const std::string>& bytes, const std::string& item);

 private:
    struct Entry {
        std::shared_ptr<const std::string> bytes;
        QImage image;
    };
    std::list<Entry> m_entries;  // last used first
    qsizetype m_size = 0;
};

}  // namespace rdl::screen
