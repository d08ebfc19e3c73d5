// The pages that a viewer shows. The first ones are there at once, the rest is made whenever there is nothing
// else to do.
#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QSizeF>
#include <QString>
#include <QTimer>
#include <list>
#include <memory>
#include <vector>

#include "platform/contracts/report_view.h"
#include "platform/contracts/runtime.h"
#include "platform/viewer/page_text.h"

namespace viewer {

class PageDocument : public QObject {
    Q_OBJECT
 public:
    explicit PageDocument(std::unique_ptr<report::PageView> pages);

    int Count() const { return m_pages->PagesMade(); }  // of pages made so far
    // Nothing more will come: all are made, or making them failed.
    bool IsComplete() const { return m_pages->AllMade() || m_failed; }
    void StartMaking() { m_timer.start(); }
    // Makes pages until page n is there; false when it does not come. Never raises.
    bool Require(int n);

    // Of page n from 1, which is made. Sizes in points.
    QSizeF Size(int n) const { return {m_pages->Width(n), m_pages->Height(n)}; }
    void Draw(int n, QPainter& painter) { m_pages->Draw(n, painter); }
    // Makes pages until `last` is there and writes them from `first` on as a PDF document; there may be
    // fewer, but not none: 9 "Subscript out of range". `goOn` is asked before each page, also while pages are
    // made. The number of pages; 0 and no file when it said false.
    int WritePdf(const QString& file, int first, int last, const std::function<bool(int page)>& goOn);
    // Without letters when they cannot be read: a page that cannot be drawn says so itself.
    std::shared_ptr<const PageText> Text(int n);
    std::vector<report::Link> Links(int n);
    const std::vector<report::MapEntry>& DocumentMap() const { return m_pages->DocumentMap(); }

 signals:
    void Grown();     // there are more pages
    void Finished();  // all are made, or making them failed
    void Redrawn();   // pages look otherwise than before
    void Failed(const QString& message);

 private:
    void MakeSome();
    void Fail(const RuntimeError& error);

    struct KnownText {
        int page;
        std::shared_ptr<const PageText> text;
    };
    std::unique_ptr<report::PageView> m_pages;
    QTimer m_timer;
    std::list<KnownText> m_texts;  // last used first
    bool m_failed = false;
};

// As the system words its errors: the description and the number.
QString ErrorText(const RuntimeError& error);

}  // namespace viewer
