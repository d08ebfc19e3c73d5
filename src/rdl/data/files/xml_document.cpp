// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/data/files/xml_document.h"

#include "rdl/data/common/message.h"
#include "rdl/xml/parse.h"

namespace rdl::data {
namespace {

constexpr int DeepestElement = 100;
constexpr int MostElements = 5'000'000;
constexpr std::size_t MostAttributes = 4'096;  // of an element: the columns of a row

}  // namespace

xml::Document ParseXml(std::string_view bytes) {
    try {
        return xml::Parse(bytes, {DeepestElement, MostElements, MostAttributes});
    } catch (const xml::Flaw& flaw) {
        throw Error("the XML is not usable at line " + std::to_string(flaw.Line()) + ": " +
                    CleanText(flaw.what()));
    }
}

}  // namespace rdl::data
