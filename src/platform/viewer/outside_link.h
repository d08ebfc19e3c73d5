// Links of a report that lead out of it. A report is not trusted: the desktop would open files, programs and
// whatever else its address names.
#pragma once

#include <QString>
#include <QUrl>

namespace viewer {

// The address of a web page (http, https) or of a mail to write (mailto), to be handed to the desktop as it
// is; empty for everything else, and for a mail that would take a file along.
QUrl OutsideLink(const QString& text);

}  // namespace viewer
