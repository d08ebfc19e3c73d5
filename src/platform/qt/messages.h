// What Qt has to say on standard error.
#pragma once

#include <string>

// Qt's messages become dated lines; those that only tell how it gets by without a display are left out. Call
// before the application is made. When no display answers while it is made, the process ends with code 1 and
// one line: "<program>: the display ":7" does not answer; <advice>".
void TakeQtMessages(const std::string& program, const std::string& advice);

// Call when the application is made: from here on a fatal message is one like any other, and Qt ends the
// process.
void DisplayHasAnswered();
