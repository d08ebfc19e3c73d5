#include "platform/viewer/report_printer.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrinter>
#include <algorithm>

namespace viewer {
namespace {

constexpr double PointsPerInch = 72;

// From points of the page to dots of the printer, with the page turned and shrunk where the paper asks.
QTransform ToPaper(const QPrinter& printer, QSizeF page, Paper paper) {
    const double dots = printer.resolution() / PointsPerInch;
    QTransform transform = QTransform::fromScale(dots, dots);
    if (paper == Paper::OfThePage) {
        return transform;
    }
    const QSizeF sheet = printer.pageLayout().fullRect(QPageLayout::Point).size();
    if ((page.width() > page.height()) != (sheet.width() > sheet.height())) {
        transform.translate(sheet.width(), 0);
        transform.rotate(90);
        page.transpose();
    }
    const double shrink = std::min({1.0, sheet.width() / page.width(), sheet.height() / page.height()});
    return transform.scale(shrink, shrink);
}

[[noreturn]] void Refuse() {
    throw RuntimeError(err::DeviceIo, "The printer does not take the job");
}

}  // namespace

void SetPaper(QPrinter& printer, QSizeF points) {
    const bool wide = points.width() > points.height();
    const QPageSize size(wide ? points.transposed() : points, QPageSize::Point, {}, QPageSize::FuzzyMatch);
    printer.setPageLayout(QPageLayout(size, wide ? QPageLayout::Landscape : QPageLayout::Portrait,
                                      QMarginsF(), QPageLayout::Point));
}

int PrintPages(PageDocument& document, QPrinter& printer, int first, int last, Paper paper,
               const std::function<bool(int page)>& goOn) {
    if (!document.Require(first)) {
        throw RuntimeError(err::SubscriptOutOfRange, "The report has no page " + std::to_string(first));
    }
    printer.setFullPage(true);
    QPainter painter;
    int printed = 0;
    for (int page = first; page <= last && document.Require(page); ++page) {
        if (!goOn(page)) {
            printer.abort();
            return printed;
        }
        if (paper == Paper::OfThePage) {
            SetPaper(printer, document.Size(page));
        }
        if (printed == 0 ? !painter.begin(&printer) : !printer.newPage()) {
            Refuse();
        }
        painter.setWorldTransform(ToPaper(printer, document.Size(page), paper));
        document.Draw(page, painter);
        painter.resetTransform();
        ++printed;
    }
    if (printed > 0 && !painter.end()) {
        Refuse();
    }
    return printed;
}

}  // namespace viewer
