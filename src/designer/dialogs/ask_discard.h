// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QWidget;

namespace designer {

// Asks whether what was typed in the dialog is thrown away; false: the user keeps it.
bool AskToDiscard(QWidget& dialog);

}  // namespace designer
