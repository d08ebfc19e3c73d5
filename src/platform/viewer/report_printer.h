// Pages on paper: the printing system is given them as the PDF document that an export makes, with their
// letters and fonts, and scales and turns them where the paper asks.
#pragma once

#include <QSizeF>
#include <QString>
#include <QStringList>

class QPrinter;

namespace viewer {

// What was chosen in the print dialog.
struct PrintJob {
    QString printer;  // empty: a file
    QString file;     // to print to, when there is no printer
    QString title;    // in the printer's list of jobs
    int copies = 1;
    QStringList options;  // of the printing system: "name" or "name=value"
};

// Gives the printer the paper of a page.
void SetPaper(QPrinter& printer, QSizeF points);

// `paperChosen`: the pages are brought onto the printer's paper; otherwise they ask for their own.
PrintJob JobOf(const QPrinter& printer, const QString& title, bool paperChosen);

// Hands a PDF document over to the printing system, by its command lp. Raises RuntimeError 57, which says
// what the command said.
void SendToPrinter(const PrintJob& job, const QString& document);

}  // namespace viewer
