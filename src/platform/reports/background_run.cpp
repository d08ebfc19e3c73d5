// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/background_run.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <new>
#include <thread>
#include <utility>
#include <vector>

#include "platform/base/paths.h"
#include "rdl/values/stop.h"

namespace reports {

// The pages are used by one thread at a time: by the one that makes them, and in between by the one that
// shows them. They are made and destroyed in the first.
struct BackgroundRun::Shared {
    std::recursive_mutex use;     // of `pages`; while they are printed, a window may draw them
    std::atomic<int> waiting{0};  // for `use`, to show a page: the next page is made afterwards
    std::unique_ptr<report::PageView> pages;

    std::mutex news;  // of what follows
    std::condition_variable changed;
    int made = 0;
    bool ended = false, isOver = false;
    bool waitsForTotal = false;
    std::vector<report::MapEntry> map;
    std::optional<RuntimeError> failure;
    const std::shared_ptr<rdl::StopSignal> stop = std::make_shared<rdl::StopSignal>();
    std::thread thread;
};

namespace {

using Shared = BackgroundRun::Shared;

constexpr std::chrono::milliseconds PatienceForPage{10};

// Called with `use` held.
void Publish(Shared& shared) {
    const std::lock_guard lock(shared.news);
    shared.made = shared.pages->PagesMade();
    shared.waitsForTotal = shared.pages->WaitsForTotal();
    const std::vector<report::MapEntry>& map = shared.pages->DocumentMap();
    shared.map.insert(shared.map.end(), map.begin() + static_cast<std::ptrdiff_t>(shared.map.size()),
                      map.end());
    shared.changed.notify_all();
}

void MakePages(Shared& shared, const BackgroundRun::Begin& begin) {
    {
        const std::lock_guard lock(shared.use);
        shared.pages = begin();
    }
    for (bool isWhole = false; !isWhole && !shared.stop->IsGiven();) {
        while (shared.waiting > 0) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        const std::lock_guard lock(shared.use);
        shared.pages->Reach(shared.pages->PagesMade() + 1);
        Publish(shared);
        isWhole = shared.pages->AllMade();
    }
}

void Work(Shared& shared, const BackgroundRun::Begin& begin) {
    const rdl::StopsAt stops(shared.stop);
    std::optional<RuntimeError> failure;
    try {
        MakePages(shared, begin);
    } catch (...) {
        failure = CurrentError();
    }
    std::unique_lock news(shared.news);
    if (!shared.stop->IsGiven()) {
        shared.failure = std::move(failure);
    }
    shared.ended = true;
    shared.changed.notify_all();
    shared.changed.wait(news, [&] { return shared.isOver; });
    news.unlock();
    const std::lock_guard use(shared.use);
    shared.pages.reset();
}

class SharedPages : public report::PageView {
    template <typename Work>
    auto Use(Work work) const {
        ++m_shared->waiting;
        const std::unique_lock use(m_shared->use);
        --m_shared->waiting;
        if (!m_shared->pages) {
            throw RuntimeError(err::SubscriptOutOfRange);
        }
        return work(*m_shared->pages);
    }

 public:
    explicit SharedPages(std::shared_ptr<Shared> shared) : m_shared(std::move(shared)) {}

    bool Reach(int n) override {
        std::unique_lock news(m_shared->news);
        m_shared->changed.wait_for(news, PatienceForPage,
                                   [&] { return m_shared->made >= n || m_shared->ended; });
        if (m_shared->made < n && m_shared->failure) {
            throw RuntimeError(*m_shared->failure);
        }
        return m_shared->made >= n;
    }
    int PagesMade() const override {
        const std::lock_guard news(m_shared->news);
        return m_shared->made;
    }
    // A run that was stopped has no more pages.
    bool AllMade() const override {
        const std::lock_guard news(m_shared->news);
        return m_shared->ended && !m_shared->failure;
    }
    bool WaitsForTotal() const override {
        const std::lock_guard news(m_shared->news);
        return m_shared->waitsForTotal;
    }
    double Width(int n) const override {
        return Use([&](report::PageView& pages) { return pages.Width(n); });
    }
    double Height(int n) const override {
        return Use([&](report::PageView& pages) { return pages.Height(n); });
    }
    void Draw(int n, QPainter& painter) override {
        Use([&](report::PageView& pages) { pages.Draw(n, painter); });
    }
    bool WritePdf(const std::string& file, int first, int last,
                  const std::function<bool(int page)>& goOn) override {
        return Use([&](report::PageView& pages) { return pages.WritePdf(file, first, last, goOn); });
    }
    std::vector<report::Character> Characters(int n) override {
        return Use([&](report::PageView& pages) { return pages.Characters(n); });
    }
    std::vector<report::Link> Links(int n) override {
        return Use([&](report::PageView& pages) { return pages.Links(n); });
    }
    const std::vector<report::MapEntry>& DocumentMap() const override {
        const std::lock_guard news(m_shared->news);
        for (std::size_t at = m_map.size(); at < m_shared->map.size(); ++at) {
            m_map.push_back(m_shared->map[at]);
        }
        return m_map;
    }

 private:
    std::shared_ptr<Shared> m_shared;
    mutable std::vector<report::MapEntry> m_map;
};

}  // namespace

BackgroundRun::BackgroundRun(Begin begin) : m_shared(std::make_shared<Shared>()) {
    AppPath();  // is found at its first use: before there are two threads
    m_shared->thread = std::thread([shared = m_shared, begin = std::move(begin)] { Work(*shared, begin); });
}

BackgroundRun::~BackgroundRun() {
    m_shared->stop->Give();
    {
        const std::lock_guard news(m_shared->news);
        m_shared->isOver = true;
    }
    m_shared->changed.notify_all();
    m_shared->thread.join();
}

void BackgroundRun::Stop() {
    m_shared->stop->Give();
}

bool BackgroundRun::IsStopped() const {
    return m_shared->stop->IsGiven();
}

bool BackgroundRun::HasEnded() const {
    const std::lock_guard news(m_shared->news);
    return m_shared->ended;
}

int BackgroundRun::PagesMade() const {
    const std::lock_guard news(m_shared->news);
    return m_shared->made;
}

std::optional<RuntimeError> BackgroundRun::Failure() const {
    const std::lock_guard news(m_shared->news);
    return m_shared->failure;
}

std::unique_ptr<report::PageView> BackgroundRun::Pages() const {
    return std::make_unique<SharedPages>(m_shared);
}

}  // namespace reports
