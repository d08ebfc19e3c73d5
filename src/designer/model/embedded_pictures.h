// SPDX-License-Identifier: GPL-3.0-or-later
// The pictures that a report embeds (MS-RDL, EmbeddedImage).
#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

#include "designer/document/document.h"
#include "designer/model/element_rows.h"

namespace designer {

struct EmbeddedPicture {
    int place = NewRow;  // among the pictures in the file
    std::string name, type = {};
    std::string bytes = {};  // of a picture that is new; those in the file stay there
    bool operator==(const EmbeddedPicture&) const = default;
};

std::vector<EmbeddedPicture> EmbeddedPicturesOf(const Document& document);
// Returns the bytes of a picture in the file; empty if it has none.
std::string BytesOfPicture(const Document& document, int place);

// Reads the type and the bytes of a picture file. Returns why the report could not show it, or why it cannot
// be read, as a text for users; then the picture is as it was. Empty: it was read.
QString ReadPictureFile(const QString& file, EmbeddedPicture& picture);

// Returns a name for the picture of this file: what names may have of that of the file.
std::string NameOfPictureFile(const QString& file);

// Makes these the pictures of the report; images follow their names. Edits of the step that is open. Raises
// EditError for a name that is no identifier or is taken.
void PutEmbeddedPictures(Document& document, const std::vector<EmbeddedPicture>& pictures);

}  // namespace designer
