// SPDX-License-Identifier: GPL-3.0-or-later
// What a document for archives has besides: PDF/A-2, conformance level B (ISO 19005-2, 6.1.13, 6.2.3
// and 6.6).
#pragma once

#include <string>

#include "rdl/writers/common/writers.h"
#include "rdl/writers/pdf/file.h"

namespace rdl::writers {

// Sets the limits of such a document (6.1.13).
void LimitForArchive(PdfFile& file);
// Raises rdl::Error if such a document cannot have a page of this size in points (6.1.13).
void CheckPageForArchive(double width, double height);

// Returns the properties as XML can hold them, without control characters.
DocumentInfo InfoForArchive(const DocumentInfo& document);

// Writes the output intent, sRGB (6.2.3), and the metadata as XMP (6.6.2), with the same properties as the
// information dictionary. `nowTicks` is the time of creation and change. Returns the entries of the catalog.
std::string WriteArchiveEntries(PdfFile& file, const DocumentInfo& document, std::int64_t nowTicks);

}  // namespace rdl::writers
