// SPDX-License-Identifier: GPL-3.0-or-later
#include "desktop/Images.h"

#include <initializer_list>
#include <utility>

// The pictures are in a static library, so that only this call registers them. It must be outside every
// namespace.
static void RegisterPictures() {
    Q_INIT_RESOURCE(desktop);
}

namespace {

ImageList Pictures(std::initializer_list<std::pair<int, const char*>> numbered) {
    RegisterPictures();
    ImageList images;
    for (const auto& [number, name] : numbered) {
        images.Add(number, std::string(":/images/") + name + ".svg");
    }
    return images;
}

}  // namespace

const ImageList& ItemImages() {
    static const ImageList images = Pictures({{1, "folder"},
                                              {2, "report"},
                                              {3, "desktop"},
                                              {4, "tree-folder"},
                                              {9, "package"},
                                              {10, "package-report"}});
    return images;
}

const ImageList& ToolbarImages() {
    static const ImageList images = Pictures({{1, "new-folder"},
                                              {2, "new-report"},
                                              {3, "new-package"},
                                              {5, "preview"},
                                              {6, "delete"},
                                              {8, "history"},
                                              {9, "design"},
                                              {10, "options"},
                                              {11, "help"}});
    return images;
}

const ImageList& HistoryImages() {
    static const ImageList images = Pictures({{5, "report"},
                                              {7, "run-failed"},
                                              {8, "history"},
                                              {9, "run-done"},
                                              {10, "frequency"},
                                              {11, "frequency-selected"},
                                              {12, "package"}});
    return images;
}
