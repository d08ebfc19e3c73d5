// SPDX-License-Identifier: GPL-3.0-or-later
// Fakes for what a test must control: the clock, the loop, the prompts, the process, the settings, the main
// window, the mail system and the report engine. Each records the calls that it gets.
#pragma once

#include <deque>
#include <functional>
#include <iosfwd>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/contracts/clock.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/report_engine.h"
#include "shared/Frame.h"
#include "support/fake_pages.h"

namespace fakes {

class FakeClock : public Clock {
 public:
    explicit FakeClock(DateValue start) : now(start) { SetClock(this); }
    ~FakeClock() override { SetClock(nullptr); }
    DateValue Now() const override { return now; }
    DateValue now;
};

DateValue At(int year, int month, int day, int hour = 0, int minute = 0, int second = 0);

// A yield that may wait moves the fake clock on by a second.
class FakeLoop : public MessageLoop {
 public:
    explicit FakeLoop(FakeClock& clock) : m_clock(clock) { SetLoop(this); }
    ~FakeLoop() override { SetLoop(nullptr); }
    void Yield() override;
    void YieldFor(double seconds) override;
    int yields = 0;
    int waits = 0;
    std::function<void()> onYield, onWait;  // called in a yield; in one that may wait

 private:
    FakeClock& m_clock;
};

struct Box {
    std::string text;
    int flags = 0;
    std::string title;
    bool operator==(const Box&) const = default;
};
// For the messages of tests.
void PrintTo(const Box& box, std::ostream* out);

class FakePrompts : public Prompts {
 public:
    FakePrompts() { SetPrompts(this); }
    ~FakePrompts() override { SetPrompts(nullptr); }
    int Box(const std::string& text, int flags, const std::string& title) override;
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override;
    std::vector<fakes::Box> boxes;
    std::function<void()> onBox;  // called while the box is shown
    std::deque<int> answers;      // one for each box; then vbOK
    std::deque<std::string> inputs;
};

class FakeProcess : public Process {
 public:
    FakeProcess() { SetProcess(this); }
    ~FakeProcess() override { SetProcess(nullptr); }
    void End(int exitCode) override { ends.push_back(exitCode); }
    std::vector<int> ends;
};

class FakeRegistry : public Registry {
 public:
    FakeRegistry() { SetRegistry(this); }
    ~FakeRegistry() override { SetRegistry(nullptr); }
    long RegOpenKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegQueryValueExA(Handle handle, const std::string& name, std::uint32_t& type,
                          std::string& bytes) override;
    long RegCreateKeyA(std::uint32_t root, const std::string& key, Handle& handle) override;
    long RegSetValueExA(Handle handle, const std::string& name, std::uint32_t type,
                        const std::string& bytes) override;
    long RegCloseKey(Handle handle) override;

    struct Entry {
        std::uint32_t type = REG_SZ;
        std::string bytes;
    };
    std::map<std::string, std::map<std::string, Entry>> keys;
    std::vector<std::string> writes;  // key\name=value, in order
    bool isUnreadable = false;        // denies access to what is there
    int openReads = 0;                // the read of this number is denied and makes it unreadable; 0: none
    int opened = 0, closed = 0;
    int closeCalls = 0;  // also of keys that were never opened

 private:
    std::vector<std::string> m_handles;
};

class FakeFrame : public MainFrame {
 public:
    FakeFrame();
    ~FakeFrame() override;
    void EnableTimer1(bool enabled) override;
    void HideWindow() override { ++hides; }
    void ScreenMousePointer(int pointer) override { pointers.push_back(pointer); }
    void ClickEntry(const std::string& entry) override { clicks.push_back(entry); }
    void EntryCaption(const std::string& entry, const std::string& caption) override {
        captions[entry] = caption;
    }
    void EntryVisible(const std::string& entry, bool visible) override { visibility[entry] = visible; }
    void EntryEnabled(const std::string& entry, bool enabled) override { enabling[entry] = enabled; }
    void PopupMenu(const std::string& menu) override { popups.push_back(menu); }
    void PopupMenu(const std::string& menu, int, int) override { popups.push_back(menu); }
    CommonDialog* cd() override { return commonDialog; }
    void AddChild(QWidget& form) override { children.push_back(&form); }
    CommonDialog* commonDialog = nullptr;
    std::vector<QWidget*> children;
    bool timerEnabled = true;
    std::vector<bool> timerChanges;
    int hides = 0;
    std::vector<int> pointers;
    std::vector<std::string> clicks, popups;  // of entries; of menus
    std::map<std::string, std::string> captions;
    std::map<std::string, bool> visibility, enabling;
};

// A Desktop window with at most one item, the selected one.
class FakeDesk : public DeskWindow {
 public:
    std::string Caption() const override { return caption; }
    void ListMousePointer(int pointer) override { pointers.push_back(pointer); }
    std::string SelectedText() const override { return Selected().first; }
    std::string SelectedKey() const override { return Selected().second; }
    void ComAction(int command) override { commands.push_back(command); }
    void RefreshList(const std::string& folderName, const std::string& folderID) override {
        refreshes.emplace_back(folderName, folderID);
    }
    void AddBatches() override { ++batches; }
    void EnableButton(int index, bool enabled) override { buttons.emplace_back(index, enabled); }
    void EnableForm(bool enabled) override { enablings.push_back(enabled); }
    std::vector<std::pair<std::string, std::string>> refreshes;  // folder's name and key
    int batches = 0;
    std::vector<std::pair<int, bool>> buttons;
    std::vector<bool> enablings;
    std::string caption = "Desktop";
    std::optional<std::pair<std::string, std::string>> selected;  // text, key
    std::vector<int> pointers, commands;

 private:
    const std::pair<std::string, std::string>& Selected() const {
        if (!selected) {
            throw RuntimeError(err::ObjectNotSet);
        }
        return *selected;
    }
};

// A message as it was when it was sent.
struct SentMessage {
    std::string subject, text;
    int importance = 1;
    std::vector<std::string> recipients;
    std::vector<std::pair<int, std::string>> attachments;  // position, source
    bool resolvedWithDialog = false;
    std::pair<std::size_t, std::size_t> atResolve = {0,
                                                     0};  // how many recipients and attachments it had then
    std::string identity = {};
    std::optional<ZonedMoment> date = {};
};

class FakeMailSystem : public MAPI::System {
 public:
    FakeMailSystem() { MAPI::SetMailSystem(this); }
    ~FakeMailSystem() override { MAPI::SetMailSystem(nullptr); }
    std::unique_ptr<MAPI::Session> CreateSession() override;
    std::vector<SentMessage> sent;
    // Of every message whose sending was started.
    std::vector<std::string> identities;
    std::vector<std::optional<ZonedMoment>> dates;
    // Raised by the nth logon, resolve or send from now (the front is the next one; nullopt: succeeds).
    std::deque<std::optional<RuntimeError>> logonErrors, resolveErrors, sendErrors;
    // In the same way for the nth new message and the nth showing of the address book.
    std::deque<std::optional<RuntimeError>> messageErrors, bookErrors;
    std::deque<std::vector<std::string>> picks;  // from the address book; empty: the user cancels
    std::vector<bool> booksShown;                // whether for one address
    bool noSession = false;
    int logons = 0;
};

// The engine: reports by path, and all calls in order as text.
struct FakeReportSpec {
    std::string title = "Sales";
    std::string formula = {}, description = {};
    int tables = 1;
    std::vector<int> parameterTypes;
    // By position. A missing one has a name like P1, and no prompt and no default.
    std::vector<std::string> parameterNames, parameterPrompts;
    std::vector<std::vector<std::string>> defaultValues, validValues;
    std::optional<RuntimeError> exportError;
    FakePages pages;  // for the screen
};

class FakeEngine : public report::Engine {
 public:
    FakeEngine();
    ~FakeEngine() override;
    std::shared_ptr<report::Report> OpenReport(const std::string& path) override;
    std::map<std::string, FakeReportSpec> reports;
    std::vector<std::string> calls;
    std::function<void(const std::string& file)> onExport;  // called with the file or "mail"
};

}  // namespace fakes
