// SPDX-License-Identifier: GPL-3.0-or-later
// Draws a bar code.
#pragma once

#include <memory>
#include <string>

#include "rdl/layout/drawing/drawing.h"
#include "rdl/layout/model/rect.h"

namespace rdl::layout {

struct BarcodeData {
    std::string symbology;  // a name that FindSymbology knows; empty: Code 128
    std::string value;
    bool isError = false;         // the value is an error
    bool showsText = true;        // below a linear code
    std::string errorCorrection;  // of a QR Code: L, M, Q or H; empty: as much as fits
    CharStyle textStyle;          // the bars have the colour of the text
    Rect area;                    // of the symbol and its quiet zones, in points within the item
};

// Width and height of the item are points. A linear code fills the area, a matrix code keeps its shape and is
// centred. An empty value draws nothing; the reason why a value cannot be encoded is drawn as a text.
std::shared_ptr<DrawingInstance> DrawBarcode(const BarcodeData& data, double width, double height);

}  // namespace rdl::layout
