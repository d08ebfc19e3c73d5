// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/finder.h"

namespace viewer {

Finder::Finder(QObject* parent) : QObject(parent) {
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &Finder::LookOn);
}

void Finder::SetDocument(PageDocument* document) {
    Stop();
    m_document = document;
}

void Finder::Start(const QString& words, Direction direction, int page, int place) {
    m_words = words;
    m_direction = direction;
    m_wrapped = m_toEnd = m_waits = false;
    m_page = m_startPage = page;
    m_from = place;
    m_timer.start();
}

void Finder::LookOn() {
    constexpr qint64 SliceMilliseconds = 15;
    QElapsedTimer clock;
    clock.start();
    while (IsBusy() && clock.elapsed() < SliceMilliseconds) {
        if (!m_document || m_document->Count() == 0) {
            Stop();
            emit NotFound();
        } else if (m_toEnd) {
            // One page in each step, so that the way to the last page does not block the window.
            m_document->Require(m_document->Count() + 1);
            m_toEnd = !m_document->IsComplete();
            m_page = m_document->Count();
        } else if (m_waits) {
            Await();
        } else if (!LookAtPage()) {
            Next();
        }
    }
}

// A page that is made in another thread comes later.
void Finder::Await() {
    m_waits = !m_document->Require(m_page);
    if (m_waits && m_document->IsComplete()) {
        m_page = 1;
        m_wrapped = true;
        m_waits = false;
    }
}

bool Finder::LookAtPage() {
    const std::vector<CharacterRange> all = m_document->Text(m_page)->Find(m_words);
    const bool isForwards = m_direction == Direction::Forwards;
    const CharacterRange* found = nullptr;
    for (const CharacterRange& range : all) {
        if (isForwards && (m_from < 0 || range.first >= m_from)) {
            found = &range;
            break;
        }
        if (!isForwards && (m_from < 0 || range.first < m_from)) {
            found = &range;
        }
    }
    if (!found) {
        return false;
    }
    Stop();
    emit Found(m_page, *found, m_wrapped);
    return true;
}

void Finder::Next() {
    if (m_wrapped && m_page == m_startPage) {
        Stop();
        emit NotFound();
        return;
    }
    m_from = -1;
    if (m_direction == Direction::Forwards) {
        ++m_page;
        m_waits = true;
        return;
    }
    if (--m_page < 1) {
        m_wrapped = m_toEnd = true;
    }
}

}  // namespace viewer
