// Qt's messages on standard error.
#pragma once

#include <string>

// Writes Qt's messages as dated lines and drops those about a missing display. Call it before the application
// is made. If the display does not answer while the application is made, the process ends with code 1 and one
// line: "<program>: the display ":7" does not answer; <advice>".
void TakeQtMessages(const std::string& program, const std::string& advice);

// Call it after the application is made: from then on a fatal message is written like any other, and Qt ends
// the process.
void DisplayHasAnswered();
