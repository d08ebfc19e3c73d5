// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/fakes.h"

#include <ostream>
#include <sstream>

#include "platform/base/convert.h"
#include "shared/Global.h"

namespace fakes {

void PrintTo(const Box& box, std::ostream* out) {
    *out << box.title << " (" << box.flags << "): " << box.text;
}

DateValue At(int year, int month, int day, int hour, int minute, int second) {
    return DateValue::FromSeconds(DateSerial(year, month, day).Seconds() +
                                  TimeSerial(hour, minute, second).Seconds());
}

void FakeLoop::Yield() {
    ++yields;
    if (onYield) {
        onYield();
    }
}

void FakeLoop::YieldFor(double /*seconds*/) {
    ++waits;
    m_clock.now = DateValue::FromSeconds(m_clock.now.Seconds() + 1);
    if (onWait) {
        onWait();
    }
}

int FakePrompts::Box(const std::string& text, int flags, const std::string& title) {
    boxes.push_back({text, flags, title});
    if (onBox) {
        onBox();
    }
    if (answers.empty()) {
        return vbOK;
    }
    const int answer = answers.front();
    answers.pop_front();
    return answer;
}

std::string FakePrompts::Input(const std::string& /*prompt*/, const std::string& /*title*/,
                               const std::string& preset) {
    if (inputs.empty()) {
        return preset;
    }
    std::string input = inputs.front();
    inputs.pop_front();
    return input;
}

long FakeRegistry::RegOpenKeyA(std::uint32_t /*root*/, const std::string& key, Handle& handle) {
    if (isUnreadable) {
        return 5;
    }
    if (keys.find(key) == keys.end()) {
        return 2;
    }
    ++opened;
    m_handles.push_back(key);
    handle = static_cast<Handle>(m_handles.size());
    return 0;
}

long FakeRegistry::RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                                    std::string& bytes) {
    if (openReads > 0 && --openReads == 0) {
        isUnreadable = true;
        return 5;
    }
    const auto& values = keys[m_handles.at(handle - 1)];
    const auto found = values.find(name);
    if (found == values.end()) {
        return 2;
    }
    type = found->second.type;
    bytes = found->second.bytes;
    return 0;
}

long FakeRegistry::RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) {
    keys[key];
    return RegOpenKeyA(root, key, handle);
}

long FakeRegistry::RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                                  const std::string& bytes) {
    const std::string& key = m_handles.at(handle - 1);
    keys[key][name] = {type, bytes};
    writes.push_back(key + "\\" + name + "=" + bytes);
    return 0;
}

long FakeRegistry::RegCloseKey(Handle handle) {
    ++closeCalls;
    if (handle == 0) {
        return 6;
    }
    ++closed;
    return 0;
}

FakeFrame::FakeFrame() {
    Global::Frame = this;
}
FakeFrame::~FakeFrame() {
    Global::Frame = nullptr;
}

void FakeFrame::EnableTimer1(bool enabled) {
    timerEnabled = enabled;
    timerChanges.push_back(enabled);
}

namespace {

void RaiseNext(std::deque<std::optional<RuntimeError>>& errors) {
    if (errors.empty()) {
        return;
    }
    const std::optional<RuntimeError> error = errors.front();
    errors.pop_front();
    if (error) {
        throw *error;
    }
}

class FakeAttachment : public MAPI::Attachment {};

class FakeAttachments : public MAPI::Attachments {
 public:
    MAPI::Attachment& Add() override { return items.emplace_back(); }
    std::deque<FakeAttachment> items;
};

class FakeRecipients : public MAPI::Recipients {
 public:
    FakeRecipients(FakeMailSystem& system, const FakeAttachments& attachments)
        : m_system(system), m_attachments(attachments) {}
    void Add(const std::string& name) override { names.push_back({name}); }
    void Resolve(MAPI::Dialog dialog) override {
        resolvedWithDialog = dialog == MAPI::Dialog::Allowed;
        atResolve = {names.size(), m_attachments.items.size()};
        RaiseNext(m_system.resolveErrors);
    }
    int Count() const override { return static_cast<int>(names.size()); }
    const MAPI::Recipient& Item(int index) const override {
        return names.at(static_cast<std::size_t>(index) - 1);
    }
    std::vector<MAPI::Recipient> names;
    bool resolvedWithDialog = false;
    std::pair<std::size_t, std::size_t> atResolve = {0, 0};

 private:
    FakeMailSystem& m_system;
    const FakeAttachments& m_attachments;
};

class FakeMessage : public MAPI::Message {
 public:
    explicit FakeMessage(FakeMailSystem& system) : m_system(system), m_recipients(system, m_attachments) {}
    MAPI::Recipients& Recipients() override { return m_recipients; }
    MAPI::Attachments& Attachments() override { return m_attachments; }
    void Send() override {
        m_system.identities.push_back(Identity);
        m_system.dates.push_back(Date);
        RaiseNext(m_system.sendErrors);
        SentMessage message{
            Subject,  Text, Importance, {}, {}, m_recipients.resolvedWithDialog, m_recipients.atResolve,
            Identity, Date};
        for (const MAPI::Recipient& recipient : m_recipients.names) {
            message.recipients.push_back(recipient.Name);
        }
        for (const FakeAttachment& attachment : m_attachments.items) {
            message.attachments.emplace_back(attachment.Position, attachment.Source);
        }
        m_system.sent.push_back(std::move(message));
    }

 private:
    FakeMailSystem& m_system;
    FakeAttachments m_attachments;
    FakeRecipients m_recipients;
};

class FakeFolder : public MAPI::Folder {
 public:
    explicit FakeFolder(FakeMailSystem& system) : m_system(system) {}
    std::unique_ptr<MAPI::Message> AddMessage() override {
        RaiseNext(m_system.messageErrors);
        return std::make_unique<FakeMessage>(m_system);
    }

 private:
    FakeMailSystem& m_system;
};

class FakeSession : public MAPI::Session {
 public:
    explicit FakeSession(FakeMailSystem& system) : m_system(system), m_outbox(system) {}
    void Logon() override {
        ++m_system.logons;
        RaiseNext(m_system.logonErrors);
    }
    MAPI::Folder& Outbox() override { return m_outbox; }
    std::vector<MAPI::Recipient> AddressBook(MAPI::Choice choice) override {
        m_system.booksShown.push_back(choice == MAPI::Choice::One);
        RaiseNext(m_system.bookErrors);
        if (m_system.picks.empty()) {
            throw RuntimeError(err::MailUserCancel, "cancelled");
        }
        std::vector<MAPI::Recipient> picked;
        for (const std::string& name : m_system.picks.front()) {
            picked.push_back({name});
        }
        m_system.picks.pop_front();
        return picked;
    }

 private:
    FakeMailSystem& m_system;
    FakeFolder m_outbox;
};

}  // namespace

std::unique_ptr<MAPI::Session> FakeMailSystem::CreateSession() {
    return noSession ? nullptr : std::make_unique<FakeSession>(*this);
}

namespace {

std::string Show(const report::ParameterValue& value) {
    struct Shower {
        std::string operator()(double d) const {
            std::ostringstream text;
            text << "double " << d;
            return text.str();
        }
        std::string operator()(bool b) const { return b ? "boolean True" : "boolean False"; }
        std::string operator()(const std::string& s) const { return "text " + s; }
        std::string operator()(DateValue d) const { return "date " + DateText(d) + " " + TimeText(d); }
        std::string operator()(const Variant& v) const { return "field " + v.Text(); }
    };
    return std::visit(Shower{}, value);
}

template <typename Value>
Value ValueAt(const std::vector<Value>& values, int number, const Value& otherwise) {
    const auto index = static_cast<std::size_t>(number) - 1;
    return index < values.size() ? values[index] : otherwise;
}

class FakeField : public report::ParameterField {
 public:
    FakeField(int number, const FakeReportSpec& spec, std::vector<std::string>& calls)
        : m_number(number), m_spec(spec), m_calls(calls) {}
    int ValueType() const override { return ValueAt(m_spec.parameterTypes, m_number, 0); }
    bool IsWholeNumber() const override { return false; }
    std::string Name() const override {
        return ValueAt(m_spec.parameterNames, m_number, "P" + std::to_string(m_number));
    }
    std::string Prompt() const override { return ValueAt(m_spec.parameterPrompts, m_number, std::string()); }
    std::vector<std::string> DefaultValues() const override {
        return ValueAt(m_spec.defaultValues, m_number, {});
    }
    std::vector<std::string> ValidValues() const override {
        return ValueAt(m_spec.validValues, m_number, {});
    }
    void ClearCurrentValueAndRange() override { m_calls.push_back("clear " + std::to_string(m_number)); }
    void AddCurrentValue(const report::ParameterValue& value) override {
        m_calls.push_back("value " + std::to_string(m_number) + " " + Show(value));
    }

 private:
    int m_number;
    const FakeReportSpec& m_spec;
    std::vector<std::string>& m_calls;
};

class FakeReport : public report::Report {
 public:
    FakeReport(const FakeReportSpec& spec, FakeEngine& engine) : m_spec(spec), m_engine(engine) {
        for (std::size_t i = 0; i < spec.parameterTypes.size(); ++i) {
            m_fields.emplace_back(static_cast<int>(i) + 1, m_spec, engine.calls);
        }
    }
    int TableCount() const override { return m_spec.tables; }
    void SetTableLogon(int n, const std::string& server, const std::string& database, const std::string& user,
                       const std::string& password) override {
        Note("logon " + std::to_string(n) + " [" + server + "][" + database + "][" + user + "][" + password +
             "]");
    }
    int ParameterFieldCount() const override { return static_cast<int>(m_fields.size()); }
    report::ParameterField& Parameter(int n) override {
        if (n < 1 || n > ParameterFieldCount()) {
            throw RuntimeError(err::SubscriptOutOfRange);
        }
        return m_fields[static_cast<std::size_t>(n) - 1];
    }
    void SetRunSwitches(bool prompts, bool progress) override {
        Note("switches " + Flags({prompts, progress}));
    }
    std::string RecordSelectionFormula() const override { return m_spec.formula; }
    void SetRecordSelectionFormula(const std::string& text) override { Note("formula " + text); }
    std::string Title() const override { return m_spec.title; }
    std::string Description() const override { return m_spec.description; }
    void SetExportDestination(int code) override {
        m_destination = code;
        Note("destination " + std::to_string(code));
    }
    void SetExportFormat(int code) override { Note("format " + std::to_string(code)); }
    void SetDiskFileName(const std::string& path) override {
        m_file = path;
        Note("disk file " + path);
    }
    void SetHtmlFileName(const std::string& path) override {
        m_file = path;
        Note("html file " + path);
    }
    void SetMail(const std::string& to, const std::string& subject, const std::string& message) override {
        Note("mail [" + to + "][" + subject + "][" + message + "]");
    }
    void SetExcelOptions(bool keepsTypes, bool pageHeaders, bool pageBreaks, bool gridlines,
                         int baseArea) override {
        Note("excel " + Flags({keepsTypes, pageHeaders, pageBreaks, gridlines}) + " " +
             std::to_string(baseArea));
    }
    void SetHtmlOptions(bool firstSwitch, bool secondSwitch) override {
        Note("html " + Flags({firstSwitch, secondSwitch}));
    }
    void Export(bool prompt) override {
        Note(std::string("export ") + (prompt ? "True" : "False"));
        if (m_spec.exportError) {
            throw *m_spec.exportError;
        }
        if (m_engine.onExport) {
            m_engine.onExport(m_destination == report::DestinationMail ? "mail" : m_file);
        }
    }
    std::unique_ptr<report::PageView> OpenPages() override {
        return std::make_unique<FakePageView>(m_spec.pages, m_engine.calls);
    }

 private:
    void Note(const std::string& call) { m_engine.calls.push_back(call); }
    static std::string Flags(std::initializer_list<bool> flags) {
        std::string text;
        for (const bool flag : flags) {
            text += (text.empty() ? "" : " ") + std::string(flag ? "True" : "False");
        }
        return text;
    }
    FakeReportSpec m_spec;
    FakeEngine& m_engine;
    std::deque<FakeField> m_fields;
    int m_destination = 0;
    std::string m_file;
};

FakeEngine* g_engine = nullptr;

std::shared_ptr<report::Engine> BorrowEngine() {
    return {g_engine, [](report::Engine*) {}};
}

}  // namespace

FakeEngine::FakeEngine() {
    g_engine = this;
    report::SetEngineFactory(&BorrowEngine);
    Global::ReportEngine.reset();
    Global::RunEngine.reset();
    Global::CurrentReport.reset();
}

FakeEngine::~FakeEngine() {
    Global::CurrentReport.reset();
    Global::ReportEngine.reset();
    Global::RunEngine.reset();
    report::SetEngineFactory(nullptr);
    g_engine = nullptr;
}

std::shared_ptr<report::Report> FakeEngine::OpenReport(const std::string& path) {
    calls.push_back("open " + path);
    const auto found = reports.find(path);
    if (found == reports.end()) {
        throw RuntimeError(err::FileNotFound, "File not found: " + path);
    }
    return std::make_shared<FakeReport>(found->second, *this);
}

}  // namespace fakes
