// SPDX-License-Identifier: GPL-3.0-or-later
// Caches decoded images of pages, most recently used first.
#pragma once

#include <QImage>
#include <list>
#include <memory>
#include <string>

namespace rdl::screen {

class ImageCache {
 public:
    // Returns the decoded image, for a place of `pixels` (image::DecodeFor). Raises rdl::Error naming `item`
    // if it cannot be decoded.
    QImage Of(const std::shared_ptr<const std::string>& bytes, const std::string& item, const QSize& pixels);

 private:
    struct Entry {
        std::shared_ptr<const std::string> bytes;
        QImage image;
        QSize reducedFor;  // not valid: it is whole
    };
    std::list<Entry> m_entries;  // most recently used first
    qsizetype m_size = 0;
};

}  // namespace rdl::screen
