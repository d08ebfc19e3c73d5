// SPDX-License-Identifier: GPL-3.0-or-later
// Numbered images that lists, trees and toolbars share. They are drawn from vector pictures, so that they are
// sharp at every size, in colours that suit light and dark backgrounds.
#pragma once

#include <QIcon>
#include <map>
#include <string>

class ImageList {
 public:
    // `resource` is the path of a picture in the program's resources, such as ":/images/folder.svg".
    void Add(int number, const std::string& resource);
    // Returns an empty icon for an unknown number. A selected item shows the image `selected`; 0: the same
    // image.
    QIcon Image(int number, int selected = 0) const;

 private:
    std::map<int, QIcon> m_images;
};
