// SPDX-License-Identifier: GPL-3.0-or-later
// Qt's messages on standard error.
#pragma once

// Turns Qt's messages into dated lines and omits those about a missing display. Call this before the
// application is made. A fatal message while the display is awaited ends the process as EndWithoutDisplay
// does.
void TakeQtMessages();
