// Numbered images that lists, trees and toolbars share. Drawn from vector pictures, so that they are crisp at
// every size and scale, and in colours that read on light and on dark backgrounds.
#pragma once

#include <QIcon>
#include <map>
#include <string>

class ImageList {
 public:
    // `resource` is a picture's place among the program's resources, such as ":/images/folder.svg".
    void Add(int number, const std::string& resource);
    // Empty when there is none of that number. What is selected shows the image `selected`; 0: the same one.
    QIcon Image(int number, int selected = 0) const;

 private:
    std::map<int, QIcon> m_images;
};
