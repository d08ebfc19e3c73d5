// SPDX-License-Identifier: GPL-3.0-or-later
// Searches the pages one by one in small steps, including pages that are not made yet.
#pragma once

#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include "platform/viewer/page_document.h"

namespace viewer {

enum class Direction { Forwards, Backwards };

class Finder : public QObject {
    Q_OBJECT
 public:
    explicit Finder(QObject* parent = nullptr);
    void SetDocument(PageDocument* document);

    // Starts at a place (page from 1, character from 0). Forwards it finds the first match that begins at the
    // place or after it, backwards the last match that begins before it. The search continues at the other
    // end of the report and stops where it started.
    void Start(const QString& words, Direction direction, int page, int place);
    void Stop() { m_timer.stop(); }
    bool IsBusy() const { return m_timer.isActive(); }

 signals:
    void Found(int page, const viewer::CharacterRange& range, bool wrapped);
    void NotFound();

 private:
    void LookOn();
    void Await();
    bool LookAtPage();
    void Next();

    QPointer<PageDocument> m_document;
    QTimer m_timer;
    QString m_words;
    Direction m_direction = Direction::Forwards;
    bool m_wrapped = false;
    bool m_toEnd = false;        // searches backwards and has to reach the last page first
    bool m_waits = false;        // for the current page, which may not be made yet
    int m_page = 0, m_from = 0;  // current page, and place on it; -1: the whole page
    int m_startPage = 0;
};

}  // namespace viewer
