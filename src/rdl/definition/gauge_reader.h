// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the element GaugePanel of the schemas of 2008 and later (MS-RDL, GaugePanel). Raises rdl::Error.
#pragma once

#include "rdl/definition/item_reader.h"

namespace rdl {

ItemPtr ReadGaugePanel(Context& context, const XmlElement& element, Extent container);

}  // namespace rdl
