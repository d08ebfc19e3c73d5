// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses recipients from the address book of the mail system.
#pragma once

#include "platform/controls/editable_text.h"

namespace Global {

// Shows the address book and appends each chosen name and a ";" to the box. A cancel leaves the box
// unchanged. Any other failure, such as a missing mail profile, is shown in a box.
void PickRecipients(EditableText& box);

}  // namespace Global
