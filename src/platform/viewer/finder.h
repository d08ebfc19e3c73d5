// Looks for words page by page, a little at a time, over pages that are not made yet as well.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include "platform/viewer/page_document.h"

namespace viewer {

class Finder : public QObject {
    Q_OBJECT
 public:
    explicit Finder(QObject* parent = nullptr);
    void SetDocument(PageDocument* document);

    // From a place on: forwards the first that begins at it or behind, backwards the last that begins before.
    // The search goes on at the other end of the report and ends where it began.
    void Start(const QString& words, bool forwards, int page, int place);
    void Stop() { m_timer.stop(); }
    bool IsBusy() const { return m_timer.isActive(); }

 signals:
    void Found(int page, const viewer::LetterRange& range, bool wrapped);
    void NotFound();

 private:
    void LookOn();
    bool LookAtPage();
    void Next();

    QPointer<PageDocument> m_document;
    QTimer m_timer;
    QString m_words;
    bool m_forwards = true, m_wrapped = false;
    bool m_toEnd = false;        // on the way backwards from the first page to the last
    int m_page = 0, m_from = 0;  // where the search is: page, and place on it; -1: all of the page
    int m_startPage = 0;
};

}  // namespace viewer
