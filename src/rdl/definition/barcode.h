// SPDX-License-Identifier: GPL-3.0-or-later
// Bar codes: a CustomReportItem whose Type says so (MS-RDL, CustomReportItem), or the element BarCode with
// the same properties as children.
#pragma once

#include <string_view>

#include "rdl/api/symbologies.h"
#include "rdl/definition/item_reader.h"
#include "rdl/definition/model.h"

namespace rdl {

// Returns the symbology of a name as people write it ("EAN-13", "qr code"); null for any other text.
const SymbologyRow* FindSymbology(std::string_view name);

struct Barcode : ReportItem {
    Barcode() : ReportItem(ItemKind::Barcode) {}
    Expr symbology;  // not set: Code 128
    Expr value;
    Expr showText;         // whether the value stands below a linear code; not set: it does
    Expr errorCorrection;  // of a QR Code: L, M, Q, H; not set: as much as fits
};

ItemPtr ReadBarcode(Context& context, const XmlElement& element, Extent container);
// Returns the bar code, or the AltReportItem of an item of any other type. Raises rdl::Error if it has none.
ItemPtr ReadCustomItem(Context& context, const XmlElement& element, Extent container);

}  // namespace rdl
