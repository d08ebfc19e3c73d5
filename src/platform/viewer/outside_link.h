// SPDX-License-Identifier: GPL-3.0-or-later
// Links of a report to addresses outside it. A report is not trusted: the desktop would open files and
// programs that a link names.
#pragma once

#include <QString>
#include <QUrl>

namespace viewer {

// Returns the address if it is a web page (http, https) or a new mail (mailto), for the desktop. Returns an
// empty address for any other scheme and for a mail that would attach a file.
QUrl OutsideLink(const QString& text);

}  // namespace viewer
