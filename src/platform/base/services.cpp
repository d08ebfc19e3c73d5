// SPDX-License-Identifier: GPL-3.0-or-later
// The default implementations of the small services, used until a program or a test sets its own.
#include <unistd.h>

#include <string>
#include <utility>

#include "platform/base/journal.h"
#include "platform/contracts/loop.h"
#include "platform/contracts/mapi.h"
#include "platform/contracts/process.h"
#include "platform/contracts/prompts.h"
#include "platform/contracts/registry.h"
#include "platform/contracts/runtime.h"
#include "platform/contracts/shell.h"

namespace {

class IdleLoop : public MessageLoop {
 public:
    void Yield() override {}
    // Without a loop there are no events, but a waiting caller must not spin.
    void YieldFor(double seconds) override {
        constexpr double Longest = 0.05;
        const double wait = seconds < Longest ? seconds : Longest;
        if (wait > 0) {
            usleep(static_cast<useconds_t>(wait * 1e6));
        }
    }
};

class ExitingProcess : public Process {
 public:
    void End(int exitCode) override { _exit(exitCode); }
};

class StandardErrorPrompts : public Prompts {
 public:
    int Box(const std::string& text, int flags, const std::string& title) override {
        JournalBox(text, title);
        constexpr int ButtonsMask = 15;
        return (flags & ButtonsMask) == vbYesNo ? vbYes : vbOK;
    }
    std::string Input(const std::string& prompt, const std::string& title,
                      const std::string& preset) override {
        JournalBox(prompt, title);
        return preset;
    }
};

std::string& CommandLine() {
    static std::string command;
    return command;
}

// One service: the one that was set, else the default.
template <typename Service>
Service*& Current() {
    static Service* current = nullptr;
    return current;
}

template <typename Service>
Service& Given(const char* what) {
    if (Current<Service>() == nullptr) {
        throw RuntimeError(err::ObjectNotSet, RuntimeError(err::ObjectNotSet).Description() + ": " + what);
    }
    return *Current<Service>();
}

template <typename Service, typename Default>
Service& GivenOr() {
    static Default fallback;
    return Current<Service>() == nullptr ? fallback : *Current<Service>();
}

}  // namespace

MessageLoop& TheLoop() {
    return GivenOr<MessageLoop, IdleLoop>();
}
void SetLoop(MessageLoop* loop) {
    Current<MessageLoop>() = loop;
}

const std::string& Command() {
    return CommandLine();
}
void SetCommand(const std::string& command) {
    CommandLine() = command;
}

Process& TheProcess() {
    return GivenOr<Process, ExitingProcess>();
}
void SetProcess(Process* process) {
    Current<Process>() = process;
}

void JournalBox(const std::string& text, const std::string& title) {
    Journal((title.empty() ? std::string(AppTitle) : title) + ": " + text);
}

Prompts& ThePrompts() {
    return GivenOr<Prompts, StandardErrorPrompts>();
}
void SetPrompts(Prompts* prompts) {
    Current<Prompts>() = prompts;
}

Registry& TheRegistry() {
    return Given<Registry>("the settings");
}
void SetRegistry(Registry* registry) {
    Current<Registry>() = registry;
}

Shell& TheShell() {
    return Given<Shell>("the desktop");
}
void SetShell(Shell* shell) {
    Current<Shell>() = shell;
}

namespace MAPI {

System& TheMailSystem() {
    return Given<System>("the mail system");
}
void SetMailSystem(System* system) {
    Current<System>() = system;
}

namespace {

RefusalHandler& TheRefusalHandler() {
    static RefusalHandler handler;
    return handler;
}

}  // namespace

void SetRefusalHandler(RefusalHandler handler) {
    TheRefusalHandler() = std::move(handler);
}

void ReportRefusals(const std::string& subject, const std::vector<Refusal>& refusals) {
    if (TheRefusalHandler()) {
        TheRefusalHandler()(subject, refusals);
        return;
    }
    for (const Refusal& refusal : refusals) {
        Journal("The mail server refuses the recipient \"" + refusal.Address + "\" of \"" + subject +
                "\": " + refusal.Answer);
    }
}

}  // namespace MAPI
