// SPDX-License-Identifier: GPL-3.0-or-later
// Compresses the streams of a PDF (RFC 1950, section 2.2, around blocks of RFC 1951, section 3.2). A long
// document has a thread for it, so that the next page is laid out while the one before is compressed.
#pragma once

#include <condition_variable>
#include <deque>
#include <exception>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>

struct libdeflate_compressor;

namespace rdl::writers {

// Not for use by two threads at once.
class Deflate {
 public:
    // Raises rdl::Error if memory is short.
    Deflate();
    // Returns the compressed bytes, valid until the next call. Raises rdl::Error.
    std::string_view operator()(std::string_view data);

 private:
    struct Free {
        void operator()(libdeflate_compressor* compressor) const;
    };
    std::unique_ptr<libdeflate_compressor, Free> m_compressor;
    std::string m_packed;
};

// A thread that compresses jobs in the order in which it gets them. Its destructor drops what is not begun.
class CompressionThread {
 public:
    struct Job {
        std::string bytes;         // to compress; when it is done, the compressed ones
        std::exception_ptr error;  // of the compression
        bool isDone = false;
    };

    // Returns null if the machine has one processor, or no room for another thread. Raises rdl::Error if
    // memory is short.
    static std::unique_ptr<CompressionThread> Start();
    CompressionThread(const CompressionThread&) = delete;
    CompressionThread& operator=(const CompressionThread&) = delete;

    void Add(std::shared_ptr<Job> job);
    bool IsDone(const Job& job) const;
    // Returns when the job, which was added before, is done. Raises the error of its compression.
    void Wait(const Job& job);

 private:
    CompressionThread() = default;
    void Run(const std::stop_token& stop);

    Deflate m_deflate;
    mutable std::mutex m_mutex;
    std::condition_variable_any m_isAdded;
    std::condition_variable m_isDone;
    std::deque<std::shared_ptr<Job>> m_jobs;
    std::jthread m_thread;  // the last member: it ends before the others do
};

}  // namespace rdl::writers
