// SPDX-License-Identifier: GPL-3.0-or-later
// Prints pages. The printing system gets the PDF document of an export, with its text and fonts, and scales
// and rotates its pages to fit the paper.
#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>

class QPrinter;

namespace viewer {

// The choices of the print dialog.
struct PrintJob {
    QString printer;  // empty: print to a file
    QString file;     // the file to print to, if there is no printer
    QString title;    // in the list of print jobs
    int copies = 1;
    QStringList options;  // of the printing system: "name" or "name=value"
};

// Sets the printer's paper to the size of a page, in points.
void SetPaper(QPrinter& printer, QSizeF points);

// `paperChosen`: the pages are fitted to the printer's paper; otherwise the job asks for the size of the
// pages.
PrintJob JobOf(const QPrinter& printer, const QString& title, bool paperChosen);

// Hands a PDF document to the printing system with its command lp. Raises RuntimeError 57 with the command's
// message.
void SendToPrinter(const PrintJob& job, const QString& document);

}  // namespace viewer
