// SPDX-License-Identifier: GPL-3.0-or-later
#include "scheduler/RunLog.h"

#include "platform/base/convert.h"
#include "platform/contracts/clock.h"
#include "platform/posix/service_notify.h"
#include "store/TextConventions.h"

namespace Global {

journal::Fact KeyFact(RunKind kind, const std::string& reportID, const std::string& prefix) {
    const bool isNumber = !reportID.empty() && reportID.find_first_not_of("0123456789") == std::string::npos;
    return {prefix + WordOf(kind), reportID, isNumber};
}

namespace {

journal::Fact NotDelivered() {
    return journal::Text("outcome", "not-delivered");
}

}  // namespace

RunLog& RunLog::Instance() {
    static RunLog log;
    return log;
}

RunLog::RunLog() : m_start(Now()) {}

std::chrono::milliseconds RunLog::Since(Clock::time_point begin) {
    return std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - begin);
}

std::vector<journal::Fact> RunLog::FactsOf(const Item& item) {
    return {KeyFact(item.kind, item.reportID), journal::Text("title", item.title)};
}

void RunLog::PollBegins() {
    const std::lock_guard lock(m_mutex);
    m_pollBegin = Clock::now();
    m_hasRun = false;
    m_undelivered = 0;
}

void RunLog::PollEnds() {
    const std::lock_guard lock(m_mutex);
    if (!m_pollBegin) {
        return;
    }
    m_lastPoll = Now();
    m_lastPollTime = Since(*m_pollBegin);
    m_pollBegin.reset();
    m_item.reset();
    m_trace.End();
    journal::SetContext({});
    if (m_hasRun) {
        ServiceManager::Instance().EndLongSteps();
    }
    ServiceManager::Instance().NotifyStatus(Summary());
}

bool RunLog::IsPolling() const {
    const std::lock_guard lock(m_mutex);
    return m_pollBegin.has_value();
}

std::int64_t RunLog::UndeliveredInPoll() const {
    const std::lock_guard lock(m_mutex);
    return m_undelivered;
}

void RunLog::Begins(RunKind kind, const std::string& reportID, const std::string& title) {
    const std::lock_guard lock(m_mutex);
    m_item = Item{kind, reportID, title, Clock::now()};
    m_trace.Begin(kind, reportID, title);
    journal::SetContext(FactsOf(*m_item));
    ServiceManager::Instance().NotifyStatus(std::string("Running ") + WordOf(kind) + " " + reportID + " \"" +
                                            title + "\"");
    if (!m_hasRun) {
        m_hasRun = true;
        ServiceManager::Instance().BeginLongSteps();
    } else {
        ServiceManager::Instance().NotifyAlive();
    }
}

// The context stays after a failure: the lines about its record and its alert belong to the item, too.
void RunLog::Ended(journal::Level level, const char* event, std::vector<journal::Fact> facts) {
    if (m_item) {
        facts.push_back(journal::Seconds("seconds", Since(m_item->begin)));
    }
    journal::Write({level, event, std::move(facts)});
    m_item.reset();
    m_trace.End();
}

void RunLog::Delivered() {
    const std::lock_guard lock(m_mutex);
    ++m_delivered;
    const bool isSchedule = !m_item || m_item->kind == RunKind::Schedule;
    Ended(journal::Level::Info, isSchedule ? "run-done" : "package-done",
          {journal::Text("outcome", "delivered")});
    journal::SetContext({});
}

void RunLog::Undelivered() {
    const std::lock_guard lock(m_mutex);
    ++m_failed;
    ++m_undelivered;
    Ended(journal::Level::Error, "run-failed", {NotDelivered()});
    journal::SetContext({});
}

void RunLog::Failed(const std::string& routine, const RuntimeError& error, const std::string& reportID) {
    const std::lock_guard lock(m_mutex);
    ++m_failed;
    if (!m_item && !reportID.empty()) {
        journal::SetContext({KeyFact(RunKind::Schedule, reportID)});
    }
    const char* const event = m_item ? "run-failed" : "poll-failed";
    if (error.Number() == 0) {
        return Ended(journal::Level::Error, event, {NotDelivered()});
    }
    Ended(journal::Level::Error, event,
          {journal::Text("outcome", "error"), journal::Text("routine", routine),
           journal::Text("error", error.Description()), journal::Number("number", error.Number())});
}

void RunLog::Left(const RuntimeError& why) {
    const std::lock_guard lock(m_mutex);
    const std::string item =
        m_item ? std::string(WordOf(m_item->kind)) + " " + m_item->reportID + " \"" + m_item->title + "\""
               : "";
    m_item.reset();
    journal::Write({journal::Level::Warning,
                    "run-left",
                    {journal::Text("error", why.Description())},
                    "The run of " + item + " stops before its mail, as its claim is lost: " +
                        why.Description() + ". The next poll claims it again."});
    journal::SetContext({});
}

void RunLog::RecordedLater(RunKind kind, const std::string& reportID, const std::string& title) {
    std::vector<journal::Fact> facts = FactsOf({kind, reportID, title, {}});
    facts.push_back(journal::Text("outcome", "delivered-before"));
    journal::Write({journal::Level::Notice, "run-recorded", std::move(facts)});
}

void RunLog::LogCutOffRun() {
    if (const std::optional<CutOffRun> run = TakeRunTrace()) {
        journal::Write({journal::Level::Warning,
                        run->kind == RunKind::Schedule ? "run-cut-off" : "package-cut-off",
                        {KeyFact(run->kind, run->reportID), journal::Text("title", run->title),
                         journal::Text("outcome", "unknown")}});
    }
}

std::string RunLog::Summary() const {
    return "Waiting; the last poll ended " + TimeText(*m_lastPoll) + "; since the start " +
           std::to_string(m_delivered) + " delivered, " + std::to_string(m_failed) + " failed";
}

std::vector<journal::Fact> RunLog::State() const {
    const std::lock_guard lock(m_mutex);
    std::vector<journal::Fact> facts{journal::Text("since", cmFunc::FormatMomentText(m_start)),
                                     journal::Number("delivered", m_delivered),
                                     journal::Number("failed", m_failed)};
    if (m_lastPoll) {
        facts.push_back(journal::Text("last-poll", cmFunc::FormatMomentText(*m_lastPoll)));
        facts.push_back(journal::Seconds("last-poll-seconds", m_lastPollTime));
    }
    if (m_item) {
        // Which one it is belongs to the context of all events.
        facts.push_back(journal::Text("running", WordOf(m_item->kind)));
        facts.push_back(journal::Seconds("running-seconds", Since(m_item->begin)));
    }
    return facts;
}

}  // namespace Global
