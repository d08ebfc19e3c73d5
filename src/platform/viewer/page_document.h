// SPDX-License-Identifier: GPL-3.0-or-later
// The pages that a viewer shows. The first ones are made at once, the others while the process is idle.
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

    int Count() const { return m_pages->PagesMade(); }  // number of pages made so far
    // Returns true if no more pages will be made, because all are made or making them failed.
    bool IsComplete() const { return m_pages->AllMade() || m_failed; }
    void StartMaking() { m_timer.start(); }
    // Makes pages up to page `n` (from 1). Returns false if the page cannot be made, or if another thread
    // makes it later: then IsComplete is false. Raises no error.
    bool Require(int n);

    // Of page `n` (from 1), which must be made. Sizes are in points.
    QSizeF Size(int n) const { return {m_pages->Width(n), m_pages->Height(n)}; }
    void Draw(int n, QPainter& painter) { m_pages->Draw(n, painter); }
    // Makes pages up to `last` and writes them, starting at `first`, as a PDF document. The report may have
    // fewer pages; raises 9 "Subscript out of range" if it ends before `first`. Calls `goOn` before each
    // page, also while pages are made. Returns the number of pages, or 0 and writes no file if `goOn`
    // returned false.
    int WritePdf(const QString& file, int first, int last, const std::function<bool(int page)>& goOn);
    // Returns an empty text if the page's text cannot be read: the error shows when the page is drawn.
    std::shared_ptr<const PageText> Text(int n);
    std::vector<report::Link> Links(int n);
    const std::vector<report::MapEntry>& DocumentMap() const { return m_pages->DocumentMap(); }

 signals:
    void Grown();     // there are more pages
    void Finished();  // all pages are made, or making them failed
    void Redrawn();   // the look of pages has changed
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
    std::list<KnownText> m_texts;  // most recently used first
    bool m_failed = false;
};

// Returns the description and the number, in the system's form.
QString ErrorText(const RuntimeError& error);

}  // namespace viewer
