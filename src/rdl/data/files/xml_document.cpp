// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_document.h"

#include "rdl/data/common/message.h"

namespace rdl::data {
xml::Document ParseXml(std::string_view bytes) {
    try {
        return xml::Parse(bytes, DataLimits);
    } catch (const xml::Flaw& flaw) {
        throw Error("the XML is not usable at line " + std::to_string(flaw.Line()) + ": " +
                    CleanText(flaw.what()));
    }
}

}  // namespace rdl::data
