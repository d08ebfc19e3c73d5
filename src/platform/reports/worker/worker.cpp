// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/worker.h"

#include <poll.h>
#include <sys/socket.h>

#include <algorithm>
#include <array>
#include <cerrno>

#include "platform/base/journal.h"
#include "platform/base/paths.h"
#include "platform/contracts/loop.h"
#include "platform/reports/failure.h"

namespace reports::worker {
namespace {

using std::chrono::milliseconds;

// Between two looks at limits and windows.
constexpr milliseconds Slice(50);
// Shorter operations need no repainting.
constexpr milliseconds NoticedWait(200);
constexpr int BeatsInPatience = 12;
// The number of small messages that fit into a socket that nobody reads.
constexpr std::size_t MostOwed = 64;

std::string TimeText(milliseconds time) {
    using namespace std::chrono;
    const auto text = [](auto count, const char* unit) {
        return std::to_string(count) + " " + unit + (count == 1 ? "" : "s");
    };
    if (time % hours(1) == milliseconds(0)) {
        return text(duration_cast<hours>(time).count(), "hour");
    }
    if (time % minutes(1) == milliseconds(0)) {
        return text(duration_cast<minutes>(time).count(), "minute");
    }
    return time % seconds(1) == milliseconds(0) ? text(duration_cast<seconds>(time).count(), "second")
                                                : text(time.count(), "millisecond");
}

// The numbers by which the engine reports errors. Others make the system do things, such as making its
// database again.
bool IsNumberOfEngine(std::int32_t number) {
    return (number > 0 && number < 1000) || (number >= InvalidReport && number <= WorkerFailed);
}

void JournalOnce(const std::string& lacking) {
    static bool isTold = false;
    if (!lacking.empty() && !std::exchange(isTold, true)) {
        Journal("Reports run less confined than they could, as the kernel has no " + lacking);
    }
}

}  // namespace

Worker::Worker(Settings settings) : m_settings(std::move(settings)), m_process(m_settings.program) {
    const Begin begin{AppPath(), (m_settings.patience / BeatsInPatience).count(), m_settings.megabytes,
                      m_settings.readable};
    JournalOnce(Call(begin, "").lacking);
    m_hasBegun = true;
}

bool Worker::IsWornOut() {
    try {
        const Turn turn(*this, Close::Words, "");
    } catch (const RuntimeError&) {
        return true;
    }
    return !m_process.IsQuiet() || m_reports >= m_settings.mostReports ||
           m_process.BytesInUse() > m_settings.mostBytes;
}

Worker::Turn::Turn(Worker& worker, const char* words, const std::string& report) : m_worker(worker) {
    if (worker.m_failure) {
        throw RuntimeError(*worker.m_failure);
    }
    if (worker.m_isBusy) {
        throw RuntimeError(err::Automation, "The report process is busy with another report");
    }
    worker.m_isBusy = true;
    worker.m_begin = worker.m_looked = Clock::now();
    worker.m_silent = milliseconds(0);
    worker.m_processorBegin = worker.m_process.ProcessorTime();
    try {
        worker.Settle();
    } catch (...) {
        worker.m_isBusy = false;
        throw;
    }
    worker.m_doing = ActivityText(words, report);
}

std::string Worker::ActivityText(const char* words, const std::string& report) {
    return words + (report.empty() ? "" : " the report \"" + paths::ForUser(report) + "\"");
}

void Worker::Post(const std::string& body, std::string doing) noexcept {
    if (m_failure || m_isBusy) {
        return;
    }
    try {
        if (m_owed.size() >= MostOwed) {
            const Turn turn(*this, "", "");
        }
        const std::string frame = Framed(Kind::Request, body);
        m_owed.push_back(std::move(doing));
        if (SendSome(m_process.Socket(), frame, -1) == static_cast<ssize_t>(frame.size())) {
            return;
        }
    } catch (...) {
        // The next call raises what is wrong.
    }
    m_process.Kill();
}

void Worker::Settle() {
    while (!m_owed.empty()) {
        m_doing = std::move(m_owed.front());
        m_owed.pop_front();
        try {
            DecodedAnswer<Done>(Receive());
        } catch (const RuntimeError& error) {
            m_process.Kill();
            m_failure = error;
            throw;
        }
    }
    if (!m_input.empty()) {
        FailUnreadable();
    }
}

void Worker::Send(std::string_view body, int file) {
    std::string frame;
    try {
        frame = Framed(Kind::Request, body);
    } catch (const BadMessage&) {
        throw RuntimeError(err::OutOfMemory);
    }
    for (std::string_view rest = frame; !rest.empty();) {
        const ssize_t count = SendSome(m_process.Socket(), rest, file);
        if (count >= 0) {
            rest.remove_prefix(static_cast<std::size_t>(count));
            file = -1;
        } else if (errno == EAGAIN) {
            Await(POLLOUT);
        } else if (errno != EINTR) {
            FailEnded();
        }
    }
}

// Returns the body of the next answer.
std::string Worker::Receive() {
    while (true) {
        while (m_input.size() < HeadSize) {
            ReadSome();
        }
        const Head head = DecodedHead();
        while (m_input.size() < HeadSize + head.size) {
            ReadSome();
        }
        const std::string body = m_input.substr(HeadSize, head.size);
        m_input.erase(0, HeadSize + head.size);
        switch (head.kind) {
            case Kind::Answer:
                return body;
            case Kind::Error:
                RaiseAnswered(body);
            case Kind::Beat:
                break;
            case Kind::Request:
                FailUnreadable();
        }
    }
}

// No other answer is outstanding, so nothing may follow this one.
std::string Worker::ReceiveLast() {
    std::string body = Receive();
    if (!m_input.empty()) {
        FailUnreadable();
    }
    return body;
}

Head Worker::DecodedHead() {
    try {
        return HeadOf(m_input);
    } catch (const BadMessage&) {
        FailUnreadable();
    }
}

// Waits for bytes.
void Worker::ReadSome() {
    Await(POLLIN);
    std::array<char, 65536> buffer;
    // Without a place for them, files that come along are closed.
    const ssize_t count = recv(m_process.Socket(), buffer.data(), buffer.size(), 0);
    if (count > 0) {
        m_input.append(buffer.data(), static_cast<std::size_t>(count));
    } else if (count == 0 || (errno != EAGAIN && errno != EINTR)) {
        FailEnded();
    }
}

// Waits until the socket can be used. In short slices: a program that was stopped for an hour, or a machine
// that slept, has waited for one of them only.
void Worker::Await(short events) {
    if (m_process.Socket() < 0) {
        FailEnded();  // a post that failed has closed it
    }
    pollfd socket{m_process.Socket(), events, 0};
    while (true) {
        const int ready = poll(&socket, 1, static_cast<int>(Slice.count()));
        CheckLimits();
        if (ready > 0) {
            m_silent = milliseconds(0);
            return;
        }
        m_silent += ready == 0 ? Slice : milliseconds(0);
        if (m_silent >= m_settings.patience) {
            Fail("gave no sign of life for " + TimeText(m_settings.patience));
        }
    }
}

void Worker::CheckLimits() {
    const Clock::time_point now = Clock::now();
    if (now - m_looked < Slice) {
        return;
    }
    m_looked = now;
    if (m_process.ProcessorTime() - m_processorBegin > m_settings.processor) {
        Fail("took more than " + TimeText(m_settings.processor) + " of the processor");
    }
    if (now - m_begin > m_settings.longest) {
        Fail("took longer than " + TimeText(m_settings.longest));
    }
    if (now - m_begin >= NoticedWait) {
        TheLoop().Repaint();
        m_looked = Clock::now();
    }
}

void Worker::RaiseAnswered(const std::string& body) {
    auto failed = DecodedAnswer<Failed>(body);
    // A statement with this text would end at a NUL.
    std::replace(failed.description.begin(), failed.description.end(), '\0', ' ');
    throw RuntimeError(IsNumberOfEngine(failed.number) ? failed.number : RunFailed, failed.description);
}

void Worker::Fail(const std::string& what) {
    m_process.Kill();
    m_failure.emplace(WorkerFailed, "The report process " + what + " while it " + m_doing);
    throw RuntimeError(*m_failure);
}

void Worker::FailEnded() {
    const std::string end = m_process.AwaitEnd();
    if (m_process.ExitCode() == OtherVersion && !m_hasBegun) {
        m_failure.emplace(WorkerFailed, "The report program \"" + m_settings.program.string() +
                                            "\" is not of this version (" + ServeVersion() +
                                            "): install both together and start this program again");
        throw RuntimeError(*m_failure);
    }
    Fail(end);
}

void Worker::FailUnreadable() {
    Fail("gave an answer that cannot be read");
}

}  // namespace reports::worker
