// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/reports/worker/server.h"

#include <fcntl.h>

#include <chrono>
#include <map>
#include <memory>
#include <optional>
#include <utility>

#include "platform/base/paths.h"
#include "platform/reports/rdl_engine.h"
#include "platform/reports/rdl_report.h"
#include "platform/reports/worker/beats.h"
#include "platform/reports/worker/confinement.h"
#include "platform/reports/worker/frames.h"

namespace reports::worker {
namespace {

Opened Describe(int number, RdlReport& report) {
    Opened opened{
        number, report.TableCount(), report.Title(), report.Description(), report.RecordSelectionFormula(),
        {}};
    for (int n = 1; n <= report.ParameterFieldCount(); ++n) {
        const report::ParameterField& field = report.Parameter(n);
        opened.fields.push_back({field.ValueType(), field.IsWholeNumber(), field.Name(), field.Prompt()});
    }
    return opened;
}

// One function for each operation.
class Server {
 public:
    explicit Server(int socket) : m_socket(socket) {}

    Begun operator()(const Begin& begin) {
        if (m_beats) {
            throw BadMessage("a second beginning");
        }
        SetAppPath(begin.appFolder);
        Begun begun{Confine({begin.megabytes, {begin.readable.begin(), begin.readable.end()}})};
        m_beats.emplace(m_socket,
                        std::chrono::milliseconds(std::max<std::int64_t>(begin.beatMilliseconds, 1)));
        return begun;
    }
    Opened operator()(const Open& open) {
        std::shared_ptr<RdlReport> report = OpenRdlReport(open.path);
        const int number = ++m_last;
        RdlReport& kept = *m_reports.emplace(number, std::move(report)).first->second;
        return Describe(number, kept);
    }
    Done operator()(const Close& close) {
        m_reports.erase(close.report);
        return {};
    }
    Done operator()(const LogOn& logOn) {
        ReportOf(logOn).SetTableLogon(logOn.table, logOn.server, logOn.database, logOn.user, logOn.password);
        return {};
    }
    Texts operator()(const DefaultValues& values) { return {FieldOf(values).DefaultValues()}; }
    Texts operator()(const ValidValues& values) { return {FieldOf(values).ValidValues()}; }
    Done operator()(const ClearField& clear) {
        FieldOf(clear).ClearCurrentValueAndRange();
        return {};
    }
    Done operator()(const AddValue& add) {
        FieldOf(add).AddCurrentValue(add.value);
        return {};
    }
    Done operator()(const SetSwitches& set) {
        ReportOf(set).SetRunSwitches(set.prompts, set.progress);
        return {};
    }
    Done operator()(const SetFormula& set) {
        ReportOf(set).SetRecordSelectionFormula(set.text);
        return {};
    }
    Done operator()(const SetExcelOptions& set) {
        ReportOf(set).SetExcelOptions(set.keepsTypes, set.pageHeaders, set.pageBreaks, set.gridlines,
                                      set.baseArea);
        return {};
    }
    Done operator()(const SetHtmlOptions& set) {
        ReportOf(set).SetHtmlOptions(set.firstSwitch, set.secondSwitch);
        return {};
    }
    Done operator()(const Write& write) {
        const report::FormatRow* const format = report::FindFormat(write.format);
        if (format == nullptr || fcntl(m_file.Get(), F_GETFD) < 0) {
            throw BadMessage("a document without a format or a file");
        }
        FileOutput output(write.target, std::move(m_file));
        ReportOf(write).WriteTo(*format, output);
        output.Commit();
        return {};
    }

    // Carries out the operation of a frame and answers. Returns false if the program is gone.
    bool Handle(Frame frame, const std::function<void(const Operation&)>& before) {
        const auto operation = Decoded<Operation>(frame.body);
        if (std::holds_alternative<Begin>(operation) == m_beats.has_value()) {
            throw BadMessage("an operation out of order");
        }
        m_file = std::move(frame.file);
        try {
            if (m_beats) {
                m_beats->Working();
                if (before) {
                    before(operation);
                }
            }
            return std::visit([this](const auto& one) { return Answer(one); }, operation);
        } catch (const BadMessage&) {
            throw;
        } catch (...) {
            const RuntimeError error = CurrentError();
            return Send(Kind::Error, Encoded(Failed{error.Number(), error.Description()}));
        }
    }

 private:
    template <typename Request>
    bool Answer(const Request& request) {
        const typename Request::Answer answer = (*this)(request);
        return Send(Kind::Answer, Encoded(answer));
    }
    bool Send(Kind kind, const std::string& body) {
        return m_beats ? m_beats->Send(kind, body) : SendFrame(m_socket, kind, body);
    }
    template <typename Request>
    RdlReport& ReportOf(const Request& request) {
        const auto found = m_reports.find(request.report);
        if (found == m_reports.end()) {
            throw BadMessage("a report that is not open");
        }
        return *found->second;
    }
    template <typename Request>
    report::ParameterField& FieldOf(const Request& request) {
        return ReportOf(request).Parameter(request.field);
    }

    const int m_socket;
    int m_last = 0;
    std::map<int, std::shared_ptr<RdlReport>> m_reports;
    UniqueFd m_file;  // that came with the operation
    std::optional<Beats> m_beats;
};

}  // namespace

int Serve(int socket, const std::function<void(const Operation&)>& before) {
    constexpr int Unreadable = 3;
    try {
        Server server(socket);
        for (std::optional<Frame> frame = WaitForFrame(socket); frame; frame = WaitForFrame(socket)) {
            if (!server.Handle(std::move(*frame), before)) {
                break;
            }
        }
        return 0;
    } catch (const BadMessage&) {
        return Unreadable;
    }
}

}  // namespace reports::worker
