// Qt's messages on standard error.
#pragma once

// Qt's messages become dated lines; those that only tell how it gets by without a display are left out. Call
// before the application is made. A fatal one while the display is awaited is that it cannot be had.
void TakeQtMessages();
