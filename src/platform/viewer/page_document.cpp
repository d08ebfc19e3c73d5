// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/viewer/page_document.h"

#include <algorithm>

namespace viewer {

QString ErrorText(const RuntimeError& error) {
    return QString::fromStdString(error.Description()) + " [" + QString::number(error.Number()) + "]";
}

PageDocument::PageDocument(std::unique_ptr<report::PageView> pages) : m_pages(std::move(pages)) {
    m_timer.setInterval(0);
    connect(&m_timer, &QTimer::timeout, this, &PageDocument::MakeSome);
}

// A slice is short, so that the wheel still reacts.
void PageDocument::MakeSome() {
    constexpr qint64 SliceMilliseconds = 10;
    QElapsedTimer clock;
    clock.start();
    while (!IsComplete() && clock.elapsed() < SliceMilliseconds) {
        Require(Count() + 1);
    }
    if (IsComplete()) {
        m_timer.stop();
    }
}

int PageDocument::WritePdf(const QString& file, int first, int last,
                           const std::function<bool(int page)>& goOn) {
    // Pages that show the total number need all pages.
    while (!IsComplete() && (Count() < last || m_pages->WaitsForTotal())) {
        if (!goOn(Count() + 1)) {
            return 0;
        }
        Require(Count() + 1);
    }
    if (first < 1 || first > Count()) {
        throw RuntimeError(err::SubscriptOutOfRange, "The report has no page " + std::to_string(first));
    }
    last = std::min(last, Count());
    return m_pages->WritePdf(file.toStdString(), first, last, goOn) ? last - first + 1 : 0;
}

bool PageDocument::Require(int n) {
    if (n <= Count()) {
        return true;
    }
    if (IsComplete()) {
        return false;
    }
    const int before = Count();
    const bool waited = m_pages->WaitsForTotal();
    try {
        m_pages->Reach(n);
    } catch (const RuntimeError& error) {
        Fail(error);
    }
    if (Count() > before) {
        emit Grown();
    }
    if (waited && !m_pages->WaitsForTotal()) {
        m_texts.clear();
        emit Redrawn();
    }
    if (IsComplete()) {
        emit Finished();
    }
    return n <= Count();
}

void PageDocument::Fail(const RuntimeError& error) {
    m_failed = true;
    emit Failed(tr("Page %1 cannot be made: %2").arg(Count() + 1).arg(ErrorText(error)));
}

std::shared_ptr<const PageText> PageDocument::Text(int n) {
    constexpr std::size_t MostKept = 16;
    const auto known =
        std::find_if(m_texts.begin(), m_texts.end(), [n](const KnownText& text) { return text.page == n; });
    if (known != m_texts.end()) {
        m_texts.splice(m_texts.begin(), m_texts, known);
        return m_texts.front().text;
    }
    std::vector<report::Character> characters;
    try {
        characters = m_pages->Characters(n);
    } catch (const RuntimeError&) {
        characters.clear();
    }
    m_texts.push_front({n, std::make_shared<const PageText>(characters)});
    if (m_texts.size() > MostKept) {
        m_texts.pop_back();
    }
    return m_texts.front().text;
}

std::vector<report::Link> PageDocument::Links(int n) {
    try {
        return m_pages->Links(n);
    } catch (const RuntimeError&) {
        return {};
    }
}

}  // namespace viewer
