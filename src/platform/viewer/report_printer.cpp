// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/report_printer.h"

#include <QPageLayout>
#include <QPrintEngine>
#include <QPrinter>
#include <QProcess>

#include "platform/contracts/runtime.h"

namespace viewer {
namespace {

// Returns the options of the print dialog's own pages (pages per sheet, page set, time, cover): names and
// values by turns.
QStringList SystemOptions(const QPrinter& printer) {
    constexpr auto SystemOptionsKey = static_cast<QPrintEngine::PrintEnginePropertyKey>(0xfe00);
    const QStringList pairs = printer.printEngine()->property(SystemOptionsKey).toStringList();
    QStringList options;
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2) {
        options << pairs[i] + "=" + pairs[i + 1];
    }
    return options;
}

QString MediaOf(const QPageSize& size) {
    if (size.id() != QPageSize::Custom) {
        return size.key();
    }
    const QSize points = size.sizePoints();
    return QString("Custom.%1x%2").arg(points.width()).arg(points.height());
}

QString SidesOf(const QPrinter& printer, bool wide) {
    switch (printer.duplex()) {
        case QPrinter::DuplexAuto:
            return wide ? "two-sided-short-edge" : "two-sided-long-edge";
        case QPrinter::DuplexLongSide:
            return "two-sided-long-edge";
        case QPrinter::DuplexShortSide:
            return "two-sided-short-edge";
        case QPrinter::DuplexNone:
            break;
    }
    return "one-sided";
}

[[noreturn]] void Refuse(const QString& why) {
    QString plain = why.simplified();
    plain.replace(QChar(0x27), QChar(0x22));
    throw RuntimeError(err::DeviceIo, "The printer does not take the job: " + plain.toStdString());
}

}  // namespace

void SetPaper(QPrinter& printer, QSizeF points) {
    const bool wide = points.width() > points.height();
    const QPageSize size(wide ? points.transposed() : points, QPageSize::Point, {}, QPageSize::FuzzyMatch);
    printer.setPageLayout(QPageLayout(size, wide ? QPageLayout::Landscape : QPageLayout::Portrait,
                                      QMarginsF(), QPageLayout::Point));
}

PrintJob JobOf(const QPrinter& printer, const QString& title, bool paperChosen) {
    PrintJob job;
    job.file = printer.outputFileName();
    job.printer = job.file.isEmpty() ? printer.printerName() : QString();
    job.title = title;
    job.copies = printer.copyCount();
    const QPageLayout layout = printer.pageLayout();
    job.options << "media=" + MediaOf(layout.pageSize());
    if (paperChosen) {
        job.options << "fit-to-page";
    }
    job.options << "sides=" + SidesOf(printer, layout.orientation() == QPageLayout::Landscape)
                << (printer.collateCopies() ? "collate=true" : "collate=false");
    if (printer.colorMode() == QPrinter::GrayScale) {
        job.options << "print-color-mode=monochrome";
    }
    if (printer.pageOrder() == QPrinter::LastPageFirst) {
        job.options << "outputorder=reverse";
    }
    job.options << SystemOptions(printer);
    return job;
}

void SendToPrinter(const PrintJob& job, const QString& document) {
    constexpr int MostMilliseconds = 60000;
    QStringList arguments{"-d", job.printer, "-t", job.title.simplified(), "-n", QString::number(job.copies)};
    for (const QString& option : job.options) {
        arguments << "-o" << option;
    }
    arguments << "--" << document;
    QProcess lp;
    lp.setStandardInputFile(QProcess::nullDevice());
    lp.start("lp", arguments);
    if (!lp.waitForStarted()) {
        Refuse("the program \"lp\" is missing");
    }
    if (!lp.waitForFinished(MostMilliseconds)) {
        lp.kill();
        lp.waitForFinished();
        Refuse("the program \"lp\" does not answer");
    }
    if (lp.exitStatus() != QProcess::NormalExit || lp.exitCode() != 0) {
        Refuse(QString::fromLocal8Bit(lp.readAllStandardError()));
    }
}

}  // namespace viewer
