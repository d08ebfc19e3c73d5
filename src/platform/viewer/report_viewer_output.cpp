// SPDX-License-Identifier: GPL-3.0-or-later
// Members of ReportViewer: printing and saving, with their dialogs.
#include <QApplication>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QProgressDialog>
#include <QTemporaryDir>
#include <limits>

#include "platform/viewer/message_bar.h"
#include "platform/viewer/report_printer.h"
#include "platform/viewer/report_saver.h"
#include "platform/viewer/report_viewer.h"

using namespace viewer;

namespace {

// Shows the wait cursor while the window cannot react.
class WaitCursor {
 public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(const WaitCursor&) = delete;
    WaitCursor& operator=(const WaitCursor&) = delete;
};

}  // namespace

int ReportViewer::Print(const PrintJob& job, int first, int last) {
    if (!m_document) {
        throw RuntimeError(err::ObjectNotSet);
    }
    QProgressDialog progress(this);
    progress.setObjectName("dlgPrinting");
    progress.setWindowTitle(tr("Print"));
    progress.setWindowModality(Qt::WindowModal);
    const auto goOn = [&](int page) {
        progress.setLabelText(tr("Page %1").arg(page));
        progress.setRange(0, std::min(last, m_document->Count()) - first + 1);
        progress.setValue(page - first);  // lets events run, and so the button be pressed
        return !progress.wasCanceled();
    };
    if (job.printer.isEmpty()) {
        return m_document->WritePdf(job.file, first, last, goOn);
    }
    const QTemporaryDir folder;
    const QString document = folder.filePath(NameFor(job.title.toStdString()) + ".pdf");
    const int pages = m_document->WritePdf(document, first, last, goOn);
    if (pages > 0) {
        const WaitCursor waiting;
        SendToPrinter(job, document);
    }
    return pages;
}

void ReportViewer::AskAndPrint() {
    if (!m_document) {
        return;
    }
    m_message->hide();
    QPrinter printer(QPrinter::HighResolution);
    SetPaper(printer, m_document->Size(1));
    const QPageLayout offered = printer.pageLayout();
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName("dlgPrint");
    dialog.setOption(QAbstractPrintDialog::PrintCurrentPage);
    dialog.setOption(QAbstractPrintDialog::PrintPageRange);
    dialog.setMinMax(1, m_document->IsComplete() ? m_document->Count() : std::numeric_limits<int>::max());
    dialog.setFromTo(1, m_document->Count());
    if (dialog.exec() != QDialog::Accepted) {
        return;
    }
    int first = 1, last = std::numeric_limits<int>::max();
    if (printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0) {
        first = printer.fromPage();
        last = printer.toPage();
    } else if (printer.printRange() == QPrinter::CurrentPage) {
        first = last = CurrentPage();
    }
    const bool otherPaper = !printer.pageLayout().pageSize().isEquivalentTo(offered.pageSize());
    try {
        Print(JobOf(printer, QString::fromStdString(m_report->Title()), otherPaper), first, last);
    } catch (const RuntimeError& error) {
        ShowMessage(tr("The report cannot be printed: %1").arg(ErrorText(error)));
    }
}

void ReportViewer::SaveAs(const std::string& machinePath) {
    if (!m_report) {
        throw RuntimeError(err::ObjectNotSet);
    }
    const WaitCursor waiting;
    SaveReport(*m_report, QString::fromStdString(machinePath));
}

void ReportViewer::AskAndSave() {
    if (!m_report) {
        return;
    }
    m_message->hide();
    QFileDialog dialog(this, tr("Save as"));
    dialog.setObjectName("dlgSave");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setNameFilters(SaveFilters());
    dialog.setDefaultSuffix(ExtensionOf(SaveFilters().first()));
    connect(&dialog, &QFileDialog::filterSelected, &dialog,
            [&dialog](const QString& filter) { dialog.setDefaultSuffix(ExtensionOf(filter)); });
    dialog.selectFile(NameFor(m_report->Title()) + "." + dialog.defaultSuffix());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    try {
        SaveAs(dialog.selectedFiles().first().toStdString());
    } catch (const RuntimeError& error) {
        ShowMessage(tr("The report cannot be saved: %1").arg(ErrorText(error)));
    }
}
