// The choice of recipients from the mail system's address book.
#pragma once

#include "platform/controls/editable_text.h"

namespace Global {

// Shows the address book and adds each chosen name and a ";" to what the box holds. A cancel leaves the box
// as it is; any other failure, a missing mail profile among them, is shown in a box.
void PickRecipients(EditableText& box);

}  // namespace Global
