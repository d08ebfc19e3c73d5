// SPDX-License-Identifier: GPL-3.0-or-later
#include "rdl/values/run_watch.h"

#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <utility>

#include "rdl/values/error.h"
#include "rdl/values/stop.h"

namespace rdl {
namespace {

constexpr std::chrono::milliseconds BetweenMeasures{50};
constexpr std::int64_t MostMegabytes = 4096;

std::chrono::nanoseconds ProcessorTime() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Bytes of the process that are in memory; 0 where the system does not say.
std::int64_t MemoryInUse() {
    std::int64_t all = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> all >> resident;
    return resident * sysconf(_SC_PAGESIZE);
}

RunBounds Completed(RunBounds bounds) {
    if (bounds.megabytes == 0) {
        const std::int64_t machine = (sysconf(_SC_PHYS_PAGES) * sysconf(_SC_PAGESIZE)) >> 20;
        bounds.megabytes = std::min(MostMegabytes, machine / 4 * 3);
    }
    return bounds;
}

std::string DurationText(std::chrono::milliseconds time) {
    const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(time);
    return minutes == time ? std::to_string(minutes.count()) + " minutes"
                           : std::to_string(time.count()) + " milliseconds";
}

}  // namespace

RunWatch::RunWatch(const RunBounds& bounds) : m_bounds(Completed(bounds)) {}

RunWatch::Work::Work(std::shared_ptr<RunWatch> watch) : m_watch(std::move(watch)) {
    if (m_watch && m_watch->m_working++ == 0) {
        m_watch->m_workBegin = ProcessorTime();
        m_watch->m_bytesBegin = MemoryInUse();
    }
}

RunWatch::Work::~Work() {
    if (m_watch && --m_watch->m_working == 0) {
        m_watch->m_work += ProcessorTime() - m_watch->m_workBegin;
        m_watch->m_bytes += MemoryInUse() - m_watch->m_bytesBegin;
    }
}

RunWatch::Data::Data(std::shared_ptr<RunWatch> watch) : m_watch(std::move(watch)) {
    if (m_watch && m_watch->m_waiting++ == 0) {
        m_watch->m_dataBegin = Clock::now();
    }
}

RunWatch::Data::~Data() {
    if (m_watch && --m_watch->m_waiting == 0) {
        m_watch->m_data += Clock::now() - m_watch->m_dataBegin;
    }
}

void RunWatch::CheckBounds() {
    CheckStop();
    const Clock::time_point now = Clock::now();
    if (now < m_next) {
        return;
    }
    if (m_waiting > 0 && m_data + (now - m_dataBegin) > m_bounds.data) {
        throw Error("The data of the report takes longer than " + DurationText(m_bounds.data));
    }
    if (m_working > 0) {
        if (m_work + ProcessorTime() - m_workBegin > m_bounds.work) {
            throw Error("The report takes more than " + DurationText(m_bounds.work) + " of the processor");
        }
        if ((m_bytes + MemoryInUse() - m_bytesBegin) >> 20 > m_bounds.megabytes) {
            throw Error("The report takes more than " + std::to_string(m_bounds.megabytes) + " MB of memory");
        }
    }
    m_next = now + BetweenMeasures;
}

}  // namespace rdl
