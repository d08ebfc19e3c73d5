#include "desktop/Images.h"
const ImageList& ItemImages() {
    static const ImageList l;
    return l;
}
const ImageList& ToolbarImages() {
    static const ImageList l;
    return l;
}
