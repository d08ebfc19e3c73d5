// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/writers/pdf/compressor.h"

#include <libdeflate.h>

#include <csignal>
#include <system_error>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/writers/pdf/deflater.h"

namespace rdl::writers {
namespace {

// A thread begins with the signals blocked that are blocked where it is made: handlers run in the threads
// that know of them.
class BlockedSignals {
 public:
    BlockedSignals() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~BlockedSignals() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    BlockedSignals(const BlockedSignals&) = delete;
    BlockedSignals& operator=(const BlockedSignals&) = delete;

 private:
    sigset_t m_before{};
};

}  // namespace

void Deflate::Free::operator()(libdeflate_compressor* compressor) const {
    libdeflate_free_compressor(compressor);
}

Deflate::Deflate() : m_compressor(libdeflate_alloc_compressor(DeflateLevel)) {
    if (!m_compressor) {
        throw Error("PDF: no memory to compress with");
    }
}

std::string_view Deflate::operator()(std::string_view data) {
    const std::size_t bound = libdeflate_zlib_compress_bound(m_compressor.get(), data.size());
    if (m_packed.size() < bound) {
        m_packed.resize(bound);
    }
    const std::size_t size = libdeflate_zlib_compress(m_compressor.get(), data.data(), data.size(),
                                                      m_packed.data(), m_packed.size());
    if (size == 0) {
        throw Error("PDF: a stream could not be compressed");
    }
    return {m_packed.data(), size};
}

std::unique_ptr<CompressionThread> CompressionThread::Start() {
    if (std::thread::hardware_concurrency() < 2) {
        return nullptr;
    }
    std::unique_ptr<CompressionThread> made(new CompressionThread);
    const BlockedSignals blocked;
    try {
        made->m_thread = std::jthread([self = made.get()](const std::stop_token& stop) { self->Run(stop); });
    } catch (const std::system_error&) {
        return nullptr;
    }
    return made;
}

void CompressionThread::Add(std::shared_ptr<Job> job) {
    {
        const std::lock_guard lock(m_mutex);
        m_jobs.push_back(std::move(job));
    }
    m_isAdded.notify_one();
}

bool CompressionThread::IsDone(const Job& job) const {
    const std::lock_guard lock(m_mutex);
    return job.isDone;
}

void CompressionThread::Wait(const Job& job) {
    std::unique_lock lock(m_mutex);
    m_isDone.wait(lock, [&] { return job.isDone; });
    if (job.error) {
        std::rethrow_exception(job.error);
    }
}

void CompressionThread::Run(const std::stop_token& stop) {
    while (true) {
        std::shared_ptr<Job> job;
        {
            std::unique_lock lock(m_mutex);
            if (!m_isAdded.wait(lock, stop, [this] { return !m_jobs.empty(); }) || stop.stop_requested()) {
                return;
            }
            job = std::move(m_jobs.front());
            m_jobs.pop_front();
        }
        try {
            job->bytes = m_deflate(job->bytes);
        } catch (...) {
            job->error = std::current_exception();
        }
        {
            const std::lock_guard lock(m_mutex);
            job->isDone = true;
        }
        m_isDone.notify_one();
    }
}

}  // namespace rdl::writers
